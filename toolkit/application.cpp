#include "toolkit/application.h"

#include <gtk/gtk.h>

namespace toolkit {

bool openDisplay() {
    return gtk_init_check(nullptr, nullptr) != FALSE;
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
