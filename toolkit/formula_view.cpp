#include "toolkit/formula_view.h"

#include <gtk/gtk.h>

#include <cmath>
#include <utility>

#include "toolkit/exposure.h"

namespace toolkit {

namespace {

constexpr double relativeSize = 1.15;  // formulas have small indices: a little above the text

/// The size of the widget's own font in points.
double fontSize(GtkWidget* widget) {
    const PangoFontDescription* const font = gtk_widget_get_style(widget)->font_desc;
    return static_cast<double>(pango_font_description_get_size(font)) / PANGO_SCALE;
}

}  // namespace

struct FormulaView::Callbacks {
    /// Sets the formula and asks for its room; again whenever the font has changed.
    static void onStyleSet(GtkWidget* widget, GtkStyle* /*previous*/, gpointer data) {
        auto* const self = static_cast<FormulaView*>(data);
        self->typeset_.emplace(self->formula_, FormulaStyle{gtk_widget_get_pango_context(widget),
                                                            relativeSize * fontSize(widget)});
        const FormulaSize& size = self->typeset_->size();
        gtk_widget_set_size_request(widget, static_cast<gint>(std::ceil(size.width)),
                                    static_cast<gint>(std::ceil(size.ascent + size.descent)));
    }

    static gboolean onExpose(GtkWidget* widget, GdkEventExpose* event, gpointer data) {
        const auto* const self = static_cast<const FormulaView*>(data);
        if (!self->typeset_) {
            return FALSE;
        }
        GtkAllocation place;
        gtk_widget_get_allocation(widget, &place);
        const CairoContext cairo = exposedPart(widget, *event);
        gdk_cairo_set_source_color(cairo.get(),
                                   &gtk_widget_get_style(widget)->fg[gtk_widget_get_state(widget)]);
        const FormulaSize& size = self->typeset_->size();
        const double slack = place.height - size.ascent - size.descent;
        self->typeset_->draw(cairo.get(), place.x, place.y + std::round(slack / 2.0 + size.ascent));
        return FALSE;
    }
};

FormulaView::FormulaView(std::string name, Formula formula)
    : Control(std::move(name), gtk_drawing_area_new()), formula_(std::move(formula)) {
    gtk_widget_set_has_window(widget(), FALSE);
    AtkObject* const accessible = gtk_widget_get_accessible(widget());
    atk_object_set_role(accessible, ATK_ROLE_IMAGE);
    setAccessibleName(formula_.plainText());
    g_signal_connect(widget(), "style-set", G_CALLBACK(&Callbacks::onStyleSet), this);
    g_signal_connect(widget(), "expose-event", G_CALLBACK(&Callbacks::onExpose), this);
}

}  // namespace toolkit
