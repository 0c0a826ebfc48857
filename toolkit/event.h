#pragma once

#include "toolkit/control.h"

namespace toolkit {

// Runs `handler` if there is one. Handlers are called by GTK+, whose C frames no exception may
// cross: one that escapes is written to stderr under the name of its control, and ends here.
void RunHandler(const Handler& handler, const char* name) noexcept;

// Runs `task` once, after the events that are waiting, and never inside another handler.
void Later(Handler task);

// For the functions of this folder that C calls: writes the exception that is being handled to
// stderr, in one line.
void ReportException(const char* where) noexcept;

template <class Function, class Call>
struct GuardedCall;
template <class Function, class Result, class... Arguments>
struct GuardedCall<Function, Result (Function::*)(Arguments...) const> {
    static Result call(Arguments... arguments) noexcept {
        try {
            return Function{}(arguments...);
        } catch (...) {
            ReportException("in a function that GTK+ has called");
        }
        return Result();
    }
};

// A lambda without captures as a function for C: an exception that escapes is reported and ends
// in it, and C is given 0. Its last argument may have the type of the data that go with it.
template <class Function>
auto Guarded(Function /*function*/) {
    return &GuardedCall<Function, decltype(&Function::operator())>::call;
}

// Before or after what the object itself does with a signal.
enum class Order { First, Last };

void ConnectFunction(void* object, const char* signal, void (*function)(), void* data, Order order);

// Has a guarded lambda called when a GObject emits a signal.
template <class Function>
void Connect(void* object, const char* signal, Function function, const void* data = nullptr,
             Order order = Order::First) {
    ConnectFunction(object, signal, reinterpret_cast<void (*)()>(Guarded(function)),
                    const_cast<void*>(data), order);
}

}  // namespace toolkit
