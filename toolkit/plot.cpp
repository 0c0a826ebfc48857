#include "toolkit/plot.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

#include "toolkit/event.h"
#include "toolkit/exposure.h"
#include "toolkit/file_chooser.h"
#include "toolkit/file_writing.h"
#include "toolkit/plot_drawing.h"
#include "toolkit/plot_library.h"

namespace toolkit {

namespace {

struct SurfaceDeleter {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;

/// The height of a line of text in the widget's font, and the size of the font, in pixels.
struct TextSize {
    double line = 0.0;
    double font = 0.0;
};

TextSize textSizeOf(GtkWidget* widget) {
    PangoContext* const context = gtk_widget_get_pango_context(widget);
    const PangoFontDescription* const font = pango_context_get_font_description(context);
    PangoFontMetrics* const metrics = pango_context_get_metrics(context, font, nullptr);
    const double line =
        pango_font_metrics_get_ascent(metrics) + pango_font_metrics_get_descent(metrics);
    pango_font_metrics_unref(metrics);
    constexpr double fontOfLine = 0.6;
    return {line / PANGO_SCALE, fontOfLine * line / PANGO_SCALE};
}

cairo_status_t append(void* text, const unsigned char* data, unsigned length) {
    static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

}  // namespace

/// What was drawn last, and where.
struct Plot::Canvas {
    Surface surface;
    int width = 0;
    int height = 0;
    std::optional<PlotFrame> frame;

    std::optional<PlotPlace> placeOf(const PlotSeries& series, std::size_t point) const {
        return frame ? frame->placeOf(series.x[point], series.y[point]) : std::nullopt;
    }
};

struct Plot::Callbacks {
    static gboolean onExpose(GtkWidget* widget, GdkEventExpose* event, gpointer data) {
        auto* const self = static_cast<Plot*>(data);
        GtkAllocation place;
        gtk_widget_get_allocation(widget, &place);
        if (self->canvas_->surface == nullptr || self->canvas_->width != place.width ||
            self->canvas_->height != place.height) {
            self->canvas_->width = place.width;
            self->canvas_->height = place.height;
            self->draw();
        }
        const CairoContext cairo = exposedPart(widget, *event);
        cairo_set_source_surface(cairo.get(), self->canvas_->surface.get(), 0.0, 0.0);
        cairo_paint(cairo.get());
        if (const auto marked = self->pointed_ ? self->place(*self->pointed_) : std::nullopt) {
            constexpr double radius = 5.0;
            cairo_set_line_width(cairo.get(), 2.0);
            cairo_arc(cairo.get(), marked->x, marked->y, radius, 0.0, 2.0 * G_PI);
            cairo_stroke(cairo.get());
        }
        return FALSE;
    }

    static void onStyleSet(GtkWidget* /*widget*/, GtkStyle* /*previous*/, gpointer data) {
        static_cast<Plot*>(data)->canvas_->surface.reset();
    }

    static gboolean onMotion(GtkWidget* /*widget*/, GdkEventMotion* event, gpointer data) {
        auto* const self = static_cast<Plot*>(data);
        self->pointerAt(self->nearest(event->x, event->y));
        return FALSE;
    }

    static gboolean onEnter(GtkWidget* /*widget*/, GdkEventCrossing* event, gpointer data) {
        auto* const self = static_cast<Plot*>(data);
        self->pointerAt(self->nearest(event->x, event->y));
        return FALSE;
    }

    static gboolean onLeave(GtkWidget* /*widget*/, GdkEventCrossing* /*event*/, gpointer data) {
        static_cast<Plot*>(data)->pointerAt(std::nullopt);
        return FALSE;
    }
};

Plot::Plot(std::string name, const std::string& description)
    : Control(std::move(name), gtk_drawing_area_new()), canvas_(std::make_unique<Canvas>()) {
    gtk_widget_add_events(widget(),
                          GDK_POINTER_MOTION_MASK | GDK_ENTER_NOTIFY_MASK | GDK_LEAVE_NOTIFY_MASK);
    atk_object_set_role(gtk_widget_get_accessible(widget()), ATK_ROLE_IMAGE);
    setAccessibleName(description);
    g_signal_connect(widget(), "expose-event", G_CALLBACK(&Callbacks::onExpose), this);
    g_signal_connect(widget(), "style-set", G_CALLBACK(&Callbacks::onStyleSet), this);
    g_signal_connect(widget(), "motion-notify-event", G_CALLBACK(&Callbacks::onMotion), this);
    g_signal_connect(widget(), "enter-notify-event", G_CALLBACK(&Callbacks::onEnter), this);
    g_signal_connect(widget(), "leave-notify-event", G_CALLBACK(&Callbacks::onLeave), this);
}

Plot::~Plot() = default;

Block Plot::sized(double widthInLines, double heightInLines) {
    const double line = textSizeOf(widget()).line;
    gtk_widget_set_size_request(widget(), static_cast<gint>(std::lround(widthInLines * line)),
                                static_cast<gint>(std::lround(heightInLines * line)));
    return Block(*this).expanding();
}

void Plot::setAxes(const std::string& x, const std::string& y) {
    xTitle_ = x;
    yTitle_ = y;
    show(std::move(series_));
}

void Plot::setLogarithmicX(bool isLogarithmic) {
    isLogarithmicX_ = isLogarithmic;
    show(std::move(series_));
}

void Plot::show(std::vector<PlotSeries> series) {
    pointerAt(std::nullopt);
    series_ = std::move(series);
    for (PlotSeries& each : series_) {  // a missing number makes a gap
        const std::size_t size = std::max(each.x.size(), each.y.size());
        each.x.resize(size, std::numeric_limits<double>::quiet_NaN());
        each.y.resize(size, std::numeric_limits<double>::quiet_NaN());
    }
    canvas_->surface.reset();
    canvas_->frame.reset();
    isFailureTold_ = false;
    gtk_widget_queue_draw(widget());
}

void Plot::draw() {
    canvas_->surface.reset(
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, canvas_->width, canvas_->height));
    const CairoContext cairo(cairo_create(canvas_->surface.get()));
    canvas_->frame =
        drawPlot(cairo.get(), canvas_->width, canvas_->height, textSizeOf(widget()).font,
                 {xTitle_, yTitle_, isLogarithmicX_, series_});
    if (plotLibrary() == nullptr && !series_.empty() && !std::exchange(isFailureTold_, true)) {
        runHandler(failed_, name().c_str());
    }
}

std::optional<Area> Plot::place(const PlotPosition& position) const {
    const bool isThere =
        position.series < series_.size() && position.point < series_[position.series].x.size();
    const auto found =
        isThere ? canvas_->placeOf(series_[position.series], position.point) : std::nullopt;
    if (!found) {
        return std::nullopt;
    }
    return Area{static_cast<int>(std::lround(found->x)), static_cast<int>(std::lround(found->y)), 1,
                1};
}

std::optional<PlotPosition> Plot::nearest(double x, double y) const {
    constexpr double reach = 30.0;  // pixels
    std::optional<PlotPosition> found;
    double shortest = reach * reach;
    for (std::size_t i = 0; i < series_.size(); ++i) {
        auto shape = series_[i].shape.begin();
        for (std::size_t k = 0; k < series_[i].x.size(); ++k) {
            if (shape != series_[i].shape.end() && *shape == k) {
                ++shape;
                continue;
            }
            const auto place = canvas_->placeOf(series_[i], k);
            if (!place) {
                continue;
            }
            const double distance =
                (place->x - x) * (place->x - x) + (place->y - y) * (place->y - y);
            if (distance < shortest) {
                shortest = distance;
                found = PlotPosition{i, k};
            }
        }
    }
    return found;
}

void Plot::pointerAt(std::optional<PlotPosition> position) {
    const bool isSame =
        position.has_value() == pointed_.has_value() &&
        (!position || (position->series == pointed_->series && position->point == pointed_->point));
    if (isSame) {
        return;
    }
    pointed_ = position;
    gtk_widget_queue_draw(widget());
    if (point_) {
        point_(pointed_);
    }
}

std::optional<std::string> Plot::save(const std::string& path) const {
    constexpr double width = 720.0;  // points
    constexpr double height = 480.0;
    constexpr double textHeight = 9.0;
    constexpr int pixelsPerPoint = 2;
    const bool isSvg = hasExtension(path, ".svg");
    const bool isPdf = hasExtension(path, ".pdf");
    const bool isVector = isSvg || isPdf;
    std::string picture;
    {
        const Surface surface(
            isSvg   ? cairo_svg_surface_create_for_stream(&append, &picture, width, height)
            : isPdf ? cairo_pdf_surface_create_for_stream(&append, &picture, width, height)
                    : cairo_image_surface_create(CAIRO_FORMAT_RGB24,
                                                 static_cast<int>(width) * pixelsPerPoint,
                                                 static_cast<int>(height) * pixelsPerPoint));
        const double scale = isVector ? 1.0 : pixelsPerPoint;
        const CairoContext cairo(cairo_create(surface.get()));
        const auto frame = drawPlot(cairo.get(), width * scale, height * scale, textHeight * scale,
                                    {xTitle_, yTitle_, isLogarithmicX_, series_});
        if (!isVector) {
            cairo_surface_write_to_png_stream(surface.get(), &append, &picture);
        }
        cairo_surface_finish(surface.get());
        if (!frame || cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) {
            return "warning: the picture could not be drawn";
        }
    }
    return writeFile(path, picture);
}

}  // namespace toolkit
