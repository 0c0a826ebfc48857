#include "model/homogenisation.h"

#include <cmath>

#include "model/phase_boundary.h"
#include "model/state.h"

namespace fluid {

bool TakesItsRoots(const Mixture& mixture, const PhasePair& pair) {
    const auto takes = [&](const ComponentValues& x, double V, PhaseRoot root) {
        constexpr double same = 1e-6;  // even a double root is known to 1e-8
        return std::abs(PhaseState(mixture, x, pair.T, pair.P, root).V / V - 1.0) < same;
    };
    return takes(pair.x, pair.Vx, PhaseRoot::Smallest) &&
           takes(pair.y, pair.Vy, PhaseRoot::Largest);
}

bool AreTwoLiquids(const Mixture& mixture, const PhasePair& pair) {
    const auto isLiquid = [&](const ComponentValues& x, double V) {
        return PhaseState(mixture, x, pair.T, V).isLiquid();
    };
    return isLiquid(pair.x, pair.Vx) && isLiquid(pair.y, pair.Vy);
}

HomogenisationPoints FindHomogenisationPoints(const Mixture& mixture, Given given, double value,
                                              Homogenisation kind) {
    // Beyond this pressure in MPa V - b has not the digits for an equilibrium.
    constexpr double highestP = 1e4;
    HomogenisationPoints result;
    if (mixture.count == 0 || !(value > 0.0) || !std::isfinite(value)) return result;
    const PhaseBoundary& boundary = BoundaryOf(mixture);
    const bool byT = given == Given::Temperature;
    const auto samples = byT ? boundary.atTemperature(value) : boundary.atPressure(value);
    result.isExamined = byT ? value > ColdestT(mixture) : value > boundary.coldestP();
    for (const BoundarySample& sample : samples) {
        const BoundaryPoint point = PointOf(mixture, sample);
        if (point.kind() != kind) continue;
        if (point.P > highestP) {
            result.isExamined = false;
            continue;
        }
        PhasePair pair = PairOf(mixture, sample);
        (byT ? pair.T : pair.P) = value;
        (TakesItsRoots(mixture, pair) ? result.points : result.liquids).push_back(pair);
    }
    return result;
}

}  // namespace fluid
