#pragma once

#include <random>

#include "model/component_table.h"

// Makes a random mixture of 2 to `most` gases the composition of the model: shares of very
// different size, in a third of the cases H2O with H2, N2 or CH4.
void AcceptRandomMixture(std::mt19937_64& random, int most);

// The same of any kind: as above with up to eleven gases, nearly pure, with traces from 1e-12 on,
// or two gases that are nearly azeotropic.
void AcceptAnyMixture(std::mt19937_64& random);

// Judges states of the model's composition by brute force, written apart from the solvers: trial
// phases of equal fugacities at hundreds of A, each solved from scratch in ln u.
class PhaseReference {
  public:
    PhaseReference();

    // Whether a trial phase is more stable, by `least` in units of RT. T in K, V in cm3/mol, P in
    // MPa as it belongs to them.
    bool isUnstable(double T, double V, double P, double least = 0.0) const;

    double pressure(double T, double V) const;

  private:
    struct Trial {
        double D;
        double V;
    };
    struct State {
        double T;
        double P;
        double V;
    };

    Trial trial(const State& bulk, double A, double& logU) const;

    std::size_t count_;
    fluid::ComponentValues z_{};
    fluid::ComponentValues s_{};
    double b_ = 0.0;
    double sMix_ = 0.0;
    double densestA_ = 0.0;
};
