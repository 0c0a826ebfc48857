#include "procedures/fugacity_window.h"

#include <string>
#include <vector>

#include "model/fluid_model.h"
#include "toolkit/layout.h"

namespace procedures {

namespace {

constexpr int visibleRows = 11;
const toolkit::List::Row heads = {"gas", "fugacity (in MPa)", "coefficient"};

}  // namespace

FugacityWindow::FugacityWindow(toolkit::ScreenHost& host)
    : Screen(host, "FugacityWindow", "Fugacities - Drovan W"),
      ListBox1("ListBox1", heads, {5, 19, 19}) {
    using toolkit::Block;
    state.onChange(this, &FugacityWindow::emptyAll);
    state.calculate.onClick(this, &FugacityWindow::calculate_Action);
    choice.onChoose([this](std::size_t number) {
        show(FugacitiesAt(fluid::AcceptedMixture(), calculated_, number));
    });
    choice.setUnit(result.Label4);
    ListBox1.setAccessibleName("results of each gas");
    ListBox1.setEmptyText(
        "The fugacity and the fugacity coefficient of each gas appear here when a solution for the "
        "molar volume is chosen.");
    setContent(toolkit::Column({state.block(), choice.block(), result.slope,
                                Block(toolkit::Grid(result.rows())).atStart(),
                                ListBox1.scrolling(visibleRows).expanding(), note}));
    setDefault(state.calculate);
    setFocus(state.dataEntryT);
}

void FugacityWindow::Event_Activate() {
    result.showUnits();
    ListBox1.setHeads(heads);
    emptyAll();  // the roots may be those of an older composition
}

void FugacityWindow::calculate_Action() {
    emptyAll();
    if (const auto typed = state.read(state.temperatureText(), missingStateSentence)) {
        calculated_ = *typed;
        choice.show(RootsAt(fluid::AcceptedMixture(), *typed), state.warning);
    }
}

void FugacityWindow::show(const FugacityTable& table) {
    emptyResults();
    result.showAny(table.root, state.warning);
    std::vector<toolkit::List::Row> rows;
    for (const FugacityTable::Gas& gas : table.gases) {
        rows.push_back(FugacityRow(gas));
    }
    ListBox1.setRows(rows);
    note.setText(GuardSentence(table));
}

void FugacityWindow::emptyResults() {
    state.warning.setText("");
    result.empty();
    ListBox1.clear();
    note.setText("");
}

void FugacityWindow::emptyAll() {
    choice.clear();
    emptyResults();
}

}  // namespace procedures
