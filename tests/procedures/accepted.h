#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "model/mixture.h"

// Makes these fractions, by the formulas of the gases, the composition of the model.
using Fractions = std::vector<std::pair<std::string_view, double>>;
const fluid::Mixture& Accepted(const Fractions& fractions);
