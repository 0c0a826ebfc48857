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

// Diffusional: where the mixture is just about to split by itself. Mechanical: the extrema of the
// isotherm, dP/dV = 0.
enum class SpinodalKind { Diffusional, Mechanical };

// Both are R·T·(w + b)³ = 2·(square·w² + 2·mixed·w + constant), w = V - b, in which nothing cancels
// near b: V·√a_i - b_i·√a = √a_i·w + d_i with d_i = √a_i·b - b_i·√a, the differences of the
// components from the mixture, which for the mechanical spinodal count nothing.
struct Spinodal {
    double b = 0.0;
    double square = 0.0;    // MPa·cm6/mol2
    double mixed = 0.0;     // MPa·cm9/mol3
    double constant = 0.0;  // MPa·cm12/mol4

    // The volumes at T: between them, or below the only one, any small change of composition, or of
    // the density alone, grows. None where T is not above 0.
    SpinodalVolumes volumes(double T) const;
    // The temperature at which V is such a volume; 0 where V is not above the co-volume.
    double temperature(double V) const;
};
Spinodal SpinodalOf(const Mixture& mixture, SpinodalKind kind);

}  // namespace fluid
