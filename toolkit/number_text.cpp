#include "toolkit/number_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

namespace toolkit {

namespace {

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view whiteSpace = " \t\n\v\f\r";
    const std::size_t first = text.find_first_not_of(whiteSpace);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(whiteSpace) - first + 1);
}

}  // namespace

std::optional<double> ParseNumber(std::string_view text) {
    std::string_view digits = Trimmed(text);
    if (digits.starts_with('+')) {
        digits.remove_prefix(1);
        if (digits.starts_with('-')) return std::nullopt;
    }
    double value = 0.0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value);
    if (error != std::errc{} || stop != end || !std::isfinite(value)) return std::nullopt;
    return value;
}

double NumberOrZero(std::string_view text) {
    return ParseNumber(text).value_or(0.0);
}

std::string NumberText(double value) {
    std::array<char, 32> buffer{};  // the longest, -2.2250738585072014e-308, has 24 characters
    const double shown = value == 0.0 ? 0.0 : value;
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), shown);
    return error == std::errc{} ? std::string(buffer.data(), end) : std::string();
}

namespace {

std::string Formatted(double value, std::chars_format format, int decimals) {
    constexpr int longestInteger = 311;  // digits of the largest double, with sign and point
    std::string text(static_cast<std::size_t>(longestInteger + decimals), '\0');
    const auto [end, error] =
        std::to_chars(text.data(), text.data() + text.size(), value, format, decimals);
    text.resize(error == std::errc{} ? static_cast<std::size_t>(end - text.data()) : 0);
    const bool isZero =
        text.substr(0, text.find('e')).find_first_of("123456789") == std::string::npos;
    return isZero && text.starts_with('-') ? text.substr(1) : text;
}

}  // namespace

std::string SignificantText(double value, int digits) {
    return Formatted(value, std::chars_format::general, digits);
}

std::string FixedText(double value, int decimals) {
    return Formatted(value, std::chars_format::fixed, decimals);
}

std::string ResultText(double value, int decimals) {
    constexpr int significantDigits = 4;
    constexpr double largest = 1e15;
    const double smallest = std::pow(10.0, significantDigits - 1 - decimals);
    const double magnitude = std::abs(value);
    const bool isFixed = value == 0.0 || (magnitude >= smallest && magnitude < largest);
    return Formatted(value, isFixed ? std::chars_format::fixed : std::chars_format::scientific,
                     decimals);
}

}  // namespace toolkit
