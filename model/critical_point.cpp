#include "model/critical_point.h"

#include <cassert>

#include "model/polynomial.h"
#include "model/trial_phase.h"

namespace fluid {

namespace {

// The components in units of the mixture: s_i = √a_i/√a, b_i/b, and d_i = s_i - b_i/b, without
// cancellation. With w = V/b - 1, s_i·w + d_i is what the derivatives of the Helmholtz energy are
// made of.
struct Reduced {
    std::size_t count = 0;
    ComponentValues x{};
    ComponentValues s{};
    ComponentValues b{};
    ComponentValues d{};
};

Reduced ReducedOf(const Mixture& mixture) {
    Reduced reduced;
    reduced.count = mixture.count;
    reduced.x = mixture.z;
    const double perB = 1.0 / mixture.bMix;
    const double perRoot = 1.0 / mixture.aRootMix;
    for (std::size_t i = 0; i < mixture.count; ++i) {
        reduced.s[i] = mixture.aRoot[i] * perRoot;
        reduced.b[i] = mixture.b[i] * perB;
        reduced.d[i] = mixture.difference[i] * perB * perRoot;
    }
    return reduced;
}

// V·<t³> - 3·<b·t>·<t²> for t_i = s_i·w + d_i as a polynomial in w.
std::array<double, 5> CriticalCondition(const Reduced& of) {
    double bs = 0.0, bd = 0.0;
    double ss = 0.0, sd = 0.0, dd = 0.0;
    double sss = 0.0, ssd = 0.0, sdd = 0.0, ddd = 0.0;
    for (std::size_t i = 0; i < of.count; ++i) {
        const double s = of.s[i];
        const double d = of.d[i];
        const double xs = of.x[i] * s;
        const double xd = of.x[i] * d;
        bs += of.b[i] * xs;
        bd += of.b[i] * xd;
        ss += xs * s;
        sd += xs * d;
        dd += xd * d;
        sss += xs * s * s;
        ssd += xs * s * d;
        sdd += xs * d * d;
        ddd += xd * d * d;
    }
    return {ddd - 3.0 * bd * dd, 3.0 * sdd + ddd - 3.0 * bs * dd - 6.0 * bd * sd,
            3.0 * ssd + 3.0 * sdd - 6.0 * bs * sd - 3.0 * bd * ss, sss + 3.0 * ssd - 3.0 * bs * ss,
            sss};
}

CriticalPoint PointAt(const Mixture& mixture, const Reduced& of, double w) {
    double square = 0.0;
    double fourth = 0.0;
    double mixed = 0.0;
    double covolumes = 0.0;
    for (std::size_t i = 0; i < of.count; ++i) {
        const double t = of.s[i] * w + of.d[i];
        const double xtt = of.x[i] * t * t;
        square += xtt;
        fourth += xtt * t * t;
        mixed += of.b[i] * xtt;
        covolumes += of.x[i] * of.b[i] * of.b[i];
    }
    const double v = 1.0 + w;
    CriticalPoint point;
    point.freeVolume = mixture.bMix * w;
    point.V = mixture.bMix + point.freeVolume;
    const double A = mixture.aRootMix / point.V;
    const double RT = 2.0 * A * A * square / v * mixture.bMix;
    point.T = RT / R;
    point.P = RT / point.freeVolume - A * A;
    // k²·<q⁴> - 6·k·<b·q²> + 3·<b²> with k = V/<q²>, in units of b²
    const double k = v / square;
    point.isLocallyStable = k * k * fourth - 6.0 * k * mixed + 3.0 * covolumes < 0.0;
    return point;
}

}  // namespace

CriticalPoints FindCriticalPoints(const Mixture& mixture) {
    CriticalPoints result;
    if (mixture.count == 0) return result;
    const Reduced reduced = ReducedOf(mixture);
    for (const double w : PositiveRoots(CriticalCondition(reduced))) {
        assert(result.count < result.points.size());  // the condition is of the fourth degree
        result.points[result.count++] = PointAt(mixture, reduced, w);
    }
    return result;
}

Stability CriticalStability(const Mixture& mixture, const CriticalPoint& point) {
    if (!point.isLocallyStable) return Stability::Unstable;
    if (point.T <= ColdestT(mixture)) return Stability::Unknown;
    const bool isStable = TrialCurve(mixture, point.freeVolume).isHighest(R * point.T);
    return isStable ? Stability::Stable : Stability::Metastable;
}

PseudoCriticalPoint FindPseudoCriticalPoint(const Mixture& mixture) {
    if (mixture.count == 0) return {};
    const double aMix = mixture.attraction;
    const double bMix = mixture.covolume;
    return {8.0 * aMix / (27.0 * bMix * R), aMix / (27.0 * bMix * bMix), 3.0 * bMix};
}

}  // namespace fluid
