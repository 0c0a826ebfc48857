#pragma once

#include <optional>

#include "procedures/state_calculation.h"
#include "procedures/state_form.h"
#include "procedures/temperature_unit.h"
#include "toolkit/screen.h"

namespace procedures {

// The temperature of the mixture at a pressure and a molar volume or density.
class TemperatureWindow : public toolkit::Screen {
  public:
    explicit TemperatureWindow(toolkit::ScreenHost& host);

    void Event_Activate() override;

  private:
    struct Input {
        double V = 0.0;  // cm3/mol
        double P = 0.0;  // MPa
    };

    void calculate_Action();
    void dataEntryP_TextChange();
    void Clear_Action();

    Input read() const;
    void show(const Input& input, const std::optional<CalculatedTemperature>& result);
    void temperatureUnitChosen();
    void emptyResult();

    StateForm form{"GroupBox2", "StaticText2"};
    toolkit::Caption Pressure{"Pressure", "Pressure"};
    toolkit::Entry dataEntryP{"dataEntryP"};
    toolkit::Label StaticText3{"StaticText3", "MPa"};
    TemperatureUnit temperature{"GroupBox1"};
    toolkit::Caption Temperature{"Temperature", "Temperature"};
    toolkit::ResultLabel ResultT{"ResultT"};
    toolkit::Label Label1{"Label1", "Kelvin"};
};

}  // namespace procedures
