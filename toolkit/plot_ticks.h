#pragma once

#include <string>
#include <vector>

#include "toolkit/plot_view.h"

namespace toolkit {

// The ticks of an axis, at round numbers, and what stands at the larger ones.
struct PlotTicks {
    struct Major {
        double value = 0.0;
        std::string label;
    };

    std::vector<Major> major;
    std::vector<double> minor;
    int exponent = 0;  // the labels are in this power of ten
};

// `most`: the number of labels that there is room for.
PlotTicks TicksOf(const AxisLimits& limits, double most);

// A power of ten as it is printed: 10⁻³.
std::string PowerOfTen(int exponent);

}  // namespace toolkit
