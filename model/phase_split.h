#pragma once

#include <optional>

#include "model/homogenisation.h"
#include "model/trial_phase.h"

namespace fluid {

struct PhaseSplit {
    PhasePair phases;             // phase X of the smaller molar volume
    double volumeFraction = 0.0;  // of phase Y
    bool metastable = false;      // three phases, or others, would be more stable
};

// The two phases of lowest Helmholtz energy into which a mixture at T in K and the molar volume V
// in cm3/mol splits; none where it is stable as one phase, or V is not above the co-volume. None
// either where numbers for two phases have no room in doubles: far below ColdestT, or where V - b
// has no digits. Fugacities are equal, but below four times ColdestT or where other phases are more
// stable only as nearly as the energy tells.
std::optional<PhaseSplit> SplitAtVolume(const Mixture& mixture, double T, double V);

}  // namespace fluid
