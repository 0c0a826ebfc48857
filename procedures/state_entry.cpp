#include "procedures/state_entry.h"

#include "procedures/units.h"
#include "toolkit/event.h"
#include "toolkit/number_text.h"

namespace procedures {

StateEntry::StateEntry(const std::string& unitName, const std::string& warningName,
                       UnitChange unitChange)
    : unitChange_(unitChange), temperatureUnitLabel(unitName, "Kelvin"), warning(warningName) {
    dataEntryT.onTextChange(this, &StateEntry::dataEntryT_TextChange);
    dataEntryP.onTextChange(this, &StateEntry::dataEntryP_TextChange);
    temperature.onChange(this, &StateEntry::temperatureUnitChosen);
    Clear.onClick(this, &StateEntry::Clear_Action);
    Temperature.setTarget(dataEntryT, temperatureUnitLabel);
    Pressure.setTarget(dataEntryP, pressureUnitLabel);
}

toolkit::Block StateEntry::block() {
    using toolkit::Block;
    const Block inputs =
        toolkit::Grid({{Temperature, Block(dataEntryT).expanding(), temperatureUnitLabel},
                       {Pressure, Block(dataEntryP).expanding(), pressureUnitLabel}});
    return toolkit::Column({toolkit::Row({inputs.expanding(), temperature.block(),
                                          toolkit::ButtonColumn({calculate, Clear})}),
                            warning});
}

std::string StateEntry::temperatureText() const {
    const bool isZeroCelsius =
        temperature.Celsius.isOn() && temperature.toKelvin(dataEntryT.number()) == zeroCelsius;
    return isZeroCelsius ? "0.000" : dataEntryT.text();
}

std::optional<TypedState> StateEntry::read(const std::string& temperatureText,
                                           const std::string& refusal) {
    const TypedState state{temperature.toKelvin(toolkit::NumberOrZero(temperatureText)),
                           dataEntryP.number()};
    if (!(state.T > 0.0) || !(state.P > 0.0)) {
        warning.setText(refusal);
        return {};
    }
    dataEntryT.setText(temperatureText);
    return state;
}

std::optional<TypedState> StateEntry::readNumbers(const std::string& refusal) {
    if (toolkit::ParseNumber(dataEntryT.text())) return read(dataEntryT.text(), refusal);
    warning.setText(refusal);
    return {};
}

void StateEntry::changed() {
    toolkit::RunHandler(changed_, "entries of a state");
}

void StateEntry::temperatureUnitChosen() {
    temperatureUnitLabel.setText(temperature.unitText());
    if (unitChange_ == UnitChange::Empties) {
        dataEntryT.setText("");
    }
    changed();
}

void StateEntry::Clear_Action() {
    dataEntryT.setText("");
    dataEntryP.setText("");
    changed();
}

void StateEntry::dataEntryT_TextChange() {
    changed();
}

void StateEntry::dataEntryP_TextChange() {
    changed();
}

}  // namespace procedures
