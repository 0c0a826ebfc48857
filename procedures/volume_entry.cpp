#include "procedures/volume_entry.h"

#include <cmath>

#include "model/fluid_model.h"
#include "procedures/units.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr int echoWidth = 48;  // characters of a usual echo

}  // namespace

VolumeUnit::VolumeUnit(const std::string& boxName)
    : box(boxName, "Vol. Unit"),
      kgm3(group_, "kgm3", " g/cm3"),
      cm3mol(group_, "cm3mol", " cm3/mol") {
    cm3mol.turnOn();
}

toolkit::Block VolumeUnit::unitBlock() {
    return box.around(toolkit::column({kgm3, cm3mol}));
}

double VolumeUnit::toMolarVolume(double number) const {
    return kgm3.isOn()
               ? fluid::MolarVolumeFromDensity(fluid::LastComponent, fluid::Fractions, number)
               : number;
}

std::string VolumeUnit::unitText() const {
    return kgm3.isOn() ? densityUnit : volumeUnit;
}

std::string VolumeUnit::quantityText() const {
    return kgm3.isOn() ? "Density" : "Molar Volume";
}

void VolumeUnit::showCaptions() {
    cm3mol.setCaption(std::string(" ") + volumeUnit);
    kgm3.setCaption(std::string(" ") + densityUnit);
}

VolumeEntry::VolumeEntry(const std::string& boxName, const std::string& unitName,
                         const std::string& captionName)
    : VolumeUnit(boxName), MolarVolume(captionName, "Molar Volume"), unit(unitName, "cm3/mol") {
    MolarVolume.setTarget(dataEntryV, unit);
    DensityResult.setUnobtrusive();
    DensityResult.reserve(echoWidth);
}

double VolumeEntry::molarVolume() const {
    return toMolarVolume(dataEntryV.number());
}

void VolumeEntry::showEcho() {
    const double number = dataEntryV.number();
    const double other =
        fluid::MolarVolumeFromDensity(fluid::LastComponent, fluid::Fractions, number);
    std::string echo = kgm3.isOn() ? "corresponding molar volume" : "corresponding density";
    if (number > 0.0 && std::isfinite(other)) {
        echo += " = " + toolkit::numberText(other) + " " + (kgm3.isOn() ? volumeUnit : densityUnit);
    }
    DensityResult.setText(echo);
}

void VolumeEntry::unitChosen() {
    unit.setText(unitText());
    MolarVolume.setText(quantityText());
    dataEntryV.setText("");
    showEcho();
}

void VolumeEntry::activated() {
    showCaptions();
    unit.setText(unitText());
    showEcho();
}

}  // namespace procedures
