#include "toolkit/formula/formula_view.h"

#include <gtk/gtk.h>

#include <cmath>
#include <utility>

#include "toolkit/event.h"
#include "toolkit/exposure.h"

namespace toolkit {

FormulaView::FormulaView(std::string name, std::string text, std::string source)
    : Control(std::move(name), gtk_drawing_area_new()),
      text_(std::move(text)),
      source_(std::move(source)) {
    gtk_widget_set_has_window(widget(), FALSE);
    atk_object_set_role(gtk_widget_get_accessible(widget()), ATK_ROLE_IMAGE);
    setAccessibleName(text_);
    // Sets the formula and asks for its room; again whenever the font has changed.
    const auto onStyleSet = [](GtkWidget* widget, GtkStyle* /*previous*/, FormulaView* self) {
        constexpr double relativeSize = 1.15;  // indices are small: a little above the text
        const double points =
            pango_font_description_get_size(gtk_widget_get_style(widget)->font_desc) /
            static_cast<double>(PANGO_SCALE);
        self->box_ =
            Typeset(self->source_, gtk_widget_get_pango_context(widget), relativeSize * points);
        gtk_widget_set_size_request(
            widget, static_cast<gint>(std::ceil(self->box_.width)),
            static_cast<gint>(std::ceil(self->box_.ascent + self->box_.descent)));
    };
    const auto onExpose = [](GtkWidget* widget, GdkEventExpose* event,
                             const FormulaView* self) -> gboolean {
        GtkAllocation place;
        gtk_widget_get_allocation(widget, &place);
        const CairoContext cairo = ExposedPart(widget, *event);
        gdk_cairo_set_source_color(cairo.get(),
                                   &gtk_widget_get_style(widget)->fg[gtk_widget_get_state(widget)]);
        const double slack = place.height - self->box_.ascent - self->box_.descent;
        self->box_.draw(cairo.get(), place.x,
                        place.y + std::round(slack / 2.0 + self->box_.ascent));
        return FALSE;
    };
    Connect(widget(), "style-set", onStyleSet, this);
    Connect(widget(), "expose-event", onExpose, this);
}

}  // namespace toolkit
