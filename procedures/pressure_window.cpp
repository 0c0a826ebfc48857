#include "procedures/pressure_window.h"

#include "model/fluid_model.h"
#include "procedures/state_calculation.h"
#include "toolkit/number_text.h"

namespace procedures {

PressureWindow::PressureWindow(toolkit::ScreenHost& host)
    : Screen(host, "PressureWindow", "Pressures - Drovan W") {
    form.volume.onChange(this, &PressureWindow::emptyResult);
    form.Clear.onClick(this, &PressureWindow::Clear_Action);
    form.calculate.onClick(this, &PressureWindow::calculate_Action);
    temperature.onChange(this, &PressureWindow::emptyResult);
    Pressure.setTarget(Result, StaticText4);
    setContent(
        form.block({temperature.Temperature, toolkit::Block(temperature.dataEntryT).expanding(),
                    temperature.unitLabel},
                   temperature.unit.block(), {Pressure, Result, StaticText4}));
    setDefault(form.calculate);
    setFocus(form.volume.dataEntryV);
}

void PressureWindow::Event_Activate() {
    form.volume.activated();
    emptyResult();
}

void PressureWindow::emptyResult() {
    Result.setText("");
    form.warning.setText("");
}

void PressureWindow::Clear_Action() {
    form.volume.dataEntryV.setText("");
    temperature.dataEntryT.setText("");
    emptyResult();
}

PressureWindow::Input PressureWindow::read() const {
    return {form.volume.molarVolume(), temperature.unit.toKelvin(temperature.dataEntryT.number())};
}

void PressureWindow::calculate_Action() {
    const Input input = read();
    show(input, PressureAt(fluid::AcceptedMixture(), input.V, input.T));
}

void PressureWindow::show(const Input& input, const std::optional<double>& P) {
    if (P && temperature.unit.Celsius.isOn() && input.T == zeroCelsius) {
        temperature.dataEntryT.setText("0.000");  // shows which temperature was used
    }
    Result.setText(P ? toolkit::NumberText(*P) : "");
    form.warning.setText(P ? "" : "warning: put a number for temperature and molar volume");
}

}  // namespace procedures
