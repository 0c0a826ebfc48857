#pragma once

#include <array>
#include <optional>
#include <vector>

#include "model/mixture.h"

namespace fluid {

// docs/properties.md derives everything in this header. MPa·cm3 is J.

// A molar property of the mixture in three parts: the ideal gas at the same T and P, what the
// attraction and the volume of the molecules add to it, and both. No value where there is none:
// an ideal gas has no negative pressure, an unstable fluid no speed of sound, and what is infinite
// or too large for a double has none either.
struct Property {
    std::optional<double> idealGas;
    std::optional<double> residual;
    std::optional<double> total;
};

// Energies refer to the elements at 298.15 K and 0.1 MPa.
struct MixtureProperties {
    Property V;                    // cm3/mol
    Property density;              // g/cm3
    Property Z;                    // compressibility factor P·V/(R·T)
    Property U;                    // internal energy, J/mol
    Property H;                    // enthalpy, J/mol
    Property S;                    // entropy, J/(mol·K)
    Property A;                    // Helmholtz energy, J/mol
    Property G;                    // Gibbs energy, J/mol
    Property Cv;                   // isochoric heat capacity, J/(mol·K)
    Property Cp;                   // isobaric heat capacity, J/(mol·K)
    Property heatRatio;            // Cp/Cv, no residual part
    Property compressibility;      // -(dV/dP)/V at constant T, 1/MPa, no residual part
    Property expansion;            // (dV/dT)/V at constant P, 1/K, no residual part
    Property isentropicExpansion;  // (dV/dT)/V at constant S, 1/K, no residual part
    Property soundSpeed;           // m/s, no residual part
    Property jouleThomson;         // dT/dP at constant H, K/MPa, no residual part
    Property secondVirial;         // limit of (Z - 1)·V at low density, cm3/mol, no residual part
};

// T in K, above 0; V in cm3/mol a molar volume at T and the pressure P in MPa. All without a value
// unless T > 0 and V is above the co-volume.
MixtureProperties PropertiesOf(const Mixture& mixture, double T, double P, double V);

// A state in which the Joule-Thomson coefficient is 0.
struct InversionPoint {
    double T = 0.0;  // K
    double V = 0.0;  // cm3/mol
};

// The inversion points at P in MPa, from dense to dilute ones: two below a/(3b²), of which the
// dense one is colder, none above. The mixture may be unstable there.
std::vector<InversionPoint> InversionPoints(const Mixture& mixture, double P);

// A component in the mixture, J/mol, J/(mol·K), cm3/mol.
struct ComponentProperties {
    std::optional<double> chemicalPotential;  // standardPotential + fugacityTerm
    std::optional<double> standardPotential;  // of the ideal gas at T and standardPressure
    std::optional<double> fugacityTerm;       // R·T·ln(f/standardPressure)
    std::optional<double> logPhi;             // ln of the fugacity coefficient; none unless P > 0
    std::optional<double> enthalpy;           // partial molar quantities; none where dP/dV = 0
    std::optional<double> entropy;
    std::optional<double> volume;
};

// The present components at the positions of the tables; arguments and what has no value as for
// PropertiesOf.
std::array<ComponentProperties, componentCount> ComponentPropertiesOf(const Mixture& mixture,
                                                                      double T, double P, double V);

}  // namespace fluid
