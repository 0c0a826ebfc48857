#pragma once

namespace procedures {

inline constexpr double zeroCelsius = 273.15;  // K

// Units as the screens show them.
inline constexpr const char* densityUnit = "g/cm\u00B3";
inline constexpr const char* volumeUnit = "cm\u00B3/mol";

}  // namespace procedures
