#include "toolkit/plot_reading.h"

#include <algorithm>
#include <cmath>

#include "toolkit/number_text.h"

namespace toolkit {

namespace {

// A text that has no commas, which part the columns of a table.
std::string Cell(std::string text) {
    std::replace(text.begin(), text.end(), ',', ';');
    return text;
}

std::string Head(const PlotAxis& axis) {
    return Cell(axis.unit.empty() ? axis.quantity : axis.quantity + " (" + axis.unit + ")");
}

}  // namespace

std::string ShownNumber(double value, const AxisLimits& axis) {
    constexpr double places = 2e4;  // from end to end of an axis
    constexpr double mostDecimals = 9.0;
    constexpr double longest = 1e9;
    constexpr int digits = 6;
    const double decimals = std::max(std::ceil(-std::log10((axis.high - axis.low) / places)), 0.0);
    return axis.isLogarithmic || decimals > mostDecimals || std::abs(value) > longest
               ? SignificantText(value, digits)
               : FixedText(value, static_cast<int>(decimals));
}

std::string PlotReading::sentence() const {
    return (name.empty() ? "" : name + ": ") + numbers + (state.empty() ? "" : ", " + state);
}

std::string PlotReading::label() const {
    return (name.empty() ? "" : name + "\n") + numbers + (state.empty() ? "" : "\n" + state);
}

PlotReading ReadingOf(const PlotContent& content, const PlotLimits& limits,
                      const PlotPosition& position) {
    const PlotSeries& series = content.series[position.series];
    const PlotPoint point = PointOf(series, position, PlotFrame(limits, 0.0, 0.0, 1.0, 1.0));
    return {point, series.name,
            ShownNumber(point.x, limits.x) + " " + content.x.unit + ", " +
                ShownNumber(point.y, limits.y) + " " + content.y.unit,
            series.stateAt(position.point)};
}

std::string CurvesText(const PlotContent& content) {
    std::string text = "Curve, " + Head(content.x) + ", " + Head(content.y) + ", State\n";
    for (const PlotSeries& series : content.series) {
        for (std::size_t i = 0; i < series.size(); ++i) {
            if (std::isfinite(series.x[i]) && std::isfinite(series.y[i])) {
                text += Cell(series.name) + ", " + NumberText(series.x[i]) + ", " +
                        NumberText(series.y[i]) + ", " + Cell(series.stateAt(i));
            }
            text += '\n';
        }
    }
    return text;
}

}  // namespace toolkit
