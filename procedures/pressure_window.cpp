#include "procedures/pressure_window.h"

#include <cmath>

#include "model/fluid_model.h"
#include "procedures/units.h"
#include "toolkit/number_text.h"

namespace procedures {

PressureWindow::PressureWindow(toolkit::ScreenHost& host)
    : VolumeScreen(host, {.screen = "PressureWindow",
                          .title = "Pressures - Drovan W",
                          .volumeBox = "GroupBox3",
                          .volumeUnit = "StaticText1",
                          .temperatureBox = "GroupBox2",
                          .secondCaption = {"Temperature", "Temperature"},
                          .secondEntry = "dataEntryT",
                          .secondUnit = {"StaticText3", "Kelvin"},
                          .resultCaption = {"Pressure", "Pressure"},
                          .result = "Result",
                          .resultUnit = {"StaticText4", "MPa"}}) {
    dataEntryT.onTextChange(this, &PressureWindow::dataEntryT_TextChange);
}

void PressureWindow::dataEntryT_TextChange() {
    emptyResult();
}

void PressureWindow::calculate_Action() {
    const double V = volume.molarVolume();
    const double T = temperature.toKelvin(dataEntryT.number());
    const double a = fluid::MixtureA(fluid::LastComponent, fluid::Fractions);
    const double b = fluid::MixtureB(fluid::LastComponent, fluid::Fractions);
    const bool isUsable = V > 0.0 && T > 0.0;
    const double P = isUsable ? fluid::PressureVdW(a, b, T, V) : 0.0;
    // A pressure beyond the range of a double comes from a number that is no real input either.
    if (!isUsable || !std::isfinite(V) || !std::isfinite(P)) {
        Result.setText("");
        warning.setText("warning: put a number for temperature and molar volume");
        return;
    }
    if (temperature.Celsius.isOn() && T == zeroCelsius) {
        dataEntryT.setText("0.000");  // shows which temperature was used
    }
    warning.setText("");
    Result.setText(toolkit::numberText(P));
}

void PressureWindow::temperatureUnitChosen() {
    StaticText3.setText(temperature.unitText());
    dataEntryT.setText("");
    emptyResult();
}

void PressureWindow::Celsius_Action() {
    temperatureUnitChosen();
}

void PressureWindow::Kelvin_Action() {
    temperatureUnitChosen();
}

}  // namespace procedures
