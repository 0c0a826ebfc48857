#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "model/component_table.h"

namespace fluid {

// What the mixing rules make of amount fractions of a mixture's components. One fraction 1 and the
// others 0 give the a and b of that component to the last bit.
struct Blend {
    double a = 0.0;      // MPa·cm6/mol2
    double b = 0.0;      // cm3/mol
    double aRoot = 0.0;  // sum of x_i·aRoot_i
};

// A fluid: its gases, how much there is of each, and what the equation of state needs to know of
// them. Position k of the arrays is the k-th present gas, in increasing internal index; behind the
// last one stands 0.
struct Mixture {
    std::size_t count = 0;
    std::array<std::size_t, componentCount> index{};  // internal index
    ComponentValues fractions{};                      // as they were given
    ComponentValues z{};                              // the same, adding up to 1
    ComponentValues M{};                              // molar masses, g/mol
    ComponentValues b{};                              // co-volumes, cm3/mol
    ComponentValues aRoot{};        // square roots of the attractions, (MPa·cm6/mol2)^½
    ComponentValues aRootDefect{};  // what these lose by rounding
    // aRoot_i·bMix - b_i·aRootMix, how a component differs from the mixture, from the pairs of
    // components: right to the last bits also where it is small
    ComponentValues difference{};
    // From the fractions as they were given, which add up to more than 1 where a typed one was
    // below 0: a in MPa·cm6/mol2 and b in cm3/mol of the equation of state, and g/mol. A pure gas
    // has its own a and b to the last bit.
    double attraction = 0.0;
    double covolume = 0.0;
    double molarMass = 0.0;
    // From z.
    double bMix = 0.0;
    double aRootMix = 0.0;
    double densestA = 0.0;  // largest aRoot/b, which no A reaches, MPa^½
    double largestB = 0.0;
    double largestARoot = 0.0;

    std::string_view formula(std::size_t k) const { return componentFormulas[index[k]]; }
    // a of the gas at position k, to the last bit.
    double pureA(std::size_t k) const { return aRoot[k] * aRoot[k] + aRootDefect[k]; }

    // The rest follows from these.
    bool operator==(const Mixture& other) const {
        return count == other.count && index == other.index && fractions == other.fractions;
    }
};

// The components of the tables in these amount fractions.
// lastComponent: index of the last fraction, -1 for none; fractions: at least lastComponent + 1.
Mixture MixtureOf(std::int32_t lastComponent, std::span<const double> fractions);

Blend BlendOf(const Mixture& mixture, const ComponentValues& x);

// A_i = sum of 2·x_j·a_ij, MPa·cm6/mol2, with blend that of x; and all of the mixture's own.
inline double AttractionOf(const Mixture& mixture, const ComponentValues& x, const Blend& blend,
                           std::size_t i) {
    // As in a itself, a_ij is the product of two roots but for the defects on the diagonal.
    return 2.0 * (mixture.aRoot[i] * blend.aRoot + x[i] * mixture.aRootDefect[i]);
}
ComponentValues Attractions(const Mixture& mixture);

// The same components in other amount fractions.
Mixture WithFractions(const Mixture& mixture, const ComponentValues& fractions);

// Molar volume in cm3/mol at the density rho in g/cm3; the same quotient turns a molar volume into
// a density. Gives 0 when rho is not above 0.
double MolarVolumeFromDensity(const Mixture& mixture, double rho);

// Above this temperature in K no mixture of these components has two phases
// (docs/phase_equilibria.md, "H rises"): R·T = largestB·densestA²/2.
double HottestT(const Mixture& mixture);

// Below this temperature in K coefficients of fugacity in a dense phase leave e^±227.
double ColdestT(const Mixture& mixture);

}  // namespace fluid
