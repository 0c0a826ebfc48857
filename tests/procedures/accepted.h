#pragma once

#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "model/mixture.h"

// Makes these fractions, by the formulas of the gases, the composition of the model.
using Fractions = std::vector<std::pair<std::string_view, double>>;
const fluid::Mixture& Accepted(const Fractions& fractions);
// The same of the counts of 10^-12 that a row of golden numbers begins with.
const fluid::Mixture& AcceptedRow(std::span<const double> row);
