#include "toolkit/scrolled_page.h"

#include <gtk/gtk.h>

#include <algorithm>

#include "toolkit/event.h"

namespace toolkit {

namespace {

void SetName(GtkWidget* widget, const char* name) {
    gtk_widget_set_name(widget, name);
    atk_object_set_accessible_id(gtk_widget_get_accessible(widget), name);
}

}  // namespace

ScrolledPage::ScrolledPage(GtkScrolledWindow* scroller)
    : ScrollBar1(gtk_scrolled_window_get_vadjustment(scroller)),
      Rectangle1(GTK_ADJUSTMENT(gtk_adjustment_new(0.0, 0.0, 0.0, 0.0, 0.0, 0.0))) {
    GtkWidget* const viewport = gtk_bin_get_child(GTK_BIN(scroller));
    SetName(gtk_scrolled_window_get_vscrollbar(scroller), "ScrollBar1");
    SetName(viewport, "Rectangle1");
    gtk_viewport_set_vadjustment(GTK_VIEWPORT(viewport), Rectangle1);
    Connect(
        ScrollBar1, "value-changed",
        [](GtkAdjustment* /*bar*/, ScrolledPage* self) { self->ScrollBar1_ValueChanged(); }, this);
    Connect(
        Rectangle1, "changed",
        [](GtkAdjustment* /*place*/, ScrolledPage* self) { self->Event_Resizing(); }, this);
}

void ScrolledPage::ScrollBar1_ValueChanged() {
    gtk_adjustment_set_value(Rectangle1, gtk_adjustment_get_value(ScrollBar1));
}

void ScrolledPage::Event_Resizing() {
    const double height = gtk_adjustment_get_upper(Rectangle1);
    const double inSight = gtk_adjustment_get_page_size(Rectangle1);
    const double value =
        std::clamp(gtk_adjustment_get_value(ScrollBar1), 0.0, std::max(0.0, height - inSight));
    gtk_adjustment_configure(ScrollBar1, value, 0.0, height,
                             gtk_adjustment_get_step_increment(Rectangle1),
                             gtk_adjustment_get_page_increment(Rectangle1), inSight);
    ScrollBar1_ValueChanged();
}

}  // namespace toolkit
