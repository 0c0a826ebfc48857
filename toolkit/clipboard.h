#pragma once

#include <string>

namespace toolkit {

/// Puts a text on the clipboard, and what is there now; empty where there is no text.
void setClipboardText(const std::string& text);
std::string clipboardText();

}  // namespace toolkit
