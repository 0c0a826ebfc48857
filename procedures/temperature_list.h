#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "model/mixture.h"
#include "procedures/value_range.h"

namespace procedures {

// A temperature of a list, and how it is called there: "215", "Tc = 304.1".
struct NamedTemperature {
    WrittenTemperature T;
    std::string name;
};

// Temperatures that were typed one after the other.
struct TemperatureList {
    static constexpr std::size_t most = 100;

    std::vector<NamedTemperature> temperatures;
    std::string refusal;  // why they are none, as a sentence; empty where they are

    // Numbers, ranges with their step as "200:300:20", and "Tc" for the highest stable critical
    // temperature of the mixture; blanks or semicolons between them.
    static TemperatureList read(const std::string& text, const TemperatureScale& scale,
                                const fluid::Mixture& mixture);
};

// The hottest stable critical point of positive pressure; that of the a and b of the mixture where
// there is none.
struct LeadingPoint {
    double T = 0.0;  // K
    double P = 0.0;  // MPa
    double V = 0.0;  // cm3/mol
    bool isCritical = false;
};
LeadingPoint LeadingPointOf(const fluid::Mixture& mixture);

}  // namespace procedures
