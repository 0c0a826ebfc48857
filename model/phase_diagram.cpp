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

}  // namespace

std::vector<BoundaryPiece> TraceBoundary(std::int32_t lastComponent,
                                         std::span<const double> fractions,
                                         const CriticalPoints& critical) {
    std::vector<BoundaryPiece> pieces;
    if (lastComponent < 0) return pieces;
    std::vector<BoundaryPoint> stable;
    std::vector<double> others;
    for (const CriticalPoint& point : critical) {
        if (CriticalStability(lastComponent, fractions, point) != Stability::Stable) continue;
        stable.push_back({point.T, point.P, point.V, point.V});
        others.push_back(point.V);
    }
    constexpr double Step = 0.075;
    bool isGap = true;
    for (const double V : Volumes(MixtureB(lastComponent, fractions), Step, others)) {
        const auto known = std::find_if(stable.begin(), stable.end(),
                                        [V](const BoundaryPoint& point) { return point.V == V; });
        const auto point = known != stable.end() ? std::optional(*known)
                                                 : FindBoundary(lastComponent, fractions, V);
        if (!point) {
            isGap = true;
            continue;
        }
        // A critical point ends one branch and begins the next.
        const bool goesOn =
            !isGap && (known != stable.end() || point->kind() == pieces.back().kind);
        if (!goesOn) {
            BoundaryPiece piece{point->kind(), {}};
            if (!isGap) piece.points.push_back(pieces.back().points.back());
            pieces.push_back(std::move(piece));
        }
        pieces.back().points.push_back({point->T, point->P, V});
        isGap = false;
    }
    return pieces;
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
