#pragma once

namespace procedures {

inline constexpr double zeroCelsius = 273.15;  // K

// Units as the screens show them.
inline constexpr const char* densityUnit = "g/cm\u00B3";
inline constexpr const char* volumeUnit = "cm\u00B3/mol";

/// The unit of temperature on the screens of phase equilibria, whose degree sign is another.
inline const char* degreeUnit(bool isCelsius) {
    return isCelsius ? "\u00B0Celsius" : "Kelvin";
}

}  // namespace procedures
