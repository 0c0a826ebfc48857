#include "procedures/inversion_curve.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include "model/phase_boundary.h"
#include "model/van_der_waals.h"
#include "procedures/isochore_diagram.h"
#include "procedures/value_range.h"

namespace procedures {

namespace {

using fluid::Mixture;
using toolkit::PlotSeries;

// With u = b/V: R·T = 2a(1 - u)²/b, and P = a·u(2 - 3u)/b², from the gas of no pressure, u = 0, to
// the liquid of none, u = 2/3.
fluid::StatePoint InversionAt(const Mixture& mixture, double u) {
    const double a = mixture.attraction;
    const double b = mixture.covolume;
    return {2.0 * a * (1.0 - u) * (1.0 - u) / (b * fluid::R), a * u * (2.0 - 3.0 * u) / (b * b),
            b / u};
}

bool IsStable(const Mixture& mixture, const fluid::StatePoint& point) {
    const auto boundary = fluid::FindBoundary(mixture, point.V);
    return !boundary || point.T >= boundary->T;
}

}  // namespace

std::vector<PlotSeries> InversionSeries(const Mixture& mixture, const TemperatureScale& scale) {
    constexpr int points = 200;
    constexpr double densest = 2.0 / 3.0;
    PlotSeries inversion("Joule-Thomson inversion", PlotSeries::Style::Line, 4);
    std::vector<double> us;
    double highest = 0.0;
    std::optional<bool> before;
    for (int i = 0; i <= points; ++i) {
        constexpr double dilute = 1e-6;
        const double u = std::max(densest * i / points, dilute);
        const fluid::StatePoint point = InversionAt(mixture, u);
        const bool stable = IsStable(mixture, point);
        if (before && stable != before) {
            // The boundary itself ends a part.
            double low = us.back();
            double high = u;
            constexpr int halvings = 50;
            for (int k = 0; k < halvings; ++k) {
                const double middle = 0.5 * (low + high);
                const bool isLow = IsStable(mixture, InversionAt(mixture, middle)) == before;
                (isLow ? low : high) = middle;
            }
            const fluid::StatePoint end = InversionAt(mixture, low);
            us.push_back(low);
            inversion.add(WrittenTemperature::calculated(end.T).in(scale), end.P);
        }
        if (stable != before) {
            inversion.change(stable ? "stable" : "would split",
                             stable ? PlotSeries::Style::Line : PlotSeries::Style::Dotted);
            before = stable;
        }
        us.push_back(u);
        inversion.add(WrittenTemperature::calculated(point.T).in(scale), point.P);
        highest = std::max(highest, point.P);
    }
    inversion.between = [mixture, us = std::move(us), scale](std::size_t i, double share) {
        const auto point = InversionAt(mixture, std::lerp(us[i], us[i + 1], share));
        return toolkit::PlotPoint{WrittenTemperature::calculated(point.T).in(scale), point.P};
    };
    std::vector<PlotSeries> series = EnvelopeSeries(mixture, highest, {scale, 0.0, false});
    series.push_back(std::move(inversion));
    return series;
}

}  // namespace procedures
