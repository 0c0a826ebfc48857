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

void setWindowIcon(const char* name) {
    const auto set = +[](gpointer data) -> gboolean {
        const auto* const icon = static_cast<const char*>(data);
        // GTK+ complains of an icon that is in no theme.
        if (gtk_icon_theme_has_icon(gtk_icon_theme_get_default(), icon) == FALSE) {
            return FALSE;
        }
        gtk_window_set_default_icon_name(icon);  // of the windows to come
        GList* const windows = gtk_window_list_toplevels();
        for (const GList* each = windows; each != nullptr; each = each->next) {
            gtk_window_set_icon_name(GTK_WINDOW(each->data), icon);
        }
        g_list_free(windows);
        return FALSE;
    };
    g_idle_add_full(G_PRIORITY_LOW, set, g_strdup(name), &g_free);
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
