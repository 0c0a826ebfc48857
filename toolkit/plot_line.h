#pragma once

#include <functional>
#include <vector>

#include "toolkit/plot_frame.h"

namespace toolkit {

using Polyline = std::vector<PlotPlace>;

/// Calls `visit` with the lines that a part of a curve is drawn with: what lies in the frame, and
/// of that only the points that make a difference on a display. A line of one place is a dot.
void tracePolylines(const PlotSeries& series, std::size_t part, const PlotFrame& frame,
                    const std::function<void(const Polyline&)>& visit);

}  // namespace toolkit
