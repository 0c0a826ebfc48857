#include "procedures/volume_window.h"

#include <string>
#include <vector>

#include "model/fluid_model.h"
#include "procedures/units.h"
#include "toolkit/layout.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr int temperatureDecimals = 3;
constexpr int visibleRows = 6;

}  // namespace

VolumeWindow::VolumeWindow(toolkit::ScreenHost& host)
    : Screen(host, "VolumeWindow", "Molar Volumes - Drovan W"),
      StaticText1("StaticText1",
                  "* cubic equatons have three solutions, of which two may be complex numbers") {
    state.onChange(this, &VolumeWindow::emptyAll);
    state.calculate.onClick(this, &VolumeWindow::calculate_Action);
    choice.onChoose([this](std::size_t number) {
        show(VolumePartsAt(fluid::AcceptedMixture(), calculated_, number));
    });
    choice.setUnit(result.Label4);
    ListBox1.setAccessibleName("results of each gas");
    ListBox1.setEmptyText(
        "The molar volumes of the pure gases and the partial molar volumes appear here when a "
        "solution for the molar volume of the mixture is chosen.");
    StaticText1.reserve(0, 2);
    idealCaption.setTarget(ResultIdeal, Label5);
    excessCaption.setTarget(ExcessVol, Label6);
    layOut();
    setDefault(state.calculate);
    setFocus(state.dataEntryT);
}

void VolumeWindow::layOut() {
    using toolkit::Block;
    const Block volumes =
        toolkit::Grid({{idealCaption, ResultIdeal, Label5}, {excessCaption, ExcessVol, Label6}});
    setContent(toolkit::Columns(
        {"mixture", toolkit::Column({state.block(), choice.block(), result.slope,
                                     Block(toolkit::Grid(result.rows())).atStart(), StaticText1})},
        {{"gases", toolkit::Column({ListBox1.scrolling(visibleRows).expanding(), volumes})}}));
}

void VolumeWindow::Event_Activate() {
    result.showUnits();
    Label5.setText(std::string(" ") + volumeUnit);
    Label6.setText(std::string(" ") + volumeUnit);
    ListBox1.setHeads({"gas", std::string("Vm (pure gas) ") + volumeUnit,
                       std::string("partial Vm (dV/dn) ") + volumeUnit});
    emptyAll();  // the roots may be those of an older composition
}

std::optional<TypedState> VolumeWindow::read() {
    return state.read(toolkit::FixedText(state.dataEntryT.number(), temperatureDecimals),
                      "warning: put a valid number for temperature and pressure");
}

void VolumeWindow::calculate_Action() {
    emptyAll();
    if (const auto typed = read()) {
        calculated_ = *typed;
        choice.show(RootsAt(fluid::AcceptedMixture(), *typed), state.warning);
    }
}

void VolumeWindow::show(const VolumeParts& parts) {
    emptyResults();
    if (parts.root.kind == RootVolume::Kind::Complex) {
        state.warning.setText(complexSentence);
        return;
    }
    if (parts.root.kind == RootVolume::Kind::None) {
        state.warning.setText(noVolumeSentence);
        return;
    }
    result.show(parts.root);
    ResultIdeal.setText(VolumeText(parts.ideal));
    ExcessVol.setText(VolumeText(parts.excess));
    std::vector<toolkit::List::Row> rows;
    for (const VolumeParts::Gas& gas : parts.gases) {
        rows.push_back(VolumeRow(gas));
    }
    ListBox1.setRows(rows);
    state.warning.setText(MultipleSentence(parts));
}

void VolumeWindow::emptyResults() {
    state.warning.setText("");
    result.empty();
    ResultIdeal.setText("");
    ExcessVol.setText("");
    ListBox1.clear();
}

void VolumeWindow::emptyAll() {
    choice.clear();
    emptyResults();
}

}  // namespace procedures
