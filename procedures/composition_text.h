#pragma once

#include <string>

#include "model/mixture.h"

namespace procedures {

// The fluid as the legend of a plot has it: "0.7 CO₂ + 0.3 CH₄".
std::string CompositionText(const fluid::Mixture& mixture);

// The fluid as the title of a plot has it: "0.7 CO₂ + 0.3 CH₄, van der Waals".
std::string CompositionTitle(const fluid::Mixture& mixture);

// The fluid as a part of a file's name: "0.7CO2-0.3CH4".
std::string CompositionName(const fluid::Mixture& mixture);

}  // namespace procedures
