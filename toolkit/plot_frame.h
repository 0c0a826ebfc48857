#pragma once

#include <functional>
#include <optional>
#include <span>

#include "toolkit/plot_series.h"
#include "toolkit/plot_view.h"

namespace toolkit {

// A place on what was drawn on, from its upper left corner.
struct PlotPlace {
    double x = 0.0;
    double y = 0.0;
};

// The rectangle that the curves are drawn in, and the numbers that lie there.
struct PlotFrame {
    PlotFrame() = default;
    PlotFrame(const PlotLimits& shown, double leftEdge, double topEdge, double rightEdge,
              double bottomEdge);

    // Where a point lies, also outside of the frame; nothing where it cannot be drawn.
    std::optional<PlotPlace> placeOf(const PlotPoint& point) const;
    PlotPoint pointAt(const PlotPlace& place) const;
    bool contains(const PlotPlace& place) const;
    double width() const { return right - left; }
    double height() const { return bottom - top; }

    PlotLimits limits;
    double left = 0.0;
    double top = 0.0;
    double right = 0.0;
    double bottom = 0.0;

  private:
    double xLow_ = 0.0;  // on the even scale
    double xScale_ = 1.0;
    double yLow_ = 0.0;
    double yScale_ = 1.0;
};

// A point of a curve as it is drawn.
struct PlotSpot {
    PlotPlace place;
    std::size_t point = 0;  // of the series; the spot is a share of the way on to the next one
    double share = 0.0;
};

// Calls `visit` with the points of a part of a series in their order and, where they lie so far
// apart in the frame that it would be seen, with points of the true curve between them; calls
// `gap` where the curve ends and goes on elsewhere.
void Trace(const PlotSeries& series, std::size_t part, const PlotFrame& frame,
           const std::function<void(const PlotSpot&)>& visit, const std::function<void()>& gap);

// The point of a curve at a position; between two points the curve is as straight as it is drawn.
PlotPoint PointOf(const PlotSeries& series, const PlotPosition& position, const PlotFrame& frame);

// The position, on a curve or a mark, that is drawn nearest to a place in the frame, within
// `reach`.
std::optional<PlotPosition> Nearest(std::span<const PlotSeries> series, const PlotFrame& frame,
                                    const PlotPlace& place, double reach);

// The position at about this length of way from another one on the same curve, on the display;
// where the curve ends, its end. Of marks the next one. A negative length goes backwards.
PlotPosition Walked(std::span<const PlotSeries> series, const PlotFrame& frame,
                    const PlotPosition& from, double length);

}  // namespace toolkit
