#pragma once

#include "procedures/volume_screen.h"

namespace procedures {

/// The pressure of the mixture at a temperature and a molar volume or density.
class PressureWindow : public VolumeScreen {
  public:
    explicit PressureWindow(toolkit::ScreenHost& host);

  private:
    void dataEntryT_TextChange();
    void calculate_Action() override;
    void Celsius_Action() override;
    void Kelvin_Action() override;

    void temperatureUnitChosen();

    toolkit::Entry& dataEntryT = secondEntry;
    toolkit::Label& StaticText3 = secondUnit;
    toolkit::ResultLabel& Result = result;
};

}  // namespace procedures
