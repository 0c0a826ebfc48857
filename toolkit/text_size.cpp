#include "toolkit/text_size.h"

namespace toolkit {

TextExtents SizeOfText(GtkWidget* widget, const std::string& text) {
    PangoLayout* const layout = gtk_widget_create_pango_layout(widget, text.c_str());
    TextExtents size;
    pango_layout_get_pixel_size(layout, &size.width, &size.height);
    g_object_unref(layout);
    return size;
}

int LineHeight(GtkWidget* widget) {
    return SizeOfText(widget, "H").height;
}

}  // namespace toolkit
