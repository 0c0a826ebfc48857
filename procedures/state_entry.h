#pragma once

#include <optional>
#include <string>

#include "procedures/temperature_unit.h"
#include "procedures/typed_state.h"
#include "toolkit/button.h"
#include "toolkit/entry.h"
#include "toolkit/label.h"
#include "toolkit/layout.h"

namespace procedures {

// The entries of a temperature and a pressure, with the choice of the temperature's unit, the
// buttons "clear" and "calculate", and a label for what is wrong with them.
class StateEntry {
  public:
    // What happens to a typed temperature when another unit is chosen.
    enum class UnitChange { Empties, Keeps };

    // `unitName`, `warningName`: the control names of the temperature's unit and of that label.
    StateEntry(const std::string& unitName, const std::string& warningName,
               UnitChange unitChange = UnitChange::Empties);

    // `function` runs after every edit, after another unit was chosen and after "clear".
    template <class Object, class Base>
    void onChange(Object* object, void (Base::*function)()) {
        changed_ = toolkit::Member(object, function);
    }

    // The entries with their units, and the buttons.
    toolkit::Block block();

    // The typed state by the rule that what is no number is 0: nothing, and `refusal` in the
    // label, where one is not above 0. `temperature` is the text that the entry shows from then on
    // and that is calculated with.
    std::optional<TypedState> read(const std::string& temperature, const std::string& refusal);
    // The same from numbers alone.
    std::optional<TypedState> readNumbers(const std::string& refusal);
    // The temperature as typed; "0.000" for 0 ˚Celsius, as the user may have typed nothing.
    std::string temperatureText() const;

  private:
    void changed();
    void temperatureUnitChosen();
    void Clear_Action();
    void dataEntryT_TextChange();
    void dataEntryP_TextChange();

    UnitChange unitChange_;
    toolkit::Handler changed_;

  public:
    toolkit::Caption Temperature{"Temperature", "Temperature"};
    toolkit::Entry dataEntryT{"dataEntryT"};
    toolkit::Label temperatureUnitLabel;
    toolkit::Caption Pressure{"Pressure", "Pressure"};
    toolkit::Entry dataEntryP{"dataEntryP"};
    toolkit::Label pressureUnitLabel{"StaticText4", "MPa"};
    TemperatureUnit temperature{"GroupBox1"};
    toolkit::Button Clear{"Clear", "clear"};
    toolkit::Button calculate{"calculate", "calculate"};
    toolkit::Message warning;
};

}  // namespace procedures
