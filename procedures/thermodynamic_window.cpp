#include "procedures/thermodynamic_window.h"

#include "model/composition.h"
#include "procedures/inversion_curve.h"
#include "procedures/root_volume.h"
#include "toolkit/layout.h"

namespace procedures {

namespace {

constexpr int visibleRows = 17;

}  // namespace

ThermodynamicWindow::ThermodynamicWindow(toolkit::ScreenHost& host)
    : Screen(host, "ThermodynamicWindow", "Thermodynamic properties - Drovan W"),
      range(*this, state, "properties") {
    state.onChange(this, &ThermodynamicWindow::emptyAll);
    state.calculate.onClick(this, &ThermodynamicWindow::calculate_Action);
    choice.onChoose(this, &ThermodynamicWindow::showProperties);
    Mole.turnOn();
    Mole.onChoose(this, &ThermodynamicWindow::Mole_Action);
    Kilogram.onChoose(this, &ThermodynamicWindow::Kilogram_Action);
    ListBox1.setAccessibleName("properties of the fluid");
    ListBox1.setEmptyText("The properties of the fluid appear here when they are calculated.");
    for (const std::size_t column : {2U, 3U, 4U}) {
        ListBox1.alignAtPoint(column, mostDecimals);
    }
    Inversion.setUnobtrusive();
    note.reserve(0, 3);
    range.setReference(
        "Energies refer to the elements at 298.15 Kelvin and 0.1 MPa; the ideal gases are those of "
        "NASA TP-2002-211556.",
        2);
    Inversion.reserve(0, 2);
    range.onChoose(this, &ThermodynamicWindow::kindChosen);
    PlotProperty.turnOn();
    PlotProperty.onChoose(this, &ThermodynamicWindow::Inversion_Action);
    PlotInversion.onChoose(this, &ThermodynamicWindow::Inversion_Action);
    range.offer(PropertyQuantities(amount()));
    range.stateChanged();
    layOut();
    setDefault(state.calculate);
    setFocus(state.dataEntryT);
}

void ThermodynamicWindow::layOut() {
    using toolkit::Block;
    const Block left = toolkit::Column({state.block(), range.choiceBlock(),
                                        Block(toolkit::Row({amountOf, Mole, Kilogram})).atStart(),
                                        range.chosenBlock(choice.block()).expanding()});
    const Block oneState = toolkit::Column({ListBox1.scrolling(visibleRows).expanding(), note});
    setContent(toolkit::Columns({"state", left},
                                range.parts("properties", oneState, {Inversion},
                                            toolkit::Row({PlotProperty, PlotInversion}))));
}

void ThermodynamicWindow::Event_Activate() {
    if (!(mixture_ == fluid::AcceptedMixture())) {
        mixture_ = fluid::AcceptedMixture();
        emptyAll();
        Inversion_Action();
    }
}

void ThermodynamicWindow::calculate_Action() {
    emptyAll();
    if (range.isRange()) {
        range.calculate(mixture_);
    } else if (const auto typed = state.readNumbers(missingStateSentence)) {
        choice.calculate(*typed);
        Inversion.setText(InversionSentence(choice.mixture(), typed->P));
    }
}

void ThermodynamicWindow::kindChosen() {
    emptyAll();
}

void ThermodynamicWindow::Inversion_Action() {
    range.showInstead(PlotInversion.isOn() ? InversionSeries(mixture_, range.scale())
                                           : std::vector<toolkit::PlotSeries>());
}

void ThermodynamicWindow::showProperties() {
    ShowTable(PropertiesAt(choice.mixture(), choice.state(), choice.chosen(), amount()), ListBox1,
              note);
}

void ThermodynamicWindow::Mole_Action() {
    range.offer(PropertyQuantities(amount()));
    range.quantitiesChosen();
    if (choice.isChosen()) showProperties();
}

void ThermodynamicWindow::Kilogram_Action() {
    Mole_Action();
}

void ThermodynamicWindow::emptyAll() {
    state.warning.setText("");
    choice.clear();
    Inversion.setText("");
    ListBox1.clear();
    note.setText("");
    range.stateChanged();
}

}  // namespace procedures
