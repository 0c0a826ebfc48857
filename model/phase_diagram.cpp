#include "model/phase_diagram.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "model/spinodal.h"
#include "model/van_der_waals.h"

namespace fluid {

namespace {

// Volumes in equal steps of ln(V - b), and others that a curve goes through.
std::vector<double> Volumes(double b, double step, std::vector<double> others) {
    constexpr double Densest = -4.6;  // of ln(V/b - 1)
    constexpr double MostDilute = 7.0;
    const auto count = static_cast<std::size_t>((MostDilute - Densest) / step);
    for (std::size_t i = 0; i <= count; ++i) {
        others.push_back(b * (1.0 + std::exp(Densest + static_cast<double>(i) * step)));
    }
    std::sort(others.begin(), others.end());
    return others;
}

SpinodalVolumes VolumesAt(std::int32_t lastComponent, std::span<const double> fractions,
                          SpinodalKind kind, double T) {
    return kind == SpinodalKind::Diffusional ? DiffusionalSpinodal(lastComponent, fractions, T)
                                             : MechanicalSpinodal(lastComponent, fractions, T);
}

// The boundary as it is followed from point to point. Where it bends, or one kind of boundary gives
// way to the other, it is followed in smaller steps.
class BoundaryTrace {
  public:
    BoundaryTrace(std::int32_t lastComponent, std::span<const double> fractions)
        : lastComponent_(lastComponent),
          fractions_(fractions),
          pressureScale_(FindPseudoCriticalPoint(lastComponent, fractions).P) {}

    // The next point, of a larger volume; nothing where there is a gap.
    void Take(const std::optional<BoundaryPoint>& point) {
        if (point && last_) {
            GoOn(*last_, *point, 0);
        } else if (point) {
            pieces_.push_back({point->kind(), {}});
            Add(*point);
        }
        last_ = point;
    }

    std::vector<BoundaryPiece> Pieces() { return std::move(pieces_); }

  private:
    // Adds what comes after `from`, up to `to`.
    void GoOn(const BoundaryPoint& from, const BoundaryPoint& to, int depth) {
        constexpr int Bends = 6;
        constexpr int Corners = 30;
        const bool isCorner = !from.isCritical() && !to.isCritical() && from.kind() != to.kind();
        if (depth < (isCorner ? Corners : Bends) && (isCorner || IsLong(from, to))) {
            const double V = 0.5 * (from.V + to.V);
            const auto between = FindBoundary(lastComponent_, fractions_, V);
            if (between && V > from.V && V < to.V) {
                GoOn(from, *between, depth + 1);
                GoOn(*between, to, depth + 1);
                return;
            }
        }
        // A critical point ends one branch and begins the next.
        if (!to.isCritical() && to.kind() != pieces_.back().kind) {
            pieces_.push_back({to.kind(), {pieces_.back().points.back()}});
        }
        Add(to);
    }

    // In T, and in P as far as it is low enough to be of interest.
    bool IsLong(const BoundaryPoint& from, const BoundaryPoint& to) const {
        constexpr double Share = 0.015;
        constexpr double High = 10.0;
        return std::abs(to.T - from.T) > Share * from.T ||
               (std::abs(to.P - from.P) > Share * (pressureScale_ + std::abs(from.P)) &&
                std::min(from.P, to.P) < High * pressureScale_);
    }

    void Add(const BoundaryPoint& point) {
        pieces_.back().points.push_back({point.T, point.P, point.V});
    }

    std::int32_t lastComponent_;
    std::span<const double> fractions_;
    double pressureScale_;  // MPa
    std::optional<BoundaryPoint> last_;
    std::vector<BoundaryPiece> pieces_;
};

}  // namespace

std::vector<BoundaryPiece> TraceBoundary(std::int32_t lastComponent,
                                         std::span<const double> fractions,
                                         const CriticalPoints& critical) {
    if (lastComponent < 0) return {};
    std::vector<BoundaryPoint> stable;
    std::vector<double> others;
    for (const CriticalPoint& point : critical) {
        if (CriticalStability(lastComponent, fractions, point) != Stability::Stable) continue;
        stable.push_back({point.T, point.P, point.V, point.V});
        others.push_back(point.V);
    }
    constexpr double Step = 0.075;
    BoundaryTrace trace(lastComponent, fractions);
    for (const double V : Volumes(MixtureB(lastComponent, fractions), Step, others)) {
        const auto known = std::find_if(stable.begin(), stable.end(),
                                        [V](const BoundaryPoint& point) { return point.V == V; });
        trace.Take(known != stable.end() ? std::optional(*known)
                                         : FindBoundary(lastComponent, fractions, V));
    }
    return trace.Pieces();
}

std::vector<std::vector<StatePoint>> TraceSpinodal(std::int32_t lastComponent,
                                                   std::span<const double> fractions,
                                                   SpinodalKind kind, double lowestT,
                                                   double highestT) {
    std::vector<std::vector<StatePoint>> pieces;
    if (lastComponent < 0) return pieces;
    const double aMix = MixtureA(lastComponent, fractions);
    const double bMix = MixtureB(lastComponent, fractions);
    std::vector<double> ends;
    for (const double T : {lowestT, highestT}) {
        for (const double V : VolumesAt(lastComponent, fractions, kind, T)) ends.push_back(V);
    }
    constexpr double Step = 0.02;
    bool isGap = true;
    for (const double V : Volumes(bMix, Step, ends)) {
        const bool isEnd = std::find(ends.begin(), ends.end(), V) != ends.end();
        const double T = kind == SpinodalKind::Diffusional
                             ? DiffusionalSpinodalTemperature(lastComponent, fractions, V)
                             : MechanicalSpinodalTemperature(lastComponent, fractions, V);
        if (isEnd || (T >= lowestT && T <= highestT)) {
            if (isGap) pieces.emplace_back();
            pieces.back().push_back({T, PressureVdW(aMix, bMix, T, V), V});
            isGap = false;
        } else {
            isGap = true;
        }
    }
    return pieces;
}

}  // namespace fluid
