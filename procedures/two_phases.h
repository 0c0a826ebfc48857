#pragma once

#include <string>

#include "model/first_approach.h"
#include "model/mixture.h"
#include "model/phase_equilibrium.h"
#include "procedures/phase_results.h"

// What the screen of liquid-vapour equilibria calculates and says.
namespace procedures {

// What is given of an equilibrium.
struct EquilibriumInput {
    double T = 0.0;  // K
    double V = 0.0;  // cm3/mol, larger than the co-volume
};

struct EquilibriumStart {
    fluid::PhaseGuess guess;
    double volumeFraction = 0.0;  // of phase Y
    std::string warning;
};
EquilibriumStart EquilibriumStartOf(const fluid::Mixture& mixture, const EquilibriumInput& input);

PhaseResults EquilibriumFrom(const fluid::Mixture& mixture, const EquilibriumInput& input,
                             double volumeFraction, const fluid::PhaseGuess& guess);

}  // namespace procedures
