#pragma once

#include <vector>

#include "toolkit/control.h"

namespace toolkit {

// Gives every caption a letter of its own, as far as the letters go: each first letter to the
// first caption that begins with it, the others a letter that starts a word or else any other,
// for which an earlier caption may have to change its letter. F and E stay with the menu bar.
void GiveOutMnemonics(const std::vector<Captioned*>& captions);

}  // namespace toolkit
