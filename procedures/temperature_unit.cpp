#include "procedures/temperature_unit.h"

#include "toolkit/event.h"
#include "toolkit/number_text.h"

namespace procedures {

TemperatureUnit::TemperatureUnit(const std::string& boxName, const char* celsius)
    : celsius_(celsius),
      box(boxName, "Temp. Unit"),
      Celsius(group_, "Celsius", " ˚Celsius"),
      Kelvin(group_, "Kelvin", " Kelvin") {
    Kelvin.turnOn();
    Celsius.onChoose(this, &TemperatureUnit::Celsius_Action);
    Kelvin.onChoose(this, &TemperatureUnit::Kelvin_Action);
}

toolkit::Block TemperatureUnit::block() {
    return box.around(toolkit::Column({Celsius, Kelvin}));
}

TemperatureScale TemperatureUnit::scale() const {
    return Celsius.isOn() ? TemperatureScale{celsius_, zeroCelsius} : TemperatureScale{};
}

void TemperatureUnit::Celsius_Action() {
    toolkit::RunHandler(changed_, Celsius.name().c_str());
}

void TemperatureUnit::Kelvin_Action() {
    toolkit::RunHandler(changed_, Kelvin.name().c_str());
}

TemperatureEntry::TemperatureEntry(const std::string& boxName, const std::string& unitName,
                                   const char* celsius)
    : unitLabel(unitName, "Kelvin"), unit(boxName, celsius) {
    Temperature.setTarget(dataEntryT, unitLabel);
    dataEntryT.onTextChange(this, &TemperatureEntry::dataEntryT_TextChange);
    unit.onChange(this, &TemperatureEntry::unitChosen);
}

std::optional<double> TemperatureEntry::kelvin() const {
    const std::optional<double> number = toolkit::ParseNumber(dataEntryT.text());
    return number ? std::optional(unit.toKelvin(*number)) : std::nullopt;
}

void TemperatureEntry::dataEntryT_TextChange() {
    toolkit::RunHandler(changed_, dataEntryT.name().c_str());
}

void TemperatureEntry::unitChosen() {
    unitLabel.setText(unit.unitText());
    dataEntryT.setText("");
    toolkit::RunHandler(changed_, unitLabel.name().c_str());
}

}  // namespace procedures
