#pragma once

#include <random>
#include <vector>

#include "model/component_table.h"
#include "model/homogenisation.h"

// Makes a random mixture of 2 to `most` gases the composition of the model: shares of very
// different size, in a third of the cases H2O with H2, N2 or CH4.
void AcceptRandomMixture(std::mt19937_64& random, int most);

// Judges states of the model's composition by brute force, written apart from the solvers: trial
// phases of equal fugacities at hundreds of A, each solved from scratch in ln u.
class PhaseReference {
  public:
    PhaseReference();

    struct Verdict {
        bool unstable = false;
        double drive = 0.0;  // of the most stable trial phase, where unstable
        double V = 0.0;      // of that phase, cm3/mol
        fluid::ComponentValues x{};
    };
    // T in K, V in cm3/mol, P in MPa as it belongs to them.
    Verdict judge(double T, double V, double P) const;

    // A change of stability along a line, and whether the two phases take the roots that phases X
    // and Y take by rule.
    struct Change {
        double T;
        double P;
        double V;
        fluid::Homogenisation kind;
        bool takesItsRoots;
    };
    // Steps of ln(V/b - 1), or of ln T; changes closer to each other than that may be missed.
    std::vector<Change> alongIsotherm(double T, double step) const;
    std::vector<Change> alongIsobar(double P, double step) const;

    double pressure(double T, double V) const;

  private:
    struct Trial {
        double D;
        double V;
        fluid::ComponentValues x;
    };
    struct State {
        double T;
        double P;
        double V;
    };

    Trial trial(const State& bulk, double A, double& logU) const;
    State onIsobar(double P, double T) const;
    Change changeAt(const State& bulk, const Verdict& other) const;
    template <class Line>
    std::vector<Change> along(const Line& line, const std::vector<double>& places) const;

    std::size_t count_;
    fluid::ComponentValues z_{};
    fluid::ComponentValues s_{};
    double b_ = 0.0;
    double sMix_ = 0.0;
    double densestA_ = 0.0;
};
