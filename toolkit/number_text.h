#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace toolkit {

// Of the texts of numbers none has the sign of a zero.

// The number that `text` is, white space around it left aside: decimal digits with an optional
// sign, point and exponent, whatever the locale. Nothing when the text is anything else as a
// whole: empty, with a decimal comma, hexadecimal, "inf", "nan", or beyond the range of a double.
std::optional<double> ParseNumber(std::string_view text);

// As ParseNumber; a text that is not a number reads as 0.
double NumberOrZero(std::string_view text);

// The shortest decimal text that reads back as the same double, whatever the locale.
std::string NumberText(double value);

// `value` rounded to so many significant digits, in the shorter of the two forms, whatever the
// locale.
std::string SignificantText(double value, int digits);

// `value` with exactly `decimals` digits behind the point, whatever the locale.
std::string FixedText(double value, int decimals);

// `value` with `decimals` digits behind the point; in scientific form where fewer than four of its
// significant digits would be seen otherwise, or where it has more than fifteen before the point.
std::string ResultText(double value, int decimals);

}  // namespace toolkit
