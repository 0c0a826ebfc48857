#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "model/mixture.h"

namespace fluid {

// Slope of the isotherm T (K) at the molar volume V (cm3/mol), in MPa·mol/cm3: the difference
// quotient (P(V + h) - P(V - h))/2h of the pressure in closed form, so that it does not cancel.
// Its sign is always that of dP/dV; where the quotient has another sign, as across the pole at
// V = b or within h of an extremum, dP/dV itself is returned. V > 0, V not equal to b, T > 0, h >=
// 0.
double IsothermSlope(double aMix, double bMix, double T, double V, double h);

// Partial molar volumes (dV/dn_i at constant T and P) in cm3/mol of the present components at the
// molar volume V of the mixture; their sum weighted by x is V.
// No value where V is not above 0, T is not above 0, or dP/dV is 0.
std::optional<ComponentValues> PartialMolarVolumes(const Mixture& mixture, double T, double V);

// Chooses among three volumes: if two are not above 0 the remaining one, otherwise the largest.
double PureGasRoot(double r0, double r1, double r2);

struct PureGas {
    double volume = 0.0;    // cm3/mol, 0 when there is none
    bool multiple = false;  // three positive real volumes belong to T and P
};

// Volume of the pure gas at position k of a mixture, by PureGasRoot on the real roots.
// T in K, P in MPa.
PureGas PureGasVolume(const Mixture& mixture, std::size_t k, double T, double P);

// Of two volumes in cm3/mol that a pure gas has at T in K and P in MPa, whether the smaller one has
// the lower fugacity.
bool IsLiquidStable(double aMix, double T, double P, double liquid, double vapour);

// Volume of the pure gas beside the mixture at the same T and P. Where the gas has three real
// roots: the one with this number, of CubicRoots, that the mixture has of three; without a number
// the one with the lower fugacity.
PureGas PureGasVolumeBeside(const Mixture& mixture, std::size_t k, double T, double P,
                            std::optional<std::size_t> rank);

// Volume in cm3/mol of the mixture without excess: sum of x_k·V_k.
double IdealMixtureVolume(const Mixture& mixture, std::span<const double> pureVolumes);

}  // namespace fluid
