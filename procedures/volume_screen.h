#pragma once

#include <string>

#include "procedures/temperature_unit.h"
#include "procedures/volume_entry.h"
#include "toolkit/button.h"
#include "toolkit/entry.h"
#include "toolkit/label.h"
#include "toolkit/screen.h"

namespace procedures {

/// What the screens have in common that calculate one quantity from a molar volume or density and
/// a second quantity.
class VolumeScreen : public toolkit::Screen {
  public:
    void Event_Activate() override;

  protected:
    /// The name of a control, and what it shows at first.
    struct Text {
        std::string name;
        std::string text;
    };
    struct Names {
        std::string screen;
        std::string title;
        std::string volumeBox;
        std::string volumeUnit;
        std::string temperatureBox;
        Text secondCaption;
        std::string secondEntry;
        Text secondUnit;
        Text resultCaption;
        std::string result;
        Text resultUnit;
    };

    VolumeScreen(toolkit::ScreenHost& host, const Names& names);

    virtual void calculate_Action() = 0;
    virtual void Celsius_Action() = 0;
    virtual void Kelvin_Action() = 0;
    void dataEntryV_TextChange();
    void Clear_Action();
    void kgm3_Action();
    void cm3mol_Action();

    void emptyResult();

    VolumeEntry volume;
    toolkit::Caption secondCaption;
    toolkit::Entry secondEntry;
    toolkit::Label secondUnit;
    TemperatureUnit temperature;
    toolkit::Button Clear{"Clear", "clear"};
    toolkit::Button calculate{"calculate", "calculate"};
    toolkit::Caption resultCaption;
    toolkit::ResultLabel result;
    toolkit::Label resultUnit;
    toolkit::Message warning{"warning"};

  private:
    void volumeUnitChosen();
};

}  // namespace procedures
