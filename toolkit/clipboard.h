#pragma once

#include <string>

namespace toolkit {

// Puts a text on the clipboard.
void SetClipboardText(const std::string& text);

}  // namespace toolkit
