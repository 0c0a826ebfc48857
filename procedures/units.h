#pragma once

#include <string>

namespace procedures {

inline constexpr double zeroCelsius = 273.15;  // K

// Units as the screens show them.
inline constexpr const char* densityUnit = "g/cm\u00B3";
inline constexpr const char* volumeUnit = "cm\u00B3/mol";

// A unit of temperature: its name as it stands beside an entry or a result, and its 0 in K.
struct TemperatureScale {
    const char* name = "Kelvin";
    double zero = 0.0;

    // As it stands in a plot.
    std::string symbol() const { return zero == 0.0 ? "K" : "\u00B0C"; }
    double toKelvin(double number) const { return number + zero; }
    double fromKelvin(double kelvin) const { return kelvin - zero; }
    bool isKelvin() const { return zero == 0.0; }
};
inline const TemperatureScale kelvinScale = {"Kelvin"};
inline const TemperatureScale celsiusScale = {"˚Celsius", zeroCelsius};

}  // namespace procedures
