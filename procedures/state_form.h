#pragma once

#include <vector>

#include "procedures/volume_entry.h"
#include "toolkit/button.h"
#include "toolkit/label.h"
#include "toolkit/layout.h"

namespace procedures {

// What the screens share that calculate one quantity from a molar volume or density and a second
// quantity: the entry of the volume, the buttons, the message, and how all is arranged.
class StateForm {
  public:
    // `boxName` and `unitName`: as for VolumeEntry.
    StateForm(const std::string& boxName, const std::string& unitName);

    // The whole window. `second` and `result`: a caption, an entry or a result, and its unit;
    // `temperatureUnit`: the choice of it.
    toolkit::Block block(const std::vector<toolkit::Block>& second,
                         const toolkit::Block& temperatureUnit,
                         const std::vector<toolkit::Block>& result);

    VolumeEntry volume;
    toolkit::Button Clear{"Clear", "clear"};
    toolkit::Button calculate{"calculate", "calculate"};
    toolkit::Message warning{"warning"};
};

}  // namespace procedures
