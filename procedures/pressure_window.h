#pragma once

#include "procedures/temperature_unit.h"
#include "procedures/volume_entry.h"
#include "toolkit/button.h"
#include "toolkit/entry.h"
#include "toolkit/label.h"
#include "toolkit/screen.h"

namespace procedures {

/// The pressure of the mixture at a temperature and a molar volume or density.
class PressureWindow : public toolkit::Screen {
  public:
    explicit PressureWindow(toolkit::ScreenHost& host);

    void Event_Activate() override;

  private:
    void dataEntryV_TextChange();
    void dataEntryT_TextChange();
    void Clear_Action();
    void calculate_Action();
    void Celsius_Action();
    void Kelvin_Action();
    void kgm3_Action();
    void cm3mol_Action();

    void emptyResult();
    void temperatureUnitChosen();
    void volumeUnitChosen();

    VolumeEntry volume{"GroupBox3", "StaticText1"};
    toolkit::Caption Temperature{"Temperature", "Temperature"};
    toolkit::Entry dataEntryT{"dataEntryT"};
    toolkit::Label StaticText3{"StaticText3", "Kelvin"};
    TemperatureUnit temperature{"GroupBox2"};
    toolkit::Button Clear{"Clear", "clear"};
    toolkit::Button calculate{"calculate", "calculate"};
    toolkit::Caption Pressure{"Pressure", "Pressure"};
    toolkit::ResultLabel Result{"Result"};
    toolkit::Label StaticText4{"StaticText4", "MPa"};
    toolkit::Message warning{"warning"};
};

}  // namespace procedures
