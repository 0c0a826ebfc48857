#include "procedures/chem_pot_window.h"

#include "procedures/root_volume.h"
#include "toolkit/layout.h"

namespace procedures {

namespace {

constexpr int visibleRows = 13;  // eleven and the further lines of the heads
constexpr int lineWidth = 80;    // characters

}  // namespace

ChemPotWindow::ChemPotWindow(toolkit::ScreenHost& host)
    : Screen(host, "ChemPotWindow", "Chemical potentials - Drovan W") {
    state.onChange(this, &ChemPotWindow::emptyAll);
    state.calculate.onClick(this, &ChemPotWindow::calculate_Action);
    choice.onChoose(this, &ChemPotWindow::showPotentials);
    ListBox1.setAccessibleName("results of each gas");
    ListBox1.showAllColumns();
    for (std::size_t column = 1; column < potentialHeads().size(); ++column) {
        ListBox1.alignAtPoint(column, 0);
    }
    reference.wrapAt(lineWidth);
    note.wrapAt(lineWidth);
    layOut();
    setDefault(state.calculate);
    setFocus(state.dataEntryT);
}

void ChemPotWindow::layOut() {
    setContent(toolkit::column({state.block().atStart(), choice.block(),
                                ListBox1.scrolling(visibleRows).expanding(), reference, note},
                               toolkit::Spacing::group));
}

void ChemPotWindow::Event_Activate() {
    if (choice.isOutdated()) {
        emptyAll();
    }
}

void ChemPotWindow::calculate_Action() {
    emptyAll();
    if (const auto typed = state.readNumbers(missingStateSentence)) {
        choice.calculate(*typed);
    }
}

void ChemPotWindow::showPotentials() {
    showTable(potentialsAt(choice.mixture(), choice.state(), choice.chosen()), ListBox1, note);
}

void ChemPotWindow::emptyAll() {
    state.warning.setText("");
    choice.clear();
    ListBox1.clear();
    note.setText("");
}

}  // namespace procedures
