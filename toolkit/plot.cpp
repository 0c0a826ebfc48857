#include "toolkit/plot.h"

#include <gdk/gdkkeysyms.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "toolkit/announcement.h"
#include "toolkit/event.h"
#include "toolkit/exposure.h"
#include "toolkit/plot_picture.h"
#include "toolkit/plot_reading.h"
#include "toolkit/text_size.h"

namespace toolkit {

namespace {

struct SurfaceDeleter {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};

constexpr double reach = 30.0;  // pixels, of the pointer
constexpr double zoomStep = 1.25;
constexpr double panStep = 0.1;

Colour ColourOf(const GdkColor& colour) {
    constexpr double most = 65535.0;
    return {colour.red / most, colour.green / most, colour.blue / most};
}

// The font and the colours of the widget's theme.
PlotLook LookOf(GtkWidget* widget) {
    const PangoFontDescription* const font =
        pango_context_get_font_description(gtk_widget_get_pango_context(widget));
    const double size = static_cast<double>(pango_font_description_get_size(font)) / PANGO_SCALE;
    constexpr double pointsPerInch = 72.0;
    const double dotsPerInch = gdk_screen_get_resolution(gtk_widget_get_screen(widget));
    const bool isInPixels = pango_font_description_get_size_is_absolute(font) != FALSE;
    const GtkStyle* const style = gtk_widget_get_style(widget);
    return {pango_font_description_get_family(font),
            isInPixels ? size : size * dotsPerInch / pointsPerInch,
            ColourOf(style->base[GTK_STATE_NORMAL]), ColourOf(style->text[GTK_STATE_NORMAL])};
}

}  // namespace

// What several plots show together.
struct Plot::Sheet {
    PlotContent content;
    PlotView view;
    std::optional<PlotPosition> pointed;
    bool isPointedByKeys = false;
    std::vector<Plot*> plots;
};

// What was drawn last, and what the pointer does there.
struct Plot::Canvas {
    enum class Drag { Nothing, Box, Pan };

    std::unique_ptr<cairo_surface_t, SurfaceDeleter> surface;
    int width = 0;
    int height = 0;
    std::optional<DrawnPlot> drawn;
    Drag drag = Drag::Nothing;
    PlotPlace start;  // of the drag
    PlotPlace end;
    std::vector<PlotPin> pinsBefore;  // the last click

    const PlotFrame* frame() const { return drawn ? &drawn->frame : nullptr; }
};

Plot::Plot(std::string name, const std::string& description)
    : Plot(std::move(name), description, std::make_shared<Sheet>()) {}

Plot::Plot(std::string name, const std::string& description, const Plot& other)
    : Plot(std::move(name), description, other.sheet_) {}

Plot::Plot(std::string name, const std::string& description, std::shared_ptr<Sheet> sheet)
    : Control(std::move(name), gtk_drawing_area_new()),
      sheet_(std::move(sheet)),
      canvas_(std::make_unique<Canvas>()) {
    sheet_->plots.push_back(this);
    gtk_widget_add_events(widget(), GDK_POINTER_MOTION_MASK | GDK_ENTER_NOTIFY_MASK |
                                        GDK_LEAVE_NOTIFY_MASK | GDK_BUTTON_PRESS_MASK |
                                        GDK_BUTTON_RELEASE_MASK | GDK_SCROLL_MASK |
                                        GDK_KEY_PRESS_MASK);
    gtk_widget_set_can_focus(widget(), TRUE);
    atk_object_set_role(gtk_widget_get_accessible(widget()), ATK_ROLE_IMAGE);
    setAccessibleName(description);
    connectDrawing();
    connectPointer();
    const auto onKey = [](GtkWidget* plot, const GdkEventKey* event, Plot* self) -> gboolean {
        const auto others = static_cast<guint>(GDK_CONTROL_MASK | GDK_MOD1_MASK | GDK_SUPER_MASK);
        if ((event->state & others) != 0) return FALSE;
        const Announcement announcement(plot);
        return static_cast<gboolean>(
            self->pressKey(event->keyval, (event->state & GDK_SHIFT_MASK) != 0));
    };
    Connect(widget(), "key-press-event", onKey, this);
}

void Plot::connectDrawing() {
    const auto onExpose = [](GtkWidget* plot, GdkEventExpose* event, Plot* self) -> gboolean {
        GtkAllocation place;
        gtk_widget_get_allocation(plot, &place);
        Canvas& canvas = *self->canvas_;
        if (canvas.surface == nullptr || canvas.width != place.width ||
            canvas.height != place.height) {
            canvas.width = place.width;
            canvas.height = place.height;
            self->draw();
        }
        const CairoContext cairo = ExposedPart(plot, *event);
        cairo_set_source_surface(cairo.get(), canvas.surface.get(), 0.0, 0.0);
        cairo_paint(cairo.get());
        self->paintOver(cairo.get());
        if (gtk_widget_has_focus(plot) != FALSE) {
            gtk_paint_focus(gtk_widget_get_style(plot), gtk_widget_get_window(plot),
                            GTK_STATE_NORMAL, &event->area, plot, nullptr, 0, 0, place.width,
                            place.height);
        }
        return FALSE;
    };
    const auto onStyleSet = [](GtkWidget* /*plot*/, GtkStyle* /*previous*/, Plot* self) {
        self->canvas_->surface.reset();
    };
    Connect(widget(), "expose-event", onExpose, this);
    Connect(widget(), "style-set", onStyleSet, this);
}

void Plot::connectPointer() {
    const auto onButton = [](GtkWidget* plot, const GdkEventButton* event, Plot* self) -> gboolean {
        if (event->type == GDK_2BUTTON_PRESS && event->button == 1) {
            self->showAllInstead();
            return TRUE;
        }
        if (event->type != GDK_BUTTON_PRESS) return FALSE;
        gtk_widget_grab_focus(plot);
        return static_cast<gboolean>(
            self->press(event->x, event->y, event->button, (event->state & GDK_SHIFT_MASK) != 0));
    };
    const auto onRelease = [](GtkWidget* /*plot*/, const GdkEventButton* event,
                              Plot* self) -> gboolean {
        self->release(event->x, event->y);
        return FALSE;
    };
    const auto onMotion = [](GtkWidget* /*plot*/, const GdkEventMotion* event,
                             Plot* self) -> gboolean {
        self->dragTo(event->x, event->y);
        return FALSE;
    };
    const auto onEnter = [](GtkWidget* /*plot*/, const GdkEventCrossing* event,
                            Plot* self) -> gboolean {
        self->dragTo(event->x, event->y);
        return FALSE;
    };
    const auto onLeave = [](GtkWidget* /*plot*/, GdkEventCrossing* /*event*/,
                            Plot* self) -> gboolean {
        if (!self->sheet_->isPointedByKeys) {
            self->pointAt(std::nullopt);
        }
        return FALSE;
    };
    const auto onScroll = [](GtkWidget* /*plot*/, const GdkEventScroll* event,
                             Plot* self) -> gboolean {
        const bool isUp = event->direction == GDK_SCROLL_UP;
        return static_cast<gboolean>((isUp || event->direction == GDK_SCROLL_DOWN) &&
                                     self->turnWheel(event->x, event->y, isUp));
    };
    Connect(widget(), "button-press-event", onButton, this);
    Connect(widget(), "button-release-event", onRelease, this);
    Connect(widget(), "motion-notify-event", onMotion, this);
    Connect(widget(), "enter-notify-event", onEnter, this);
    Connect(widget(), "leave-notify-event", onLeave, this);
    Connect(widget(), "scroll-event", onScroll, this);
}

Plot::~Plot() {
    std::erase(sheet_->plots, this);
}

Block Plot::sized(double widthInLines, double heightInLines) {
    constexpr Lines least = {10.0, 8.0};
    return Block(*this).asking({widthInLines, heightInLines}, least).expanding();
}

const PlotContent& Plot::content() const {
    return sheet_->content;
}

const PlotView& Plot::view() const {
    return sheet_->view;
}

void Plot::setTitle(const std::string& title) {
    sheet_->content.title = title;
    changed();
}

void Plot::setAxes(const PlotAxis& x, const PlotAxis& y) {
    sheet_->content.x = x;
    sheet_->content.y = y;
    changed();
}

void Plot::setEmptyText(const std::string& sentence) {
    sheet_->content.whenEmpty = sentence;
    changed();
}

void Plot::setGrid(bool hasGrid) {
    sheet_->content.hasGrid = hasGrid;
    changed();
}

void Plot::show(std::vector<PlotSeries> series, const FirstView& first) {
    for (PlotSeries& each : series) {  // a missing number makes a gap
        const std::size_t size = std::max(each.x.size(), each.y.size());
        each.x.resize(size, std::numeric_limits<double>::quiet_NaN());
        each.y.resize(size, std::numeric_limits<double>::quiet_NaN());
    }
    sheet_->content.series = std::move(series);
    sheet_->content.pins.clear();
    sheet_->pointed.reset();
    sheet_->view.start(sheet_->content.series, first);
    for (Plot* const plot : sheet_->plots) {
        plot->canvas_->drag = Canvas::Drag::Nothing;
        plot->canvas_->pinsBefore.clear();
        plot->canvas_->drawn.reset();
    }
    changed();
}

bool Plot::isEmpty() const {
    return content().isEmpty();
}

bool Plot::setLimits(const PlotLimits& limits) {
    const bool isShown = sheet_->view.show(limits);
    changed();
    return isShown;
}

std::string Plot::reading() const {
    return sheet_->pointed ? ReadingOf(content(), view().limits(), *sheet_->pointed).sentence()
                           : "";
}

std::optional<std::string> Plot::copyPicture() const {
    return CopyPlot(pictureSizes[pageSize], content(), view());
}

bool Plot::canPerform(EditCommand command) const {
    return command == EditCommand::Copy && !isEmpty();
}

void Plot::perform(EditCommand command) {
    if (canPerform(command)) {
        copyPicture();
    }
}

const Plot* Plot::twin() const {
    const auto found = std::find_if(sheet_->plots.begin(), sheet_->plots.end(),
                                    [this](const Plot* other) { return other != this; });
    return found == sheet_->plots.end() ? nullptr : *found;
}

std::optional<Area> Plot::place(const PlotPosition& position) const {
    const bool isThere = canvas_->drawn && position.series < series().size() &&
                         position.point < series()[position.series].size();
    if (!isThere) return std::nullopt;
    const PlotFrame& frame = canvas_->drawn->frame;
    const auto found = frame.placeOf(PointOf(series()[position.series], position, frame));
    if (!found || !frame.contains(*found)) return std::nullopt;
    return Area{static_cast<int>(std::lround(found->x)), static_cast<int>(std::lround(found->y)), 1,
                1};
}

void Plot::changed() {
    for (Plot* const plot : sheet_->plots) {
        plot->canvas_->surface.reset();
        atk_object_set_description(gtk_widget_get_accessible(plot->widget()),
                                   isEmpty() ? content().whenEmpty.c_str() : "");
        gtk_widget_queue_draw(plot->widget());
        RunHandler(plot->changed_, plot->name().c_str());
    }
}

void Plot::draw() {
    canvas_->surface.reset(
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, canvas_->width, canvas_->height));
    const CairoContext cairo(cairo_create(canvas_->surface.get()));
    canvas_->drawn =
        DrawPlot(cairo.get(), canvas_->width, canvas_->height, LookOf(widget()), content(), view());
}

// What moves over the plot: a ring around what is read, and the rectangle of a drag.
void Plot::paintOver(cairo_t* cairo) const {
    const PlotLook look = LookOf(widget());
    cairo_set_source_rgb(cairo, look.ink.red, look.ink.green, look.ink.blue);
    if (const auto marked = sheet_->pointed ? place(*sheet_->pointed) : std::nullopt) {
        constexpr double radius = 5.0;
        cairo_set_line_width(cairo, 2.0);
        cairo_arc(cairo, marked->x, marked->y, radius, 0.0, 2.0 * G_PI);
        cairo_stroke(cairo);
    }
    if (canvas_->drag == Canvas::Drag::Box) {
        constexpr double middleOfPixel = 0.5;
        const PlotPlace& start = canvas_->start;
        const PlotPlace& end = canvas_->end;
        cairo_set_line_width(cairo, 1.0);
        cairo_rectangle(cairo, std::floor(std::min(start.x, end.x)) + middleOfPixel,
                        std::floor(std::min(start.y, end.y)) + middleOfPixel,
                        std::abs(end.x - start.x), std::abs(end.y - start.y));
        cairo_stroke(cairo);
    }
}

void Plot::pointAt(std::optional<PlotPosition> position) {
    if (position == sheet_->pointed) return;
    sheet_->pointed = position;
    for (Plot* const plot : sheet_->plots) {
        gtk_widget_queue_draw(plot->widget());
        RunHandler(plot->changed_, plot->name().c_str());
    }
}

std::optional<PlotPosition> Plot::nearestTo(double x, double y) const {
    const PlotFrame* const frame = canvas_->frame();
    return frame == nullptr ? std::nullopt : Nearest(series(), *frame, {x, y}, reach);
}

bool Plot::press(double x, double y, unsigned button, bool isShifted) {
    const PlotFrame* const frame = canvas_->frame();
    constexpr unsigned left = 1;
    constexpr unsigned middle = 2;
    if (frame == nullptr || isEmpty() || (button != left && button != middle) ||
        canvas_->drag != Canvas::Drag::Nothing) {
        return false;
    }
    const PlotPlace place{x, y};
    canvas_->drag = button == middle || isShifted ? Canvas::Drag::Pan : Canvas::Drag::Box;
    canvas_->start = canvas_->end = place;
    return true;
}

void Plot::dragTo(double x, double y) {
    const PlotFrame* const frame = canvas_->frame();
    if (canvas_->drag == Canvas::Drag::Nothing) {
        sheet_->isPointedByKeys = false;
        pointAt(nearestTo(x, y));
    } else if (canvas_->drag == Canvas::Drag::Box && frame != nullptr) {
        canvas_->end = {std::clamp(x, frame->left, frame->right),
                        std::clamp(y, frame->top, frame->bottom)};
        gtk_widget_queue_draw(widget());
    } else if (frame != nullptr) {
        const PlotPlace before = std::exchange(canvas_->end, {x, y});
        sheet_->view.pan((before.x - x) / frame->width(), (y - before.y) / frame->height());
        changed();
    }
}

void Plot::release(double x, double y) {
    const auto drag = std::exchange(canvas_->drag, Canvas::Drag::Nothing);
    const PlotFrame* const frame = canvas_->frame();
    sheet_->view.endAct();
    if (drag != Canvas::Drag::Box || frame == nullptr) return;
    constexpr double still = 4.0;  // pixels
    const PlotPlace start = canvas_->start;
    if (std::abs(x - start.x) < still && std::abs(y - start.y) < still) {
        togglePin(start);
    } else if (std::abs(canvas_->end.x - start.x) >= still &&
               std::abs(canvas_->end.y - start.y) >= still) {
        sheet_->view.zoomTo(frame->pointAt({std::clamp(start.x, frame->left, frame->right),
                                            std::clamp(start.y, frame->top, frame->bottom)}),
                            frame->pointAt(canvas_->end));
    }
    changed();
}

void Plot::togglePin(const PlotPlace& place) {
    std::vector<PlotPin>& pins = sheet_->content.pins;
    canvas_->pinsBefore = pins;
    const auto isAt = [&](const PlotPin& pin) {
        constexpr double near = 6.0;  // pixels
        const auto point = canvas_->drawn->frame.placeOf(pin.point);
        return point && std::hypot(point->x - place.x, point->y - place.y) < near;
    };
    const auto label = static_cast<std::ptrdiff_t>(canvas_->drawn->pinAt(place));
    const auto there = label < std::ssize(pins) ? pins.begin() + label
                                                : std::find_if(pins.begin(), pins.end(), isAt);
    if (there != pins.end()) {
        pins.erase(there);
    } else if (const auto position = nearestTo(place.x, place.y)) {
        const PlotReading reading = ReadingOf(content(), view().limits(), *position);
        pins.push_back({reading.point, reading.label()});
    }
}

// A double click: its first click is taken back.
void Plot::showAllInstead() {
    canvas_->drag = Canvas::Drag::Nothing;
    sheet_->content.pins = canvas_->pinsBefore;
    sheet_->view.showAll();
    changed();
}

bool Plot::turnWheel(double x, double y, bool isUp) {
    const PlotFrame* const frame = canvas_->frame();
    if (frame == nullptr || isEmpty() || !frame->contains({x, y})) return false;
    sheet_->view.zoom(frame->pointAt({x, y}), isUp ? 1.0 / zoomStep : zoomStep,
                      PlotView::Act::Wheel);
    changed();
    return true;
}

bool Plot::pressKey(unsigned key, bool isShifted) {
    const PlotFrame* const frame = canvas_->frame();
    if (frame == nullptr || isEmpty()) return false;
    constexpr double stride = 6.0;  // pixels
    const auto arrow = [&](double right, double up) {
        if (isShifted) {
            sheet_->view.pan(panStep * right, panStep * up);
        } else if (right != 0.0) {
            walk(stride * right);
        } else {
            changeCurve(up < 0.0);
        }
    };
    const auto zoom = [&](double factor) {
        const PlotPlace middle{0.5 * (frame->left + frame->right),
                               0.5 * (frame->top + frame->bottom)};
        const auto pointed = sheet_->pointed ? place(*sheet_->pointed) : std::nullopt;
        sheet_->view.zoom(
            frame->pointAt(pointed ? PlotPlace{1.0 * pointed->x, 1.0 * pointed->y} : middle),
            factor, PlotView::Act::Wheel);
    };
    switch (key) {
        case GDK_KEY_Left:
        case GDK_KEY_KP_Left:
            arrow(-1.0, 0.0);
            break;
        case GDK_KEY_Right:
        case GDK_KEY_KP_Right:
            arrow(1.0, 0.0);
            break;
        case GDK_KEY_Up:
        case GDK_KEY_KP_Up:
            arrow(0.0, 1.0);
            break;
        case GDK_KEY_Down:
        case GDK_KEY_KP_Down:
            arrow(0.0, -1.0);
            break;
        case GDK_KEY_plus:
        case GDK_KEY_equal:
        case GDK_KEY_KP_Add:
            zoom(1.0 / zoomStep);
            break;
        case GDK_KEY_minus:
        case GDK_KEY_KP_Subtract:
            zoom(zoomStep);
            break;
        case GDK_KEY_Home:
        case GDK_KEY_KP_Home:
            sheet_->view.showAll();
            break;
        case GDK_KEY_BackSpace:
            sheet_->view.back();
            break;
        case GDK_KEY_space:
            if (const auto pointed = sheet_->pointed ? place(*sheet_->pointed) : std::nullopt) {
                togglePin({1.0 * pointed->x, 1.0 * pointed->y});
            }
            break;
        case GDK_KEY_Escape:
            if (canvas_->drag == Canvas::Drag::Nothing && !sheet_->pointed) return false;
            canvas_->drag = Canvas::Drag::Nothing;
            pointAt(std::nullopt);
            break;
        default:
            return false;
    }
    changed();
    return true;
}

// Has a position read that the keys have led to, and brings it into view.
void Plot::follow(const PlotPosition& position) {
    sheet_->isPointedByKeys = true;
    const PlotFrame& frame = canvas_->drawn->frame;
    const auto there = frame.placeOf(PointOf(series()[position.series], position, frame));
    if (there && !frame.contains(*there)) {
        constexpr double middle = 0.5;
        sheet_->view.pan((there->x - frame.left) / frame.width() - middle,
                         middle - (there->y - frame.top) / frame.height(), PlotView::Act::Walk);
    }
    pointAt(position);
}

void Plot::walk(double length) {
    if (!sheet_->pointed) {
        changeCurve(true);
        return;
    }
    const PlotSeries& curve = series()[sheet_->pointed->series];
    const bool runsLeft = !curve.isMarks() && curve.x.front() > curve.x.back();
    follow(Walked(series(), canvas_->drawn->frame, *sheet_->pointed, runsLeft ? -length : length));
}

// The nearest position on the next curve that has one in view; at first that of the first curve
// in the middle.
void Plot::changeCurve(bool isNext) {
    const PlotFrame& frame = canvas_->drawn->frame;
    const std::size_t count = series().size();
    const auto from =
        sheet_->pointed
            ? frame.placeOf(PointOf(series()[sheet_->pointed->series], *sheet_->pointed, frame))
            : PlotPlace{0.5 * (frame.left + frame.right), 0.5 * (frame.top + frame.bottom)};
    std::size_t curve = sheet_->pointed ? sheet_->pointed->series : count - 1;
    for (std::size_t i = 0; i < count && from; ++i) {
        curve = (curve + (isNext ? 1 : count - 1)) % count;
        const auto found = Nearest(std::span(series()).subspan(curve, 1), frame, *from,
                                   std::numeric_limits<double>::infinity());
        if (found) {
            follow({curve, found->point, found->share});
            return;
        }
    }
}

}  // namespace toolkit
