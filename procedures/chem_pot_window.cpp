#include "procedures/chem_pot_window.h"

#include "model/composition.h"
#include "procedures/root_volume.h"
#include "toolkit/layout.h"

namespace procedures {

namespace {

constexpr int visibleRows = 11;

}  // namespace

ChemPotWindow::ChemPotWindow(toolkit::ScreenHost& host)
    : Screen(host, "ChemPotWindow", "Chemical potentials - Drovan W"),
      range(*this, state, "potentials") {
    state.onChange(this, &ChemPotWindow::emptyAll);
    state.calculate.onClick(this, &ChemPotWindow::calculate_Action);
    choice.onChoose(this, &ChemPotWindow::showPotentials);
    ListBox1.setAccessibleName("results of each gas");
    ListBox1.setEmptyText(
        "The chemical potential and the partial molar properties of each gas appear here when they "
        "are calculated.");
    for (std::size_t column = 1; column < PotentialHeads().size(); ++column) {
        ListBox1.alignAtPoint(column, 0);
    }
    range.setReference(
        "The standard part is that of the ideal gas at this temperature and p° = 0.1 MPa; energies "
        "refer to the elements at 298.15 Kelvin and 0.1 MPa; the ideal gases are those of NASA "
        "TP-2002-211556.",
        3);
    range.onChoose(this, &ChemPotWindow::emptyAll);
    range.stateChanged();
    layOut();
    setDefault(state.calculate);
    setFocus(state.dataEntryT);
}

void ChemPotWindow::layOut() {
    const toolkit::Block oneState =
        toolkit::Column({ListBox1.scrolling(visibleRows).expanding(), note});
    setContent(toolkit::Columns(
        {"state", toolkit::Column({state.block(), range.choiceBlock(),
                                   range.chosenBlock(choice.block()).expanding()})},
        range.parts("potentials", oneState)));
}

void ChemPotWindow::Event_Activate() {
    if (!(mixture_ == fluid::AcceptedMixture())) {
        mixture_ = fluid::AcceptedMixture();
        range.offer(PotentialQuantities(mixture_));
        emptyAll();
    }
}

void ChemPotWindow::calculate_Action() {
    emptyAll();
    if (range.isRange()) {
        range.calculate(mixture_);
    } else if (const auto typed = state.readNumbers(missingStateSentence)) {
        choice.calculate(*typed);
    }
}

void ChemPotWindow::showPotentials() {
    ShowTable(PotentialsAt(choice.mixture(), choice.state(), choice.chosen()), ListBox1, note);
}

void ChemPotWindow::emptyAll() {
    state.warning.setText("");
    choice.clear();
    ListBox1.clear();
    note.setText("");
    range.stateChanged();
}

}  // namespace procedures
