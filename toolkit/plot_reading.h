#pragma once

#include <string>

#include "toolkit/plot_drawing.h"

namespace toolkit {

// What a plot says of a position on one of its curves: "isochore A3: 237.00 K, 11.50 MPa, one
// phase", with the digits that can be told apart in view.
struct PlotReading {
    PlotPoint point;
    std::string name;
    std::string numbers;
    std::string state;

    // In one line.
    std::string sentence() const;
    // In lines of their own.
    std::string label() const;
};

PlotReading ReadingOf(const PlotContent& content, const PlotLimits& limits,
                      const PlotPosition& position);

// A number along an axis, with the digits that can be told apart in view.
std::string ShownNumber(double value, const AxisLimits& axis);

// The curves as a table: a line with heads, and one for each point with the name of its curve, its
// numbers, and its kind of state; an empty line where a curve ends and goes on elsewhere.
std::string CurvesText(const PlotContent& content);

}  // namespace toolkit
