#pragma once

#include <vector>

#include "model/mixture.h"

namespace fluid {

// Two phases of one temperature and pressure.
struct PhasePair {
    double T = 0.0;       // K
    double P = 0.0;       // MPa
    ComponentValues x{};  // amount fractions at the compact positions, phase X (the denser)
    ComponentValues y{};  // phase Y
    double Vx = 0.0;      // cm3/mol
    double Vy = 0.0;
};

// Whether X has the smallest and Y the largest root of its composition. A second liquid beside
// which its composition has a vapour root too is none that can be told from it.
bool TakesItsRoots(const Mixture& mixture, const PhasePair& pair);

// Whether both phases are liquids (State::isLiquid).
bool AreTwoLiquids(const Mixture& mixture, const PhasePair& pair);

// Which quantity of a homogenisation is given; the other one is sought.
enum class Given { Temperature, Pressure };

// IntoLiquid: the bulk is phase X and a phase Y of larger molar volume appears (bubble point).
// IntoVapour: the bulk is phase Y and a phase X of smaller molar volume appears (dew point).
enum class Homogenisation { IntoLiquid, IntoVapour };

struct HomogenisationPoints {
    std::vector<PhasePair> points;
    // Points of two liquids beside which one of the two compositions has a vapour root too, so that
    // the rule of the smallest root for phase X and the largest for phase Y cannot hold them.
    std::vector<PhasePair> liquids;
    // Whether all there may be was searched for: not below ColdestT or above 10000 MPa.
    bool isExamined = true;

    auto begin() const { return points.begin(); }
    auto end() const { return points.end(); }
};

// All states at which the mixture, stable as one phase, coexists with a trace of a second phase: at
// a given T from low to high density, at a given P from high to low temperature.
// value: T in K or P in MPa; nothing is found for values not above 0.
HomogenisationPoints FindHomogenisationPoints(const Mixture& mixture, Given given, double value,
                                              Homogenisation kind);

}  // namespace fluid
