#include "toolkit/mnemonics.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>

namespace toolkit {

namespace {

constexpr std::string_view menuLetters = "fe";

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

char LowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// The letters that a caption can have, the best first: those that start a word, then the others.
std::string LettersOf(const std::string& caption) {
    std::string starts;
    std::string others;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (IsLetter(caption[i]) && menuLetters.find(LowerCase(caption[i])) == std::string::npos) {
            const bool startsWord = i == 0 || !IsLetter(caption[i - 1]);
            (startsWord ? starts : others) += LowerCase(caption[i]);
        }
    }
    return starts + others;
}

// The first place of `letter` in `caption`, at the start of a word if there is one.
std::size_t PlaceOf(char letter, const std::string& caption) {
    std::size_t place = std::string::npos;
    for (std::size_t i = caption.size(); i-- > 0;) {
        const bool startsWord = i == 0 || !IsLetter(caption[i - 1]);
        const bool isBetter =
            place == std::string::npos || startsWord || (place > 0 && IsLetter(caption[place - 1]));
        if (LowerCase(caption[i]) == letter && isBetter) {
            place = i;
        }
    }
    return place;
}

using Owners = std::map<char, Captioned*>;

// Gives `captioned` a free letter, or one whose owner can change to another one, and so on: an
// augmenting path (Kuhn, Naval Research Logistics Quarterly 2 (1955) 83). `tried`: letters that
// the path has been through. Letters inside a word are taken over first: their owners lose least.
bool GiveLetter(Captioned* captioned, Owners& owners, std::set<char>& tried) {
    const std::string letters = LettersOf(captioned->caption());
    const auto free = std::find_if(letters.begin(), letters.end(),
                                   [&](char letter) { return !owners.contains(letter); });
    if (free != letters.end()) {
        owners[*free] = captioned;
        return true;
    }
    return std::any_of(letters.rbegin(), letters.rend(), [&](char letter) {
        if (!tried.insert(letter).second || !GiveLetter(owners[letter], owners, tried)) {
            return false;
        }
        owners[letter] = captioned;
        return true;
    });
}

}  // namespace

void GiveOutMnemonics(const std::vector<Captioned*>& captions) {
    Owners owners;
    std::vector<Captioned*> others;
    for (Captioned* const captioned : captions) {
        const std::string letters = LettersOf(captioned->caption());
        const bool isFirst = !letters.empty() && owners.emplace(letters.front(), captioned).second;
        if (!isFirst) {
            others.push_back(captioned);
        }
        captioned->underline(std::string::npos);
    }
    for (Captioned* const captioned : others) {
        std::set<char> tried;
        GiveLetter(captioned, owners, tried);
    }
    for (const auto& [letter, captioned] : owners) {
        captioned->underline(PlaceOf(letter, captioned->caption()));
    }
}

}  // namespace toolkit
