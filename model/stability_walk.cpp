#include "model/stability_walk.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace fluid {

namespace {

// The largest drive that may be rounding. Beside the bulk a drive falls with the square of the
// distance at least, and so does its rounding down to that of u.
double Noise(const BulkState& bulk, const TrialPhase& trial) {
    const double distance = (trial.A - bulk.A) / bulk.A;
    const double rounding = 4e-15 * std::max(bulk.u, trial.u) / trial.concentration;
    return 1e-9 * std::min(1.0, distance * distance) + rounding;
}

// Whether the tangent of the drive reaches 0 within a width, made longer for safety.
bool PointsToZero(const Stop& stop, double width, double safety) {
    return stop.best && stop.drive * stop.rate * width < 0.0 &&
           std::abs(stop.drive) < safety * std::abs(stop.rate * width);
}

// Whether the drive may reach 0 and come back between two stops. One that foretells it is enough,
// as another phase may lead at the other one; a weak word counts when none speaks against it.
bool MayReachZero(const Stop& from, const Stop& to) {
    const double width = to.at - from.at;
    if (PointsToZero(from, width, 1.0) || PointsToZero(to, -width, 1.0)) return true;
    constexpr double Safety = 2.0;
    const bool fromMay = !from.best || PointsToZero(from, width, Safety);
    const bool toMay = !to.best || PointsToZero(to, -width, Safety);
    return (from.best || to.best) && fromMay && toMay;
}

}  // namespace

bool Stop::unstable() const {
    return best && drive > Noise(bulk, *best);
}

std::optional<Transition> FindTransition(const Mixture& mixture, const Path& path, double low,
                                         double high, double at, TrialPhase trial) {
    constexpr int StepLimit = 30;
    constexpr double Enough = 1e-13;
    for (int i = 0; i < StepLimit; ++i) {
        const auto bulk = path.at(at);
        if (!bulk) return {};
        if (!ClimbToMaximum(mixture, *bulk, trial)) return {};
        constexpr double Apart = 1e-7;
        if (std::abs(trial.A - bulk->A) < Apart * bulk->A) return {};
        const double move = -trial.D / RateOfD(*bulk, path.rates(*bulk), trial);
        if (!(at + move >= low && at + move <= high)) return {};
        at += move;
        if (std::abs(move) <= Enough * std::max(1.0, std::abs(at))) {
            return Transition{at, *bulk, trial};
        }
    }
    return {};
}

Stop StabilityWalk::stopOf(double at, const BulkState& bulk, const TrialPhase& best) const {
    const double scale = bulk.RT * best.concentration;
    const double rate = RateOfD(bulk, path_.rates(bulk), best) / scale;
    return {at, bulk, best, Drive(bulk, best), rate};
}

std::optional<Stop> StabilityWalk::look(double at) const {
    const auto bulk = path_.at(at);
    if (!bulk) return {};
    const Maxima maxima = FindMaxima(mixture_, *bulk);
    const TrialPhase* const best = maxima.best(*bulk);
    return best != nullptr ? stopOf(at, *bulk, *best) : Stop{at, *bulk, {}, -1.0, 0.0};
}

// A stop known to be unstable by the phase that made its neighbour so, without a search.
std::optional<Stop> StabilityWalk::follow(double at, const TrialPhase& trial) const {
    constexpr double Plain = 0.02;
    const auto bulk = path_.at(at);
    TrialPhase phase = trial;
    if (!bulk || !ClimbToMaximum(mixture_, *bulk, phase)) return {};
    const Stop stop = stopOf(at, *bulk, phase);
    return stop.drive > Plain ? std::optional(stop) : std::nullopt;
}

void StabilityWalk::go(double at) {
    auto next = last_.unstable() ? follow(at, *last_.best) : std::nullopt;
    if (!next) next = look(at);
    if (!next) return;
    between(last_, *next, 0);
    last_ = *next;
}

void StabilityWalk::between(const Stop& from, const Stop& to, int depth) {
    if (from.unstable() != to.unstable()) {
        from.unstable() ? refine(to, from) : refine(from, to);
        return;
    }
    constexpr int DepthLimit = 10;
    if (depth == DepthLimit) return;
    if (depth == 0 && !from.unstable() && (switchRoots(from, to) || passCritical(from, to))) return;
    if (!MayReachZero(from, to)) return;
    const auto middle = look(0.5 * (from.at + to.at));
    if (!middle) return;
    between(from, *middle, depth + 1);
    between(*middle, to, depth + 1);
}

void StabilityWalk::refine(const Stop& stable, const Stop& unstable) {
    double outside = stable.at;
    Stop inside = unstable;
    constexpr int StepLimit = 60;
    for (int i = 0; i < StepLimit; ++i) {
        const double low = std::min(outside, inside.at);
        const double high = std::max(outside, inside.at);
        const auto zero = FindTransition(mixture_, path_, low, high, inside.at, *inside.best);
        const auto stop = look(zero ? zero->at : 0.5 * (low + high));
        if (!stop) return;
        if (stop->unstable()) {
            inside = *stop;
        } else if (zero) {
            keep(*zero);
            return;
        } else {
            outside = stop->at;
        }
        constexpr double Rounding = 4e-16;
        if (high - low < Rounding * std::abs(high)) break;
    }
    // Beside a critical point the two phases meet before their difference can be followed to 0.
    keep({inside.at, inside.bulk, *inside.best});
}

// Where the stable root of the volume jumps between two stops, as along an isobar of a pure gas,
// the mixture is unstable or just about to be. Returns whether it does.
bool StabilityWalk::switchRoots(const Stop& from, const Stop& to) {
    // Near a critical point the jump is small.
    constexpr double Near = 0.6;
    const double slope = std::max(BulkSlope(mixture_, from.bulk), BulkSlope(mixture_, to.bulk));
    const double jump = slope > Near ? 1.0005 : 1.2;
    constexpr int StepLimit = 60;
    double low = from.at;
    double high = to.at;
    double volumeLow = from.bulk.V;
    double volumeHigh = to.bulk.V;
    for (int i = 0; i < StepLimit; ++i) {
        if (volumeLow < jump * volumeHigh) return false;
        const double middle = 0.5 * (low + high);
        const auto bulk = path_.at(middle);
        if (!bulk) return false;
        const bool isLow = bulk->V * bulk->V > volumeLow * volumeHigh;
        (isLow ? low : high) = middle;
        (isLow ? volumeLow : volumeHigh) = bulk->V;
    }
    const auto vapour = look(low);
    const auto liquid = look(high);
    if (!vapour || !liquid || !vapour->best || !liquid->best) return false;
    if (liquid->unstable()) {
        refine(from, *liquid);
        refine(to, *liquid);
    } else {
        keep({vapour->at, vapour->bulk, *vapour->best});
        keep({liquid->at, liquid->bulk, *liquid->best});
    }
    return true;
}

// Beside a critical point the unstable range may be shorter than the distance of two stops, and
// there may be a second phase only near it. It lies about where the mixture comes nearest to
// splitting by itself: towards that place the stops are set ever more closely. Returns whether they
// were.
bool StabilityWalk::passCritical(const Stop& from, const Stop& to) {
    constexpr double NearlyCritical = 0.98;
    const Peak peak = findPeak(from, to);
    if (peak.slope < NearlyCritical) return false;
    constexpr double Ratio = 0.6;
    constexpr int Rungs = 13;
    Stop last = from;
    const auto visit = [&](double at) {
        const auto stop = at > last.at && at < to.at ? look(at) : std::nullopt;
        if (!stop) return;
        between(last, *stop, 1);
        last = *stop;
    };
    for (int i = 1; i <= Rungs; ++i) visit(peak.at + std::pow(Ratio, i) * (from.at - peak.at));
    visit(peak.at);
    for (int i = Rungs; i > 0; --i) visit(peak.at + std::pow(Ratio, i) * (to.at - peak.at));
    between(last, to, 1);
    return true;
}

// The largest BulkSlope between two stops, which has one maximum there at most, by golden sections.
StabilityWalk::Peak StabilityWalk::findPeak(const Stop& from, const Stop& to) const {
    const auto slope = [this](double at) {
        const auto bulk = path_.at(at);
        return bulk ? BulkSlope(mixture_, *bulk) : 0.0;
    };
    const Peak first = {from.at, BulkSlope(mixture_, from.bulk)};
    const Peak final = {to.at, BulkSlope(mixture_, to.bulk)};
    const auto higher = [](const Peak& x, const Peak& y) { return x.slope < y.slope; };
    constexpr double MayPeak = 0.8;
    if (std::max(first.slope, final.slope) < MayPeak) return std::max(first, final, higher);
    constexpr double Section = 0.3819660112501051;
    constexpr int StepLimit = 20;
    double low = from.at;
    double high = to.at;
    const auto at = [&](double share) {
        const double place = low + share * (high - low);
        return Peak{place, slope(place)};
    };
    Peak inner = at(Section);
    Peak outer = at(1.0 - Section);
    for (int i = 0; i < StepLimit; ++i) {
        if (inner.slope > outer.slope) {
            high = std::exchange(outer, inner).at;
            inner = at(Section);
        } else {
            low = std::exchange(inner, outer).at;
            outer = at(1.0 - Section);
        }
    }
    return std::max({first, final, inner, outer}, higher);
}

void StabilityWalk::keep(const Transition& transition) {
    if (count_ < Capacity) transitions_[count_++] = transition;
}

double StrideFrom(const Mixture& mixture, const Stop& stop, double usual) {
    if (stop.unstable()) return usual;
    const double slope = BulkSlope(mixture, stop.bulk);
    constexpr double Near = 0.8;
    constexpr double Nearest = 0.95;
    return slope > Nearest ? 0.06 * usual : slope > Near ? 0.3 * usual : usual;
}

bool WalkIsotherm(const Mixture& mixture, double densest, double highestP, StabilityWalk& walk) {
    constexpr double Dilute = -10.0;
    constexpr double MostDilute = -250.0;
    double at = Dilute;
    std::optional<Stop> stop = walk.look(at);
    while (stop && stop->unstable() && at > MostDilute) {
        at += Dilute;
        stop = walk.look(at);
    }
    if (!stop) return true;
    walk.startAt(*stop);
    while (at < densest && walk.last().bulk.P < highestP) {
        const double usual = at < -3.0 ? 1.5 : at < 2.0 ? 0.4 : 1.2;
        at = std::min(densest, at + StrideFrom(mixture, walk.last(), usual));
        walk.go(at);
    }
    return !stop->unstable();
}

}  // namespace fluid
