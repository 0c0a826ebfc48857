#pragma once

#include <cstddef>

#include "model/component_table.h"

namespace fluid {

// Pressure in MPa of the standard state of the ideal gases.
inline constexpr double standardPressure = 0.1;

struct TemperatureRange {
    double lowest;   // K
    double highest;  // K
};

// Where the properties of the gases are known.
inline constexpr TemperatureRange idealGasRange{10.0, 6000.0};

// Molar properties of an ideal gas at the standard pressure: J/(mol·K), J/mol, J/(mol·K). H
// contains the enthalpy of formation from the elements at 298.15 K.
struct IdealGasProperties {
    double Cp = 0.0;
    double H = 0.0;
    double S = 0.0;
};

// The properties of the component with this internal index (0 to 10) at T in K, for the
// undissociated molecule. Outside idealGasRange the heat capacity stays what it is at the end of
// the range. All 0 for T not above 0.
IdealGasProperties IdealGas(std::size_t component, double T);

}  // namespace fluid
