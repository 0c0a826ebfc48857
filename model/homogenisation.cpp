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

// Above this temperature no mixture of these components has two phases: H' is a variance of
// aRoot/b, at most densestA²/4, times k·largestB.
double HottestT(const Mixture& mixture) {
    return mixture.densestA * mixture.densestA * mixture.largestB / (2.0 * R);
}

// Below this temperature coefficients of fugacity in a dense phase leave e^±227.
double ColdestT(const Mixture& mixture) {
    constexpr double LargestExponent = 227.0;
    return 2.0 * mixture.largestARoot * mixture.densestA / (R * LargestExponent);
}

// The nearer the mixture is to splitting by itself, the shorter a two-phase range may be.
double Stride(const Mixture& mixture, const Stop& stop, double usual) {
    if (stop.unstable()) return usual;
    const double slope = BulkSlope(mixture, stop.bulk);
    constexpr double Near = 0.8;
    constexpr double Nearest = 0.95;
    return slope > Nearest ? 0.06 * usual : slope > Near ? 0.3 * usual : usual;
}

double IsothermStep(double at) {
    return at < -3.0 ? 1.5 : at < 2.0 ? 0.4 : 1.2;
}

HomogenisationPoints AtTemperature(const Mixture& mixture, double T, Homogenisation kind) {
    if (!(T > ColdestT(mixture) && T < HottestT(mixture))) return {};
    const Isotherm path(mixture, T);
    StabilityWalk walk(mixture, path);
    constexpr double Dilute = -10.0;
    constexpr double MostDilute = -250.0;
    double start = Dilute;
    std::optional<Stop> stop = walk.look(start);
    while (stop && stop->unstable() && start > MostDilute) {
        start += Dilute;
        stop = walk.look(start);
    }
    if (!stop) return {};
    walk.startAt(*stop);
    constexpr double Densest = 40.0;
    double at = start;
    while (at < Densest && walk.last().bulk.P < HighestP) {
        at += Stride(mixture, walk.last(), IsothermStep(at));
        walk.go(at);
    }
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
        at = std::min(coldest, at + Stride(mixture, walk.last(), Step));
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
