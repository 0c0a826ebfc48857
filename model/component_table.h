#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

namespace fluid {

// Gas constant in MPa·cm3/(mol·K): pressures in MPa and molar volumes in cm3/mol need no factor.
inline constexpr double R = 8.314472;

inline constexpr std::size_t componentCount = 11;

// Formulas in the internal order, by which every table and list of the model is sorted.
inline constexpr std::array<std::string_view, componentCount> componentFormulas = {
    "H2O", "CO2", "N2", "H2S", "NH3", "H2", "O2", "CO", "Ar", "CH4", "C2H6"};

using ComponentValues = std::array<double, componentCount>;
using ComponentMatrix = std::array<ComponentValues, componentCount>;

// What is known of a gas.
struct Gas {
    double M;        // molar mass, g/mol
    double Ttriple;  // K
    double Tc;       // critical temperature, K
    double Pc;       // critical pressure, MPa
    double Vc;       // critical molar volume, cm3/mol
    double omega;    // acentric factor
};
// In internal order.
extern const std::array<Gas, componentCount> gases;

// Tables of the present components: position k holds the k-th present component in increasing
// internal index, positions behind the last one hold 0. InitComponentTable writes them.
extern const std::array<std::size_t, componentCount>& ComponentIndex;  // internal index
extern const ComponentValues& M;                                       // molar mass, g/mol
extern const ComponentValues& omega;                                   // acentric factor
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
void InitComponentTable(std::span<const double, componentCount> x);

}  // namespace fluid
