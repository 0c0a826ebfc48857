#include "model/fluid_state.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

#include "model/cubic.h"
#include "model/molar_volume.h"

namespace fluid {

namespace {

using Boundaries = std::span<const BoundaryPoint>;

bool IsCritical(const Mixture& mixture, double V, Boundaries boundaries) {
    // A triple root, but for the rounding of T and P.
    if (mixture.count == 1 && V == 3.0 * mixture.covolume) return true;
    constexpr double alike = 1e-5;
    return std::any_of(boundaries.begin(), boundaries.end(), [V](const BoundaryPoint& point) {
        return point.isCritical() && std::abs(point.V / V - 1.0) < alike;
    });
}

PhaseKind KindOf(const Mixture& mixture, const FluidState& state, Boundaries boundaries) {
    const double V = state.volumes[*state.stable].V;
    if (IsCritical(mixture, V, boundaries)) return PhaseKind::Critical;
    if (boundaries.empty()) {
        const BoundarySample* hottest = nullptr;
        for (const PhaseBoundary::Run& run : BoundaryOf(mixture).runs()) {
            for (const BoundarySample& sample : run) {
                if (hottest == nullptr || sample.lnT > hottest->lnT) hottest = &sample;
            }
        }
        const bool isDense = hottest != nullptr && std::log(state.P) > hottest->lnP;
        return isDense ? PhaseKind::Supercritical : PhaseKind::GasLike;
    }
    // From large to small volumes; the last one that is passed on the way to V.
    const BoundaryPoint* passed = nullptr;
    for (const BoundaryPoint& point : boundaries) {
        if (point.V >= V) passed = &point;
    }
    if (passed == nullptr || passed == &boundaries.front()) return PhaseKind::GasLike;
    return passed->kind() == Homogenisation::IntoLiquid ? PhaseKind::LiquidLike
                                                        : PhaseKind::Supercritical;
}

// Beside a boundary the pressure tells what a volume does not: a cold liquid hardly changes with
// it.
void JudgeByPressure(FluidState& state, Boundaries boundaries) {
    constexpr double alike = 1e-10;
    for (FluidState::Volume& volume : state.volumes) {
        for (std::size_t i = 0; i < boundaries.size(); ++i) {
            if (!(std::abs(volume.V / boundaries[i].V - 1.0) < alike)) continue;
            const bool isDilute = i % 2 == 0;  // the end of what is not stable
            const bool isStable =
                isDilute ? state.P <= boundaries[i].P : state.P >= boundaries[i].P;
            volume.stability = isStable ? Stability::Stable : Stability::Metastable;
        }
    }
}

// Of a pure gas: with one volume there is no question, of three it is the one of the lower
// fugacity. Beside its boundary the volumes alone would not tell.
void JudgePure(const Mixture& mixture, FluidState& state) {
    auto& volumes = state.volumes;
    const bool isOne = volumes.size() == 1;
    const bool isLiquid = !isOne && IsLiquidStable(mixture.attraction, state.T, state.P,
                                                   volumes.front().V, volumes.back().V);
    for (FluidState::Volume& volume : volumes) volume.stability = Stability::Unstable;
    volumes.front().stability = isLiquid || isOne ? Stability::Stable : Stability::Metastable;
    if (!isOne) volumes.back().stability = isLiquid ? Stability::Metastable : Stability::Stable;
}

// The two phases of a mixture at T and a pressure, over the molar volume of both together. Between
// two boundaries the pressure never rises with it.
class SplitSearch {
  public:
    SplitSearch(const Mixture& mixture, double T, double P) : mixture_(mixture), T_(T), P_(P) {}

    // Between the volumes of two boundaries; `dense` may be absent.
    std::optional<PhaseSplit> between(const BoundaryPoint* dense, const BoundaryPoint& dilute);

  private:
    struct End {
        double x;       // ln(V - b)
        double excess;  // ln(P/P_)
    };

    End endOf(const BoundaryPoint& point) const {
        return {std::log(point.V - mixture_.bMix), std::log(point.P / P_)};
    }
    // The excess of the pressure at a place, whose split is kept if it is the nearest so far;
    // nothing where none is found.
    std::optional<double> at(double x);
    std::optional<End> denseEnd(double x);
    // Narrows the bracket down; what becomes of a place at which none is found.
    void narrow(End low, End high, bool isDenseWhereUnknown);
    bool isReached() const;

    const Mixture& mixture_;
    double T_;
    double P_;
    std::optional<PhaseSplit> split_;
    double nearest_ = std::numeric_limits<double>::infinity();
};

std::optional<double> SplitSearch::at(double x) {
    auto split = SplitAtVolume(mixture_, T_, mixture_.bMix + std::exp(x));
    if (!split || !split->found) return {};
    const double excess = std::log(split->phases.P / P_);
    if (std::abs(excess) < nearest_) {
        split_ = split;
        nearest_ = std::abs(excess);
    }
    return excess;
}

// Where a mixture splits however dense it is: a place of a higher pressure.
std::optional<SplitSearch::End> SplitSearch::denseEnd(double x) {
    constexpr int stepLimit = 60;
    constexpr double stride = 0.7;
    x = std::min(x, std::log(mixture_.bMix));
    for (int i = 0; i < stepLimit; ++i) {
        x -= stride;
        const auto excess = at(x);
        if (excess && *excess >= 0.0) return End{x, *excess};
    }
    return {};
}

void SplitSearch::narrow(End low, End high, bool isDenseWhereUnknown) {
    constexpr int stepLimit = 200;
    constexpr double rounding = 1e-15;
    int side = 0;  // of the end that was moved last
    for (int i = 0; i < stepLimit && high.x - low.x > rounding * std::abs(low.x); ++i) {
        constexpr int turn = 4;  // now and then by half, where the pressure jumps
        const double share = i % turn == turn - 1 ? 0.5 : low.excess / (low.excess - high.excess);
        double x = low.x + share * (high.x - low.x);
        if (!(x > low.x && x < high.x)) x = 0.5 * (low.x + high.x);
        const auto excess = at(x);
        if (nearest_ <= rounding) break;
        // An end that stays twice counts half, by the method of Illinois.
        if (excess ? *excess > 0.0 : isDenseWhereUnknown) {
            low = {x, excess.value_or(low.excess)};
            if (side < 0) high.excess *= 0.5;
            side = -1;
        } else {
            high = {x, excess.value_or(high.excess)};
            if (side > 0) low.excess *= 0.5;
            side = 1;
        }
    }
}

// Whether the pressure is that of the nearest split but for what rounding makes of it in the denser
// phase, where it is a difference of two large numbers.
bool SplitSearch::isReached() const {
    if (!split_) return false;
    constexpr double match = 1e-9;
    constexpr double rounding = 1e-13;
    const PhasePair& phases = split_->phases;
    const double free = phases.Vx - WithFractions(mixture_, phases.x).bMix;
    return std::abs(phases.P - P_) <= match * P_ + rounding * R * T_ / free;
}

std::optional<PhaseSplit> SplitSearch::between(const BoundaryPoint* dense,
                                               const BoundaryPoint& dilute) {
    const End high = endOf(dilute);
    const auto low = dense != nullptr ? std::optional(endOf(*dense)) : denseEnd(high.x);
    if (!low) return {};
    for (const bool isDenseWhereUnknown : {false, true}) {
        narrow(*low, high, isDenseWhereUnknown);
        if (!isReached()) continue;
        split_->phases.P = P_;
        return split_;
    }
    return {};
}

// Stable and not stable volumes take turns, beginning with stable ones at the largest.
std::optional<PhaseSplit> SplitAt(const Mixture& mixture, double T, double P,
                                  Boundaries boundaries) {
    for (std::size_t i = 0; i < boundaries.size(); i += 2) {
        const BoundaryPoint* const dense = i + 1 < boundaries.size() ? &boundaries[i + 1] : nullptr;
        if (P < boundaries[i].P || (dense != nullptr && P > dense->P)) continue;
        return SplitSearch(mixture, T, P).between(dense, boundaries[i]);
    }
    return {};
}

}  // namespace

FluidState StateAt(const Mixture& mixture, double T, double P) {
    FluidState state{.T = T, .P = P};
    for (const double V : RealVolumes(mixture.attraction, mixture.covolume, T, P)) {
        if (V > mixture.covolume) state.volumes.push_back({V, Stability::Unknown});
    }
    if (state.volumes.empty()) return state;
    const IsothermStability judge(mixture, T, mixture.bMix * (1.0 + 1e-12));
    for (FluidState::Volume& volume : state.volumes) volume.stability = judge.at(volume.V);
    state.isExamined = T > ColdestT(mixture);
    if (!state.isExamined) return state;
    if (mixture.count == 1) {
        JudgePure(mixture, state);
    } else {
        JudgeByPressure(state, judge.boundaries());
    }
    for (std::size_t i = 0; i < state.volumes.size(); ++i) {
        if (state.volumes[i].stability == Stability::Stable) state.stable = i;
    }
    if (state.stable) {
        state.kind = KindOf(mixture, state, judge.boundaries());
    } else {
        state.split = SplitAt(mixture, T, P, judge.boundaries());
    }
    return state;
}

}  // namespace fluid
