#include "toolkit/plot_reading.h"

#include <algorithm>
#include <cmath>

#include "toolkit/number_text.h"

namespace toolkit {

namespace {

/// A text that has no commas, which part the columns of a table.
std::string cell(std::string text) {
    std::replace(text.begin(), text.end(), ',', ';');
    return text;
}

std::string head(const PlotAxis& axis) {
    return cell(axis.unit.empty() ? axis.quantity : axis.quantity + " (" + axis.unit + ")");
}

}  // namespace

std::string shownNumber(double value, const AxisLimits& axis) {
    constexpr double places = 2e4;  // from end to end of an axis
    constexpr double mostDecimals = 9.0;
    constexpr double longest = 1e9;
    constexpr int digits = 6;
    const double decimals = std::max(std::ceil(-std::log10((axis.high - axis.low) / places)), 0.0);
    return axis.isLogarithmic || decimals > mostDecimals || std::abs(value) > longest
               ? significantText(value, digits)
               : fixedText(value, static_cast<int>(decimals));
}

std::string PlotReading::sentence() const {
    return (name.empty() ? "" : name + ": ") + numbers + (state.empty() ? "" : ", " + state);
}

std::string PlotReading::label() const {
    return (name.empty() ? "" : name + "\n") + numbers + (state.empty() ? "" : "\n" + state);
}

PlotReading readingOf(const PlotContent& content, const PlotLimits& limits,
                      const PlotPosition& position) {
    const PlotSeries& series = content.series[position.series];
    const PlotPoint point = pointOf(series, position, PlotFrame(limits, 0.0, 0.0, 1.0, 1.0));
    return {point, series.name,
            shownNumber(point.x, limits.x) + " " + content.x.unit + ", " +
                shownNumber(point.y, limits.y) + " " + content.y.unit,
            series.stateAt(position.point)};
}

std::string curvesText(const PlotContent& content) {
    std::string text = "Curve, " + head(content.x) + ", " + head(content.y) + ", State\n";
    for (const PlotSeries& series : content.series) {
        for (std::size_t i = 0; i < series.size(); ++i) {
            if (std::isfinite(series.x[i]) && std::isfinite(series.y[i])) {
                text += cell(series.name) + ", " + numberText(series.x[i]) + ", " +
                        numberText(series.y[i]) + ", " + cell(series.stateAt(i));
            }
            text += '\n';
        }
    }
    return text;
}

}  // namespace toolkit
