#include "model/mixture.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace fluid {

Mixture WithFractions(const Mixture& of, const ComponentValues& fractions) {
    Mixture mixture = of;
    mixture.z = fractions;
    mixture.difference = {};
    mixture.bMix = mixture.aRootMix = 0.0;
    for (std::size_t i = 0; i < of.count; ++i) {
        mixture.bMix += mixture.z[i] * of.b[i];
        mixture.aRootMix += mixture.z[i] * of.aRoot[i];
        for (std::size_t j = 0; j < i; ++j) {
            const double pair = of.aRoot[i] * of.b[j] - of.b[i] * of.aRoot[j];
            mixture.difference[i] += mixture.z[j] * pair;
            mixture.difference[j] -= mixture.z[i] * pair;
        }
    }
    return mixture;
}

Mixture MixtureOf(std::int32_t lastComponent, std::span<const double> fractions) {
    Mixture mixture;
    mixture.count = static_cast<std::size_t>(lastComponent) + 1;
    assert(mixture.count <= ComponentCount && mixture.count <= fractions.size());
    double sum = 0.0;
    for (std::size_t i = 0; i < mixture.count; ++i) sum += fractions[i];
    // Fractions that add up to one but for rounding stay as they were typed.
    constexpr double Rounding = 1e-14;
    if (std::abs(sum - 1.0) < Rounding) sum = 1.0;
    ComponentValues z{};
    for (std::size_t i = 0; i < mixture.count; ++i) {
        z[i] = fractions[i] / sum;
        mixture.b[i] = b[i];
        mixture.aRoot[i] = aRoot[i];
        mixture.densestA = std::max(mixture.densestA, aRoot[i] / b[i]);
        mixture.largestB = std::max(mixture.largestB, b[i]);
        mixture.largestARoot = std::max(mixture.largestARoot, aRoot[i]);
    }
    return WithFractions(mixture, z);
}

double HottestT(const Mixture& mixture) {
    return mixture.densestA * mixture.densestA * mixture.largestB / (2.0 * R);
}

double ColdestT(const Mixture& mixture) {
    constexpr double LargestExponent = 227.0;
    return 2.0 * mixture.largestARoot * mixture.densestA / (R * LargestExponent);
}

double AbsurdT(const Mixture& mixture) {
    constexpr double Share = 0.01;
    return Share * ColdestT(mixture);
}

}  // namespace fluid
