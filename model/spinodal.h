#pragma once

#include <array>
#include <cstddef>

#include "model/mixture.h"

namespace fluid {

// docs/critical_points.md derives everything in this header. T in K, V in cm3/mol.

// Volumes in cm3/mol above the co-volume, ascending.
struct SpinodalVolumes {
    std::array<double, 3> volumes{};
    std::size_t count = 0;

    const double* begin() const { return volumes.data(); }
    const double* end() const { return volumes.data() + count; }
};

// The volumes at which the mixture is just about to split by itself: between them, or below the
// only one, any small change of composition grows. None where T is not above 0.
// R·T·V³ = 2·sum x_i·(V·√a_i - b_i·√a)²
SpinodalVolumes DiffusionalSpinodal(const Mixture& mixture, double T);

// The volumes of the extrema of the isotherm, dP/dV = 0, or none. R·T·V³ = 2·a·(V - b)²
SpinodalVolumes MechanicalSpinodal(const Mixture& mixture, double T);

// The temperature in K at which V is such a volume; 0 where V is not above the co-volume.
double DiffusionalSpinodalTemperature(const Mixture& mixture, double V);
double MechanicalSpinodalTemperature(const Mixture& mixture, double V);

}  // namespace fluid
