#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "procedures/root_volume.h"

namespace procedures {

// The fugacities of the gases in a mixture.
struct FugacityTable {
    struct Gas {
        std::string_view formula;
        double fugacity = 0.0;  // MPa
        double coefficient = 0.0;
        bool isGuarded = false;  // the coefficient is 1 because it has no number
    };

    RootVolume root;
    std::vector<Gas> gases{};  // none where the root is no volume
};

// `number`: which of the roots at the state is meant.
FugacityTable FugacitiesAt(const fluid::Mixture& mixture, const TypedState& state,
                           std::size_t number);
std::vector<std::string> FugacityRow(const FugacityTable::Gas& gas);

// Which pure gas has the activity 1.
enum class StandardState { Real, Ideal };

// The activities of the gases in a mixture.
struct ActivityTable {
    struct Gas {
        std::string_view formula;
        double V = 0.0;  // of the pure gas, cm3/mol; none of these are numbers where it has none
        double activity = 0.0;
        double coefficient = 0.0;
        bool isGuarded = false;  // a coefficient of fugacity is 1 because it has no number
    };

    std::vector<Gas> gases;
};

// `reference`: the reference pressure in MPa, not 0.
ActivityTable ActivitiesAt(const fluid::Mixture& mixture, const TypedState& state,
                           const FugacityTable& fugacities, StandardState standard,
                           double reference);
std::vector<std::string> ActivityRow(const ActivityTable::Gas& gas);

// Names the gases whose coefficient of fugacity has no number; empty where there is none.
std::string GuardSentence(const FugacityTable& table);
std::string GuardSentence(const ActivityTable& table);

}  // namespace procedures
