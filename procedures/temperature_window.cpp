#include "procedures/temperature_window.h"

#include <cmath>

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
    : VolumeScreen(host, {.screen = "TemperatureWindow",
                          .title = "Temperatures - Drovan W",
                          .volumeBox = "GroupBox2",
                          .volumeUnit = "StaticText2",
                          .temperatureBox = "GroupBox1",
                          .secondCaption = {"Pressure", "Pressure"},
                          .secondEntry = "dataEntryP",
                          .secondUnit = {"StaticText3", "MPa"},
                          .resultCaption = {"Temperature", "Temperature"},
                          .result = "ResultT",
                          .resultUnit = {"Label1", "Kelvin"}}) {
    dataEntryP.onTextChange(this, &TemperatureWindow::dataEntryP_TextChange);
}

void TemperatureWindow::dataEntryP_TextChange() {
    emptyResult();
}

void TemperatureWindow::calculate_Action() {
    const double V = volume.molarVolume();
    const double P = dataEntryP.number();
    const double a = fluid::MixtureA(fluid::LastComponent, fluid::Fractions);
    const double b = fluid::MixtureB(fluid::LastComponent, fluid::Fractions);
    const double T = fluid::TemperatureVdW(a, b, P, V);
    // A temperature beyond the range of a double comes from a volume that is no real input either.
    if (!(V > 0.0) || !std::isfinite(V) || !std::isfinite(T)) {
        emptyResult();
        warning.setText("warning: put a number for molar volume");
        return;
    }
    if (P == 0.0) {
        dataEntryP.setText("0.000");  // shows which pressure was used
    }
    std::string sentences = P > 0.0 ? "" : "Negative pressures are not excluded. ";
    TemperatureK = T;
    TemperatureC = T - zeroCelsius;
    if (TemperatureK > 0.0) {
        ResultT.setText(
            toolkit::numberText(temperature.Celsius.isOn() ? TemperatureC : TemperatureK));
    } else {
        sentences += "Warning: temperature = " + toolkit::numberText(TemperatureK) + " K";
    }
    warning.setText(sentences);
}

void TemperatureWindow::Celsius_Action() {
    Label1.setText("˚Celsius");
    ResultT.setText(TemperatureK > 0.0 ? toolkit::numberText(TemperatureC) : "");
}

void TemperatureWindow::Kelvin_Action() {
    Label1.setText("Kelvin");
    ResultT.setText(toolkit::numberText(TemperatureK));
}

}  // namespace procedures
