#pragma once

#include <string>

#include "model/phase_boundary.h"

// What is said of phases, in the same words on all screens.
namespace procedures {

inline constexpr const char* noSolutionSentence =
    "no solution, adjust First Approach and try again";
inline constexpr const char* trivialSentence =
    "possible trivial solution, optional: adjust First Approach and try again";
inline constexpr const char* twoLiquidsSentence = "both phases are liquids";

// A number within a sentence: at most nine significant digits.
std::string SentenceText(double value);

// "bubble point" or "dew point"; "liquid-liquid point" where both phases are liquids.
std::string PointName(const fluid::BoundaryPoint& point);

// That two liquids are stable which the roots of the phases cannot hold; `value`: their pressure
// or temperature with its unit.
std::string HiddenLiquidsSentence(const std::string& value);

}  // namespace procedures
