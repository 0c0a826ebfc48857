#include "toolkit/plot_window.h"

#include <gdk/gdkkeysyms.h>
#include <gtk/gtk.h>

#include <utility>

#include "toolkit/event.h"

namespace toolkit {

void PlotWindow::open(Screen& owner, const Plot& plot) {
    const Plot* const twin = plot.twin();
    GtkWidget* const shown = twin == nullptr ? nullptr : gtk_widget_get_toplevel(twin->widget());
    if (shown != nullptr && gtk_widget_get_visible(shown) != FALSE) {
        gtk_window_present(GTK_WINDOW(shown));
    } else {
        owner.openBeside(std::make_unique<PlotWindow>(owner, plot));
    }
}

PlotWindow::PlotWindow(Screen& owner, const Plot& plot)
    : Screen(owner.host(), "PlotWindow", "Plot: " + owner.title()),
      owner_(owner),
      plot_("Plot", "Plot of the window " + owner.title(), plot) {
    constexpr double width = 40.0;  // lines of text
    constexpr double height = 26.0;
    plot_.onChange([this] { ReadOut.setText(plot_.reading()); });
    setContent(Column({plot_.sized(width, height), ReadOut}));
    setFocus(plot_);
    const auto onKey = [](GtkWidget* /*window*/, const GdkEventKey* event,
                          PlotWindow* self) -> gboolean {
        const bool ends = event->keyval == GDK_KEY_F11 || event->keyval == GDK_KEY_Escape;
        if (ends) {
            self->host().close(*self);
        }
        return static_cast<gboolean>(ends);
    };
    // What the plot itself makes of the key comes first.
    Connect(window(), "key-press-event", onKey, this, Order::Last);
    gtk_window_maximize(GTK_WINDOW(window()));
}

}  // namespace toolkit
