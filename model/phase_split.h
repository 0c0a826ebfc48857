#pragma once

#include <optional>

#include "model/homogenisation.h"
#include "model/trial_phase.h"

namespace fluid {

struct PhaseSplit {
    bool found = false;           // whether two phases of positive pressure were found
    PhasePair phases;             // phase X of the smaller molar volume
    double volumeFraction = 0.0;  // of phase Y
    bool metastable = false;      // three phases, or others, would be more stable
};

// The two phases of lowest Helmholtz energy into which a mixture at T in K and the molar volume V
// in cm3/mol splits; none where it is stable as one phase, or V is not above the co-volume. They
// are not looked for below ColdestT, and not found where V - b has no digits.
std::optional<PhaseSplit> SplitAtVolume(const Mixture& mixture, double T, double V);

}  // namespace fluid
