#include "model/mixture.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "model/state.h"

namespace fluid {

Blend BlendOf(const Mixture& mixture, const ComponentValues& x) {
    Blend blend;
    double defect = 0.0;
    for (std::size_t i = 0; i < mixture.count; ++i) {
        blend.b += x[i] * mixture.b[i];
        blend.aRoot += x[i] * mixture.aRoot[i];
        defect += x[i] * x[i] * mixture.aRootDefect[i];
    }
    // With a_kl = sqrt(a_kk·a_ll) the double sum is the square of one sum; the defects restore
    // what the rounded roots miss on the diagonal.
    blend.a = blend.aRoot * blend.aRoot + defect;
    return blend;
}

ComponentValues Attractions(const Mixture& mixture) {
    const Blend blend = BlendOf(mixture, mixture.fractions);
    ComponentValues attractions{};
    for (std::size_t i = 0; i < mixture.count; ++i) {
        attractions[i] = AttractionOf(mixture, mixture.fractions, blend, i);
    }
    return attractions;
}

Mixture WithFractions(const Mixture& of, const ComponentValues& fractions) {
    Mixture mixture = of;
    mixture.fractions = fractions;
    mixture.difference = {};
    mixture.molarMass = 0.0;
    mixture.bMix = mixture.aRootMix = 0.0;
    double sum = 0.0;
    for (std::size_t i = 0; i < of.count; ++i) sum += fractions[i];
    // Fractions that add up to one but for rounding stay as they are.
    constexpr double rounding = 1e-14;
    if (std::abs(sum - 1.0) < rounding) sum = 1.0;
    for (std::size_t i = 0; i < of.count; ++i) {
        mixture.z[i] = fractions[i] / sum;
        mixture.bMix += mixture.z[i] * of.b[i];
        mixture.aRootMix += mixture.z[i] * of.aRoot[i];
        mixture.molarMass += fractions[i] * of.M[i];
        for (std::size_t j = 0; j < i; ++j) {
            const double pair = of.aRoot[i] * of.b[j] - of.b[i] * of.aRoot[j];
            mixture.difference[i] += mixture.z[j] * pair;
            mixture.difference[j] -= mixture.z[i] * pair;
        }
    }
    const Blend blend = BlendOf(of, fractions);
    mixture.attraction = blend.a;
    mixture.covolume = blend.b;
    return mixture;
}

Mixture MixtureOf(std::int32_t lastComponent, std::span<const double> fractions) {
    Mixture mixture;
    mixture.count = static_cast<std::size_t>(lastComponent) + 1;
    assert(mixture.count <= componentCount && mixture.count <= fractions.size());
    ComponentValues x{};
    for (std::size_t i = 0; i < mixture.count; ++i) {
        x[i] = fractions[i];
        mixture.index[i] = ComponentIndex[i];
        mixture.M[i] = M[i];
        mixture.b[i] = b[i];
        mixture.aRoot[i] = aRoot[i];
        mixture.aRootDefect[i] = aRootDefect[i];
        mixture.densestA = std::max(mixture.densestA, aRoot[i] / b[i]);
        mixture.largestB = std::max(mixture.largestB, b[i]);
        mixture.largestARoot = std::max(mixture.largestARoot, aRoot[i]);
    }
    return WithFractions(mixture, x);
}

double MolarVolumeFromDensity(const Mixture& mixture, double rho) {
    return rho > 0.0 ? mixture.molarMass / rho : 0.0;
}

double HottestT(const Mixture& mixture) {
    return mixture.densestA * mixture.densestA * mixture.largestB / (2.0 * R);
}

double ColdestT(const Mixture& mixture) {
    return 2.0 * mixture.largestARoot * mixture.densestA / (R * largestLogPhi);
}

}  // namespace fluid
