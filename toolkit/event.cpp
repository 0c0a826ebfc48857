#include "toolkit/event.h"

#include <gtk/gtk.h>

#include <cstdio>
#include <exception>
#include <memory>
#include <utility>

namespace toolkit {

void ReportException(const char* where) noexcept {
    try {
        throw;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "drovan-w: %s: %s\n", where, error.what());
    } catch (...) {
        std::fprintf(stderr, "drovan-w: %s: unknown exception\n", where);
    }
}

void RunHandler(const Handler& handler, const char* name) noexcept {
    if (!handler) return;
    try {
        handler();
    } catch (...) {
        ReportException(name);
    }
}

void Later(Handler task) {
    const auto run = [](gpointer handler) -> gboolean {
        RunHandler(*static_cast<const Handler*>(handler), "idle task");
        return G_SOURCE_REMOVE;
    };
    const auto remove = [](gpointer handler) {
        const std::unique_ptr<Handler> owned(static_cast<Handler*>(handler));
    };
    gdk_threads_add_idle_full(G_PRIORITY_DEFAULT_IDLE, Guarded(run), new Handler(std::move(task)),
                              Guarded(remove));
}

void ConnectFunction(void* object, const char* signal, void (*function)(), void* data,
                     Order order) {
    g_signal_connect_data(object, signal, function, data, nullptr,
                          order == Order::Last ? G_CONNECT_AFTER : static_cast<GConnectFlags>(0));
}

}  // namespace toolkit
