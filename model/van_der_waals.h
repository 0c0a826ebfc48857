#pragma once

#include <cstdint>
#include <span>

#include "model/mixture.h"

namespace fluid {

// The equation of state on plain numbers and lists. lastComponent (or n): index of the last entry
// used, -1 for none; lists: at least one entry more, at the positions of the component tables.

// Parameters of a mixture by the quadratic and linear mixing rules of van der Waals, in
// MPa·cm6/mol2 and cm3/mol: sum of x_k·x_l·a_kl, sum of x_k·b_k; its molar mass in g/mol; and its
// molar volume in cm3/mol at the density rho in g/cm3, or the other way round.
double MixtureA(std::int32_t lastComponent, std::span<const double> fractions);
double MixtureB(std::int32_t lastComponent, std::span<const double> fractions);
double MolarMass(std::int32_t lastComponent, std::span<const double> fractions);
double MolarVolumeFromDensity(std::int32_t lastComponent, std::span<const double> fractions,
                              double rho);

// Pressure in MPa, R·T/(V - b) - a/V², for a = aMix in MPa·cm6/mol2, b = bMix and V in cm3/mol, T
// in K. V equal to b gives 0; V below b is computed as it stands, V = 0 gives no finite number.
double PressureVdW(double aMix, double bMix, double T, double V);

// Temperature in K at which the pressure P in MPa belongs to the molar volume V in cm3/mol; below
// 0 for V below b. V not above 0 gives 0.
double TemperatureVdW(double aMix, double bMix, double P, double V);

// A_i = sum of 2·x_j·a_ij, MPa·cm6/mol2, for the amount fractions x; the co-volumes b_i, cm3/mol. 0
// behind position n.
ComponentValues ComponentAttraction(std::int32_t n, std::span<const double> x);
ComponentValues ComponentCovolumes(std::int32_t n);

// Fugacity coefficients of the components of a mixture at T in K, P in MPa, V in cm3/mol:
// ln phi_i = b_i/(V - b) - ln(Z·(1 - b/V)) - A_i/(R·T·V), Z = P·V/(R·T), with b = bMix, and A and
// B as the functions above give them. V need not be a volume at P.
// A coefficient is exactly 1 where |ln phi_i| is 227 or more or has no value (P below 0); all are 1
// unless P differs from 0, T > 0 and V > b.
ComponentValues FugacityCoefficients(std::int32_t n, double bMix, std::span<const double> A,
                                     std::span<const double> B, double T, double P, double V);

// The same of a mixture by itself, and of the pure gas at one of its positions.
ComponentValues FugacityCoefficients(const Mixture& mixture, double T, double P, double V);
double PureFugacityCoefficient(const Mixture& mixture, std::size_t k, double T, double P, double V);

}  // namespace fluid
