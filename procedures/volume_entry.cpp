#include "procedures/volume_entry.h"

#include <cmath>

#include "model/fluid_model.h"
#include "procedures/units.h"
#include "toolkit/event.h"
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
    kgm3.onChoose(this, &VolumeUnit::kgm3_Action);
    cm3mol.onChoose(this, &VolumeUnit::cm3mol_Action);
}

void VolumeUnit::kgm3_Action() {
    toolkit::RunHandler(changed_, kgm3.name().c_str());
}

void VolumeUnit::cm3mol_Action() {
    toolkit::RunHandler(changed_, cm3mol.name().c_str());
}

toolkit::Block VolumeUnit::block() {
    return box.around(toolkit::Column({kgm3, cm3mol}));
}

double VolumeUnit::toMolarVolume(double number) const {
    return kgm3.isOn() ? fluid::MolarVolumeFromDensity(fluid::AcceptedMixture(), number) : number;
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
    : MolarVolume(captionName, "Molar Volume"), unitLabel(unitName, "cm3/mol"), unit(boxName) {
    MolarVolume.setTarget(dataEntryV, unitLabel);
    DensityResult.setUnobtrusive();
    DensityResult.reserve(echoWidth);
    dataEntryV.onTextChange(this, &VolumeEntry::dataEntryV_TextChange);
    unit.onChange(this, &VolumeEntry::unitChosen);
}

double VolumeEntry::molarVolume() const {
    return unit.toMolarVolume(dataEntryV.number());
}

void VolumeEntry::showEcho() {
    const double number = dataEntryV.number();
    const double other = fluid::MolarVolumeFromDensity(fluid::AcceptedMixture(), number);
    const bool isDensity = unit.kgm3.isOn();
    std::string echo = isDensity ? "corresponding molar volume" : "corresponding density";
    if (number > 0.0 && std::isfinite(other)) {
        echo += " = " + toolkit::NumberText(other) + " " + (isDensity ? volumeUnit : densityUnit);
    }
    DensityResult.setText(echo);
}

void VolumeEntry::dataEntryV_TextChange() {
    showEcho();
    toolkit::RunHandler(changed_, dataEntryV.name().c_str());
}

void VolumeEntry::unitChosen() {
    unitLabel.setText(unit.unitText());
    MolarVolume.setText(unit.quantityText());
    dataEntryV.setText("");
    dataEntryV_TextChange();  // also where it was empty before
}

void VolumeEntry::activated() {
    unit.showCaptions();
    unitLabel.setText(unit.unitText());
    showEcho();
}

}  // namespace procedures
