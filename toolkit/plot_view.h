#pragma once

#include <limits>
#include <optional>
#include <vector>

#include "toolkit/plot_series.h"

namespace toolkit {

constexpr double largestPlotted = 1e300;  // a difference of two such numbers is finite

// What is in view of an axis: `low` below `high`, and above 0 where the axis is logarithmic.
struct AxisLimits {
    double low = 0.0;
    double high = 1.0;
    bool isLogarithmic = false;

    // The number on a scale on which the axis is even, and back.
    double scaled(double value) const;
    double unscaled(double value) const;
    bool includes(double value) const { return value >= low && value <= high; }
    bool operator==(const AxisLimits&) const = default;
};

struct PlotLimits {
    AxisLimits x;
    AxisLimits y;

    bool operator==(const PlotLimits&) const = default;
};

// The numbers that there are along an axis.
struct AxisExtent {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();
    double lowestAboveZero = std::numeric_limits<double>::infinity();

    void take(double value);
    // Limits around all of them, with some room, but not beyond 0; on an even axis where none is
    // above 0.
    AxisLimits limits(bool isLogarithmic) const;
};

// The ends of what matters of an axis.
struct PlotRange {
    double low = 0.0;
    double high = 0.0;
};

// What a plot shows at first: of an axis without a range everything.
struct FirstView {
    std::optional<PlotRange> x = std::nullopt;
    std::optional<PlotRange> y = std::nullopt;
    bool isLogarithmicX = false;
};

// What is in view of a plot, and what was before.
class PlotView {
  public:
    // What changes the view. Turns of the wheel, for one, that follow each other are one step
    // back.
    enum class Act { Choice, Wheel, Pan, Walk };

    // Forgets what was before and shows the first view of these curves.
    void start(const std::vector<PlotSeries>& series, const FirstView& first);
    const PlotLimits& limits() const { return limits_; }
    const AxisExtent& extentX() const { return x_; }
    const AxisExtent& extentY() const { return y_; }

    // Shows these limits, or nothing else where they are none or too close for numbers to differ.
    bool show(const PlotLimits& limits, Act act = Act::Choice);
    // Makes the numbers `factor` times as many, around a point that stays where it is.
    void zoom(const PlotPoint& around, double factor, Act act);
    // Moves on by these shares of the width and the height.
    void pan(double right, double up, Act act = Act::Pan);
    // Shows a rectangle between two corners.
    void zoomTo(const PlotPoint& corner, const PlotPoint& opposite);
    // Shows everything; where that is so already, the first view.
    void showAll();
    // Shows what was in view before the last act, if anything was.
    void back();
    // What follows is another act, also where it is of the same kind.
    void endAct() { isContinued_ = false; }

  private:
    PlotLimits all() const;

    AxisExtent x_;
    AxisExtent y_;
    PlotLimits first_;
    PlotLimits limits_;
    std::vector<PlotLimits> before_;
    Act lastAct_ = Act::Choice;
    bool isContinued_ = false;
};

}  // namespace toolkit
