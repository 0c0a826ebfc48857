#include "toolkit/application.h"

#include <gtk/gtk.h>
#include <sys/resource.h>

#include <algorithm>
#include <csignal>
#include <initializer_list>

#include "toolkit/event.h"

namespace toolkit {

namespace {

// Gives the windows that are open and those to come the icon of this name.
void GiveIcon(const char* name) {
    GtkIconTheme* const theme = gtk_icon_theme_get_default();
    // GTK+ complains of an icon that is in no theme.
    if (gtk_icon_theme_has_icon(theme, name) == FALSE) return;
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

// What hands a table to screen readers goes down it by recursion, with some 128 bytes for a row.
void MakeRoomForReaders() {
    constexpr rlim_t room = rlim_t{64} << 20;  // four times what the longest table takes
    rlimit stack{};
    if (getrlimit(RLIMIT_STACK, &stack) == 0 && stack.rlim_cur < room) {
        stack.rlim_cur = std::min(room, stack.rlim_max);
        setrlimit(RLIMIT_STACK, &stack);
    }
}

// The context menu of a text of this type comes when the clipboard has answered. Asked for by keys
// and come too late to be shown, it would take all input all the same.
void WatchContextMenus(GType type) {
    const auto leave = [](gpointer menu) -> gboolean {
        if (gtk_widget_get_visible(GTK_WIDGET(menu)) == FALSE) {
            gtk_menu_shell_deactivate(GTK_MENU_SHELL(menu));
        }
        return G_SOURCE_REMOVE;
    };
    const auto onContextMenu = [](GSignalInvocationHint* /*hint*/, guint /*count*/,
                                  const GValue* values, gpointer data) -> gboolean {
        // Before the next event.
        gdk_threads_add_idle_full(G_PRIORITY_HIGH, reinterpret_cast<GSourceFunc>(data),
                                  g_value_dup_object(values + 1), &g_object_unref);
        return TRUE;
    };
    g_type_class_unref(g_type_class_ref(type));
    g_signal_add_emission_hook(g_signal_lookup("populate-popup", type), 0, Guarded(onContextMenu),
                               reinterpret_cast<gpointer>(Guarded(leave)), nullptr);
}

}  // namespace

bool OpenDisplay() {
    // A file that grows over its limit shall fail to be written, and not end the process.
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    MakeRoomForReaders();
    if (gtk_init_check(nullptr, nullptr) == FALSE) return false;
    WatchContextMenus(GTK_TYPE_ENTRY);
    WatchContextMenus(GTK_TYPE_LABEL);
    // A result that Tab has passed would stay selected, and look like the one that is meant.
    g_object_set(gtk_settings_get_default(), "gtk-label-select-on-focus", FALSE, nullptr);
    return true;
}

void SetWindowIcon(const char* name) {
    const auto onPainted = [](GSignalInvocationHint* /*hint*/, guint /*count*/,
                              const GValue* /*values*/, gpointer data) -> gboolean {
        constexpr guint pause = 100;  // ms
        const auto set = [](gpointer icon) -> gboolean {
            GiveIcon(static_cast<const char*>(icon));
            return G_SOURCE_REMOVE;
        };
        g_timeout_add_full(G_PRIORITY_LOW, pause, Guarded(set), data, nullptr);
        return FALSE;
    };
    g_signal_add_emission_hook(g_signal_lookup("expose-event", GTK_TYPE_WIDGET), 0,
                               Guarded(onPainted), const_cast<char*>(name), nullptr);
}

void RunLoop() {
    gtk_main();
}

void LeaveLoop() {
    if (gtk_main_level() > 0) {
        gtk_main_quit();
    }
}

}  // namespace toolkit
