#include "model/homogenisation.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "model/cubic.h"
#include "model/phase_path.h"
#include "model/phase_roots.h"
#include "model/stability_walk.h"
#include "model/trial_phase.h"
#include "model/van_der_waals.h"

namespace fluid {

namespace {

// Beyond this pressure in MPa V - b has not the digits for an equilibrium.
constexpr double HighestP = 1e4;

PhasePair PairOf(const Mixture& mixture, const Transition& transition) {
    const ComponentValues other = FractionsOf(mixture, transition.bulk, transition.trial);
    const double volume = transition.trial.volume();
    PhasePair pair;
    pair.T = transition.bulk.T;
    pair.P = transition.bulk.P;
    const bool bubble = volume > transition.bulk.V;
    pair.x = bubble ? mixture.z : other;
    pair.y = bubble ? other : mixture.z;
    pair.Vx = bubble ? transition.bulk.V : volume;
    pair.Vy = bubble ? volume : transition.bulk.V;
    return pair;
}

// The transition as a function of P instead of V, which has the digits of a small pressure.
Transition Polished(const Mixture& mixture, const Transition& found) {
    const PressureLine line(mixture, found.bulk.T, found.bulk.V);
    const TrialPhase& trial = found.trial;
    const bool dilute = trial.concentration * found.bulk.V < 1.0;
    const double P = dilute ? found.bulk.RT * trial.u - trial.A * trial.A : found.bulk.P;
    if (!(P > 0.0)) return found;
    constexpr double Reach = 0.1;
    const double at = std::log(P);
    return FindTransition(mixture, line, at - Reach, at + Reach, at, trial).value_or(found);
}

// Whether the roots that the two phases of an equilibrium take by rule are these volumes. A second
// liquid beside which its composition has a vapour root too is none that can be told from it.
bool TakesItsRoots(const Mixture& mixture, const PhasePair& pair) {
    const auto takes = [&](const ComponentValues& x, double V, auto choice) {
        const auto last = static_cast<std::int32_t>(mixture.count) - 1;
        const double bMix = MixtureB(last, x);
        const CubicRoots roots = VolumeCubicSolver(MixtureA(last, x), bMix, pair.T, pair.P);
        constexpr double Same = 1e-6;
        return std::abs(choice(roots, bMix) / V - 1.0) < Same;
    };
    return takes(pair.x, pair.Vx, LiquidRoot) && takes(pair.y, pair.Vy, VapourRoot);
}

HomogenisationPoints Points(const Mixture& mixture, const StabilityWalk& walk, bool polish,
                            Homogenisation kind) {
    HomogenisationPoints result;
    for (const Transition& found : walk.transitions()) {
        const bool bubble = found.trial.volume() > found.bulk.V;
        if (bubble != (kind == Homogenisation::IntoLiquid)) continue;
        if (result.count == HomogenisationPoints::Capacity) break;
        const PhasePair pair = PairOf(mixture, polish ? Polished(mixture, found) : found);
        const bool shown = pair.P <= HighestP && TakesItsRoots(mixture, pair);
        if (shown) result.points[result.count++] = pair;
    }
    return result;
}

HomogenisationPoints AtTemperature(const Mixture& mixture, double T, Homogenisation kind) {
    if (!(T > ColdestT(mixture) && T < HottestT(mixture))) return {};
    const Isotherm path(mixture, T);
    StabilityWalk walk(mixture, path);
    constexpr double Densest = 40.0;
    WalkIsotherm(mixture, Densest, HighestP, walk);
    return Points(mixture, walk, true, kind);
}

HomogenisationPoints AtPressure(const Mixture& mixture, double P, Homogenisation kind) {
    if (P > HighestP) return {};
    const Isobar path(mixture, P);
    StabilityWalk walk(mixture, path);
    const double coldest = -std::log(ColdestT(mixture));
    double at = -std::log(HottestT(mixture));
    const std::optional<Stop> stop = walk.look(at);
    if (!stop) return {};
    walk.startAt(*stop);
    while (at < coldest) {
        constexpr double Step = 0.15;
        at = std::min(coldest, at + StrideFrom(mixture, walk.last(), Step));
        walk.go(at);
    }
    return Points(mixture, walk, false, kind);
}

}  // namespace

HomogenisationPoints FindHomogenisationPoints(std::int32_t lastComponent,
                                              std::span<const double> fractions, Given given,
                                              double value, Homogenisation kind) {
    if (lastComponent < 0 || !(value > 0.0) || !std::isfinite(value)) return {};
    const Mixture mixture = MixtureOf(lastComponent, fractions);
    return given == Given::Temperature ? AtTemperature(mixture, value, kind)
                                       : AtPressure(mixture, value, kind);
}

}  // namespace fluid
