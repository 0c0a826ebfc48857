#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace toolkit {

class Screen;

// Whether the path ends with this extension, as ".txt", in whatever case.
bool HasExtension(const std::string& path, const std::string& extension);

// Asks the user where to save a file, and whether to replace one that stands there; returns at
// once. `chosen` runs with the path when the user has made up his mind, and never when he thinks
// better of it or the screen is closed.
// `extensions`: what the name may end with, as ".txt"; the first is added where none is there.
void ChooseFileToSave(Screen& screen, const std::string& title, const std::string& proposedName,
                      std::vector<std::string> extensions,
                      std::function<void(const std::string& path)> chosen);

// As above, with the choice of the kind of file, by its extension, and of one of these `sizes`, of
// which `proposedSize` is chosen at first; `chosen` gets its number.
void ChooseFileToSave(Screen& screen, const std::string& title, const std::string& proposedName,
                      std::vector<std::string> extensions, const std::vector<std::string>& sizes,
                      std::size_t proposedSize,
                      std::function<void(const std::string& path, std::size_t size)> chosen);

}  // namespace toolkit
