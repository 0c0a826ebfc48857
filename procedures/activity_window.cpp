#include "procedures/activity_window.h"

#include <vector>

#include "model/fluid_model.h"
#include "procedures/units.h"
#include "toolkit/announcement.h"
#include "toolkit/layout.h"

namespace procedures {

namespace {

constexpr int visibleRows = 8;
const std::string notUsed = "---";

const toolkit::List::Row heads = {"gas", "Vm (pure gas)", "activity", "coefficient"};

// Makes an entry ready for a number, or shows that none is wanted.
void SetUse(toolkit::Entry& entry, bool isUsed) {
    if (!isUsed) {
        entry.setText(notUsed);
    } else if (entry.text() == notUsed) {
        entry.setText("");
    }
}

}  // namespace

ActivityWindow::ActivityWindow(toolkit::ScreenHost& host)
    : Screen(host, "ActivityWindow", "Activities - Drovan W"),
      ListBox1("ListBox1", heads, {5, 15, 17, 17}) {
    state.onChange(this, &ActivityWindow::emptyAll);
    state.calculate.onClick(this, &ActivityWindow::calculate_Action);
    choice.onChoose([this](std::size_t number) {
        show(FugacitiesAt(fluid::AcceptedMixture(), calculated_, number));
    });
    choice.setUnit(result.Label4);
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
    ListBox1.setAccessibleName("results of each gas");
    ListBox1.setEmptyText(
        "The activity and the activity coefficient of each gas appear here when a solution for the "
        "molar volume and standard state conditions are chosen, and activities calculated.");
    layOut();
    setDefault(state.calculate);
    setFocus(state.dataEntryT);
}

void ActivityWindow::layOut() {
    using toolkit::Block;
    const Block standard =
        standardBox.around(toolkit::Grid({{StandardChoice0},
                                          {StandardChoice1, dataEntryPref1, unitPref1},
                                          {StandardChoice2, dataEntryPref2, unitPref2}},
                                         toolkit::Spacing::Touching));
    setContent(toolkit::Columns(
        {"state", toolkit::Column({state.block(), choice.block(), result.slope,
                                   Block(toolkit::Grid(result.rows())).atStart()})},
        {{"activities",
          toolkit::Column(
              {standard,
               toolkit::Row({Block(warning).expanding(), toolkit::ButtonRow({PushButton1})}),
               ListBox1.scrolling(visibleRows).expanding(), volumeNote, note})}}));
}

void ActivityWindow::Event_Activate() {
    result.showUnits();
    ListBox1.setHeads(heads);
    volumeNote.setText(std::string("Vm (pure gas) in ") + volumeUnit);
    choice.clear();  // the roots may be those of an older composition
    emptyResults();
}

void ActivityWindow::calculate_Action() {
    emptyAll();
    if (const auto typed = state.read(state.temperatureText(), missingStateSentence)) {
        calculated_ = *typed;
        choice.show(RootsAt(fluid::AcceptedMixture(), *typed), state.warning);
    }
}

void ActivityWindow::show(const FugacityTable& table) {
    emptyResults();
    fugacities_ = table;
    result.showAny(table.root, state.warning);
    if (table.root.kind == RootVolume::Kind::Complex) {
        clearStandardState();
    }
}

void ActivityWindow::emptyResults() {
    state.warning.setText("");
    result.empty();
    emptyActivities();
    fugacities_ = {};
}

void ActivityWindow::emptyAll() {
    choice.clear();
    emptyResults();
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
    note.setText("");
}

void ActivityWindow::StandardChoice0_Action() {
    SetUse(dataEntryPref1, false);
    SetUse(dataEntryPref2, false);
    emptyActivities();
}

void ActivityWindow::StandardChoice1_Action() {
    SetUse(dataEntryPref1, true);
    SetUse(dataEntryPref2, false);
    emptyActivities();
}

void ActivityWindow::StandardChoice2_Action() {
    SetUse(dataEntryPref1, false);
    SetUse(dataEntryPref2, true);
    emptyActivities();
}

void ActivityWindow::dataEntryPref1_TextChange() {
    emptyActivities();
}

void ActivityWindow::dataEntryPref2_TextChange() {
    emptyActivities();
}

std::optional<ActivityWindow::Standard> ActivityWindow::readStandard() {
    const Standard standard = StandardChoice0.isOn() ? Standard{StandardState::Real, calculated_.P}
                              : StandardChoice1.isOn()
                                  ? Standard{StandardState::Real, dataEntryPref1.number()}
                                  : Standard{StandardState::Ideal, dataEntryPref2.number()};
    const bool isSelected =
        StandardChoice0.isOn() || StandardChoice1.isOn() || StandardChoice2.isOn();
    const char* const missing =
        !isSelected          ? "warning: select standard state conditions"
        : !choice.isChosen() ? "warning: calculate and select molar volume"
        : fugacities_.root.kind != RootVolume::Kind::Volume ? "warning: choose a real solution"
        : standard.pressure == 0.0 ? "warning: reference pressure is not defined"
                                   : "";
    warning.setText(missing);
    return *missing == '\0' ? std::optional(standard) : std::nullopt;
}

void ActivityWindow::PushButton1_Action() {
    emptyActivities();
    if (const auto standard = readStandard()) {
        show(ActivitiesAt(fluid::AcceptedMixture(), calculated_, fugacities_, standard->state,
                          standard->pressure));
    }
}

void ActivityWindow::show(const ActivityTable& table) {
    std::vector<toolkit::List::Row> rows;
    for (const ActivityTable::Gas& gas : table.gases) {
        rows.push_back(ActivityRow(gas));
    }
    ListBox1.setRows(rows);
    note.setText(GuardSentence(table));
    toolkit::Announce(ListBox1, "activities of " + std::to_string(rows.size()) +
                                    (rows.size() == 1 ? " gas" : " gases"));
}

}  // namespace procedures
