#include "toolkit/plot_drawing.h"

#include <cairo.h>

#include <algorithm>
#include <array>
#include <clocale>
#include <cmath>
#include <limits>
#include <string_view>
#include <vector>

#include "toolkit/plot_library.h"

namespace toolkit {

namespace {

constexpr double largest = 1e300;  // of the numbers drawn; a range of numbers has to be finite

/// White, black, and a palette that colour-blind readers can tell apart and that differs in
/// brightness in print (M. Okabe, K. Ito, Color Universal Design, 2008).
constexpr std::array<PLINT, 8> reds = {255, 0, 0, 213, 0, 204, 230, 86};
constexpr std::array<PLINT, 8> greens = {255, 0, 114, 94, 158, 121, 159, 180};
constexpr std::array<PLINT, 8> blues = {255, 0, 178, 0, 115, 167, 0, 233};
constexpr PLINT black = 1;
constexpr std::size_t firstColour = 2;
constexpr std::size_t colours = reds.size() - firstColour;
constexpr std::array<const char*, colours> markers = {"●", "▲", "■", "◆", "▼", "○"};

PLINT colourOf(const PlotSeries& series) {
    return static_cast<PLINT>(firstColour + series.colour % colours);
}

const char* markerOf(const PlotSeries& series) {
    return markers[series.colour % colours];
}

/// The line styles of the library.
PLINT styleOf(const PlotSeries& series) {
    constexpr PLINT solid = 1;
    constexpr PLINT shortDashes = 2;
    constexpr PLINT longDashes = 3;
    switch (series.style) {
        case PlotSeries::Style::dashed:
            return longDashes;
        case PlotSeries::Style::dotted:
            return shortDashes;
        default:
            return solid;
    }
}

struct Range {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void take(double value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
    /// The range with some room at its ends; an empty one becomes 0 to 1, one number gets
    /// neighbours that doubles and labels can tell from it.
    Range widened() const {
        constexpr double margin = 0.04;
        constexpr double narrowest = 1e-6;
        if (low > high) {
            return {0.0, 1.0};
        }
        const double size = std::max(std::abs(low), std::abs(high));
        const double least = size > 0.0 ? narrowest * size : 1.0;
        const double room = std::max(margin * (high - low), high - low < least ? least : 0.0);
        return {low - room, high + room};
    }
};

bool isDrawn(double x, double y, bool isLogarithmicX) {
    return std::abs(x) < largest && std::abs(y) < largest && (!isLogarithmicX || x > 0.0);
}

double scaled(double x, bool isLogarithmicX) {
    return isLogarithmicX ? std::log10(x) : x;
}

/// Calls `visit(x, y)` with each point that is drawn, x on the scale of the axis, and `gap()` where
/// one is not.
template <class Visit, class Gap>
void forEachPoint(const PlotSeries& series, bool isLogarithmicX, Visit visit, Gap gap) {
    for (std::size_t i = 0; i < series.x.size(); ++i) {
        if (isDrawn(series.x[i], series.y[i], isLogarithmicX)) {
            visit(scaled(series.x[i], isLogarithmicX), series.y[i]);
        } else {
            gap();
        }
    }
}

/// '#' begins an escape sequence of the library.
std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        result += c;
        if (c == '#') {
            result += c;
        }
    }
    return result;
}

/// Takes in the points of a line and gives out those that make a difference on the display: of
/// those in one column of pixels the first, the lowest, the highest and the last.
class Polyline {
  public:
    Polyline(const PlotLibrary& library, const Range& x, double width)
        : library_(library), x_(x), columns_(width) {}

    void add(double x, double y) {
        const double column = std::floor((x - x_.low) / (x_.high - x_.low) * columns_);
        if (column != column_) {
            flushColumn();
            column_ = column;
            keep(x, y);
        }
        if (y < low_.y) {
            low_ = {x, y, count_};
        }
        if (y > high_.y) {
            high_ = {x, y, count_};
        }
        last_ = {x, y, count_};
        ++count_;
    }

    /// Draws what was taken in since the last time.
    void finish() {
        flushColumn();
        column_ = std::numeric_limits<double>::quiet_NaN();
        if (xs_.size() == 1) {  // a line of one point
            library_.drawMarkers(1, xs_.data(), ys_.data(), markers[0]);
        } else if (!xs_.empty()) {
            library_.drawLine(static_cast<PLINT>(xs_.size()), xs_.data(), ys_.data());
        }
        xs_.clear();
        ys_.clear();
        count_ = 0;
    }

  private:
    struct Point {
        double x;
        double y;
        std::size_t position;
    };
    static constexpr Point lowest{0.0, std::numeric_limits<double>::infinity(), 0};
    static constexpr Point highest{0.0, -std::numeric_limits<double>::infinity(), 0};

    void keep(double x, double y) {
        const bool isNew = xs_.empty() || xs_.back() != x || ys_.back() != y;
        if (isNew) {
            xs_.push_back(x);
            ys_.push_back(y);
        }
    }

    void flushColumn() {
        if (low_.y <= high_.y) {
            const bool lowFirst = low_.position < high_.position;
            const Point& first = lowFirst ? low_ : high_;
            const Point& second = lowFirst ? high_ : low_;
            keep(first.x, first.y);
            keep(second.x, second.y);
            keep(last_.x, last_.y);
        }
        low_ = lowest;
        high_ = highest;
    }

    const PlotLibrary& library_;
    Range x_;
    double columns_;
    double column_ = std::numeric_limits<double>::quiet_NaN();
    Point low_ = lowest;
    Point high_ = highest;
    Point last_{};
    std::size_t count_ = 0;
    std::vector<double> xs_;
    std::vector<double> ys_;
};

/// Numbers with a point in the library, whatever the locale.
class PointLocale {
  public:
    PointLocale()
        : own_(newlocale(LC_NUMERIC_MASK, "C", duplocale(uselocale(nullptr)))),
          before_(uselocale(own_)) {}
    PointLocale(const PointLocale&) = delete;
    PointLocale& operator=(const PointLocale&) = delete;
    ~PointLocale() {
        uselocale(before_);
        freelocale(own_);
    }

  private:
    locale_t own_;
    locale_t before_;
};

/// One plot being drawn; lengths in the units of the surface.
class Drawer {
  public:
    Drawer(const PlotLibrary& library, double width, double height, double textHeight,
           const PlotContent& content)
        : library_(library), width_(width), height_(height), text_(textHeight), content_(content) {}

    std::optional<PlotFrame> draw(cairo_t* cairo);

  private:
    struct Legend {
        std::vector<const PlotSeries*> series;
        PLINT columns = 1;
        PLINT rows = 0;
    };

    void measureRanges();
    void planLegend();
    void drawAxes() const;
    void drawSeries(const PlotSeries& series) const;
    void drawLegend() const;
    PlotFrame frame() const;

    const PlotLibrary& library_;
    double width_;
    double height_;
    double text_;
    const PlotContent& content_;
    bool isLogarithmicX_ = false;
    Range x_;
    Range y_;
    Legend legend_;
    double left_ = 0.0;
    double right_ = 0.0;
    double bottom_ = 0.0;
    double top_ = 0.0;
};

void Drawer::measureRanges() {
    Range x;
    Range y;
    const auto measure = [&] {
        x = {};
        y = {};
        for (const PlotSeries& series : content_.series) {
            forEachPoint(
                series, isLogarithmicX_,
                [&](double pointX, double pointY) {
                    x.take(pointX);
                    y.take(pointY);
                },
                [] {});
        }
    };
    isLogarithmicX_ = content_.isLogarithmicX;
    measure();
    constexpr double fewestDecades = 1.5;  // fewer have too few labels
    if (isLogarithmicX_ && !(x.high - x.low > fewestDecades)) {
        isLogarithmicX_ = false;
        measure();
    }
    x_ = x.widened();
    y_ = y.widened();
}

void Drawer::planLegend() {
    constexpr double characterWidth = 0.62;  // of the height of the text
    constexpr double sampleCharacters = 9.0;
    double widest = 0.0;
    for (const PlotSeries& series : content_.series) {
        if (!series.name.empty() && !series.x.empty()) {
            legend_.series.push_back(&series);
            const auto length = static_cast<double>(series.name.size());
            widest = std::max(widest, (length + sampleCharacters) * characterWidth * text_);
        }
    }
    if (!legend_.series.empty()) {
        const auto count = static_cast<PLINT>(legend_.series.size());
        const double fitting = std::floor((right_ - left_) / widest);
        legend_.columns = static_cast<PLINT>(std::clamp(fitting, 1.0, static_cast<double>(count)));
        legend_.rows = (count + legend_.columns - 1) / legend_.columns;
    }
}

void Drawer::drawAxes() const {
    library_.setColour(black);
    library_.setLineWidth(1.0);
    library_.setLineStyle(1);
    library_.drawBox(isLogarithmicX_ ? "bclnst" : "bcnst", 0.0, 0, "bcnstv", 0.0, 0);
    // Distances from the box in heights of the text.
    library_.drawTitle("b", 3.2, 0.5, 0.5, escaped(content_.xTitle).c_str());
    library_.drawTitle("l", 5.2, 0.5, 0.5, escaped(content_.yTitle).c_str());
}

void Drawer::drawSeries(const PlotSeries& series) const {
    constexpr double lineWidth = 2.0;
    library_.setColour(colourOf(series));
    library_.setLineWidth(lineWidth);
    library_.setLineStyle(styleOf(series));
    if (series.style == PlotSeries::Style::markers) {
        forEachPoint(
            series, isLogarithmicX_,
            [&](double x, double y) { library_.drawMarkers(1, &x, &y, markerOf(series)); }, [] {});
        return;
    }
    Polyline line(library_, x_, right_ - left_);
    forEachPoint(
        series, isLogarithmicX_, [&](double x, double y) { line.add(x, y); },
        [&] { line.finish(); });
    line.finish();
}

void Drawer::drawLegend() const {
    const std::size_t count = legend_.series.size();
    if (count == 0) {
        return;
    }
    std::vector<PLINT> options;
    std::vector<PLINT> colour;
    std::vector<PLINT> style;
    std::vector<std::string> names;
    std::vector<const char*> texts;
    std::vector<const char*> symbols;
    for (const PlotSeries* const series : legend_.series) {
        const bool isMarked = series->style == PlotSeries::Style::markers;
        options.push_back(isMarked ? PL_LEGEND_SYMBOL : PL_LEGEND_LINE);
        colour.push_back(colourOf(*series));
        style.push_back(styleOf(*series));
        names.push_back(escaped(series->name));
        symbols.push_back(markerOf(*series));
    }
    for (const std::string& name : names) {
        texts.push_back(name.c_str());
    }
    const std::vector<PLINT> textColours(count, black);
    const std::vector<double> lineWidths(count, 2.0);
    const std::vector<double> scales(count, 1.0);
    const std::vector<PLINT> once(count, 1);
    const double sample = 3.0 * text_ / (right_ - left_);
    library_.setColour(black);
    library_.setLineStyle(1);
    double width = 0.0;
    double height = 0.0;
    library_.drawLegend(&width, &height, PL_LEGEND_ROW_MAJOR,
                        PL_POSITION_TOP | PL_POSITION_OUTSIDE, 0.0,
                        0.5 * text_ / (top_ - bottom_), sample, 0, 0, 0, legend_.rows,
                        legend_.columns, static_cast<PLINT>(count), options.data(), 1.0, 1.0, 1.8,
                        0.0, textColours.data(), texts.data(), nullptr, nullptr, nullptr, nullptr,
                        colour.data(), style.data(), lineWidths.data(), colour.data(),
                        scales.data(), once.data(), symbols.data());
}

PlotFrame Drawer::frame() const {
    const double xScale = (right_ - left_) / (x_.high - x_.low);
    const double yScale = (top_ - bottom_) / (y_.high - y_.low);
    return {isLogarithmicX_, left_ - x_.low * xScale, xScale, height_ - bottom_ + y_.low * yScale,
            -yScale};
}

std::optional<PlotFrame> Drawer::draw(cairo_t* cairo) {
    // In heights of the text, as the labels and titles need them.
    left_ = 7.0 * text_;
    right_ = width_ - 1.5 * text_;
    bottom_ = 4.5 * text_;
    planLegend();
    top_ = height_ - (1.5 + 1.8 * legend_.rows) * text_;
    const double least = 3.0 * text_;
    if (right_ - left_ < least || top_ - bottom_ < least) {
        return std::nullopt;
    }
    measureRanges();

    const PointLocale locale;
    constexpr double dotsPerInch = 72.0;  // the device's own
    constexpr double millimetresPerInch = 25.4;
    PLINT stream = 0;
    library_.makeStream(&stream);
    library_.setDevice("extcairo");
    library_.setPage(dotsPerInch, dotsPerInch, static_cast<PLINT>(std::lround(width_)),
                     static_cast<PLINT>(std::lround(height_)), 0, 0);
    library_.setColours(reds.data(), greens.data(), blues.data(), static_cast<PLINT>(reds.size()));
    library_.initialise();
    library_.command(PLESC_DEVINIT, cairo);
    library_.advance(0);
    library_.setTextHeight(text_ * millimetresPerInch / dotsPerInch, 1.0);
    library_.setMajorTicks(0.0, 0.5);
    library_.setMinorTicks(0.0, 0.5);
    constexpr PLINT mostDigits = 6;
    library_.setXDigits(mostDigits, 0);
    library_.setYDigits(mostDigits, 0);
    library_.setViewport(left_ / width_, right_ / width_, bottom_ / height_, top_ / height_);
    library_.setWindow(x_.low, x_.high, y_.low, y_.high);
    drawAxes();
    for (const PlotSeries& series : content_.series) {
        drawSeries(series);
    }
    drawLegend();
    library_.endStream();
    return frame();
}

}  // namespace

std::optional<PlotPlace> PlotFrame::placeOf(double x, double y) const {
    if (!isDrawn(x, y, isLogarithmicX)) {
        return std::nullopt;
    }
    return PlotPlace{xOrigin + scaled(x, isLogarithmicX) * xScale, yOrigin + y * yScale};
}

std::optional<PlotFrame> drawPlot(cairo_t* cairo, double width, double height, double textHeight,
                                  const PlotContent& content) {
    cairo_save(cairo);
    cairo_set_source_rgb(cairo, 1.0, 1.0, 1.0);
    cairo_paint(cairo);
    cairo_restore(cairo);
    const PlotLibrary* const library = plotLibrary();
    if (library == nullptr) {
        return std::nullopt;
    }
    return Drawer(*library, width, height, textHeight, content).draw(cairo);
}

}  // namespace toolkit
