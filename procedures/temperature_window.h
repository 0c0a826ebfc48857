#pragma once

#include "procedures/volume_screen.h"

namespace procedures {

/// The temperature of the mixture at a pressure and a molar volume or density.
class TemperatureWindow : public VolumeScreen {
  public:
    explicit TemperatureWindow(toolkit::ScreenHost& host);

  private:
    void dataEntryP_TextChange();
    void calculate_Action() override;
    void Celsius_Action() override;
    void Kelvin_Action() override;

    toolkit::Entry& dataEntryP = secondEntry;
    toolkit::ResultLabel& ResultT = result;
    toolkit::Label& Label1 = resultUnit;
};

}  // namespace procedures
