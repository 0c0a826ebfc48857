#pragma once

#include "model/homogenisation.h"
#include "model/phase_equilibrium.h"

namespace fluid {

// First approaches without a search, from the saturation curves of the gases and the Wilson ratios:
// what a user sees where there is no solution. Arguments as for FindHomogenisationPoints; value
// above 0.
PhaseGuess HomogenisationSeed(const Mixture& mixture, Given given, double value,
                              Homogenisation kind);

// The first approach from which the iteration's first step lands on the point: P/0.95, or T + 5 K.
PhaseGuess HomogenisationApproach(Given given, const PhasePair& point);

// First approach to a liquid-vapour equilibrium; guess.unknown is P in MPa.
struct EquilibriumApproach {
    enum class Kind {
        TwoPhases,
        Homogeneous,  // stable as one phase: the guess is only a seed
        Metastable,   // three phases would be more stable; the guess is the best pair
        TwoLiquids,   // the guess is right, but one of its phases has another root by rule
        NotFound  // more than one phase, but no two of them were found: the guess is only a seed
    };
    Kind kind = Kind::Homogeneous;
    PhaseGuess guess;
    double volumeFraction = 0.0;  // of phase Y
};

// T in K and V in cm3/mol, both above 0. A V not above the co-volume of the mixture is called
// homogeneous.
EquilibriumApproach FindEquilibriumApproach(const Mixture& mixture, double T, double V);

}  // namespace fluid
