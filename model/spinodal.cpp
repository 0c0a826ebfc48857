#include "model/spinodal.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "model/polynomial.h"

namespace fluid {

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
        assert(result.count < result.volumes.size());  // a cubic has three roots
        if (V > b) result.volumes[result.count++] = V;
    }
    return result;
}

Spinodal SpinodalOf(const Mixture& mixture, SpinodalKind kind) {
    Spinodal spinodal;
    spinodal.b = mixture.bMix;
    if (kind == SpinodalKind::Mechanical) spinodal.square = mixture.aRootMix * mixture.aRootMix;
    for (std::size_t i = 0; kind == SpinodalKind::Diffusional && i < mixture.count; ++i) {
        const double s = mixture.aRoot[i];
        const double d = mixture.difference[i];
        spinodal.square += mixture.z[i] * s * s;
        spinodal.mixed += mixture.z[i] * s * d;
        spinodal.constant += mixture.z[i] * d * d;
    }
    return spinodal;
}

}  // namespace fluid
