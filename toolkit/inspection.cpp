#include "toolkit/inspection.h"

#include <gdk/gdkx.h>
#include <gtk/gtk.h>

namespace toolkit {

bool HandlePendingEvents() {
    gdk_display_sync(gdk_display_get_default());
    bool hasHandled = false;
    while (gtk_events_pending() != FALSE) {
        gtk_main_iteration();
        hasHandled = true;
    }
    gdk_display_flush(gdk_display_get_default());
    return hasHandled;
}

bool IsActive(const Screen& screen) {
    return screen.isActive_;
}

bool IsPainted(const Screen& screen) {
    return screen.isPainted_;
}

unsigned long XWindow(const Screen& screen) {
    return GDK_WINDOW_XID(gtk_widget_get_window(screen.window()));
}

bool HasFocus(const Control& control) {
    return gtk_widget_has_focus(control.widget()) != FALSE;
}

void TakeFocus(const Control& control) {
    gtk_widget_grab_focus(control.widget());
}

bool IsVisible(const Control& control) {
    return gtk_widget_get_visible(control.widget()) != FALSE;
}

}  // namespace toolkit
