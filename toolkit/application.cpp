#include "toolkit/application.h"

#include <gtk/gtk.h>

namespace toolkit {

bool openDisplay() {
    if (gtk_init_check(nullptr, nullptr) == FALSE) {
        return false;
    }
    // A result that Tab has passed would stay selected, and look like the one that is meant.
    g_object_set(gtk_settings_get_default(), "gtk-label-select-on-focus", FALSE, nullptr);
    return true;
}

void runLoop() {
    gtk_main();
}

void leaveLoop() {
    if (gtk_main_level() > 0) {
        gtk_main_quit();
    }
}

bool handlePendingEvents() {
    gdk_display_sync(gdk_display_get_default());
    bool hasHandled = false;
    while (gtk_events_pending() != FALSE) {
        gtk_main_iteration();
        hasHandled = true;
    }
    return hasHandled;
}

}  // namespace toolkit
