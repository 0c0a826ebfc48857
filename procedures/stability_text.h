#pragma once

#include <string>

#include "model/phase_boundary.h"

namespace procedures {

// "stable", "meta-stable", "unstable" or "not examined": what every screen calls a state of the
// mixture that the model has judged.
const char* StabilityName(fluid::Stability stability);

// What is said of an equilibrium whose bulk is not stable; empty for a stable one.
std::string SplitSentence(fluid::Stability stability);

}  // namespace procedures
