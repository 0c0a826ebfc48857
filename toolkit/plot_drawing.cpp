#include "toolkit/plot_drawing.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <set>
#include <utility>

#include "toolkit/plot_line.h"
#include "toolkit/plot_ticks.h"

namespace toolkit {

namespace {

using Style = PlotSeries::Style;

// All in heights of the text.
constexpr double line = 1.3;  // from one line of text to the next
constexpr double gap = 0.4;   // between parts of the drawing
constexpr double majorTick = 0.5;
constexpr double minorTick = 0.25;
constexpr double curveWidth = 0.15;
constexpr double axisWidth = 0.07;
constexpr double markRadius = 0.36;
constexpr double sampleWidth = 2.6;  // of a line in the legend
constexpr double occupancyCell = 0.25;
constexpr double shade = 0.15;  // opacity of what lies below a curve

// Palettes that colour-blind readers can tell apart, and whose colours stand out from a light and
// from a dark ground (after M. Okabe, K. Ito, Color Universal Design, 2008).
constexpr std::size_t colours = 8;
constexpr std::array<Colour, colours> onLight = {{{0.00, 0.45, 0.70},
                                                  {0.80, 0.33, 0.00},
                                                  {0.00, 0.56, 0.41},
                                                  {0.70, 0.33, 0.53},
                                                  {0.62, 0.52, 0.00},
                                                  {0.42, 0.20, 0.78},
                                                  {0.40, 0.20, 0.05},
                                                  {0.75, 0.00, 0.25}}};
constexpr std::array<Colour, colours> onDark = {{{0.34, 0.71, 0.91},
                                                 {1.00, 0.58, 0.30},
                                                 {0.25, 0.82, 0.62},
                                                 {0.95, 0.65, 0.80},
                                                 {0.94, 0.89, 0.26},
                                                 {0.75, 0.62, 1.00},
                                                 {0.78, 0.70, 0.38},
                                                 {1.00, 0.42, 0.52}}};

Colour Mixed(const Colour& one, const Colour& other, double share) {
    return {one.red + share * (other.red - one.red), one.green + share * (other.green - one.green),
            one.blue + share * (other.blue - one.blue)};
}

void SetSource(cairo_t* cairo, const Colour& colour, double opacity = 1.0) {
    cairo_set_source_rgba(cairo, colour.red, colour.green, colour.blue, opacity);
}

struct Unreferencer {
    void operator()(void* object) const { g_object_unref(object); }
};

// Sets text in the font of the look.
class Typesetter {
  public:
    Typesetter(cairo_t* cairo, const PlotLook& look)
        : cairo_(cairo), layout_(pango_cairo_create_layout(cairo)) {
        // As wide on the display as in print.
        PangoContext* const context = pango_layout_get_context(layout_.get());
        cairo_font_options_t* const options = cairo_font_options_create();
        cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
        pango_cairo_context_set_font_options(context, options);
        cairo_font_options_destroy(options);
        pango_context_set_round_glyph_positions(context, FALSE);
        PangoFontDescription* const font = pango_font_description_from_string(look.font.c_str());
        pango_font_description_set_absolute_size(font, look.textHeight * PANGO_SCALE);
        pango_layout_set_font_description(layout_.get(), font);
        pango_font_description_free(font);
    }

    PlotPlace sizeOf(const std::string& text) {
        set(text);
        int width = 0;
        int height = 0;
        pango_layout_get_size(layout_.get(), &width, &height);
        return {static_cast<double>(width) / PANGO_SCALE,
                static_cast<double>(height) / PANGO_SCALE};
    }

    // `x` and `y`: a place in the text's own box, as shares of its width and height, that comes to
    // `place`.
    void draw(const std::string& text, const PlotPlace& place, double x, double y) {
        const PlotPlace size = sizeOf(text);
        cairo_move_to(cairo_, place.x - x * size.x, place.y - y * size.y);
        pango_cairo_show_layout(cairo_, layout_.get());
    }
    // At the present place.
    void show(const std::string& text) {
        set(text);
        pango_cairo_show_layout(cairo_, layout_.get());
    }

    // Breaks texts into centred lines of this width, at most so many; of a longer text the end
    // stands, and an ellipsis before it.
    void wrap(double width, int lines) {
        pango_layout_set_width(layout_.get(), static_cast<int>(width * PANGO_SCALE));
        pango_layout_set_height(layout_.get(), -lines);
        pango_layout_set_ellipsize(layout_.get(), PANGO_ELLIPSIZE_MIDDLE);
        pango_layout_set_alignment(layout_.get(), PANGO_ALIGN_CENTER);
    }
    void unwrap() {
        pango_layout_set_width(layout_.get(), -1);
        pango_layout_set_ellipsize(layout_.get(), PANGO_ELLIPSIZE_NONE);
        pango_layout_set_alignment(layout_.get(), PANGO_ALIGN_LEFT);
    }

  private:
    void set(const std::string& text) {
        const std::unique_ptr<char, decltype(&g_free)> valid(
            g_utf8_make_valid(text.c_str(), static_cast<gssize>(text.size())), &g_free);
        pango_layout_set_text(layout_.get(), valid.get(), -1);
    }

    cairo_t* cairo_;
    std::unique_ptr<PangoLayout, Unreferencer> layout_;
};

using Box = DrawnPlot::Box;

// Which parts of the frame something is drawn in.
class Occupancy {
  public:
    Occupancy(const PlotFrame& frame, double cell)
        : frame_(frame),
          cell_(cell),
          columns_(1 + static_cast<std::size_t>(frame.width() / cell)),
          rows_(1 + static_cast<std::size_t>(frame.height() / cell)),
          cells_(columns_ * rows_, false) {}

    void take(const PlotPlace& place) {
        if (frame_.contains(place)) {
            cells_[index(place.x, place.y)] = true;
        }
    }
    // The straight way between two places in the frame.
    void take(const PlotPlace& one, const PlotPlace& other) {
        const double steps = std::ceil(2.0 * std::hypot(other.x - one.x, other.y - one.y) / cell_);
        for (int i = 0; i <= steps; ++i) {
            const double share = steps > 0.0 ? i / steps : 0.0;
            take({one.x + share * (other.x - one.x), one.y + share * (other.y - one.y)});
        }
    }
    void fill(const Box& box) {
        for (int i = 0; i * cell_ < box.height + cell_; ++i) {
            const double row = box.y + std::min(i * cell_, box.height);
            take({box.x, row}, {box.x + box.width, row});
        }
    }
    bool isFree(const Box& box) const {
        for (int i = 0; i * cell_ < box.height + cell_; ++i) {
            for (int k = 0; k * cell_ < box.width + cell_; ++k) {
                const double column = box.x + std::min(k * cell_, box.width);
                const double row = box.y + std::min(i * cell_, box.height);
                if (frame_.contains({column, row}) && cells_[index(column, row)]) return false;
            }
        }
        return true;
    }

  private:
    std::size_t index(double x, double y) const {
        return static_cast<std::size_t>((y - frame_.top) / cell_) * columns_ +
               static_cast<std::size_t>((x - frame_.left) / cell_);
    }

    const PlotFrame& frame_;
    double cell_;
    std::size_t columns_;
    std::size_t rows_;
    std::vector<bool> cells_;
};

// A row of the legend.
struct Entry {
    std::string text;
    Style style = Style::Line;
    std::size_t colour = 0;
    bool isShade = false;
    bool isInk = false;  // it says what a line style means, whatever the colour
    double weight = 1.0;
    double width = 0.0;
    PlotPlace place{};  // its left edge and middle, in the legend
};

// A curve's name is said by its colour or its label, what its parts are by their line styles.
// `labels`: where those of the series stand.
std::vector<Entry> EntriesOf(const std::vector<PlotSeries>& series,
                             const std::vector<std::optional<Box>>& labels) {
    std::vector<Entry> entries;
    std::vector<Entry> states;
    const auto add = [](std::vector<Entry>& those, const Entry& entry, bool isOnce) {
        const bool isKnown = std::any_of(those.begin(), those.end(), [&entry](const Entry& other) {
            return other.text == entry.text && (!entry.isInk || other.style == entry.style);
        });
        if (!entry.text.empty() && !(isOnce && isKnown)) {
            those.push_back(entry);
        }
    };
    for (std::size_t i = 0; i < series.size(); ++i) {
        const PlotSeries& each = series[i];
        if (each.size() == 0) continue;
        const bool isPlain = each.parts.size() == 1 && each.parts[0].state.empty();
        const Style style = isPlain ? each.parts[0].style : Style::Line;
        if (!each.legend.empty()) {
            add(entries, {each.legend, style, each.colour, false, false, each.weight}, true);
        } else if (!labels[i]) {
            add(entries, {each.name, style, each.colour, false, false, each.weight}, false);
        }
        add(entries, {each.below, Style::Line, each.colour, true}, true);
        for (const PlotSeries::Part& part : each.parts) {
            add(states, {part.state, part.style, 0, false, true}, true);
        }
    }
    const auto isMark = [](const Entry& entry) { return entry.style == Style::Markers; };
    entries.insert(std::find_if(entries.begin(), entries.end(), isMark), states.begin(),
                   states.end());
    return entries;
}

// One plot being drawn.
class Drawer {
  public:
    Drawer(cairo_t* cairo, const PlotLook& look, const PlotContent& content, const PlotView& view)
        : cairo_(cairo),
          look_(look),
          content_(content),
          view_(view),
          text_(cairo, look),
          unit_(look.textHeight) {}

    std::optional<DrawnPlot> draw(double width, double height);
    void drawWhenEmpty(double width, double height);

  private:
    bool layOut(double width, double height);
    bool layOutFrame(double width, double height);
    bool placeLegendInside();
    void planLegendBelow(double width, double height);
    void takePlaces(Occupancy& occupancy, const PlotSeries* without = nullptr);
    void placeLabels();
    std::optional<Box> labelPlace(const PlotSeries& series, const Occupancy& occupancy);
    void listEntries();
    Box boxOf(const PlotPin& pin, const PlotPlace& place);
    void drawGrid() const;
    void drawAxes();
    void drawTick(double value, bool isX, double length) const;
    void drawTitles();
    void drawShade(const PlotSeries& series) const;
    void drawSeries(const PlotSeries& series) const;
    void drawLines(const std::vector<Polyline>& lines) const;
    void drawColumns(const std::vector<ColumnSpan>& columns, double weight) const;
    void addMark(const PlotPlace& place, std::size_t number) const;
    void drawMarks(std::size_t number) const;
    void drawMore() const;
    void drawLabels();
    Box drawPin(const PlotPin& pin);
    void drawLegend();
    void setLine(Style style, double weight = 1.0) const;
    void setColour(std::size_t number) const {
        SetSource(cairo_, PlotColour(number, look_.ground));
    }

    cairo_t* cairo_;
    const PlotLook& look_;
    const PlotContent& content_;
    const PlotView& view_;
    Typesetter text_;
    double unit_;
    std::vector<std::optional<Box>> labels_;  // of the series
    std::vector<bool> areUnlabelled_;         // whose labels have found no place in some layout
    std::vector<Entry> entries_;
    Box legend_;
    bool isLegendBelow_ = false;
    double titleWidth_ = 0.0;
    double titleHeight_ = 0.0;
    double yLabelWidth_ = 0.0;
    PlotTicks xTicks_;
    PlotTicks yTicks_;
    PlotFrame frame_;
};

std::string AxisTitle(const PlotAxis& axis, int exponent) {
    const std::string factor = exponent == 0 ? "" : PowerOfTen(exponent);
    const std::string unit = factor + (factor.empty() || axis.unit.empty() ? "" : " ") + axis.unit;
    return unit.empty() ? axis.quantity : axis.quantity + " (" + unit + ")";
}

// Gives the labels, the titles and a legend below their room and the rest to the frame; returns
// false where nothing is left.
bool Drawer::layOutFrame(double width, double height) {
    constexpr double least = 5.0;
    constexpr double rowsForLabel = 2.4;
    const double top = (content_.title.empty() ? unit_ : titleHeight_ + 2.0 * gap * unit_);
    const double below = isLegendBelow_ ? legend_.height + gap * unit_ : 0.0;
    const double bottom = height - below - (2.0 * line + majorTick + gap) * unit_;
    if (bottom - top < least * unit_) return false;
    yTicks_ = TicksOf(view_.limits().y, (bottom - top) / (rowsForLabel * unit_));
    yLabelWidth_ = 0.0;
    for (const PlotTicks::Major& tick : yTicks_.major) {
        yLabelWidth_ = std::max(yLabelWidth_, text_.sizeOf(tick.label).x);
    }
    const double left = yLabelWidth_ + (line + 2.0 * gap + majorTick) * unit_;
    double labelWidth = 3.0 * unit_;
    double right = width - unit_;
    constexpr int attempts = 3;  // the labels depend on their number, and that on their width
    for (int i = 0; i < attempts; ++i) {
        right = width - std::max(0.5 * labelWidth + gap * unit_, unit_);
        if (right - left < least * unit_) return false;
        xTicks_ = TicksOf(view_.limits().x, (right - left) / (labelWidth + 1.5 * unit_));
        double widest = 0.0;
        for (const PlotTicks::Major& tick : xTicks_.major) {
            widest = std::max(widest, text_.sizeOf(tick.label).x);
        }
        if (widest <= labelWidth && i > 0) break;
        labelWidth = widest;
    }
    frame_ = PlotFrame(view_.limits(), left, top, right, bottom);
    return true;
}

// Where the text of a pin stands: beside its point, in the frame.
Box Drawer::boxOf(const PlotPin& pin, const PlotPlace& place) {
    const PlotPlace size = text_.sizeOf(pin.text);
    const double width = size.x + 2.0 * gap * unit_;
    const double height = size.y + gap * unit_;
    const double away = 0.8 * unit_;
    const bool isRight = place.x + away + width <= frame_.right;
    const bool isAbove = place.y - away - height >= frame_.top;
    return {std::max(isRight ? place.x + away : place.x - away - width, frame_.left),
            isAbove ? place.y - away - height : place.y + away, width, height};
}

// The curves, pins and labels in the frame, but for one of the curves.
void Drawer::takePlaces(Occupancy& occupancy, const PlotSeries* without) {
    for (const PlotSeries& series : content_.series) {
        if (&series == without) continue;
        for (std::size_t part = 0; part < series.parts.size(); ++part) {
            if (series.isMarks()) {
                const double radius = markRadius * unit_;
                Trace(
                    series, part, frame_,
                    [&occupancy, radius](const PlotSpot& spot) {
                        for (const double side : {-radius, 0.0, radius}) {
                            occupancy.take({spot.place.x + side, spot.place.y});
                            occupancy.take({spot.place.x, spot.place.y + side});
                        }
                    },
                    [] {});
                continue;
            }
            TracePolylines(series, part, frame_, [&occupancy](const Polyline& curve) {
                for (std::size_t i = 0; i < curve.size(); ++i) {
                    occupancy.take(curve[i > 0 ? i - 1 : 0], curve[i]);
                }
            });
        }
    }
    for (const PlotPin& pin : content_.pins) {
        if (const auto place = frame_.placeOf(pin.point); place && frame_.contains(*place)) {
            occupancy.fill(boxOf(pin, *place));
        }
    }
    for (const std::optional<Box>& label : labels_) {
        if (label) {
            occupancy.fill(*label);
        }
    }
}

// Beside the curve, as near to its end as there is room, or else on it; nothing where there is
// none. A curve out of view has an empty place.
std::optional<Box> Drawer::labelPlace(const PlotSeries& series, const Occupancy& occupancy) {
    const PlotPlace size = text_.sizeOf(series.label);
    std::vector<PlotPlace> places;
    for (std::size_t part = series.labelFrom; part < series.parts.size(); ++part) {
        TracePolylines(series, part, frame_, [&](const Polyline& curve) {
            for (std::size_t i = 1; i < curve.size(); ++i) {
                const double dx = curve[i].x - curve[i - 1].x;
                const double dy = curve[i].y - curve[i - 1].y;
                const int steps = static_cast<int>(std::hypot(dx, dy) / (0.5 * unit_)) + 1;
                for (int step = 1; step <= steps; ++step) {
                    const double share = static_cast<double>(step) / steps;
                    places.push_back({curve[i - 1].x + share * dx, curve[i - 1].y + share * dy});
                }
            }
        });
    }
    if (places.empty()) {
        return Box{};
    }
    const double away = gap * unit_;
    const double diagonal = 0.5 * away;
    const double edge = majorTick * unit_;
    const auto isRoom = [&](const Box& box, const Occupancy& taken) {
        return frame_.contains({box.x - edge, box.y - edge}) &&
               frame_.contains({box.x + size.x + edge, box.y + size.y + edge}) && taken.isFree(box);
    };
    std::reverse(places.begin(), places.end());
    for (const PlotPlace& place : places) {
        for (const Box& box :
             {Box{place.x - 0.5 * size.x, place.y - away - size.y, size.x, size.y},
              Box{place.x - 0.5 * size.x, place.y + away, size.x, size.y},
              Box{place.x + away, place.y - 0.5 * size.y, size.x, size.y},
              Box{place.x - away - size.x, place.y - 0.5 * size.y, size.x, size.y},
              Box{place.x + diagonal, place.y - diagonal - size.y, size.x, size.y},
              Box{place.x - diagonal - size.x, place.y - diagonal - size.y, size.x, size.y},
              Box{place.x + diagonal, place.y + diagonal, size.x, size.y},
              Box{place.x - diagonal - size.x, place.y + diagonal, size.x, size.y}}) {
            if (isRoom(box, occupancy)) return box;
        }
    }
    Occupancy others(frame_, occupancyCell * unit_);
    takePlaces(others, &series);
    for (const PlotPlace& place : places) {
        const Box box{place.x - 0.5 * size.x, place.y - 0.5 * size.y, size.x, size.y};
        if (isRoom(box, others)) return box;
    }
    return std::nullopt;
}

// Finds places for the labels of the curves, none of which stands over another thing.
void Drawer::placeLabels() {
    labels_.assign(content_.series.size(), std::nullopt);
    areUnlabelled_.resize(labels_.size(), false);
    const auto hasLabel = [](const PlotSeries& series) { return !series.label.empty(); };
    if (std::none_of(content_.series.begin(), content_.series.end(), hasLabel)) return;
    Occupancy occupancy(frame_, occupancyCell * unit_);
    takePlaces(occupancy);
    for (std::size_t i = 0; i < labels_.size(); ++i) {
        const PlotSeries& series = content_.series[i];
        if (hasLabel(series) && !areUnlabelled_[i]) {
            labels_[i] = labelPlace(series, occupancy);
            if (labels_[i]) {
                occupancy.fill(*labels_[i]);
            }
            areUnlabelled_[i] = !labels_[i];
        }
    }
}

void Drawer::listEntries() {
    entries_ = EntriesOf(content_.series, labels_);
    for (Entry& entry : entries_) {
        entry.width = text_.sizeOf(entry.text).x + (sampleWidth + gap) * unit_;
    }
}

// Puts the legend into a corner where nothing is; returns false where there is none.
bool Drawer::placeLegendInside() {
    constexpr double most = 0.6;  // of the frame
    legend_.width = 0.0;
    legend_.height = gap * unit_;
    for (Entry& entry : entries_) {
        entry.place = {gap * unit_, legend_.height + 0.5 * (line - gap) * unit_};
        legend_.width = std::max(legend_.width, entry.width + 2.0 * gap * unit_);
        legend_.height += line * unit_;
    }
    if (legend_.width > most * frame_.width() || legend_.height > most * frame_.height()) {
        return false;
    }
    Occupancy occupancy(frame_, occupancyCell * unit_);
    takePlaces(occupancy);
    const double margin = majorTick * unit_;
    for (const double y : {frame_.top + margin, frame_.bottom - margin - legend_.height}) {
        for (const double x : {frame_.right - margin - legend_.width, frame_.left + margin}) {
            legend_.x = x;
            legend_.y = y;
            if (occupancy.isFree(legend_)) return true;
        }
    }
    return false;
}

// In rows below the plot, as many entries in each as fit; without a legend where one does not.
void Drawer::planLegendBelow(double width, double height) {
    const double room = width - 2.0 * unit_;
    double right = 0.0;  // of what is in the row
    legend_.width = 0.0;
    legend_.height = line * unit_;
    for (Entry& entry : entries_) {
        if (entry.width > room) {
            entries_.clear();
            return;
        }
        if (right + entry.width > room) {
            right = 0.0;
            legend_.height += line * unit_;
        }
        entry.place = {right, legend_.height - 0.5 * line * unit_};
        legend_.width = std::max(legend_.width, right + entry.width);
        right += entry.width + unit_;
    }
    legend_.x = 0.5 * (width - legend_.width);
    legend_.y = height - legend_.height - gap * unit_;
    isLegendBelow_ = true;
}

bool Drawer::layOut(double width, double height) {
    constexpr double roomAtSides = 2.0;
    constexpr int titleLines = 3;
    titleWidth_ = width - roomAtSides * unit_;
    if (titleWidth_ < unit_) return false;
    if (!content_.title.empty()) {
        text_.wrap(titleWidth_, titleLines);
        titleHeight_ = text_.sizeOf(content_.title).y;
        text_.unwrap();
    }
    if (!layOutFrame(width, height)) return false;
    placeLabels();
    listEntries();
    if (entries_.empty() || placeLegendInside()) return true;
    std::size_t listed = 0;
    do {  // the names of curves whose labels have no place in the lower frame are listed too
        listed = entries_.size();
        planLegendBelow(width, height);
        if (!layOutFrame(width, height)) {
            entries_.clear();
            isLegendBelow_ = false;
            layOutFrame(width, height);
            placeLabels();
            return true;
        }
        placeLabels();
        listEntries();
    } while (entries_.size() > listed);
    planLegendBelow(width, height);
    return true;
}

void Drawer::setLine(Style style, double weight) const {
    const double width = curveWidth * unit_;
    cairo_set_line_width(cairo_, weight * width);
    cairo_set_line_cap(cairo_, CAIRO_LINE_CAP_BUTT);
    cairo_set_line_join(cairo_, CAIRO_LINE_JOIN_ROUND);
    const auto dash = [this, width](std::initializer_list<double> lengths) {
        std::vector<double> scaled;
        for (const double length : lengths) {
            scaled.push_back(length * width);
        }
        cairo_set_dash(cairo_, scaled.data(), static_cast<int>(scaled.size()), 0.0);
    };
    switch (style) {
        case Style::Dashed:
            return dash({5.0, 3.0});
        case Style::LongDashed:
            return dash({12.0, 4.0});
        case Style::Dotted:
            return dash({1.5, 2.0});
        case Style::DashDotted:
            return dash({8.0, 2.5, 1.5, 2.5});
        default:
            return dash({});
    }
}

// The marks differ in shape as well as in colour.
void Drawer::addMark(const PlotPlace& place, std::size_t number) const {
    constexpr std::array<int, colours> corners = {0, 3, 4, 4, 3, 0, 5, 6};
    constexpr std::array<double, colours> turns = {0.0, 0.75, 0.125, 0.0, 0.25, 0.0, 0.75, 0.0};
    const std::size_t shape = number % colours;
    const double radius = markRadius * unit_;
    cairo_new_sub_path(cairo_);
    if (corners[shape] == 0) {
        cairo_arc(cairo_, place.x, place.y, radius, 0.0, 2.0 * G_PI);
    }
    for (int i = 0; i < corners[shape]; ++i) {
        constexpr double wider = 1.2;  // as large to the eye as a circle
        const double angle = 2.0 * G_PI * (turns[shape] + static_cast<double>(i) / corners[shape]);
        cairo_line_to(cairo_, place.x + wider * radius * std::cos(angle),
                      place.y + wider * radius * std::sin(angle));
    }
    cairo_close_path(cairo_);
}

void Drawer::drawMarks(std::size_t number) const {
    constexpr std::size_t ring = 5;
    const bool isHollow = number % colours == ring;
    setLine(Style::Line);
    isHollow ? cairo_stroke(cairo_) : cairo_fill(cairo_);
}

// Of many marks that would hide one another only the first.
class Cells {
  public:
    explicit Cells(double size) : size_(size) {}
    bool take(const PlotPlace& place) {
        return taken_
            .insert({static_cast<std::int64_t>(std::floor(place.x / size_)),
                     static_cast<std::int64_t>(std::floor(place.y / size_))})
            .second;
    }

  private:
    double size_;
    std::set<std::pair<std::int64_t, std::int64_t>> taken_;
};

void Drawer::drawLines(const std::vector<Polyline>& lines) const {
    cairo_new_path(cairo_);
    for (const Polyline& curve : lines) {
        cairo_move_to(cairo_, curve[0].x, curve[0].y);
        for (const PlotPlace& place : curve) {
            cairo_line_to(cairo_, place.x, place.y);
        }
    }
    cairo_stroke(cairo_);
}

void Drawer::drawColumns(const std::vector<ColumnSpan>& columns, double weight) const {
    const double width = weight * curveWidth * unit_;
    for (const ColumnSpan& column : columns) {
        cairo_rectangle(cairo_, column.x, column.top - 0.5 * width, 1.0,
                        column.bottom - column.top + width);
    }
    const cairo_antialias_t antialias = cairo_get_antialias(cairo_);
    cairo_set_antialias(cairo_, CAIRO_ANTIALIAS_NONE);  // without seams between the columns
    cairo_fill(cairo_);
    cairo_set_antialias(cairo_, antialias);
}

// What lies below the curve, in the frame.
void Drawer::drawShade(const PlotSeries& series) const {
    cairo_new_path(cairo_);
    double last = 0.0;
    bool isOpen = false;
    const auto close = [&] {
        if (isOpen) cairo_line_to(cairo_, last, frame_.bottom);
        isOpen = false;
    };
    const auto visit = [&](const PlotSpot& spot) {
        const double x = std::clamp(spot.place.x, frame_.left, frame_.right);
        const double y = std::clamp(spot.place.y, frame_.top, frame_.bottom);
        if (!isOpen) cairo_move_to(cairo_, x, frame_.bottom);
        cairo_line_to(cairo_, x, y);
        last = x;
        isOpen = true;
    };
    for (std::size_t part = 0; part < series.parts.size(); ++part) {
        Trace(series, part, frame_, visit, close);
    }
    SetSource(cairo_, PlotColour(series.colour, look_.ground), shade);
    cairo_fill(cairo_);
}

void Drawer::drawSeries(const PlotSeries& series) const {
    constexpr std::size_t fewMarks = 1000;  // are all drawn
    Cells cells(series.size() > fewMarks ? unit_ : 1.0);
    setColour(series.colour);
    const auto mark = [&](const PlotPlace& place, std::size_t shape) {
        if (frame_.contains(place) && cells.take(place)) {
            addMark(place, shape);
        }
    };
    if (series.isMarks()) {
        Trace(
            series, 0, frame_, [&](const PlotSpot& spot) { mark(spot.place, series.colour); },
            [] {});
        drawMarks(series.colour);
        return;
    }
    for (std::size_t part = 0; part < series.parts.size(); ++part) {
        std::vector<PlotPlace> dots;
        std::vector<Polyline> lines;
        TracePolylines(series, part, frame_, [&](const Polyline& curve) {
            if (curve.size() == 1) {
                dots.push_back(curve[0]);
            } else {
                lines.push_back(curve);
            }
        });
        setLine(series.parts[part].style, series.weight);
        const std::vector<ColumnSpan> columns = DenseColumns(lines, frame_);
        columns.empty() ? drawLines(lines) : drawColumns(columns, series.weight);
        for (const PlotPlace& dot : dots) {
            mark(dot, 0);
        }
        drawMarks(0);
    }
}

void Drawer::drawGrid() const {
    constexpr double faint = 0.85;
    SetSource(cairo_, Mixed(look_.ink, look_.ground, faint));
    cairo_set_line_width(cairo_, axisWidth * unit_);
    for (const PlotTicks::Major& tick : xTicks_.major) {
        const auto place = frame_.placeOf({tick.value, view_.limits().y.high});
        cairo_move_to(cairo_, place->x, frame_.top);
        cairo_line_to(cairo_, place->x, frame_.bottom);
    }
    for (const PlotTicks::Major& tick : yTicks_.major) {
        const auto place = frame_.placeOf({view_.limits().x.high, tick.value});
        cairo_move_to(cairo_, frame_.left, place->y);
        cairo_line_to(cairo_, frame_.right, place->y);
    }
    cairo_stroke(cairo_);
}

void Drawer::drawTick(double value, bool isX, double length) const {
    const PlotLimits& limits = view_.limits();
    const auto place =
        frame_.placeOf(isX ? PlotPoint{value, limits.y.high} : PlotPoint{limits.x.high, value});
    for (const bool isFar : {false, true}) {
        const double inwards = (isFar ? length : -length) * unit_;
        if (isX) {
            cairo_move_to(cairo_, place->x, isFar ? frame_.top : frame_.bottom);
            cairo_rel_line_to(cairo_, 0.0, inwards);
        } else {
            cairo_move_to(cairo_, isFar ? frame_.right : frame_.left, place->y);
            cairo_rel_line_to(cairo_, -inwards, 0.0);
        }
    }
}

void Drawer::drawAxes() {
    SetSource(cairo_, look_.ink);
    cairo_set_line_width(cairo_, axisWidth * unit_);
    cairo_rectangle(cairo_, frame_.left, frame_.top, frame_.width(), frame_.height());
    for (const bool isX : {true, false}) {
        const PlotTicks& ticks = isX ? xTicks_ : yTicks_;
        for (const PlotTicks::Major& tick : ticks.major) {
            drawTick(tick.value, isX, majorTick);
        }
        for (const double value : ticks.minor) {
            drawTick(value, isX, minorTick);
        }
    }
    cairo_stroke(cairo_);
    const PlotLimits& limits = view_.limits();
    for (const PlotTicks::Major& tick : xTicks_.major) {
        const auto place = frame_.placeOf({tick.value, limits.y.high});
        text_.draw(tick.label, {place->x, frame_.bottom + gap * unit_}, 0.5, 0.0);
    }
    for (const PlotTicks::Major& tick : yTicks_.major) {
        const auto place = frame_.placeOf({limits.x.high, tick.value});
        text_.draw(tick.label, {frame_.left - gap * unit_, place->y}, 1.0, 0.5);
    }
}

void Drawer::drawTitles() {
    const double middle = 0.5 * (frame_.left + frame_.right);
    text_.draw(AxisTitle(content_.x, xTicks_.exponent),
               {middle, frame_.bottom + (gap + line) * unit_}, 0.5, 0.0);
    cairo_save(cairo_);
    cairo_translate(cairo_, frame_.left - yLabelWidth_ - 2.0 * gap * unit_,
                    0.5 * (frame_.top + frame_.bottom));
    cairo_rotate(cairo_, -0.5 * G_PI);
    text_.draw(AxisTitle(content_.y, yTicks_.exponent), {0.0, 0.0}, 0.5, 1.0);
    cairo_restore(cairo_);
    if (!content_.title.empty()) {
        constexpr int titleLines = 3;
        text_.wrap(titleWidth_, titleLines);
        cairo_move_to(cairo_, unit_, gap * unit_);
        text_.show(content_.title);
        text_.unwrap();
    }
}

// An arrowhead in the middle of each side beyond which there is more.
void Drawer::drawMore() const {
    const PlotLimits& limits = view_.limits();
    const auto isMore = [](const AxisLimits& axis, const AxisExtent& extent, bool isHigh) {
        const double low = axis.isLogarithmic ? extent.lowestAboveZero : extent.low;
        return isHigh ? extent.high > axis.high : low < axis.low;
    };
    SetSource(cairo_, Mixed(look_.ink, look_.ground, 0.3));
    const auto arrowhead = [this](const PlotPlace& tip, double right, double down) {
        const double size = 0.6 * unit_;
        cairo_move_to(cairo_, tip.x, tip.y);
        cairo_line_to(cairo_, tip.x - size * (right + down), tip.y - size * (down + right));
        cairo_line_to(cairo_, tip.x - size * (right - down), tip.y - size * (down - right));
        cairo_fill(cairo_);
    };
    const double middleX = 0.5 * (frame_.left + frame_.right);
    const double middleY = 0.5 * (frame_.top + frame_.bottom);
    for (const bool isHigh : {false, true}) {
        const double direction = isHigh ? 1.0 : -1.0;
        if (isMore(limits.x, view_.extentX(), isHigh)) {
            arrowhead({isHigh ? frame_.right : frame_.left, middleY}, direction, 0.0);
        }
        if (isMore(limits.y, view_.extentY(), isHigh)) {
            arrowhead({middleX, isHigh ? frame_.top : frame_.bottom}, 0.0, -direction);
        }
    }
}

void Drawer::drawLabels() {
    for (std::size_t i = 0; i < labels_.size(); ++i) {
        if (labels_[i] && labels_[i]->width > 0.0) {
            SetSource(cairo_, look_.ground);
            cairo_rectangle(cairo_, labels_[i]->x, labels_[i]->y, labels_[i]->width,
                            labels_[i]->height);
            cairo_fill(cairo_);
            setColour(content_.series[i].colour);
            text_.draw(content_.series[i].label, {labels_[i]->x, labels_[i]->y}, 0.0, 0.0);
        }
    }
}

// Returns where the text stands.
Box Drawer::drawPin(const PlotPin& pin) {
    const auto place = frame_.placeOf(pin.point);
    if (!place || !frame_.contains(*place)) {
        return {};
    }
    const Box box = boxOf(pin, *place);
    cairo_set_line_width(cairo_, axisWidth * unit_);
    SetSource(cairo_, look_.ink);
    cairo_move_to(cairo_, place->x, place->y);
    cairo_line_to(cairo_, std::clamp(place->x, box.x, box.x + box.width),
                  std::clamp(place->y, box.y, box.y + box.height));
    cairo_stroke(cairo_);
    cairo_arc(cairo_, place->x, place->y, 0.5 * markRadius * unit_, 0.0, 2.0 * G_PI);
    cairo_fill(cairo_);
    cairo_rectangle(cairo_, box.x, box.y, box.width, box.height);
    SetSource(cairo_, look_.ground);
    cairo_fill_preserve(cairo_);
    SetSource(cairo_, look_.ink);
    cairo_stroke(cairo_);
    text_.draw(pin.text, {box.x + gap * unit_, box.y + 0.5 * box.height}, 0.0, 0.5);
    return box;
}

void Drawer::drawLegend() {
    for (const Entry& entry : entries_) {
        const double x = legend_.x + entry.place.x;
        const double y = legend_.y + entry.place.y;
        const double end = x + sampleWidth * unit_;
        entry.isInk ? SetSource(cairo_, look_.ink) : setColour(entry.colour);
        if (entry.isShade) {
            SetSource(cairo_, PlotColour(entry.colour, look_.ground), shade);
            cairo_rectangle(cairo_, x, y - 0.4 * unit_, end - x, 0.8 * unit_);
            cairo_fill(cairo_);
        } else if (entry.style == Style::Markers) {
            addMark({0.5 * (x + end), y}, entry.colour);
            drawMarks(entry.colour);
        } else {
            setLine(entry.style, entry.weight);
            cairo_move_to(cairo_, x, y);
            cairo_line_to(cairo_, end, y);
            cairo_stroke(cairo_);
        }
        SetSource(cairo_, look_.ink);
        text_.draw(entry.text, {end + gap * unit_, y}, 0.0, 0.5);
    }
    cairo_set_dash(cairo_, nullptr, 0, 0.0);
}

void Drawer::drawWhenEmpty(double width, double height) {
    constexpr double margin = 2.0;
    constexpr int mostLines = 6;
    const double room = width - 2.0 * margin * unit_;
    if (room < unit_) return;
    SetSource(cairo_, Mixed(look_.ink, look_.ground, 0.35));
    text_.wrap(room, mostLines);
    cairo_move_to(cairo_, margin * unit_, 0.5 * (height - text_.sizeOf(content_.whenEmpty).y));
    text_.show(content_.whenEmpty);
    text_.unwrap();
}

std::optional<DrawnPlot> Drawer::draw(double width, double height) {
    if (!layOut(width, height)) return std::nullopt;
    if (content_.hasGrid) {
        drawGrid();
    }
    cairo_save(cairo_);
    cairo_rectangle(cairo_, frame_.left, frame_.top, frame_.width(), frame_.height());
    cairo_clip(cairo_);
    for (const PlotSeries& series : content_.series) {
        if (!series.below.empty()) drawShade(series);
    }
    for (const bool isMarks : {false, true}) {
        for (const PlotSeries& series : content_.series) {
            if (series.isMarks() == isMarks) {
                drawSeries(series);
            }
        }
    }
    if (look_.hasMore) drawMore();
    cairo_restore(cairo_);
    drawAxes();
    drawTitles();
    drawLegend();
    drawLabels();
    DrawnPlot drawn{frame_, {}, labels_};
    for (const PlotPin& pin : content_.pins) {
        drawn.pins.push_back(drawPin(pin));
    }
    return drawn;
}

}  // namespace

bool PlotContent::isEmpty() const {
    return std::all_of(series.begin(), series.end(),
                       [](const PlotSeries& each) { return each.size() == 0; });
}

std::size_t DrawnPlot::pinAt(const PlotPlace& place) const {
    const auto found = std::find_if(pins.begin(), pins.end(), [&place](const Box& box) {
        return place.x >= box.x && place.x < box.x + box.width && place.y >= box.y &&
               place.y < box.y + box.height;
    });
    return static_cast<std::size_t>(found - pins.begin());
}

Colour PlotColour(std::size_t number, const Colour& ground) {
    constexpr double half = 0.5;
    const bool isLight = (ground.red + ground.green + ground.blue) / 3.0 > half;
    if (number == PlotSeries::grey) {
        constexpr double onLightGround = 0.55;
        constexpr double onDarkGround = 0.62;
        const double grey = isLight ? onLightGround : onDarkGround;
        return {grey, grey, grey};
    }
    if (number == PlotSeries::ink) {
        return isLight ? Colour{0.0, 0.0, 0.0} : Colour{1.0, 1.0, 1.0};
    }
    return (isLight ? onLight : onDark)[number % colours];
}

std::optional<DrawnPlot> DrawPlot(cairo_t* cairo, double width, double height, const PlotLook& look,
                                  const PlotContent& content, const PlotView& view) {
    cairo_save(cairo);
    SetSource(cairo, look.ground);
    cairo_paint(cairo);
    std::optional<DrawnPlot> drawn;
    if (content.isEmpty() && !content.whenEmpty.empty()) {
        Drawer(cairo, look, content, view).drawWhenEmpty(width, height);
    } else {
        drawn = Drawer(cairo, look, content, view).draw(width, height);
    }
    cairo_restore(cairo);
    return drawn;
}

}  // namespace toolkit
