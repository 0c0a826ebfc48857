#include "model/spinodal.h"

#include <algorithm>
#include <cmath>

#include "model/polynomial.h"

namespace fluid {

namespace {

// Both spinodals are R·T·(w + b)³ = 2·(square·w² + 2·mixed·w + constant), w = V - b, in which
// nothing cancels near b: V·√a_i - b_i·√a = √a_i·w + d_i with d_i = √a_i·b - b_i·√a, the
// differences of the components from the mixture, which for the mechanical spinodal count nothing.
struct Spinodal {
    double b = 0.0;
    double square = 0.0;    // MPa·cm6/mol2
    double mixed = 0.0;     // MPa·cm9/mol3
    double constant = 0.0;  // MPa·cm12/mol4

    double temperature(double V) const;
    SpinodalVolumes volumes(double T) const;
};

double Spinodal::temperature(double V) const {
    const double w = V - b;
    if (!(w > 0.0)) return 0.0;
    const double v = w / V;
    const double inverse = 1.0 / V;
    const double sum = square * v * v + 2.0 * mixed * v * inverse + constant * inverse * inverse;
    return 2.0 * sum / (R * V);
}

SpinodalVolumes Spinodal::volumes(double T) const {
    SpinodalVolumes result;
    if (!(T > 0.0) || !std::isfinite(T) || !(b > 0.0)) return result;
    const double q = 2.0 / (R * T * b);
    // in w/b
    const std::array<double, 4> c = {1.0 - q * constant / (b * b), 3.0 - 2.0 * q * mixed / b,
                                     3.0 - q * square, 1.0};
    for (const double w : PositiveRoots(c)) {
        const double V = b + b * w;
        if (V > b && result.count < result.volumes.size()) result.volumes[result.count++] = V;
    }
    return result;
}

Spinodal DiffusionalOf(const Mixture& mixture) {
    if (mixture.count == 0) return {};
    Spinodal spinodal{mixture.bMix, 0.0, 0.0, 0.0};
    for (std::size_t i = 0; i < mixture.count; ++i) {
        const double s = mixture.aRoot[i];
        const double d = mixture.difference[i];
        spinodal.square += mixture.z[i] * s * s;
        spinodal.mixed += mixture.z[i] * s * d;
        spinodal.constant += mixture.z[i] * d * d;
    }
    return spinodal;
}

Spinodal MechanicalOf(const Mixture& mixture) {
    if (mixture.count == 0) return {};
    return {mixture.bMix, mixture.aRootMix * mixture.aRootMix, 0.0, 0.0};
}

}  // namespace

SpinodalVolumes DiffusionalSpinodal(const Mixture& mixture, double T) {
    return DiffusionalOf(mixture).volumes(T);
}

SpinodalVolumes MechanicalSpinodal(const Mixture& mixture, double T) {
    return MechanicalOf(mixture).volumes(T);
}

double DiffusionalSpinodalTemperature(const Mixture& mixture, double V) {
    return DiffusionalOf(mixture).temperature(V);
}

double MechanicalSpinodalTemperature(const Mixture& mixture, double V) {
    return MechanicalOf(mixture).temperature(V);
}

}  // namespace fluid
