#pragma once

#include <functional>
#include <optional>
#include <string>

namespace toolkit {

// What is copied, and what is merely selected, which the middle button of the mouse pastes.
enum class Selection { Clipboard, Primary };

// Asks whoever owns the selection for its text, without waiting. `take` runs once: with the text as
// UTF-8 when it comes, or with nothing where there is none, or none that can be read.
void RequestText(Selection selection,
                 std::function<void(const std::optional<std::string>& text)> take);

// Puts a text on the clipboard.
void SetClipboardText(const std::string& text);

}  // namespace toolkit
