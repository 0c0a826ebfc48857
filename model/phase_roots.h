#pragma once

#include "model/cubic.h"
#include "model/homogenisation.h"

namespace fluid {

// The molar volume that phase X, or phase Y, takes of the roots at its temperature and pressure, in
// cm3/mol: the smallest, or the largest, real root above the co-volume bMix; 0 where there is none.
double LiquidRoot(const CubicRoots& roots, double bMix);
double VapourRoot(const CubicRoots& roots, double bMix);

// Whether a phase is a liquid rather than a vapour or a dense gas: colder and denser than at the
// critical point of a pure gas of its a and b. T in K, V in cm3/mol.
bool IsLiquid(double aMix, double bMix, double T, double V);
bool AreTwoLiquids(const Mixture& mixture, const PhasePair& pair);

// Whether these roots are the volumes of an equilibrium of the mixture's components. A second
// liquid beside which its composition has a vapour root too is none that can be told from it.
bool TakesItsRoots(const Mixture& mixture, const PhasePair& pair);

}  // namespace fluid
