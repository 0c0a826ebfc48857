#pragma once

#include <optional>
#include <string>

#include "model/mixture.h"

namespace procedures {

// The pressure in MPa of a mixture at V in cm3/mol and T in K; nothing where these are not above 0
// or the pressure has no room in a double.
std::optional<double> PressureAt(const fluid::Mixture& mixture, double V, double T);

// A temperature in K, and what a user has to know of it.
struct CalculatedTemperature {
    double T = 0.0;
    std::string warning;
};

// The temperature of a mixture at V in cm3/mol and P in MPa, which may be negative; nothing where
// V is not above 0 or the temperature has no room in a double.
std::optional<CalculatedTemperature> TemperatureAt(const fluid::Mixture& mixture, double V,
                                                   double P);

}  // namespace procedures
