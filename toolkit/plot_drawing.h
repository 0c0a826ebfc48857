#pragma once

#include <optional>
#include <span>
#include <string>

#include "toolkit/plot.h"

using cairo_t = struct _cairo;

namespace toolkit {

/// What a plot shows, whatever it is drawn on.
struct PlotContent {
    const std::string& xTitle;
    const std::string& yTitle;
    bool isLogarithmicX;
    std::span<const PlotSeries> series;
};

/// A place on what was drawn on, from its upper left corner.
struct PlotPlace {
    double x = 0.0;
    double y = 0.0;
};

/// Where the numbers of a drawn plot lie.
struct PlotFrame {
    bool isLogarithmicX = false;
    double xOrigin = 0.0;
    double xScale = 0.0;
    double yOrigin = 0.0;
    double yScale = 0.0;

    /// Where a point was drawn; nothing where it was not.
    std::optional<PlotPlace> placeOf(double x, double y) const;
};

/// Draws a plot over a white ground of this size, with text of `textHeight`, in the units of the
/// surface. Returns nothing where the plotting library is missing or there is no room.
std::optional<PlotFrame> drawPlot(cairo_t* cairo, double width, double height, double textHeight,
                                  const PlotContent& content);

}  // namespace toolkit
