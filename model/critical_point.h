#pragma once

#include <array>
#include <cstddef>

#include "model/phase_boundary.h"

namespace fluid {

// docs/critical_points.md derives everything in this header.

// A state at which two phases that coexist become one and the same.
struct CriticalPoint {
    double T = 0.0;           // K
    double P = 0.0;           // MPa, may be below 0
    double V = 0.0;           // cm3/mol
    double freeVolume = 0.0;  // V - b, cm3/mol, which has digits of its own near b
    // Whether the mixture withstands every small change there: the test of the fourth order.
    bool isLocallyStable = false;
};

struct CriticalPoints {
    std::array<CriticalPoint, 4> points{};
    std::size_t count = 0;

    const CriticalPoint* begin() const { return points.data(); }
    const CriticalPoint* end() const { return points.data() + count; }
};

// All critical points of the mixture, by ascending volume; there are at most four. Two that differ
// by less than rounding lets see count once.
CriticalPoints FindCriticalPoints(const Mixture& mixture);

// Unstable where the test of the fourth order says so, otherwise whether any other phase would be
// more stable than the critical one. Unknown below ColdestT, where nothing is searched.
Stability CriticalStability(const Mixture& mixture, const CriticalPoint& point);

// The critical point of a pure gas of the mixture's a and b: T = 8·a/(27·b·R), P = a/(27·b²),
// V = 3·b. A mixture of two or more gases does nothing special there.
struct PseudoCriticalPoint {
    double T = 0.0;  // K
    double P = 0.0;  // MPa
    double V = 0.0;  // cm3/mol
};
PseudoCriticalPoint FindPseudoCriticalPoint(const Mixture& mixture);

}  // namespace fluid
