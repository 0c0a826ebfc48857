#include "model/phase_roots.h"

#include <cmath>

namespace fluid {

double LiquidRoot(const CubicRoots& roots, double bMix) {
    double chosen = 0.0;
    for (const CubicRoot& root : roots) {
        const bool better = chosen == 0.0 || root.real < chosen;
        if (root.isReal() && root.real > bMix && better) chosen = root.real;
    }
    return chosen;
}

double VapourRoot(const CubicRoots& roots, double bMix) {
    double chosen = 0.0;
    for (const CubicRoot& root : roots) {
        if (root.isReal() && root.real > bMix && root.real > chosen) chosen = root.real;
    }
    return chosen;
}

bool IsLiquid(double aMix, double bMix, double T, double V) {
    return V < 3.0 * bMix && 27.0 * R * T * bMix < 8.0 * aMix;
}

bool AreTwoLiquids(const Mixture& mixture, const PhasePair& pair) {
    const auto isLiquid = [&](const ComponentValues& x, double V) {
        const Mixture phase = WithFractions(mixture, x);
        return IsLiquid(phase.attraction, phase.covolume, pair.T, V);
    };
    return isLiquid(pair.x, pair.Vx) && isLiquid(pair.y, pair.Vy);
}

bool TakesItsRoots(const Mixture& mixture, const PhasePair& pair) {
    const auto takes = [&](const ComponentValues& x, double V, auto choice) {
        const Mixture phase = WithFractions(mixture, x);
        const CubicRoots roots =
            VolumeCubicSolver(phase.attraction, phase.covolume, pair.T, pair.P);
        constexpr double Same = 1e-6;
        return std::abs(choice(roots, phase.covolume) / V - 1.0) < Same;
    };
    return takes(pair.x, pair.Vx, LiquidRoot) && takes(pair.y, pair.Vy, VapourRoot);
}

}  // namespace fluid
