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
