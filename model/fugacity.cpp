#include "model/fugacity.h"

#include <array>
#include <cassert>
#include <cmath>

namespace fluid {

ComponentValues ComponentAttraction(std::int32_t n, std::span<const double> x) {
    const auto count = static_cast<std::size_t>(n) + 1;
    assert(count <= ComponentCount && count <= x.size());
    // As in MixtureA: a_ij is the product of two roots but for the defects on the diagonal.
    double rootSum = 0.0;
    for (std::size_t j = 0; j < count; ++j) rootSum += x[j] * aRoot[j];
    ComponentValues attraction{};
    for (std::size_t i = 0; i < count; ++i) {
        attraction[i] = 2.0 * (aRoot[i] * rootSum + x[i] * aRootDefect[i]);
    }
    return attraction;
}

ComponentValues ComponentCovolumes(std::int32_t n) {
    const auto count = static_cast<std::size_t>(n) + 1;
    assert(count <= ComponentCount);
    ComponentValues covolumes{};
    for (std::size_t i = 0; i < count; ++i) covolumes[i] = b[i];
    return covolumes;
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

double PureFugacityCoefficient(std::size_t k, double T, double P, double V) {
    const std::array attraction = {2.0 * a[k][k]};
    return FugacityCoefficients(0, b[k], attraction, std::span(b).subspan(k, 1), T, P, V)[0];
}

ComponentValues PureFugacities(std::int32_t n, double T, double P, std::span<const double> V) {
    const auto count = static_cast<std::size_t>(n) + 1;
    assert(count <= ComponentCount && count <= V.size());
    ComponentValues fugacities{};
    for (std::size_t k = 0; k < count; ++k) {
        fugacities[k] = PureFugacityCoefficient(k, T, P, V[k]) * P;
    }
    return fugacities;
}

}  // namespace fluid
