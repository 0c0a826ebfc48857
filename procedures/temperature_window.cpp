#include "procedures/temperature_window.h"

#include "model/fluid_model.h"
#include "procedures/units.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

// The temperature that was calculated last, in whichever screen: a change of its unit shows it
// again, also in a screen that has calculated none.
double TemperatureK = 0.0;
double TemperatureC = 0.0;

}  // namespace

TemperatureWindow::TemperatureWindow(toolkit::ScreenHost& host)
    : Screen(host, "TemperatureWindow", "Temperatures - Drovan W") {
    form.volume.onChange(this, &TemperatureWindow::emptyResult);
    form.Clear.onClick(this, &TemperatureWindow::Clear_Action);
    form.calculate.onClick(this, &TemperatureWindow::calculate_Action);
    dataEntryP.onTextChange(this, &TemperatureWindow::dataEntryP_TextChange);
    temperature.onChange(this, &TemperatureWindow::temperatureUnitChosen);
    Pressure.setTarget(dataEntryP, StaticText3);
    Temperature.setTarget(ResultT, Label1);
    setContent(form.block({Pressure, toolkit::Block(dataEntryP).expanding(), StaticText3},
                          temperature.block(), {Temperature, ResultT, Label1}));
    setDefault(form.calculate);
    setFocus(form.volume.dataEntryV);
}

void TemperatureWindow::Event_Activate() {
    form.volume.activated();
    emptyResult();
}

void TemperatureWindow::emptyResult() {
    ResultT.setText("");
    form.warning.setText("");
}

void TemperatureWindow::dataEntryP_TextChange() {
    emptyResult();
}

void TemperatureWindow::Clear_Action() {
    form.volume.dataEntryV.setText("");
    dataEntryP.setText("");
    emptyResult();
}

TemperatureWindow::Input TemperatureWindow::read() const {
    return {form.volume.molarVolume(), dataEntryP.number()};
}

void TemperatureWindow::calculate_Action() {
    const Input input = read();
    show(input, TemperatureAt(fluid::AcceptedMixture(), input.V, input.P));
}

void TemperatureWindow::show(const Input& input,
                             const std::optional<CalculatedTemperature>& result) {
    if (!result) {
        emptyResult();
        form.warning.setText("warning: put a number for molar volume");
        return;
    }
    if (input.P == 0.0) {
        dataEntryP.setText("0.000");  // shows which pressure was used
    }
    TemperatureK = result->T;
    TemperatureC = TemperatureK - zeroCelsius;
    if (TemperatureK > 0.0) {
        ResultT.setText(
            toolkit::NumberText(temperature.Celsius.isOn() ? TemperatureC : TemperatureK));
    }
    form.warning.setText(result->warning);
}

void TemperatureWindow::temperatureUnitChosen() {
    Label1.setText(temperature.unitText());
    if (temperature.Kelvin.isOn()) {
        ResultT.setText(toolkit::NumberText(TemperatureK));
    } else {
        ResultT.setText(TemperatureK > 0.0 ? toolkit::NumberText(TemperatureC) : "");
    }
}

}  // namespace procedures
