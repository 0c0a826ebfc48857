#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "model/phase_boundary.h"
#include "model/phase_split.h"

namespace fluid {

// What one stable phase is like. Critical: beside one that it is just about to differ from no more.
// LiquidLike, where it is denser than a boundary at its temperature
// beyond which a lighter phase comes out of it; GasLike, where it is less dense than all boundaries
// at its temperature; Supercritical otherwise. Above all temperatures at which it can split a fluid
// is GasLike up to the pressure that its boundary has at the hottest point.
enum class PhaseKind { GasLike, LiquidLike, Supercritical, Critical };

// A mixture at a temperature in K and a pressure in MPa.
struct FluidState {
    struct Volume {
        double V;  // cm3/mol, above the co-volume
        Stability stability;
    };

    double T = 0.0;
    double P = 0.0;
    bool isExamined = false;              // whether it is known which of the volumes are stable
    std::vector<Volume> volumes{};        // that the equation of state has there, ascending
    std::optional<std::size_t> stable{};  // the one of these in which the fluid is one phase
    PhaseKind kind = PhaseKind::GasLike;  // of that phase
    // The two phases where none is stable; nothing where they were not found or not searched for.
    std::optional<PhaseSplit> split{};
};

// T and P above 0.
FluidState StateAt(const Mixture& mixture, double T, double P);

}  // namespace fluid
