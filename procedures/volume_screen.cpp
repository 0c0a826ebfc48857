#include "procedures/volume_screen.h"

#include "toolkit/layout.h"

namespace procedures {

namespace {

constexpr int warningWidth = 48;  // characters of a line

}  // namespace

VolumeScreen::VolumeScreen(toolkit::ScreenHost& host, const Names& names)
    : Screen(host, names.screen, names.title),
      volume(names.volumeBox, names.volumeUnit),
      secondCaption(names.secondCaption.name, names.secondCaption.text),
      secondEntry(names.secondEntry),
      secondUnit(names.secondUnit.name, names.secondUnit.text),
      temperature(names.temperatureBox),
      resultCaption(names.resultCaption.name, names.resultCaption.text),
      result(names.result),
      resultUnit(names.resultUnit.name, names.resultUnit.text) {
    using toolkit::Block;
    volume.dataEntryV.onTextChange(this, &VolumeScreen::dataEntryV_TextChange);
    volume.kgm3.onChoose(this, &VolumeScreen::kgm3_Action);
    volume.cm3mol.onChoose(this, &VolumeScreen::cm3mol_Action);
    temperature.Celsius.onChoose(this, &VolumeScreen::Celsius_Action);
    temperature.Kelvin.onChoose(this, &VolumeScreen::Kelvin_Action);
    Clear.onClick(this, &VolumeScreen::Clear_Action);
    calculate.onClick(this, &VolumeScreen::calculate_Action);

    secondCaption.setTarget(secondEntry, secondUnit);
    resultCaption.setTarget(result, resultUnit);
    warning.wrapAt(warningWidth);
    const Block inputs =
        toolkit::grid({{volume.MolarVolume, Block(volume.dataEntryV).expanding(), volume.unit},
                       {secondCaption, Block(secondEntry).expanding(), secondUnit}});
    const Block units = toolkit::row({volume.unitBlock(), temperature.block()});
    setContent(toolkit::column({toolkit::column({inputs, volume.DensityResult}), units,
                                toolkit::buttonRow({Clear, calculate}),
                                toolkit::row({resultCaption, result, resultUnit}), warning},
                               toolkit::Spacing::group));
    setDefault(calculate);
    setFocus(volume.dataEntryV);
}

void VolumeScreen::emptyResult() {
    result.setText("");
    warning.setText("");
}

void VolumeScreen::Event_Activate() {
    volume.activated();
    emptyResult();
}

void VolumeScreen::dataEntryV_TextChange() {
    volume.showEcho();
    emptyResult();
}

void VolumeScreen::Clear_Action() {
    volume.dataEntryV.setText("");
    secondEntry.setText("");
    emptyResult();
}

void VolumeScreen::volumeUnitChosen() {
    volume.unitChosen();
    emptyResult();
}

void VolumeScreen::kgm3_Action() {
    volumeUnitChosen();
}

void VolumeScreen::cm3mol_Action() {
    volumeUnitChosen();
}

}  // namespace procedures
