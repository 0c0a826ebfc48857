#include "model/phase_diagram.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "model/van_der_waals.h"

namespace fluid {

namespace {

// The part that is drawn, in ln(V/b - 1).
constexpr double densest = -4.6;
constexpr double mostDilute = 7.0;

// Volumes in equal steps of ln(V - b), and others that a curve goes through.
std::vector<double> Volumes(double b, double step, std::vector<double> others) {
    const auto count = static_cast<std::size_t>((mostDilute - densest) / step);
    for (std::size_t i = 0; i <= count; ++i) {
        others.push_back(b * (1.0 + std::exp(densest + static_cast<double>(i) * step)));
    }
    std::sort(others.begin(), others.end());
    return others;
}

// The samples of a boundary as curves to be drawn: with further points between those that lie far
// apart, and parted where one kind of boundary gives way to the other.
class BoundaryTrace {
  public:
    BoundaryTrace(const Mixture& mixture, std::vector<StatePoint> critical)
        : mixture_(mixture), critical_(std::move(critical)) {
        const double b = mixture.bMix;
        pressureScale_ = mixture.aRootMix * mixture.aRootMix / (27.0 * b * b);
    }

    void take(const PhaseBoundary::Run& run) {
        isNew_ = true;
        const BoundarySample* last = nullptr;
        for (const BoundarySample& sample : run) {
            if (sample.x < densest || sample.x > mostDilute) continue;
            if (last != nullptr) goOn(*last, sample, 0);
            add(sample);
            last = &sample;
        }
    }
    std::vector<BoundaryPiece> pieces() { return std::move(pieces_); }

  private:
    void goOn(const BoundarySample& from, const BoundarySample& to, int depth) {
        constexpr int bends = 6;  // 63 points between two samples are enough for any display
        if (depth == bends || !isLong(from, to)) return;
        const auto middle = BoundaryBetween(mixture_, from, to, 0.5 * (from.x + to.x));
        if (!middle) return;
        goOn(from, *middle, depth + 1);
        add(*middle);
        goOn(*middle, to, depth + 1);
    }

    // In T, and in P as far as it is low enough to be of interest.
    bool isLong(const BoundarySample& from, const BoundarySample& to) const {
        constexpr double share = 0.015;  // of what is drawn, some pixels
        constexpr double high = 10.0;
        const double P0 = std::exp(from.lnP);
        const double P1 = std::exp(to.lnP);
        return std::abs(to.lnT - from.lnT) > share ||
               (std::abs(P1 - P0) > share * (pressureScale_ + P0) &&
                std::min(P0, P1) < high * pressureScale_);
    }

    void add(const BoundarySample& sample) {
        const BoundaryPoint point = PointOf(mixture_, sample);
        const StatePoint state = {point.T, point.P, point.V};
        if (isNew_) pieces_.push_back({point.kind(), {}});
        // A critical point ends one branch and begins the next.
        for (const StatePoint& passed : critical_) {
            const bool isPassed = !isNew_ && passed.V > pieces_.back().points.back().V;
            if (!isPassed || passed.V >= point.V) continue;
            pieces_.back().points.push_back(passed);
            pieces_.push_back({point.kind(), {passed}});
            isKindKnown_ = false;
        }
        if (!isKindKnown_) pieces_.back().kind = point.kind();
        if (!isNew_ && point.kind() != pieces_.back().kind && !point.isCritical()) {
            pieces_.push_back({point.kind(), {pieces_.back().points.back()}});
        }
        isKindKnown_ = isKindKnown_ || !point.isCritical();
        isNew_ = false;
        pieces_.back().points.push_back(state);
    }

    const Mixture& mixture_;
    std::vector<StatePoint> critical_;
    double pressureScale_;  // MPa
    bool isNew_ = true;
    bool isKindKnown_ = true;
    std::vector<BoundaryPiece> pieces_;
};

}  // namespace

std::vector<BoundaryPiece> TraceBoundary(const Mixture& mixture, const CriticalPoints& critical) {
    if (mixture.count == 0) return {};
    std::vector<StatePoint> stable;
    for (const CriticalPoint& point : critical) {
        if (CriticalStability(mixture, point) != Stability::Stable) continue;
        stable.push_back({point.T, point.P, point.V});
    }
    BoundaryTrace trace(mixture, std::move(stable));
    for (const PhaseBoundary::Run& run : BoundaryOf(mixture).runs()) trace.take(run);
    return trace.pieces();
}

std::vector<std::vector<StatePoint>> TraceSpinodal(const Mixture& mixture, SpinodalKind kind,
                                                   double lowestT, double highestT) {
    std::vector<std::vector<StatePoint>> pieces;
    if (mixture.count == 0) return pieces;
    const Spinodal spinodal = SpinodalOf(mixture, kind);
    std::vector<double> ends;
    for (const double T : {lowestT, highestT}) {
        for (const double V : spinodal.volumes(T)) ends.push_back(V);
    }
    constexpr double step = 0.02;  // of ln(V - b), short of what can be seen
    bool isGap = true;
    for (const double V : Volumes(mixture.covolume, step, ends)) {
        const bool isEnd = std::find(ends.begin(), ends.end(), V) != ends.end();
        const double T = spinodal.temperature(V);
        const bool isInside = isEnd || (T >= lowestT && T <= highestT);
        if (isInside && isGap) pieces.emplace_back();
        if (isInside) {
            const double P = PressureVdW(mixture.attraction, mixture.covolume, T, V);
            pieces.back().push_back({T, P, V});
        }
        isGap = !isInside;
    }
    return pieces;
}

}  // namespace fluid
