#include "toolkit/drawing.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "toolkit/event.h"
#include "toolkit/exposure.h"
#include "toolkit/text_size.h"

namespace toolkit {

namespace {

void SetSource(cairo_t* cairo, const Colour& colour) {
    cairo_set_source_rgb(cairo, colour.red, colour.green, colour.blue);
}

void EllipsePath(cairo_t* cairo, double x, double y, double radiusX, double radiusY) {
    cairo_save(cairo);
    cairo_translate(cairo, x, y);
    cairo_scale(cairo, radiusX, radiusY);
    cairo_new_sub_path(cairo);
    cairo_arc(cairo, 0.0, 0.0, 1.0, 0.0, 2.0 * std::numbers::pi);
    cairo_restore(cairo);
}

}  // namespace

void Painter::fillEllipse(double x, double y, double radiusX, double radiusY,
                          const Colour& colour) const {
    SetSource(cairo_, colour);
    EllipsePath(cairo_, x, y, radiusX, radiusY);
    cairo_fill(cairo_);
}

void Painter::strokeEllipse(double x, double y, double radiusX, double radiusY, double lineWidth,
                            const Colour& colour) const {
    SetSource(cairo_, colour);
    cairo_set_line_width(cairo_, lineWidth);
    EllipsePath(cairo_, x, y, radiusX, radiusY);
    cairo_stroke(cairo_);
}

void Painter::arrow(double fromX, double fromY, double toX, double toY, double lineWidth,
                    const Colour& colour) const {
    const double length = std::hypot(toX - fromX, toY - fromY);
    if (!(length > 0.0)) return;
    const double headLength = 4.0 * lineWidth;
    const double headWidth = 2.0 * lineWidth;
    cairo_save(cairo_);
    SetSource(cairo_, colour);
    cairo_set_line_width(cairo_, lineWidth);
    cairo_translate(cairo_, fromX, fromY);
    cairo_rotate(cairo_, std::atan2(toY - fromY, toX - fromX));
    cairo_move_to(cairo_, 0.0, 0.0);
    cairo_line_to(cairo_, length - headLength, 0.0);
    cairo_stroke(cairo_);
    cairo_move_to(cairo_, length, 0.0);
    cairo_line_to(cairo_, length - headLength, headWidth);
    cairo_line_to(cairo_, length - headLength, -headWidth);
    cairo_close_path(cairo_);
    cairo_fill(cairo_);
    cairo_restore(cairo_);
}

Drawing::Drawing(std::string name, double widthInLines, double heightInLines,
                 const std::string& description, Paint paint)
    : Control(std::move(name), gtk_drawing_area_new()),
      widthInLines_(widthInLines),
      heightInLines_(heightInLines),
      paint_(std::move(paint)) {
    gtk_widget_set_has_window(widget(), FALSE);
    atk_object_set_role(gtk_widget_get_accessible(widget()), ATK_ROLE_IMAGE);
    setAccessibleName(description);
    const auto onStyleSet = [](GtkWidget* widget, GtkStyle* /*previous*/, const Drawing* self) {
        const int height = LineHeight(widget);
        gtk_widget_set_size_request(widget,
                                    static_cast<gint>(std::lround(height * self->widthInLines_)),
                                    static_cast<gint>(std::lround(height * self->heightInLines_)));
    };
    const auto onExpose = [](GtkWidget* widget, GdkEventExpose* event,
                             const Drawing* self) -> gboolean {
        GtkAllocation place;
        gtk_widget_get_allocation(widget, &place);
        const CairoContext cairo = ExposedPart(widget, *event);
        const double shape = self->widthInLines_ / self->heightInLines_;
        const double height = std::min<double>(place.height, place.width / shape);
        const double unit = std::min(height, height * shape);
        cairo_translate(cairo.get(), place.x + (place.width - height * shape) / 2.0,
                        place.y + (place.height - height) / 2.0);
        cairo_scale(cairo.get(), unit, unit);
        const GdkColor& text = gtk_widget_get_style(widget)->fg[gtk_widget_get_state(widget)];
        constexpr double whole = 65535.0;
        self->paint_(
            Painter(cairo.get(), {text.red / whole, text.green / whole, text.blue / whole}));
        return FALSE;
    };
    Connect(widget(), "style-set", onStyleSet, this);
    Connect(widget(), "expose-event", onExpose, this);
}

}  // namespace toolkit
