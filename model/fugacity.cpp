#include "model/fugacity.h"

#include <array>
#include <cassert>
#include <cmath>

namespace fluid {

ComponentValues ComponentAttraction(const Mixture& mixture) {
    // As in the mixture's a, a_ij is the product of two roots but for the defects on the diagonal.
    double rootSum = 0.0;
    for (std::size_t j = 0; j < mixture.count; ++j) {
        rootSum += mixture.fractions[j] * mixture.aRoot[j];
    }
    ComponentValues attraction{};
    for (std::size_t i = 0; i < mixture.count; ++i) {
        attraction[i] =
            2.0 * (mixture.aRoot[i] * rootSum + mixture.fractions[i] * mixture.aRootDefect[i]);
    }
    return attraction;
}

ComponentValues ComponentAttraction(std::int32_t n, std::span<const double> x) {
    return ComponentAttraction(MixtureOf(n, x));
}

ComponentValues ComponentCovolumes(std::int32_t n) {
    return MixtureOf(n, ComponentValues{}).b;
}

ComponentValues FugacityCoefficients(std::int32_t n, double bMix, std::span<const double> A,
                                     std::span<const double> B, double T, double P, double V) {
    const auto count = static_cast<std::size_t>(n) + 1;
    assert(count <= ComponentCount && count <= A.size() && count <= B.size());
    ComponentValues coefficients{};
    for (std::size_t i = 0; i < count; ++i) coefficients[i] = 1.0;
    if (!(P != 0.0 && T > 0.0 && V > bMix)) return coefficients;
    constexpr double LogLimit = 227.0;
    const double RT = R * T;
    const double free = V - bMix;
    // Z·(1 - b/V) is P·(V - b)/(R·T): one logarithm, near 0 at low density, nothing cancels.
    const double logFree = std::log(P / RT * free);
    for (std::size_t i = 0; i < count; ++i) {
        const double logPhi = B[i] / free - A[i] / (RT * V) - logFree;
        if (std::abs(logPhi) < LogLimit) coefficients[i] = std::exp(logPhi);
    }
    return coefficients;
}

ComponentValues FugacityCoefficients(const Mixture& mixture, double T, double P, double V) {
    const auto last = static_cast<std::int32_t>(mixture.count) - 1;
    return FugacityCoefficients(last, mixture.covolume, ComponentAttraction(mixture), mixture.b, T,
                                P, V);
}

double PureFugacityCoefficient(const Mixture& mixture, std::size_t k, double T, double P,
                               double V) {
    const std::array attraction = {2.0 * mixture.pureA(k)};
    const std::array covolume = {mixture.b[k]};
    return FugacityCoefficients(0, mixture.b[k], attraction, covolume, T, P, V)[0];
}

ComponentValues PureFugacities(const Mixture& mixture, double T, double P,
                               std::span<const double> V) {
    assert(mixture.count <= V.size());
    ComponentValues fugacities{};
    for (std::size_t k = 0; k < mixture.count; ++k) {
        fugacities[k] = PureFugacityCoefficient(mixture, k, T, P, V[k]) * P;
    }
    return fugacities;
}

}  // namespace fluid
