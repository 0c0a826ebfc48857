#pragma once

#include "model/homogenisation.h"
#include "model/mixture.h"
#include "model/phase_boundary.h"

namespace fluid {

// How an iteration ended. The two phases of a trivial solution are one phase.
enum class Outcome { Converged, NoSolution, Trivial };

// What a user starts from: the unknown quantity and the compositions of the phases. Fractions need
// not add up to 1.
struct PhaseGuess {
    double unknown = 0.0;  // P in MPa, or T in K where P is given
    ComponentValues x{};   // at the compact positions
    ComponentValues y{};
};

struct HomogenisationResult {
    Outcome outcome = Outcome::NoSolution;
    int iterations = 0;
    PhasePair phases;  // all 0 where there is no solution; fractions add up to 1, Vx < Vy
    Stability stability = Stability::Stable;  // of the bulk, which may rather split in another way
};

// The homogenisation state that the secant iteration with successive substitution leads to.
// value: T in K or P in MPa; guess.unknown is the first approach of the other one. Any numbers may
// be given; what does not lead to a checked equilibrium within 10000 iterations is no solution.
HomogenisationResult IterateHomogenisation(const Mixture& mixture, Given given, double value,
                                           Homogenisation kind, const PhaseGuess& guess);

struct EquilibriumResult {
    Outcome outcome = Outcome::NoSolution;
    int iterations = 0;
    PhasePair phases;                         // as above, but Vx may exceed Vy
    double volumeFraction = 0.0;              // of phase Y; of no meaning where trivial
    bool fractionInRange = false;             // whether volumeFraction lies between 0 and 1
    bool swapped = false;                     // phase X is the vapour
    Stability stability = Stability::Stable;  // of the phases, which may rather split otherwise
};

// The two phases of a mixture at T in K and the bulk molar volume V in cm3/mol.
// guess.unknown is the first approach of P in MPa, volumeFraction that of the fraction of the
// volume that phase Y takes; else as IterateHomogenisation.
EquilibriumResult IterateEquilibrium(const Mixture& mixture, double T, double V,
                                     double volumeFraction, const PhaseGuess& guess);

}  // namespace fluid
