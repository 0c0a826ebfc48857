#pragma once

#include <optional>
#include <string>

#include "procedures/units.h"
#include "toolkit/button.h"
#include "toolkit/entry.h"
#include "toolkit/label.h"
#include "toolkit/layout.h"

namespace procedures {

// The choice of the unit in which a screen takes and shows temperatures; kelvin at first.
class TemperatureUnit {
  public:
    // `boxName`: the control name of the group box; `celsius`: what stands beside temperatures in
    // that unit.
    explicit TemperatureUnit(const std::string& boxName, const char* celsius = "˚Celsius");

    // `function` runs when the unit has become another.
    template <class Object, class Base>
    void onChange(Object* object, void (Base::*function)()) {
        changed_ = toolkit::Member(object, function);
    }
    // The group box with its two buttons.
    toolkit::Block block();
    TemperatureScale scale() const;
    // A temperature in K from a number in the chosen unit, and back.
    double toKelvin(double number) const { return scale().toKelvin(number); }
    double fromKelvin(double kelvin) const { return scale().fromKelvin(kelvin); }
    // The name of the chosen unit, as it stands beside an entry or a result.
    std::string unitText() const { return scale().name; }

  private:
    void Celsius_Action();
    void Kelvin_Action();

    const char* celsius_;
    toolkit::Handler changed_;
    toolkit::RadioGroup group_;

  public:
    toolkit::GroupBox box;
    toolkit::RadioButton Celsius;
    toolkit::RadioButton Kelvin;
};

// The entry of a temperature with its caption and unit, and the choice of this unit; another unit
// empties the entry. The controls bear the names `Temperature` and `dataEntryT`.
class TemperatureEntry {
  public:
    // `boxName` and `unitName`: the control names of the group box and of the unit label;
    // `celsius`: as for TemperatureUnit.
    TemperatureEntry(const std::string& boxName, const std::string& unitName,
                     const char* celsius = "˚Celsius");

    // `function` runs when the text or the unit has become another.
    template <class Object, class Base>
    void onChange(Object* object, void (Base::*function)()) {
        changed_ = toolkit::Member(object, function);
    }
    // The temperature in K; nothing where the entry holds no number.
    std::optional<double> kelvin() const;

  private:
    void dataEntryT_TextChange();
    void unitChosen();

    toolkit::Handler changed_;

  public:
    toolkit::Caption Temperature{"Temperature", "Temperature"};
    toolkit::Entry dataEntryT{"dataEntryT"};
    toolkit::Label unitLabel;
    TemperatureUnit unit;
};

}  // namespace procedures
