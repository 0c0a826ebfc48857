#include "toolkit/event.h"

#include <gtk/gtk.h>

#include <exception>
#include <memory>
#include <utility>

namespace toolkit {

void runHandler(const Handler& handler, const char* name) noexcept {
    if (!handler) {
        return;
    }
    try {
        handler();
    } catch (const std::exception& error) {
        g_critical("%s: %s", name, error.what());
    } catch (...) {
        g_critical("%s: unknown exception", name);
    }
}

namespace {

gboolean runTask(gpointer data) {
    runHandler(*static_cast<const Handler*>(data), "idle task");
    return G_SOURCE_REMOVE;
}

void deleteTask(gpointer data) {
    const std::unique_ptr<Handler> task(static_cast<Handler*>(data));
}

}  // namespace

void later(Handler task) {
    gdk_threads_add_idle_full(G_PRIORITY_DEFAULT_IDLE, runTask, new Handler(std::move(task)),
                              deleteTask);
}

}  // namespace toolkit
