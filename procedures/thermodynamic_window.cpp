#include "procedures/thermodynamic_window.h"

#include "procedures/root_volume.h"
#include "toolkit/layout.h"

namespace procedures {

namespace {

constexpr int visibleRows = 17;

}  // namespace

ThermodynamicWindow::ThermodynamicWindow(toolkit::ScreenHost& host)
    : Screen(host, "ThermodynamicWindow", "Thermodynamic properties - Drovan W") {
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
    reference.reserve(0, 2);
    Inversion.reserve(0, 2);
    layOut();
    setDefault(state.calculate);
    setFocus(state.dataEntryT);
}

void ThermodynamicWindow::layOut() {
    using toolkit::Block;
    setContent(toolkit::Columns(
        {"state", toolkit::Column({state.block(), choice.block(),
                                   Block(toolkit::Row({amountOf, Mole, Kilogram})).atStart()})},
        {{"properties", toolkit::Column({ListBox1.scrolling(visibleRows).expanding(), reference,
                                         Inversion, note})}}));
}

void ThermodynamicWindow::Event_Activate() {
    if (choice.isOutdated()) {
        emptyAll();
    }
}

void ThermodynamicWindow::calculate_Action() {
    emptyAll();
    if (const auto typed = state.readNumbers(missingStateSentence)) {
        choice.calculate(*typed);
        Inversion.setText(InversionSentence(choice.mixture(), typed->P));
    }
}

void ThermodynamicWindow::showProperties() {
    const Amount amount = Kilogram.isOn() ? Amount::Kilogram : Amount::Mole;
    ShowTable(PropertiesAt(choice.mixture(), choice.state(), choice.chosen(), amount), ListBox1,
              note);
}

void ThermodynamicWindow::Mole_Action() {
    if (choice.isChosen()) {
        showProperties();
    }
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
}

}  // namespace procedures
