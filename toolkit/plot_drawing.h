#pragma once

#include <optional>
#include <string>
#include <vector>

#include "toolkit/drawing.h"
#include "toolkit/plot_frame.h"
#include "toolkit/plot_series.h"

namespace toolkit {

// What an axis measures, and in which unit.
struct PlotAxis {
    std::string quantity;
    std::string unit;
};

// A text that stays at a point.
struct PlotPin {
    PlotPoint point;
    std::string text;
};

// What a plot shows, whatever it is drawn on.
struct PlotContent {
    bool isEmpty() const;

    std::string title;
    PlotAxis x;
    PlotAxis y;
    std::vector<PlotSeries> series;
    std::vector<PlotPin> pins;
    bool hasGrid = true;
    std::string whenEmpty = {};  // stands in place of the axes where there are no points
};

// How a plot is drawn: lines and marks are in proportion to the text.
struct PlotLook {
    std::string font = "Sans";
    double textHeight = 10.0;  // the size of the font, in the units of the surface
    Colour ground{1.0, 1.0, 1.0};
    Colour ink{0.0, 0.0, 0.0};
    bool hasMore = true;  // whether arrowheads say that there is more out of view
};

// The colour of a series on a light or a dark ground.
Colour PlotColour(std::size_t number, const Colour& ground);

// Where the parts of a plot were drawn.
struct DrawnPlot {
    struct Box {
        double x = 0.0;
        double y = 0.0;
        double width = 0.0;
        double height = 0.0;
    };

    // The number of the pin whose text or point is at a place; beyond the last one where none is.
    std::size_t pinAt(const PlotPlace& place) const;

    PlotFrame frame;
    std::vector<Box> pins;                   // their texts; empty ones of what is out of view
    std::vector<std::optional<Box>> labels;  // of the series
};

// Draws a plot on a surface of this size. Returns nothing where there is no room, or nothing but
// the sentence of an empty plot to draw.
std::optional<DrawnPlot> DrawPlot(cairo_t* cairo, double width, double height, const PlotLook& look,
                                  const PlotContent& content, const PlotView& view);

}  // namespace toolkit
