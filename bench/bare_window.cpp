// The yardstick of the start-up: a GTK+ 2 window that shows one line of text, or nothing with the
// argument "empty", and ends as soon as it is painted.
#include <gtk/gtk.h>

#include <cstdlib>
#include <string_view>

int main(int argc, char** argv) {
    if (gtk_init_check(nullptr, nullptr) == FALSE) return EXIT_FAILURE;
    GtkWidget* const window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    gtk_window_set_default_size(GTK_WINDOW(window), 600, 600);
    if (argc < 2 || std::string_view(argv[1]) != "empty") {
        gtk_container_add(GTK_CONTAINER(window), gtk_label_new("Drovan W"));
    }
    bool isPainted = false;
    const auto onExposed = +[](GtkWidget* /*widget*/, GdkEvent* /*event*/, gpointer data) {
        *static_cast<bool*>(data) = true;
        return FALSE;
    };
    g_signal_connect(window, "expose-event", G_CALLBACK(onExposed), &isPainted);
    gtk_widget_show_all(window);
    while (!isPainted) {
        gdk_display_sync(gdk_display_get_default());
        while (gtk_events_pending() != FALSE) {
            gtk_main_iteration();
        }
    }
    return EXIT_SUCCESS;
}
