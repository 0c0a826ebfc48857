#pragma once

#include <cstdint>
#include <span>

namespace fluid {

// Parameters of a mixture by the quadratic and linear mixing rules of van der Waals, in
// MPa·cm6/mol2 and cm3/mol: sum of x_k·x_l·a_kl, sum of x_k·b_k. One fraction 1 and the others 0
// give the a and b of that component to the last bit.
// lastComponent: index of the last entry used, -1 for none (gives 0); fractions: at least
// lastComponent + 1 amount fractions at the positions of the component tables.
double MixtureA(std::int32_t lastComponent, std::span<const double> fractions);
double MixtureB(std::int32_t lastComponent, std::span<const double> fractions);

// Molar mass in g/mol, and the molar volume in cm3/mol at the density rho in g/cm3 or the other way
// round; arguments as above.
double MolarMass(std::int32_t lastComponent, std::span<const double> fractions);
double MolarVolumeFromDensity(std::int32_t lastComponent, std::span<const double> fractions,
                              double rho);

// Pressure in MPa, R·T/(V - b) - a/V², for a = aMix in MPa·cm6/mol2, b = bMix and V in cm3/mol, T
// in K. V equal to b gives 0; V below b is computed as it stands, V = 0 gives no finite number.
double PressureVdW(double aMix, double bMix, double T, double V);

// Temperature in K at which the pressure P in MPa belongs to the molar volume V in cm3/mol; below
// 0 for V below b. V not above 0 gives 0.
double TemperatureVdW(double aMix, double bMix, double P, double V);

}  // namespace fluid
