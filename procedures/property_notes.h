#pragma once

#include <initializer_list>
#include <optional>
#include <string>

namespace procedures {

/// A property in ten digits, "---" where it has no value.
std::string shownNumber(const std::optional<double>& value);

/// Each sentence that is not empty on a line of its own.
std::string linesOf(std::initializer_list<std::string> sentences);

/// Says that T in K lies outside the range of the ideal-gas data; empty where it does not.
std::string outsideRangeSentence(double T);

/// Why properties at the molar volume V have no value that would have one elsewhere; `b` is the
/// co-volume of the mixture.
std::string missingSentence(double V, double b);

}  // namespace procedures
