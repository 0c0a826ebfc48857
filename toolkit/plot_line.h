#pragma once

#include <functional>
#include <vector>

#include "toolkit/plot_frame.h"

namespace toolkit {

using Polyline = std::vector<PlotPlace>;

// Calls `visit` with the lines that a part of a curve is drawn with: what lies in the frame, and
// of that only the points that make a difference on a display. A line of one place is a dot.
void TracePolylines(const PlotSeries& series, std::size_t part, const PlotFrame& frame,
                    const std::function<void(const Polyline&)>& visit);

// What lines cover of a column of pixels.
struct ColumnSpan {
    double x = 0.0;  // the left edge
    double top = 0.0;
    double bottom = 0.0;
};

// The columns of lines that go up and down so densely in them that they cannot be told from what
// they cover; none of other lines.
std::vector<ColumnSpan> DenseColumns(const std::vector<Polyline>& lines, const PlotFrame& frame);

}  // namespace toolkit
