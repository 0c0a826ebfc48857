#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/mixture.h"

// What the screens of phase equilibria show of a calculation.
namespace procedures {

// A phase as its lists show it.
struct PhaseTexts {
    std::string role;            // behind the heading "Phase X" or "Phase Y"
    std::string volume;          // cm3/mol
    std::string density;         // g/cm3
    std::string volumeFraction;  // empty where it is not shown
    std::vector<std::string> fractions;
};

struct PhaseResults {
    std::string answer;       // pressure or temperature
    bool isSolution = false;  // the numbers are an answer, and no trivial one
    std::string report;       // how the iteration ended
    std::string warning;
    std::optional<PhaseTexts> x;
    std::optional<PhaseTexts> y;
};

// The formulas of the gases of a mixture, in the order of its fractions.
std::vector<std::string> GasesOf(const fluid::Mixture& mixture);

// A pressure, temperature, molar volume or density as it is shown, and a fraction.
std::string QuantityText(double value);
std::string FractionText(double value);

// A phase of these amount fractions and the molar volume V in cm3/mol.
PhaseTexts PhaseTextsOf(const fluid::Mixture& mixture, const fluid::ComponentValues& fractions,
                        double V);

}  // namespace procedures
