#include "procedures/volume_entry.h"

#include <cmath>

#include "model/fluid_model.h"
#include "procedures/units.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr int echoWidth = 48;  // characters of a usual echo

}  // namespace

VolumeEntry::VolumeEntry(const std::string& boxName, const std::string& unitName,
                         const std::string& captionName)
    : MolarVolume(captionName, "Molar Volume"),
      unit(unitName, "cm3/mol"),
      box(boxName, "Vol. Unit"),
      kgm3(group_, "kgm3", " g/cm3"),
      cm3mol(group_, "cm3mol", " cm3/mol") {
    cm3mol.turnOn();
    MolarVolume.setTarget(dataEntryV);
    DensityResult.setUnobtrusive();
    DensityResult.reserve(echoWidth);
}

toolkit::Block VolumeEntry::unitBlock() {
    return box.around(toolkit::column({kgm3, cm3mol}));
}

double VolumeEntry::molarVolume() const {
    const double number = dataEntryV.number();
    return kgm3.isOn()
               ? fluid::MolarVolumeFromDensity(fluid::LastComponent, fluid::Fractions, number)
               : number;
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

std::string VolumeEntry::unitText() const {
    return kgm3.isOn() ? densityUnit : volumeUnit;
}

void VolumeEntry::unitChosen() {
    unit.setText(unitText());
    MolarVolume.setText(kgm3.isOn() ? "Density" : "Molar Volume");
    dataEntryV.setText("");
    showEcho();
}

void VolumeEntry::activated() {
    cm3mol.setCaption(std::string(" ") + volumeUnit);
    kgm3.setCaption(std::string(" ") + densityUnit);
    unit.setText(unitText());
    showEcho();
}

}  // namespace procedures
