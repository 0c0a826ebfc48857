#include "procedures/phase_curves.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "model/fluid_model.h"

namespace procedures {

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

void ShownPressures::extendTo(double P) {
    constexpr double beyond = 1.15;
    lowest = std::min(lowest, beyond * P);
    highest = std::max(highest, beyond * P);
}

void addCurve(toolkit::PlotSeries& series, const std::vector<fluid::StatePoint>& curve,
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

toolkit::PlotSeries throughStates(
    toolkit::PlotSeries series, const std::vector<std::vector<fluid::StatePoint>>& pieces,
    const ShownPressures& shown, const std::function<double(const fluid::StatePoint&)>& x,
    const std::function<std::optional<fluid::StatePoint>(double V)>& stateAt) {
    toolkit::PlotSeries volumes;  // at the same points
    for (const auto& piece : pieces) {
        addCurve(series, piece, shown, x);
        addCurve(volumes, piece, shown, [](const fluid::StatePoint& point) { return point.V; });
    }
    series.between = [V = std::move(volumes.x), xs = series.x, ys = series.y, x, stateAt](
                         std::size_t i, double share) -> toolkit::PlotPoint {
        const auto state = stateAt(std::lerp(V[i], V[i + 1], share));
        return state ? toolkit::PlotPoint{x(*state), state->P}
                     : toolkit::PlotPoint{std::lerp(xs[i], xs[i + 1], share),
                                          std::lerp(ys[i], ys[i + 1], share)};
    };
    return series;
}

}  // namespace procedures
