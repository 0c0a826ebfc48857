#include "model/van_der_waals.h"

#include <cassert>
#include <cmath>

#include "model/state.h"

namespace fluid {

double MixtureA(std::int32_t lastComponent, std::span<const double> fractions) {
    return MixtureOf(lastComponent, fractions).attraction;
}

double MixtureB(std::int32_t lastComponent, std::span<const double> fractions) {
    return MixtureOf(lastComponent, fractions).covolume;
}

double MolarMass(std::int32_t lastComponent, std::span<const double> fractions) {
    return MixtureOf(lastComponent, fractions).molarMass;
}

double MolarVolumeFromDensity(std::int32_t lastComponent, std::span<const double> fractions,
                              double rho) {
    return MolarVolumeFromDensity(MixtureOf(lastComponent, fractions), rho);
}

double PressureVdW(double aMix, double bMix, double T, double V) {
    if (V == bMix) return 0.0;
    return R * T / (V - bMix) - aMix / (V * V);
}

double TemperatureVdW(double aMix, double bMix, double P, double V) {
    if (!(V > 0.0)) return 0.0;
    const double T = (P * V * V + aMix) * (V - bMix) / (R * V * V);
    // V² may have no room in a double.
    return std::isfinite(T) ? T : (P + aMix / V / V) * ((V - bMix) / R);
}

ComponentValues ComponentAttraction(std::int32_t n, std::span<const double> x) {
    return Attractions(MixtureOf(n, x));
}

ComponentValues ComponentCovolumes(std::int32_t n) {
    return MixtureOf(n, ComponentValues{}).b;
}

ComponentValues FugacityCoefficients(std::int32_t n, double bMix, std::span<const double> A,
                                     std::span<const double> B, double T, double P, double V) {
    const auto count = static_cast<std::size_t>(n) + 1;
    assert(count <= componentCount && count <= A.size() && count <= B.size());
    ComponentValues coefficients{};
    for (std::size_t i = 0; i < count; ++i) coefficients[i] = 1.0;
    if (!(P != 0.0 && T > 0.0 && V > bMix)) return coefficients;
    const State state({0.0, bMix, 0.0}, T, V);
    const double logFree = state.logFree(P);
    for (std::size_t i = 0; i < count; ++i) {
        const double logPhi = state.interaction(B[i], A[i]) - logFree;
        if (std::abs(logPhi) < largestLogPhi) coefficients[i] = std::exp(logPhi);
    }
    return coefficients;
}

ComponentValues FugacityCoefficients(const Mixture& mixture, double T, double P, double V) {
    const auto last = static_cast<std::int32_t>(mixture.count) - 1;
    return FugacityCoefficients(last, mixture.covolume, Attractions(mixture), mixture.b, T, P, V);
}

double PureFugacityCoefficient(const Mixture& mixture, std::size_t k, double T, double P,
                               double V) {
    const double A = 2.0 * mixture.pureA(k);
    const double B = mixture.b[k];
    return FugacityCoefficients(0, B, {&A, 1}, {&B, 1}, T, P, V)[0];
}

}  // namespace fluid
