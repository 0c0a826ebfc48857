#include "toolkit/mnemonics.h"

#include <set>
#include <string>

namespace toolkit {

namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

char lowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// The place of the first letter of `caption` that is not `taken`; npos where there is none.
std::size_t freeLetter(const std::string& caption, const std::set<char>& taken, bool wordStarts) {
    for (std::size_t i = 0; i < caption.size(); ++i) {
        const bool startsWord = i == 0 || !isLetter(caption[i - 1]);
        if (isLetter(caption[i]) && (startsWord || !wordStarts) &&
            !taken.contains(lowerCase(caption[i]))) {
            return i;
        }
    }
    return std::string::npos;
}

}  // namespace

void giveOutMnemonics(const std::vector<Captioned*>& captions) {
    std::set<char> taken{'f', 'e'};
    for (Captioned* const captioned : captions) {
        const std::string caption = captioned->caption();
        std::size_t position = freeLetter(caption, taken, true);
        if (position == std::string::npos) {
            position = freeLetter(caption, taken, false);
        }
        if (position != std::string::npos) {
            taken.insert(lowerCase(caption[position]));
        }
        captioned->underline(position);
    }
}

}  // namespace toolkit
