#include "procedures/volume_window.h"

#include <vector>

#include "model/fluid_model.h"
#include "procedures/units.h"
#include "toolkit/layout.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr int temperatureDecimals = 3;
constexpr int lineWidth = 60;  // characters
constexpr int visibleRows = 6;
const std::string noValue = "---";

}  // namespace

VolumeWindow::VolumeWindow(toolkit::ScreenHost& host)
    : RootScreen(host, {"VolumeWindow",
                        "Molar Volumes - Drovan W",
                        "StaticText3",
                        "warning",
                        {"gas", "Vm (pure gas) cm3/mol", "partial Vm (dV/dn) cm3/mol"}}),
      StaticText1("StaticText1",
                  "* cubic equatons have three solutions, of which two may be complex numbers") {
    StaticText1.wrapAt(lineWidth);
    idealCaption.setTarget(ResultIdeal, Label5);
    excessCaption.setTarget(ExcessVol, Label6);
    layOut();
    setDefault(calculate);
    setFocus(dataEntryT);
}

void VolumeWindow::layOut() {
    using toolkit::Block;
    using toolkit::Spacing;
    std::vector<std::vector<Block>> rows = volumeRows();
    rows.push_back({idealCaption, ResultIdeal, Label5});
    rows.push_back({excessCaption, ExcessVol, Label6});
    setContent(toolkit::column(
        {inputBlock(), toolkit::column({choice.block(), StaticText1}), slope,
         Block(toolkit::grid(rows)).atStart(), ListBox1.scrolling(visibleRows).expanding()},
        Spacing::group));
}

void VolumeWindow::Event_Activate() {
    Label5.setText(std::string(" ") + volumeUnit);
    Label6.setText(std::string(" ") + volumeUnit);
    ListBox1.setHeads({"gas", std::string("Vm (pure gas) ") + volumeUnit,
                       std::string("partial Vm (dV/dn) ") + volumeUnit});
    RootScreen::Event_Activate();
}

std::string VolumeWindow::temperatureToShow() const {
    return toolkit::fixedText(dataEntryT.number(), temperatureDecimals);
}

std::string VolumeWindow::inputSentence() const {
    return "warning: put a valid number for temperature and pressure";
}

void VolumeWindow::emptyResults() {
    RootScreen::emptyResults();
    ResultIdeal.setText("");
    ExcessVol.setText("");
}

void VolumeWindow::showComplexRoot() {
    inputWarning.setText("complex number (with imaginary part). Choose a real solution");
}

void VolumeWindow::showRoot(const StatePoint& state, double V) {
    showStability(state, V);
    showVolume(V);
    showParts(state, V);
}

void VolumeWindow::showParts(const StatePoint& state, double V) {
    const fluid::Mixture& mixture = fluid::AcceptedMixture();
    const auto partial = fluid::PartialMolarVolumes(mixture, state.T, V);
    fluid::ComponentValues pureVolumes{};
    std::vector<toolkit::List::Row> rows;
    std::string ambiguous;
    bool isComplete = true;
    for (std::size_t k = 0; k < mixture.count; ++k) {
        const fluid::PureGas pure =
            fluid::PureGasVolumeBeside(mixture, k, state.T, state.P, choice.rank());
        const std::string gas = " " + std::string(mixture.formula(k));
        pureVolumes[k] = pure.volume;
        isComplete = isComplete && pure.volume > 0.0;
        rows.push_back({gas, pure.volume > 0.0 ? toolkit::numberText(pure.volume) : noValue,
                        partial ? toolkit::numberText((*partial)[k]) : noValue});
        if (pure.multiple) {
            ambiguous += (ambiguous.empty() ? "" : ",") + gas;
        }
    }
    ListBox1.setRows(rows);
    const double ideal = fluid::IdealMixtureVolume(mixture, pureVolumes);
    ResultIdeal.setText(isComplete ? toolkit::numberText(ideal) : noValue);
    ExcessVol.setText(isComplete ? toolkit::numberText(V - ideal) : noValue);
    if (!ambiguous.empty()) {
        inputWarning.setText("warning: multiple solution for Vm(ideal) of pure" + ambiguous);
    }
}

}  // namespace procedures
