#include "toolkit/application.h"

#include <gtk/gtk.h>

#include <initializer_list>

namespace toolkit {

namespace {

/// Gives the windows that are open and those to come the icon of this name.
void giveIcon(const char* name) {
    GtkIconTheme* const theme = gtk_icon_theme_get_default();
    // GTK+ complains of an icon that is in no theme.
    if (gtk_icon_theme_has_icon(theme, name) == FALSE) {
        return;
    }
    // By its name alone, every window would read all sizes of it anew: 2.4 ms each.
    GList* icons = nullptr;
    for (const int pixels : {48, 32, 24, 16}) {
        GdkPixbuf* const icon =
            gtk_icon_theme_load_icon(theme, name, pixels, GtkIconLookupFlags{}, nullptr);
        if (icon != nullptr) {
            icons = g_list_prepend(icons, icon);
        }
    }
    gtk_window_set_default_icon_list(icons);
    GList* const windows = gtk_window_list_toplevels();
    for (const GList* each = windows; each != nullptr; each = each->next) {
        gtk_window_set_icon_list(GTK_WINDOW(each->data), icons);
    }
    g_list_free(windows);
    g_list_free_full(icons, &g_object_unref);
}

}  // namespace

bool openDisplay() {
    if (gtk_init_check(nullptr, nullptr) == FALSE) {
        return false;
    }
    // A result that Tab has passed would stay selected, and look like the one that is meant.
    g_object_set(gtk_settings_get_default(), "gtk-label-select-on-focus", FALSE, nullptr);
    return true;
}

void setWindowIcon(const char* name) {
    constexpr guint whenStarted = 200;  // ms
    const auto set = +[](gpointer data) -> gboolean {
        giveIcon(static_cast<const char*>(data));
        return FALSE;
    };
    g_timeout_add_full(G_PRIORITY_LOW, whenStarted, set, g_strdup(name), &g_free);
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
    gdk_display_flush(gdk_display_get_default());
    return hasHandled;
}

}  // namespace toolkit
