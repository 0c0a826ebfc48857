#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace toolkit {

// Writes `contents` into the file at `path`, whole or not at all: beside it under another name
// first, then in its place. A file that stands there keeps its rights, a symbolic link its target.
// Returns nothing, or the sentence that says what went wrong; the old file is whole then.
std::optional<std::string> WriteFile(const std::string& path, std::string_view contents);

// The name of a file, without its folder, as it can be shown: what is no UTF-8 in it is replaced.
std::string ShownName(const std::string& path);

}  // namespace toolkit
