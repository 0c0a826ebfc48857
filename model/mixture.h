#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "model/component_table.h"

namespace fluid {

// A composition together with what the tables say about its components, at compact positions.
struct Mixture {
    std::size_t count = 0;
    ComponentValues z{};      // amount fractions, adding up to 1
    ComponentValues b{};      // co-volumes, cm3/mol
    ComponentValues aRoot{};  // square roots of the attractions, (MPa·cm6/mol2)^½
    // aRoot_i·bMix - b_i·aRootMix, how a component differs from the mixture, from the pairs of
    // components: right to the last bits also where it is small
    ComponentValues difference{};
    double bMix = 0.0;
    double aRootMix = 0.0;
    double densestA = 0.0;  // largest aRoot/b, which no A reaches, MPa^½
    double largestB = 0.0;
    double largestARoot = 0.0;

    bool operator==(const Mixture&) const = default;
};

// lastComponent: index of the last fraction; fractions: at least lastComponent + 1 amount fractions
// above 0 at the positions of the tables, normalised here.
Mixture MixtureOf(std::int32_t lastComponent, std::span<const double> fractions);

// The same components in other amount fractions, which add up to 1.
Mixture WithFractions(const Mixture& mixture, const ComponentValues& fractions);

// Above this temperature in K no mixture of these components has two phases
// (docs/phase_equilibria.md, "H rises"): R·T = largestB·densestA²/2.
double HottestT(const Mixture& mixture);

// Below this temperature in K coefficients of fugacity in a dense phase leave e^±227.
double ColdestT(const Mixture& mixture);

// Below this temperature in K nothing is calculated of coexisting phases at all; every fluid that
// has a volume in doubles would split there.
double AbsurdT(const Mixture& mixture);

}  // namespace fluid
