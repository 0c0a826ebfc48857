#pragma once

#include <string>

#include "toolkit/control.h"

namespace toolkit {

class Screen;

// Where the window stands on the display, its frame included.
Area FrameArea(const Screen& screen);

// Saves what the display shows in `area` as a PNG file; false when that is not possible.
bool SavePicture(const Area& area, const std::string& path);

}  // namespace toolkit
