#include "toolkit/exposure.h"

namespace toolkit {

CairoContext ExposedPart(GtkWidget* widget, const GdkEventExpose& event) {
    CairoContext cairo(gdk_cairo_create(gtk_widget_get_window(widget)));
    gdk_cairo_region(cairo.get(), event.region);
    cairo_clip(cairo.get());
    return cairo;
}

}  // namespace toolkit
