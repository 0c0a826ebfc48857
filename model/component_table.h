#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace fluid {

// Gas constant in MPa·cm3/(mol·K): pressures in MPa and molar volumes in cm3/mol need no factor.
inline constexpr double R = 8.314472;

inline constexpr std::size_t ComponentCount = 11;

// Formulas in the internal order, by which every table and list of the model is sorted.
inline constexpr std::array<std::string_view, ComponentCount> ComponentFormulas = {
    "H2O", "CO2", "N2", "H2S", "NH3", "H2", "O2", "CO", "Ar", "CH4", "C2H6"};

using ComponentValues = std::array<double, ComponentCount>;
using ComponentMatrix = std::array<ComponentValues, ComponentCount>;

// Tables of the present components: position k holds the k-th present component in increasing
// internal index, positions behind the last one hold 0. InitComponentTable writes them.
extern const ComponentValues& M;        // molar mass, g/mol
extern const ComponentValues& omega;    // acentric factor
extern const ComponentValues& Zc;       // critical compressibility, 0.2905 - 0.085·omega
extern const ComponentValues& Pc;       // critical pressure, MPa
extern const ComponentValues& Tc;       // critical temperature, K
extern const ComponentValues& Vc;       // critical molar volume, cm3/mol
extern const ComponentValues& Ttriple;  // triple-point temperature, K
extern const ComponentMatrix& a;        // attraction, MPa·cm6/mol2, a_kl = sqrt(a_kk·a_ll)
extern const ComponentValues& b;        // co-volume, cm3/mol

// Square roots of the diagonal of a, and what they lose by rounding: for every k,
// aRoot[k]·aRoot[k] + aRootDefect[k] is a[k][k] to the last bit.
extern const ComponentValues& aRoot;
extern const ComponentValues& aRootDefect;

// Builds the tables above for the components with a fraction above 0.
// x: the eleven fractions in internal order; only their signs matter.
void InitComponentTable(std::span<const double, ComponentCount> x);

// Molar mass of a mixture in g/mol, sum of x_k·M_k.
// lastComponent: index of the last entry used, -1 for none (gives 0); fractions: at least
// lastComponent + 1 amount fractions at the positions of the tables.
double MolarMass(std::int32_t lastComponent, std::span<const double> fractions);

// Molar volume in cm3/mol of a mixture of the density rho in g/cm3; the same quotient turns a
// molar volume into a density. Gives 0 when rho is not above 0. Arguments as for MolarMass.
double MolarVolumeFromDensity(std::int32_t lastComponent, std::span<const double> fractions,
                              double rho);

}  // namespace fluid
