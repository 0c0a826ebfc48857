#pragma once

#include <string>

namespace toolkit {

/// Puts a text on the clipboard.
void setClipboardText(const std::string& text);

}  // namespace toolkit
