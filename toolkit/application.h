#pragma once

namespace toolkit {

// Prepares the process and connects to the display; false when there is none.
bool OpenDisplay();

// Gives all windows the icon of this name in the desktop's icon theme, if it is there. It is
// looked for a moment after the first painting, so that the start does not wait for it. `name` has
// to last as long as the program.
void SetWindowIcon(const char* name);

// Runs the events of all windows until LeaveLoop is called.
void RunLoop();
void LeaveLoop();

}  // namespace toolkit
