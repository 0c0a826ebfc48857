#pragma once

#include <vector>

#include "toolkit/control.h"

namespace toolkit {

/// Gives every caption a letter of its own, as far as the letters go: its first letter where that
/// is free, else another first letter of a word, else any. F and E stay with the menu bar.
void giveOutMnemonics(const std::vector<Captioned*>& captions);

}  // namespace toolkit
