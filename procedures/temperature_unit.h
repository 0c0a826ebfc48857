#pragma once

#include <string>

#include "toolkit/button.h"
#include "toolkit/layout.h"

namespace procedures {

/// The choice of the unit in which a screen takes and shows temperatures; kelvin at first.
class TemperatureUnit {
  public:
    /// `boxName`: the control name of the group box.
    explicit TemperatureUnit(const std::string& boxName);

    /// The group box with its two buttons.
    toolkit::Block block();
    /// A temperature in K from a number in the chosen unit, and back.
    double toKelvin(double number) const;
    double fromKelvin(double kelvin) const;
    /// The name of the chosen unit, as it stands beside an entry or a result.
    std::string unitText() const;

  private:
    toolkit::RadioGroup group_;

  public:
    toolkit::GroupBox box;
    toolkit::RadioButton Celsius;
    toolkit::RadioButton Kelvin;
};

}  // namespace procedures
