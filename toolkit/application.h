#pragma once

namespace toolkit {

/// Connects to the display; false when there is none.
bool openDisplay();

/// Runs the events of all windows until leaveLoop is called.
void runLoop();
void leaveLoop();

/// Handles what has happened until now and returns whether anything had; for programs that drive
/// the screens themselves.
bool handlePendingEvents();

}  // namespace toolkit
