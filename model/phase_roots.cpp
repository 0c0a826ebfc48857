#include "model/phase_roots.h"

#include <cmath>

#include "model/van_der_waals.h"

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

bool TakesItsRoots(const PhasePair& pair) {
    const auto takes = [&](const ComponentValues& x, double V, auto choice) {
        // Positions without a component have a fraction of 0.
        constexpr auto last = static_cast<std::int32_t>(ComponentCount) - 1;
        const double bMix = MixtureB(last, x);
        const CubicRoots roots = VolumeCubicSolver(MixtureA(last, x), bMix, pair.T, pair.P);
        constexpr double Same = 1e-6;
        return std::abs(choice(roots, bMix) / V - 1.0) < Same;
    };
    return takes(pair.x, pair.Vx, LiquidRoot) && takes(pair.y, pair.Vy, VapourRoot);
}

}  // namespace fluid
