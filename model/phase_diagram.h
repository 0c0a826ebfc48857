#pragma once

#include <vector>

#include "model/critical_point.h"
#include "model/phase_boundary.h"
#include "model/spinodal.h"

namespace fluid {

// Curves to be drawn, point by point over the molar volume.

struct StatePoint {
    double T = 0.0;  // K
    double P = 0.0;  // MPa
    double V = 0.0;  // cm3/mol
};

// Phase boundaries from small to large volumes: pieces without a gap, each with one kind of
// boundary. A piece begins where the one before it ended, unless the mixture is stable down to
// ColdestT in between.
struct BoundaryPiece {
    Homogenisation kind = Homogenisation::IntoLiquid;
    std::vector<StatePoint> points;
};

// critical: all critical points of the mixture; the stable ones are points of the boundary.
std::vector<BoundaryPiece> TraceBoundary(const Mixture& mixture, const CriticalPoints& critical);

// Pieces of the spinodal between two temperatures in K, ends included, from small to large volumes.
std::vector<std::vector<StatePoint>> TraceSpinodal(const Mixture& mixture, SpinodalKind kind,
                                                   double lowestT, double highestT);

}  // namespace fluid
