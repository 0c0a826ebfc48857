#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace toolkit {

// A point in the units of the axes.
struct PlotPoint {
    double x = 0.0;
    double y = 0.0;
};

// A curve of a plot, or marks of one kind.
struct PlotSeries {
    enum class Style { Line, Dashed, LongDashed, Dotted, DashDotted, Markers };

    // What a curve is from its point `first` on: a kind of state, and how it is drawn.
    struct Part {
        std::string state;  // as "two phases"; empty where the name says it all
        Style style = Style::Line;
        std::size_t first = 0;
    };
    // Gives the point of the true curve at a share between 0 and 1 of the way from the point
    // `piece` to the next one.
    using Curve = std::function<PlotPoint(std::size_t piece, double share)>;

    explicit PlotSeries(std::string seriesName = {}, Style style = Style::Line,
                        std::size_t seriesColour = 0)
        : name(std::move(seriesName)), colour(seriesColour), parts{{"", style, 0}} {}

    void add(double pointX, double pointY) {
        x.push_back(pointX);
        y.push_back(pointY);
    }
    // The curve ends here, and goes on elsewhere.
    void addGap() { add(std::numeric_limits<double>::quiet_NaN(), 0.0); }
    // The curve is of this kind from its last point on.
    void change(const std::string& state, Style style) {
        if (x.empty()) {
            parts.clear();
        }
        parts.push_back({state, style, x.empty() ? 0 : x.size() - 1});
    }
    bool isMarks() const { return parts.front().style == Style::Markers; }
    std::size_t size() const { return x.size(); }
    // The point after the last one of a part.
    std::size_t endOf(std::size_t part) const {
        return part + 1 < parts.size() ? parts[part + 1].first + 1 : x.size();
    }
    // The kind of state at a point and on the way to the next one.
    const std::string& stateAt(std::size_t point) const {
        std::size_t part = parts.size() - 1;
        while (part > 0 && parts[part].first > point) {
            --part;
        }
        return parts[part].state;
    }

    // The colour of what stands back behind the rest.
    static constexpr std::size_t grey = std::numeric_limits<std::size_t>::max();
    // That of the axes.
    static constexpr std::size_t ink = grey - 1;

    std::string name;    // is read out and stands in the legend; an empty name does not
    std::string label;   // stands beside the curve; the name in the legend where there is no room
    std::string legend;  // stands in the legend in place of the name, once for all that have it
    std::string below;   // what the states below the curve are, which are shaded; empty for none
    std::size_t colour;  // of a palette of eight for colour-blind readers, or one of the above
    std::vector<double> x;
    std::vector<double> y;  // as many as x; a number that is not finite makes a gap
    std::vector<Part> parts;
    double weight = 1.0;        // how much wider its lines are than others
    std::size_t labelFrom = 0;  // the first of the parts that the label may stand beside
    Curve between;              // where there is none the curve is straight between its points
};

// A point of a curve: at a share of the way from one of its points to the next one.
struct PlotPosition {
    std::size_t series = 0;
    std::size_t point = 0;
    double share = 0.0;

    bool operator==(const PlotPosition&) const = default;
};

}  // namespace toolkit
