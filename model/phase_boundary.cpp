#include "model/phase_boundary.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "model/phase_path.h"
#include "model/stability_walk.h"

namespace fluid {

namespace {

// The pressure stands in both phases; the more dilute one has its digits.
BoundaryPoint PointOf(const Transition& transition) {
    const BulkState& bulk = transition.bulk;
    const TrialPhase& trial = transition.trial;
    const bool dilute = trial.concentration * bulk.V < 1.0;
    const double P = dilute ? bulk.RT * trial.u - trial.A * trial.A : bulk.P;
    return {bulk.T, P, bulk.V, trial.volume()};
}

// The temperature in K below which the mixture splits by itself at the volume of this state.
double SpinodalTemperature(const Mixture& mixture, const BulkState& bulk) {
    return bulk.T * BulkSlope(mixture, bulk);
}

// The temperature in K at which the pressure is 0 at the volume of this state.
double UnpressedTemperature(const BulkState& bulk) {
    return bulk.A * bulk.A / (R * bulk.u);
}

// The boundary of a cold liquid, which at the temperature T of pressure 0 coexists with a vapour so
// dilute that it is an ideal gas: P/RT = sum of z_i·u·exp(b_i·u - k·s_i·A).
BoundaryPoint BesideDiluteVapour(const Mixture& mixture, double T, double V) {
    const BulkState bulk = BulkAt(mixture, T, V - mixture.bMix);
    double concentration = 0.0;
    for (std::size_t i = 0; i < mixture.count; ++i) {
        const double exponent = mixture.b[i] * bulk.u - bulk.k * mixture.aRoot[i] * bulk.A;
        concentration += mixture.z[i] * bulk.u * std::exp(exponent);
    }
    return {T * (1.0 + concentration / bulk.u), bulk.RT * concentration, V, 1.0 / concentration};
}

}  // namespace

bool BoundaryPoint::isCritical() const {
    constexpr double Alike = 1e-5;
    return std::abs(otherV / V - 1.0) < Alike;
}

std::optional<BoundaryPoint> FindBoundary(std::int32_t lastComponent,
                                          std::span<const double> fractions, double V) {
    if (lastComponent < 0 || !std::isfinite(V)) return {};
    const Mixture mixture = MixtureOf(lastComponent, fractions);
    if (!(V > mixture.bMix)) return {};
    const Isochore path(mixture, V);
    StabilityWalk walk(mixture, path);
    const double hottest = -std::log(HottestT(mixture));
    const auto hot = walk.look(hottest);
    if (!hot) return {};
    // A little below the spinodal, and at negative pressures, the mixture is known to be unstable.
    constexpr double Below = 1e-6;
    const double spinodal = SpinodalTemperature(mixture, hot->bulk);
    const double unpressed = UnpressedTemperature(hot->bulk);
    const double coldest = ColdestT(mixture);
    const double cold = std::max(coldest, (1.0 - Below) * std::max(spinodal, unpressed));
    walk.startAt(*hot);
    walk.go(-std::log(cold));
    if (!walk.transitions().empty()) {
        const BoundaryPoint point = PointOf(walk.transitions().front());
        if (point.T >= spinodal) return point;
    }
    if (std::max(spinodal, unpressed) <= coldest) return {};
    if (unpressed > spinodal) return BesideDiluteVapour(mixture, unpressed, V);
    const BulkState critical = BulkAt(mixture, spinodal, V - mixture.bMix);
    return BoundaryPoint{spinodal, critical.P, V, V};
}

IsothermStability::IsothermStability(std::int32_t lastComponent, std::span<const double> fractions,
                                     double T, double smallestV)
    : mixture_(MixtureOf(lastComponent, fractions)), T_(T), isKnown_(T > ColdestT(mixture_)) {
    if (!isKnown_ || T >= HottestT(mixture_) || !(smallestV > mixture_.bMix)) return;
    const Isotherm path(mixture_, T);
    StabilityWalk walk(mixture_, path);
    const double densest = -std::log(smallestV / mixture_.bMix - 1.0);
    isGasStable_ = WalkIsotherm(mixture_, densest, std::numeric_limits<double>::infinity(), walk);
    for (const Transition& transition : walk.transitions()) {
        boundaries_[count_++] = PointOf(transition);
    }
}

Stability IsothermStability::at(double V) const {
    const BulkState bulk = BulkAt(mixture_, T_, V - mixture_.bMix);
    if (BulkSlope(mixture_, bulk) > 1.0) return Stability::Unstable;
    if (!isKnown_) return Stability::Unknown;
    bool stable = isGasStable_;
    for (const BoundaryPoint& point : boundaries()) {
        // On the boundary itself it is stable still.
        if (stable ? V < point.V : V <= point.V) stable = !stable;
    }
    return stable ? Stability::Stable : Stability::Metastable;
}

}  // namespace fluid
