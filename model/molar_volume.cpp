#include "model/molar_volume.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>

#include "model/cubic.h"
#include "model/state.h"

namespace fluid {

double IsothermSlope(double aMix, double bMix, double T, double V, double h) {
    const double free = V - bMix;
    const double spread = (V - h) * (V + h);
    const double quotient = 2.0 * aMix / spread * (V / spread) - R * T / (free - h) / (free + h);
    if (!(V > 0.0)) return quotient;
    // dP/dV = [2a·((V - b)/V)² - R·T·V]/(V·(V - b)²)
    const double share = free / V;
    const double rise = 2.0 * aMix * share * share - R * T * V;
    if (rise == 0.0) return 0.0;
    for (const double slope : {quotient, rise / V / free / free}) {
        if (std::isfinite(slope) && slope * std::copysign(1.0, rise) > 0.0) return slope;
    }
    return std::copysign(std::numeric_limits<double>::denorm_min(), rise);
}

std::optional<ComponentValues> PartialMolarVolumes(const Mixture& mixture, double T, double V) {
    if (!(V > 0.0 && T > 0.0)) return {};
    const PhaseState state(mixture, mixture.fractions, T, V);
    const double aMix = state.blend.a;
    const double share = state.free / V;
    const double k = share * share / state.RT;
    const double divisor = 1.0 - 2.0 * aMix * k / V;
    if (divisor == 0.0) return {};
    ComponentValues volumes{};
    for (std::size_t i = 0; i < mixture.count; ++i) {
        const double excess =
            (mixture.b[i] - state.blend.b) - (state.attraction(i) - 2.0 * aMix) * k;
        volumes[i] = V + excess / divisor;
        if (!std::isfinite(volumes[i])) return {};
    }
    return volumes;
}

double PureGasRoot(double r0, double r1, double r2) {
    double root = 0.0;
    if (r0 <= 0.0 && r1 <= 0.0) root = r2;
    if (r0 <= 0.0 && r2 <= 0.0) root = r1;
    if (r1 <= 0.0 && r2 <= 0.0) root = r0;
    return root == 0.0 ? std::max({r0, r1, r2}) : root;
}

PureGas PureGasVolume(const Mixture& mixture, std::size_t k, double T, double P) {
    const CubicRoots roots = VolumeCubicSolver(mixture.pureA(k), mixture.b[k], T, P);
    const auto realPart = [](const CubicRoot& root) { return root.isReal() ? root.real : 0.0; };
    const double r0 = realPart(roots[0]);
    const double r1 = realPart(roots[1]);
    const double r2 = realPart(roots[2]);
    return {PureGasRoot(r0, r1, r2), r0 > 0.0 && r1 > 0.0 && r2 > 0.0};
}

bool IsLiquidStable(double aMix, double T, double P, double liquid, double vapour) {
    // ln phi of the liquid less that of the vapour, V - b taken from R·T/(V - b) = P + a/V²
    const double work = P * (liquid - vapour) - aMix * (1.0 / liquid - 1.0 / vapour);
    const double ratio = (P + aMix / (liquid * liquid)) / (P + aMix / (vapour * vapour));
    return work / (R * T) + std::log(ratio) < 0.0;
}

PureGas PureGasVolumeBeside(const Mixture& mixture, std::size_t k, double T, double P,
                            std::optional<std::size_t> rank) {
    const CubicRoots roots = VolumeCubicSolver(mixture.pureA(k), mixture.b[k], T, P);
    if (!roots[1].isReal()) return {roots[0].real, false};
    const bool isLiquid = IsLiquidStable(mixture.pureA(k), T, P, roots[1].real, roots[2].real);
    const std::size_t chosen = rank ? *rank : isLiquid ? 1 : 2;
    return {roots[chosen].real, roots[chosen].real > 0.0};
}

double IdealMixtureVolume(const Mixture& mixture, std::span<const double> pureVolumes) {
    assert(mixture.count <= pureVolumes.size());
    double volume = 0.0;
    for (std::size_t k = 0; k < mixture.count; ++k) {
        volume += mixture.fractions[k] * pureVolumes[k];
    }
    return volume;
}

}  // namespace fluid
