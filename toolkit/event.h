#pragma once

#include "toolkit/control.h"

namespace toolkit {

/// Runs `handler` if there is one. Handlers are called by GTK+, whose C frames no exception may
/// cross: one that escapes is written to stderr under the name of its control, and ends here.
void runHandler(const Handler& handler, const char* name) noexcept;

/// Runs `task` once, after the events that are waiting, and never inside another handler.
void later(Handler task);

}  // namespace toolkit
