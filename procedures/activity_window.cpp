#include "procedures/activity_window.h"

#include <array>
#include <limits>
#include <vector>

#include "procedures/units.h"
#include "toolkit/announcement.h"
#include "toolkit/layout.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr int fourColumns = 36;  // lines of text that they are wide
constexpr int visibleRows = 8;
constexpr int warningWidth = 48;  // characters of the longest sentence
const std::string notUsed = "---";

const toolkit::List::Row heads = {"gas", "Vm (pure gas)", "activity", "coefficient"};

/// Makes an entry ready for a number, or shows that none is wanted.
void setUse(toolkit::Entry& entry, bool isUsed) {
    if (!isUsed) {
        entry.setText(notUsed);
    } else if (entry.text() == notUsed) {
        entry.setText("");
    }
}

}  // namespace

ActivityWindow::ActivityWindow(toolkit::ScreenHost& host)
    : FugacityScreen(host,
                     {"ActivityWindow", "Activities - Drovan W", "Label1", "warning1", heads}) {
    StandardChoice0.onChoose(this, &ActivityWindow::StandardChoice0_Action);
    StandardChoice1.onChoose(this, &ActivityWindow::StandardChoice1_Action);
    StandardChoice2.onChoose(this, &ActivityWindow::StandardChoice2_Action);
    dataEntryPref1.onTextChange(this, &ActivityWindow::dataEntryPref1_TextChange);
    dataEntryPref2.onTextChange(this, &ActivityWindow::dataEntryPref2_TextChange);
    PushButton1.onClick(this, &ActivityWindow::PushButton1_Action);
    dataEntryPref1.setLabelledBy(StandardChoice1);
    dataEntryPref1.setDescribedBy(unitPref1);
    dataEntryPref2.setLabelledBy(StandardChoice2);
    dataEntryPref2.setDescribedBy(unitPref2);
    // The other button would empty what Enter has just been pressed in.
    dataEntryPref1.setDefault(PushButton1);
    dataEntryPref2.setDefault(PushButton1);
    warning.reserve(warningWidth);
    layOut();
    setDefault(calculate);
    setFocus(dataEntryT);
}

void ActivityWindow::layOut() {
    using toolkit::Block;
    const Block standard =
        standardBox.around(toolkit::grid({{StandardChoice0},
                                          {StandardChoice1, dataEntryPref1, unitPref1},
                                          {StandardChoice2, dataEntryPref2, unitPref2}},
                                         toolkit::Spacing::none));
    setContent(toolkit::column(
        {inputBlock(), choice.block(), slope, Block(toolkit::grid(volumeRows())).atStart(),
         standard, toolkit::row({Block(warning).expanding(), toolkit::buttonRow({PushButton1})}),
         ListBox1.scrolling(visibleRows).atLeast(fourColumns, 0).expanding(), volumeNote},
        toolkit::Spacing::group));
}

void ActivityWindow::Event_Activate() {
    ListBox1.setHeads(heads);
    volumeNote.setText(std::string("Vm (pure gas) in ") + volumeUnit);
    FugacityScreen::Event_Activate();
}

void ActivityWindow::emptyResults() {
    FugacityScreen::emptyResults();
    warning.setText("");
    fugacities_ = {};
    pureVolumes_ = {};
}

void ActivityWindow::emptyAll() {
    FugacityScreen::emptyAll();
    clearStandardState();
}

void ActivityWindow::clearStandardState() {
    standardStates.clear();
    dataEntryPref1.setText("");
    dataEntryPref2.setText("");
}

void ActivityWindow::emptyActivities() {
    ListBox1.clear();
    warning.setText("");
}

void ActivityWindow::showComplexRoot() {
    FugacityScreen::showComplexRoot();
    clearStandardState();
}

void ActivityWindow::showRoot(const StatePoint& state, double V) {
    fugacities_ = showState(state, V).values;
    for (std::size_t k = 0; k < fluid::AcceptedMixture().count; ++k) {
        pureVolumes_[k] =
            fluid::PureGasVolume(fluid::AcceptedMixture(), k, state.T, state.P).volume;
    }
}

void ActivityWindow::StandardChoice0_Action() {
    setUse(dataEntryPref1, false);
    setUse(dataEntryPref2, false);
    emptyActivities();
}

void ActivityWindow::StandardChoice1_Action() {
    setUse(dataEntryPref1, true);
    setUse(dataEntryPref2, false);
    emptyActivities();
}

void ActivityWindow::StandardChoice2_Action() {
    setUse(dataEntryPref1, false);
    setUse(dataEntryPref2, true);
    emptyActivities();
}

void ActivityWindow::dataEntryPref1_TextChange() {
    emptyActivities();
}

void ActivityWindow::dataEntryPref2_TextChange() {
    emptyActivities();
}

double ActivityWindow::referencePressure() const {
    if (StandardChoice0.isOn()) {
        return dataEntryP.number();
    }
    return StandardChoice1.isOn() ? dataEntryPref1.number() : dataEntryPref2.number();
}

std::string ActivityWindow::missingInput() const {
    if (!StandardChoice0.isOn() && !StandardChoice1.isOn() && !StandardChoice2.isOn()) {
        return "warning: select standard state conditions";
    }
    if (!choice.isChosen()) {
        return "warning: calculate and select molar volume";
    }
    if (!(toolkit::numberOrZero(Result.text()) > 0.0)) {
        return "warning: choose a real solution";
    }
    if (referencePressure() == 0.0) {
        return "warning: reference pressure is not defined";
    }
    return "";
}

ActivityWindow::StandardStates ActivityWindow::standardState(double T, double Pref) const {
    StandardStates states;
    if (StandardChoice2.isOn()) {
        states.volumes.fill(fluid::R * T / Pref);
        states.fugacities.fill(Pref);
    } else {
        // The volumes are those at the pressure of the mixture, also where Pref is another.
        states.volumes = pureVolumes_;
        states.fugacities = fluid::PureFugacities(fluid::AcceptedMixture(), T, Pref, pureVolumes_);
        for (std::size_t k = 0; k < states.volumes.size(); ++k) {
            if (!(states.volumes[k] > 0.0)) {
                states.volumes[k] = states.fugacities[k] = std::numeric_limits<double>::quiet_NaN();
            }
        }
    }
    return states;
}

void ActivityWindow::PushButton1_Action() {
    emptyActivities();
    const std::string missing = missingInput();
    if (!missing.empty()) {
        warning.setText(missing);
        return;
    }
    const StandardStates standard = standardState(readState().T, referencePressure());
    std::vector<toolkit::List::Row> rows;
    for (std::size_t k = 0; k < fluid::AcceptedMixture().count; ++k) {
        const double activity = fugacities_[k] / standard.fugacities[k];
        rows.push_back({std::string(fluid::AcceptedMixture().formula(k)),
                        valueText(standard.volumes[k]), valueText(activity),
                        valueText(activity / fluid::AcceptedMixture().fractions[k])});
    }
    ListBox1.setRows(rows);
    toolkit::announce(ListBox1, "activities of " + std::to_string(rows.size()) +
                                    (rows.size() == 1 ? " gas" : " gases"));
}

}  // namespace procedures
