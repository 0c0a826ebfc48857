#include "model/phase_roots.h"

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

}  // namespace fluid
