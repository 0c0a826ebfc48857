#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "procedures/root_volume.h"

namespace procedures {

// The volumes of a mixture and of its parts, cm3/mol.
struct VolumeParts {
    struct Gas {
        std::string_view formula;
        std::optional<double> pure{};     // of the pure gas at the same temperature and pressure
        std::optional<double> partial{};  // dV/dn
        bool hasOthers = false;           // the pure gas has two more volumes there
    };

    RootVolume root;
    std::vector<Gas> gases;       // none where the root is no volume
    std::optional<double> ideal;  // of the mixture without excess
    std::optional<double> excess;
};

// `number`: which of the roots at the state is meant.
VolumeParts VolumePartsAt(const fluid::Mixture& mixture, const TypedState& state,
                          std::size_t number);

// The line of a gas in the table.
std::vector<std::string> VolumeRow(const VolumeParts::Gas& gas);
std::string VolumeText(const std::optional<double>& volume);
// Names the pure gases of which there is more than one volume; empty where there is none.
std::string MultipleSentence(const VolumeParts& parts);

}  // namespace procedures
