#pragma once

#include <optional>
#include <string>
#include <vector>

namespace toolkit {

class Screen;

/// Asks the user where to save a file, and whether to replace one that stands there.
/// `extensions`: what the name may end with, as ".txt"; the first is added where none of them is
/// there. Returns the path, or nothing when the user thought better of it.
std::optional<std::string> chooseFileToSave(Screen& screen, const std::string& title,
                                            const std::string& proposedName,
                                            const std::vector<std::string>& extensions);

}  // namespace toolkit
