#include "toolkit/plot_view.h"

#include <algorithm>
#include <cmath>

namespace toolkit {

namespace {

// Whether something can be drawn between these limits: numbers that differ, and not by too much.
bool IsSound(const AxisLimits& limits) {
    constexpr double narrowest = 1e-9;  // of the size of the numbers, or decades
    constexpr double smallest = 1e-303;
    const double size = std::max(std::abs(limits.low), std::abs(limits.high));
    if (!(limits.low < limits.high) || !(size < 2.0 * largestPlotted)) return false;
    if (limits.isLogarithmic) {
        return limits.low > smallest &&
               limits.scaled(limits.high) - limits.scaled(limits.low) > narrowest;
    }
    return limits.high - limits.low > std::max(narrowest * size, smallest);
}

// The limits between two numbers of the even scale.
AxisLimits Between(const AxisLimits& axis, double one, double other) {
    return {axis.unscaled(std::min(one, other)), axis.unscaled(std::max(one, other)),
            axis.isLogarithmic};
}

AxisLimits Zoomed(const AxisLimits& axis, double around, double factor) {
    const double fixed = axis.scaled(around);
    const auto moved = [&](double end) { return fixed + (axis.scaled(end) - fixed) * factor; };
    return Between(axis, moved(axis.low), moved(axis.high));
}

AxisLimits Panned(const AxisLimits& axis, double share) {
    const double way = share * (axis.scaled(axis.high) - axis.scaled(axis.low));
    return Between(axis, axis.scaled(axis.low) + way, axis.scaled(axis.high) + way);
}

AxisLimits FirstLimits(const AxisExtent& extent, const std::optional<PlotRange>& range,
                       bool isLogarithmic) {
    AxisLimits limits = extent.limits(isLogarithmic);
    if (range) {
        const AxisLimits chosen{std::max(limits.low, range->low),
                                std::min(limits.high, range->high), limits.isLogarithmic};
        limits = IsSound(chosen) ? chosen : limits;
    }
    return limits;
}

}  // namespace

double AxisLimits::scaled(double value) const {
    return isLogarithmic ? std::log10(value) : value;
}

double AxisLimits::unscaled(double value) const {
    return isLogarithmic ? std::pow(10.0, value) : value;
}

void AxisExtent::take(double value) {
    low = std::min(low, value);
    high = std::max(high, value);
    if (value > 0.0) {
        lowestAboveZero = std::min(lowestAboveZero, value);
    }
}

AxisLimits AxisExtent::limits(bool isLogarithmic) const {
    constexpr double margin = 0.04;
    constexpr double smallest = 1e-300;    // of the numbers that differ from 0 in a plot
    constexpr double narrowest = 1e-4;     // of the size of the numbers
    constexpr double neighbourhood = 0.1;  // of a single number
    if (low > high) {
        return {};
    }
    const double size = std::max(std::abs(low), std::abs(high));
    if (size < smallest) {
        return {-1.0, 1.0, false};
    }
    if (isLogarithmic && high >= smallest) {
        const double from = std::log10(std::max(lowestAboveZero, smallest));
        const double to = std::log10(high);
        const double room = to - from < narrowest ? neighbourhood : margin * (to - from);
        constexpr double farthest = 300.2;  // decades
        return {std::pow(10.0, std::max(from - room, -farthest)),
                std::pow(10.0, std::min(to + room, farthest)), true};
    }
    const double width = high - low;
    const double room = width < narrowest * size ? neighbourhood * size : margin * width;
    return {low > 0.0 ? std::max(low - room, 0.0) : low - room,
            high < 0.0 ? std::min(high + room, 0.0) : high + room, false};
}

void PlotView::start(const std::vector<PlotSeries>& series, const FirstView& first) {
    x_ = {};
    y_ = {};
    for (const PlotSeries& each : series) {
        for (std::size_t i = 0; i < each.size(); ++i) {
            if (std::abs(each.x[i]) < largestPlotted && std::abs(each.y[i]) < largestPlotted) {
                x_.take(each.x[i]);
                y_.take(each.y[i]);
            }
        }
    }
    first_ = {FirstLimits(x_, first.x, first.isLogarithmicX), FirstLimits(y_, first.y, false)};
    limits_ = first_;
    before_.clear();
    isContinued_ = false;
}

PlotLimits PlotView::all() const {
    return {x_.limits(limits_.x.isLogarithmic), y_.limits(limits_.y.isLogarithmic)};
}

bool PlotView::show(const PlotLimits& limits, Act act) {
    if (!IsSound(limits.x) || !IsSound(limits.y)) return false;
    if (limits == limits_) return true;
    constexpr std::size_t most = 1000;
    if (!isContinued_ || act != lastAct_ || act == Act::Choice) {
        if (before_.size() == most) {
            before_.erase(before_.begin());
        }
        before_.push_back(limits_);
    }
    lastAct_ = act;
    isContinued_ = true;
    limits_ = limits;
    return true;
}

void PlotView::zoom(const PlotPoint& around, double factor, Act act) {
    show({Zoomed(limits_.x, around.x, factor), Zoomed(limits_.y, around.y, factor)}, act);
}

void PlotView::pan(double right, double up, Act act) {
    show({Panned(limits_.x, right), Panned(limits_.y, up)}, act);
}

void PlotView::zoomTo(const PlotPoint& corner, const PlotPoint& opposite) {
    const auto [left, right] = std::minmax(corner.x, opposite.x);
    const auto [bottom, top] = std::minmax(corner.y, opposite.y);
    show({{left, right, limits_.x.isLogarithmic}, {bottom, top, limits_.y.isLogarithmic}});
}

void PlotView::showAll() {
    show(limits_ == all() ? first_ : all());
}

void PlotView::back() {
    if (!before_.empty()) {
        limits_ = before_.back();
        before_.pop_back();
        isContinued_ = false;
    }
}

}  // namespace toolkit
