#include "procedures/phase_curves.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "model/fluid_model.h"

namespace procedures {

using fluid::StatePoint;
using toolkit::PlotPoint;
using PlaceOf = std::function<PlotPoint(const StatePoint&)>;

ShownPressures::ShownPressures(const fluid::CriticalPoints& critical) {
    const double pseudo = fluid::FindPseudoCriticalPoint(fluid::AcceptedMixture()).P;
    constexpr double low = 10.0;
    constexpr double further = 4.0;  // where the boundary does not end at a critical point
    double largest = 0.0;
    for (const fluid::CriticalPoint& point : critical) {
        if (point.isLocallyStable && point.P < low * pseudo) {
            largest = std::max(largest, point.P);
        }
    }
    if (largest == 0.0) {
        largest = further * pseudo;
    }
    constexpr double negativePart = -0.4;
    lowest = largest * negativePart;
    highest = lowest;
    extendTo(largest);
}

ShownPressures ShownPressures::all() {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return {-infinity, infinity};
}

void ShownPressures::extendTo(double P) {
    constexpr double beyond = 1.15;
    lowest = std::min(lowest, beyond * P);
    highest = std::max(highest, beyond * P);
}

void AddCurve(toolkit::PlotSeries& series, const std::vector<fluid::StatePoint>& curve,
              const ShownPressures& shown,
              const std::function<double(const fluid::StatePoint&)>& x) {
    bool isGap = true;
    for (const fluid::StatePoint& point : curve) {
        if (!shown.include(point.P)) {
            isGap = true;
            continue;
        }
        if (isGap && !series.x.empty()) {
            series.add(std::numeric_limits<double>::quiet_NaN(), 0.0);
        }
        isGap = false;
        series.add(x(point), point.P);
    }
}

toolkit::PlotSeries ThroughStates(toolkit::PlotSeries series,
                                  const std::vector<std::vector<StatePoint>>& pieces,
                                  const ShownPressures& shown, const PlaceOf& place,
                                  const StatesAt& stateAt) {
    std::vector<double> volumes;  // at the same points
    for (const auto& piece : pieces) {
        bool isGap = true;
        for (const StatePoint& point : piece) {
            if (!shown.include(point.P)) {
                isGap = true;
                continue;
            }
            if (isGap && series.size() > 0) {
                series.addGap();
                volumes.push_back(point.V);
            }
            isGap = false;
            const PlotPoint there = place(point);
            series.add(there.x, there.y);
            volumes.push_back(point.V);
        }
    }
    series.between = [V = std::move(volumes), xs = series.x, ys = series.y, place, stateAt](
                         std::size_t i, double share) -> PlotPoint {
        const auto state = stateAt(std::lerp(V[i], V[i + 1], share));
        return state ? place(*state)
                     : PlotPoint{std::lerp(xs[i], xs[i + 1], share),
                                 std::lerp(ys[i], ys[i + 1], share)};
    };
    return series;
}

toolkit::PlotSeries ThroughStates(toolkit::PlotSeries series,
                                  const std::vector<std::vector<StatePoint>>& pieces,
                                  const ShownPressures& shown,
                                  const std::function<double(const StatePoint&)>& x,
                                  const StatesAt& stateAt) {
    const PlaceOf place = [x](const StatePoint& point) { return PlotPoint{x(point), point.P}; };
    return ThroughStates(std::move(series), pieces, shown, place, stateAt);
}

StatesAt BoundaryStates(const fluid::Mixture& mixture) {
    return [mixture](double V) {
        const auto point = fluid::FindBoundary(mixture, V);
        return point ? std::optional(StatePoint{point->T, point->P, point->V}) : std::nullopt;
    };
}

StatesAt SpinodalStates(const fluid::Mixture& mixture, fluid::SpinodalKind kind) {
    const fluid::Spinodal limit = fluid::SpinodalOf(mixture, kind);
    return [mixture, limit](double V) {
        const double T = limit.temperature(V);
        return std::optional(
            StatePoint{T, fluid::PressureVdW(mixture.attraction, mixture.covolume, T, V), V});
    };
}

}  // namespace procedures
