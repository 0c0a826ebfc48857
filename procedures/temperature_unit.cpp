#include "procedures/temperature_unit.h"

#include "procedures/units.h"

namespace procedures {

TemperatureUnit::TemperatureUnit(const std::string& boxName)
    : box(boxName, "Temp. Unit"),
      Celsius(group_, "Celsius", " ˚Celsius"),
      Kelvin(group_, "Kelvin", " Kelvin") {
    Kelvin.turnOn();
}

toolkit::Block TemperatureUnit::block() {
    return box.around(toolkit::column({Celsius, Kelvin}));
}

double TemperatureUnit::toKelvin(double number) const {
    return Celsius.isOn() ? number + zeroCelsius : number;
}

double TemperatureUnit::fromKelvin(double kelvin) const {
    return Celsius.isOn() ? kelvin - zeroCelsius : kelvin;
}

std::string TemperatureUnit::unitText() const {
    return Celsius.isOn() ? "˚Celsius" : "Kelvin";
}

}  // namespace procedures
