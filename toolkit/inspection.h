#pragma once

#include "toolkit/control.h"
#include "toolkit/screen.h"

// For programs that drive the screens and look at them from outside: the robot, the tests and the
// benchmarks. The program itself needs none of it.
namespace toolkit {

// Handles what has happened until now and returns whether anything had.
bool HandlePendingEvents();

bool IsActive(const Screen& screen);
// Whether the window has been drawn since it was shown.
bool IsPainted(const Screen& screen);
// The X server's number of the window; only of a shown one.
unsigned long XWindow(const Screen& screen);

bool HasFocus(const Control& control);
void TakeFocus(const Control& control);
bool IsVisible(const Control& control);

}  // namespace toolkit
