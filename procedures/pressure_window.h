#pragma once

#include <optional>

#include "procedures/state_form.h"
#include "procedures/temperature_unit.h"
#include "toolkit/screen.h"

namespace procedures {

// The pressure of the mixture at a temperature and a molar volume or density.
class PressureWindow : public toolkit::Screen {
  public:
    explicit PressureWindow(toolkit::ScreenHost& host);

    void Event_Activate() override;

  private:
    struct Input {
        double V = 0.0;  // cm3/mol
        double T = 0.0;  // K
    };

    void calculate_Action();
    void Clear_Action();

    Input read() const;
    void show(const Input& input, const std::optional<double>& P);
    void emptyResult();

    StateForm form{"GroupBox3", "StaticText1"};
    TemperatureEntry temperature{"GroupBox2", "StaticText3"};
    toolkit::Caption Pressure{"Pressure", "Pressure"};
    toolkit::ResultLabel Result{"Result"};
    toolkit::Label StaticText4{"StaticText4", "MPa"};
};

}  // namespace procedures
