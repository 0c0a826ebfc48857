#pragma once

#include "model/cubic.h"
#include "model/homogenisation.h"

namespace fluid {

// The molar volume that phase X, or phase Y, takes of the roots at its temperature and pressure, in
// cm3/mol: the smallest, or the largest, real root above the co-volume bMix; 0 where there is none.
double LiquidRoot(const CubicRoots& roots, double bMix);
double VapourRoot(const CubicRoots& roots, double bMix);

// Whether these roots are the volumes of an equilibrium of the mixture's components. A second
// liquid beside which its composition has a vapour root too is none that can be told from it.
bool TakesItsRoots(const Mixture& mixture, const PhasePair& pair);

}  // namespace fluid
