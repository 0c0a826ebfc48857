#include "toolkit/plot_drawing.h"

#include <cairo.h>
#include <glib.h>

#include <algorithm>
#include <array>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "toolkit/plot_library.h"

namespace toolkit {

namespace {

constexpr double dotsPerInch = 72.0;    // the device's own
constexpr double xTitleDistance = 3.2;  // from the axis, in heights of the text
/// A plot is drawn in units in which its text is so high, which suits the one size of the library's
/// dashes and marks, and scaled.
constexpr double usualText = 10.0;
constexpr double lineWidth = 0.2 * usualText;
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
    double size() const { return std::max(std::abs(low), std::abs(high)); }
    /// The range with some room at its ends, wide enough for labels that differ; an empty one
    /// becomes 0 to 1.
    Range widened() const {
        constexpr double margin = 0.04;
        constexpr double smallest = 1e-300;    // of the numbers that differ from 0 in a plot
        constexpr double narrowest = 1e-4;     // of the size of the numbers
        constexpr double neighbourhood = 0.1;  // of a single number
        if (low > high) {
            return {0.0, 1.0};
        }
        if (size() < smallest) {
            return {-1.0, 1.0};
        }
        const double width = high - low;
        const double room = width < narrowest * size() ? neighbourhood * size() : margin * width;
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

/// What the library shows as this text: '#' begins an escape sequence of it, and of what is no
/// UTF-8 it complains at the terminal.
std::string escaped(const std::string& text) {
    const std::unique_ptr<char, decltype(&g_free)> valid(g_utf8_make_valid(text.c_str(), -1),
                                                         &g_free);
    std::string result;
    for (const char c : std::string_view(valid.get())) {
        result += c;
        if (c == '#') {
            result += c;
        }
    }
    return result;
}

/// The labels of an axis, as far as their room has to be known before the library sets them.
struct Labels {
    static constexpr int mostDigits = 6;

    double characters = 0.0;  // of the longest
    bool hasFactor = false;   // whether a power of ten may stand apart from them

    static Labels of(const Range& range) {
        constexpr double ticks = 10.0;  // no more than that, and a digit for each
        const double first = std::floor(std::log10(range.size()));
        const double last =
            std::min(first, std::floor(std::log10((range.high - range.low) / ticks)));
        const double whole = std::max(first, 0.0) + 1.0;
        const double digits = std::max(first, 0.0) - std::min(last, 0.0) + 1.0;
        const double sign = range.low < 0.0 ? 1.0 : 0.0;
        if (digits <= mostDigits) {
            return {sign + digits + (digits > whole ? 1.0 : 0.0), whole >= mostDigits};
        }
        return {sign + std::min<double>(first - last + 1.0, mostDigits) + 1.0, true};
    }
};

/// Draws marks of one kind; of many that would hide one another only the first.
class Marks {
  public:
    Marks(const PlotLibrary& library, const char* symbol, double cell)
        : library_(library), symbol_(symbol), cell_(cell) {}

    void add(double x, double y) {
        const auto column = static_cast<std::int64_t>(std::floor(x / cell_));
        const auto row = static_cast<std::int64_t>(std::floor(y / cell_));
        if (taken_.insert({column, row}).second) {
            constexpr double lift = 0.17 * usualText;  // the library's marks lie too low
            const double middle = y + lift;
            library_.drawMarkers(1, &x, &middle, symbol_);
        }
    }

  private:
    const PlotLibrary& library_;
    const char* symbol_;
    double cell_;
    std::set<std::pair<std::int64_t, std::int64_t>> taken_;
};

/// Takes in the points of a line and gives out those that make a difference on the display: of
/// those in one column of pixels the first, the lowest, the highest and the last.
class Polyline {
  public:
    /// `single` takes the points that stand alone.
    Polyline(const PlotLibrary& library, Marks& single) : library_(library), single_(single) {}

    void add(double x, double y) {
        const double column = std::floor(x);
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
        if (xs_.empty()) {
            return;
        }
        if (isDot()) {
            single_.add(xs_[0], ys_[0]);
        } else {
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

    /// Whether all points lie within a pixel, where a line would hardly be seen.
    bool isDot() const {
        for (std::size_t i = 1; i < xs_.size(); ++i) {
            if (std::abs(xs_[i] - xs_[0]) > 1.0 || std::abs(ys_[i] - ys_[0]) > 1.0) {
                return false;
            }
        }
        return true;
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
    Marks& single_;
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

/// What a text takes in the library's font.
double widthOf(cairo_t* cairo, const std::string& text) {
    constexpr double pixelsPerPoint = 96.0 / dotsPerInch;
    cairo_select_font_face(cairo, "sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cairo, pixelsPerPoint * usualText);
    cairo_text_extents_t extents;
    cairo_text_extents(cairo, text.c_str(), &extents);
    return extents.x_advance;
}

/// One plot being drawn, in units in which the text has its usual height.
class Drawer {
  public:
    Drawer(const PlotLibrary& library, double width, double height, const PlotContent& content)
        : library_(library), width_(width), height_(height), content_(content) {}

    std::optional<PlotFrame> draw(cairo_t* cairo);

  private:
    struct Legend {
        static constexpr double row = 1.8;  // heights of the text

        std::vector<const PlotSeries*> series;
        PLINT columns = 1;

        PLINT count() const { return static_cast<PLINT>(series.size()); }
        PLINT rows() const { return (count() + columns - 1) / columns; }
        /// In heights of the text, with the room above and below it.
        double height() const { return 1.5 + row * rows(); }
    };

    void measureRanges();
    bool layOut(cairo_t* cairo);
    void planLegend(cairo_t* cairo);
    double legendWidth(double widestName) const;
    void prepare() const;
    void drawAxes() const;
    void drawSeries(const PlotSeries& series) const;
    void drawLegend() const;
    PlotFrame frame() const;

    const PlotLibrary& library_;
    double width_;
    double height_;
    const PlotContent& content_;
    bool isLogarithmicX_ = false;
    Range x_;
    Range y_;
    Legend legend_;
    double left_ = 0.0;
    double right_ = 0.0;
    double bottom_ = 0.0;
    double top_ = 0.0;
    double yTitle_ = 0.0;  // its distance from the axis, in heights of the text
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
    // Fewer have too few labels; more have no room for them, and what steps evenly over so many
    // lies in the last few of them anyway.
    constexpr double fewestDecades = 1.5;
    constexpr double mostDecades = 16.0;
    const double decades = x.high - x.low;
    if (isLogarithmicX_ && !(decades > fewestDecades && decades < mostDecades)) {
        isLogarithmicX_ = false;
        measure();
    }
    x_ = x.widened();
    y_ = y.widened();
}

/// What the library takes for the legend in its present columns.
double Drawer::legendWidth(double widestName) const {
    constexpr double sample = 3.3;  // with what is before and behind it
    constexpr double gaps = 2.5;    // of a box as wide as high: they grow with its width
    const double height = height_ - bottom_ - legend_.height() * usualText;
    const double ratio = (right_ - left_) / std::max(height, usualText);
    return legend_.columns * (widestName + (sample + gaps * ratio) * usualText);
}

/// As many columns as fit between the sides of the box.
void Drawer::planLegend(cairo_t* cairo) {
    double widest = 0.0;
    for (const PlotSeries& series : content_.series) {
        if (!series.name.empty() && !series.x.empty()) {
            legend_.series.push_back(&series);
            widest = std::max(widest, widthOf(cairo, escaped(series.name)));
        }
    }
    legend_.columns = std::max(legend_.count(), 1);
    while (legend_.columns > 1 && legendWidth(widest) > right_ - left_) {
        --legend_.columns;
    }
    if (legendWidth(widest) > 2.0 * width_ - left_ - right_) {  // it stands over the box's middle
        legend_ = {};
    }
}

void Drawer::drawAxes() const {
    library_.setColour(black);
    library_.setLineWidth(lineWidth / 2.0);
    library_.setLineStyle(1);
    library_.drawBox(isLogarithmicX_ ? "bclnst" : "bcnst", 0.0, 0, "bcnstv", 0.0, 0);
    library_.drawTitle("b", xTitleDistance, 0.5, 0.5, escaped(content_.xTitle).c_str());
    library_.drawTitle("l", yTitle_, 0.5, 0.5, escaped(content_.yTitle).c_str());
}

void Drawer::drawSeries(const PlotSeries& series) const {
    library_.setColour(colourOf(series));
    library_.setLineWidth(lineWidth);
    library_.setLineStyle(styleOf(series));
    constexpr std::size_t fewMarks = 1000;  // are all drawn
    const double cell = series.x.size() > fewMarks ? usualText / 2.0 : 1.0;
    const double xScale = (right_ - left_) / (x_.high - x_.low);
    const double yScale = (top_ - bottom_) / (y_.high - y_.low);
    const auto forEachPlace = [&](auto visit, auto gap) {
        forEachPoint(
            series, isLogarithmicX_,
            [&](double x, double y) { visit((x - x_.low) * xScale, (y - y_.low) * yScale); }, gap);
    };
    if (series.style == PlotSeries::Style::markers) {
        Marks marks(library_, markerOf(series), cell);
        forEachPlace([&](double x, double y) { marks.add(x, y); }, [] {});
        return;
    }
    Marks single(library_, markers[0], cell);
    Polyline line(library_, single);
    forEachPlace([&](double x, double y) { line.add(x, y); }, [&] { line.finish(); });
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
    texts.reserve(count);
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
    const std::vector<double> lineWidths(count, lineWidth);
    const std::vector<double> scales(count, 1.0);
    const std::vector<PLINT> once(count, 1);
    const double sample = 3.0 * usualText / (right_ - left_);
    library_.setColour(black);
    library_.setLineStyle(1);
    double width = 0.0;
    double height = 0.0;
    library_.drawLegend(&width, &height, PL_LEGEND_ROW_MAJOR, PL_POSITION_TOP | PL_POSITION_OUTSIDE,
                        0.0, 0.5 * usualText / (top_ - bottom_), sample, 0, 0, 0, legend_.rows(),
                        legend_.columns, legend_.count(), options.data(), 1.0, 1.0, Legend::row,
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

/// Gives the labels, the titles and the legend their room, in heights of the text, and the rest to
/// the box of the axes; small plots do without the legend. Returns false where nothing is left.
bool Drawer::layOut(cairo_t* cairo) {
    constexpr double digitWidth = 0.75;
    constexpr double factorHeight = 4.8;
    constexpr double factorWidth = 3.2;  // its half: it stands below the end of the axis
    constexpr double least = 3.0;
    const Labels x = isLogarithmicX_ ? Labels{} : Labels::of(x_);
    const Labels y = Labels::of(y_);
    yTitle_ = std::max(5.2, 2.0 + digitWidth * y.characters);
    left_ = (yTitle_ + 1.8) * usualText;
    const double right = std::max(1.5, digitWidth * x.characters / 2.0);
    right_ = width_ - std::max(right, x.hasFactor ? factorWidth : 0.0) * usualText;
    bottom_ = (xTitleDistance + 1.3) * usualText;
    if (right_ - left_ < least * usualText) {
        return false;
    }
    planLegend(cairo);
    const double top = std::max(1.5, y.hasFactor ? factorHeight : 0.0);
    const auto placeTop = [&] { top_ = height_ - std::max(top, legend_.height()) * usualText; };
    placeTop();
    if (top_ - bottom_ < least * Legend::row * usualText) {
        legend_ = {};
        placeTop();
    }
    return top_ - bottom_ >= least * usualText;
}

/// Sets what the library draws by.
void Drawer::prepare() const {
    constexpr double millimetresPerInch = 25.4;
    library_.advance(0);
    library_.setTextHeight(usualText * millimetresPerInch / dotsPerInch, 1.0);
    library_.setMajorTicks(0.0, 0.5);
    library_.setMinorTicks(0.0, 0.5);
    library_.setXDigits(Labels::mostDigits, 0);
    library_.setYDigits(Labels::mostDigits, 0);
    library_.setViewport(left_ / width_, right_ / width_, bottom_ / height_, top_ / height_);
    library_.setWindow(x_.low, x_.high, y_.low, y_.high);
}

std::optional<PlotFrame> Drawer::draw(cairo_t* cairo) {
    measureRanges();
    if (!layOut(cairo)) {
        return std::nullopt;
    }
    const PointLocale locale;
    PLINT stream = 0;
    library_.makeStream(&stream);
    library_.setDevice(PlotLibrary::device);
    library_.setPage(dotsPerInch, dotsPerInch, static_cast<PLINT>(std::lround(width_)),
                     static_cast<PLINT>(std::lround(height_)), 0, 0);
    library_.setColours(reds.data(), greens.data(), blues.data(), static_cast<PLINT>(reds.size()));
    if (!startPlot(library_)) {
        return std::nullopt;
    }
    library_.command(PLESC_DEVINIT, cairo);
    prepare();
    drawAxes();
    // The series in the units of the drawing: some functions of the library fail on huge numbers.
    library_.setWindow(0.0, right_ - left_, 0.0, top_ - bottom_);
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
    const double scale = textHeight / usualText;
    cairo_save(cairo);
    cairo_scale(cairo, scale, scale);
    auto frame = Drawer(*library, width / scale, height / scale, content).draw(cairo);
    cairo_restore(cairo);
    if (frame) {
        frame->xOrigin *= scale;
        frame->xScale *= scale;
        frame->yOrigin *= scale;
        frame->yScale *= scale;
    }
    return frame;
}

}  // namespace toolkit
