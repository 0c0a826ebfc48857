#include "procedures/composition_text.h"

#include <functional>

#include "toolkit/number_text.h"

namespace procedures {

namespace {

// The formula with its numbers as subscripts.
std::string Printed(const std::string& formula) {
    constexpr unsigned char subscriptZero = 0x80;  // the last byte of U+2080
    std::string text;
    for (const char c : formula) {
        if (c >= '0' && c <= '9') {
            text += "\xe2\x82";
            text += static_cast<char>(subscriptZero + (c - '0'));
        } else {
            text += c;
        }
    }
    return text;
}

// Fractions and formulas of all gases that are there.
std::string Joined(const fluid::Mixture& mixture, const char* between, const char* separator,
                   const std::function<std::string(const std::string&)>& formulaText) {
    std::string text;
    for (std::size_t k = 0; k < mixture.count; ++k) {
        text += text.empty() ? "" : separator;
        if (mixture.count > 1) {
            text += toolkit::NumberText(mixture.fractions[k]) + between;
        }
        text += formulaText(std::string(mixture.formula(k)));
    }
    return text;
}

}  // namespace

std::string CompositionText(const fluid::Mixture& mixture) {
    return Joined(mixture, " ", " + ", Printed);
}

std::string CompositionTitle(const fluid::Mixture& mixture) {
    return CompositionText(mixture) + ", van der Waals";
}

std::string CompositionName(const fluid::Mixture& mixture) {
    return Joined(mixture, "", "-", [](const std::string& formula) { return formula; });
}

}  // namespace procedures
