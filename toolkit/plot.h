#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "toolkit/control.h"
#include "toolkit/layout.h"

namespace toolkit {

/// Points of one kind in a plot, joined by a line or marked one by one.
struct PlotSeries {
    enum class Style { line, dashed, dotted, markers };

    explicit PlotSeries(std::string seriesName = {}, Style seriesStyle = Style::line,
                        std::size_t seriesColour = 0)
        : name(std::move(seriesName)), style(seriesStyle), colour(seriesColour) {}

    void add(double pointX, double pointY) {
        x.push_back(pointX);
        y.push_back(pointY);
    }
    /// A point that only shapes the curve: it is drawn, but not read out.
    void addShape(double pointX, double pointY) {
        shape.push_back(x.size());
        add(pointX, pointY);
    }

    std::string name;  // stands in the legend; an empty name does not
    Style style;
    std::size_t colour;  // of a palette of six that colour-blind readers can tell apart
    std::vector<double> x;
    std::vector<double> y;           // as many as x; a number that is not finite makes a gap
    std::vector<std::size_t> shape;  // which of the points only shape the curve, ascending
};

/// A point of the series shown: the series, and the point in it.
struct PlotPosition {
    std::size_t series = 0;
    std::size_t point = 0;
};

/// Curves and marks over a pair of axes, drawn in whatever size the plot has.
class Plot : public Control {
  public:
    /// What runs when the pointer comes near another point that is read out, or near none.
    using PointHandler = std::function<void(std::optional<PlotPosition>)>;

    /// `description` tells a screen reader what the plot shows.
    Plot(std::string name, const std::string& description);
    ~Plot() override;

    /// The plot, asking for a size in lines of text and taking what is left over.
    Block sized(double widthInLines, double heightInLines);
    /// The titles of the axes with their units.
    void setAxes(const std::string& x, const std::string& y);
    /// Draws the x axis by powers of ten; series then need x above 0, other points are gaps.
    void setLogarithmicX(bool isLogarithmic);
    /// Shows these series in place of what stood before.
    void show(std::vector<PlotSeries> series);
    void clear() { show({}); }
    const std::vector<PlotSeries>& series() const { return series_; }
    void onPoint(PointHandler handler) { point_ = std::move(handler); }
    /// `failed` runs when series that are shown turn out not to be drawn, once for each `show`.
    void onFailure(Handler failed) { failed_ = std::move(failed); }
    /// Where a point is drawn, relative to the plot's upper left corner; nothing before it was.
    std::optional<Area> place(const PlotPosition& position) const;

    /// Writes the plot as a picture, in the format that the path ends with: .svg, .pdf or .png.
    /// Returns nothing, or the sentence that says what went wrong.
    std::optional<std::string> save(const std::string& path) const;

  private:
    struct Callbacks;
    struct Canvas;

    void draw();
    std::optional<PlotPosition> nearest(double x, double y) const;
    void pointerAt(std::optional<PlotPosition> position);

    std::string xTitle_;
    std::string yTitle_;
    bool isLogarithmicX_ = false;
    std::vector<PlotSeries> series_;
    PointHandler point_;
    Handler failed_;
    bool isFailureTold_ = false;
    std::optional<PlotPosition> pointed_;
    std::unique_ptr<Canvas> canvas_;
};

}  // namespace toolkit
