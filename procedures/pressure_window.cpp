#include "procedures/pressure_window.h"

#include <cmath>

#include "model/fluid_model.h"
#include "toolkit/layout.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr int warningWidth = 56;  // characters of the longest sentence

}  // namespace

PressureWindow::PressureWindow(toolkit::ScreenHost& host)
    : Screen(host, "PressureWindow", "Pressures - Drovan W") {
    using toolkit::Spacing;
    volume.dataEntryV.onTextChange(this, &PressureWindow::dataEntryV_TextChange);
    dataEntryT.onTextChange(this, &PressureWindow::dataEntryT_TextChange);
    temperature.Celsius.onChoose(this, &PressureWindow::Celsius_Action);
    temperature.Kelvin.onChoose(this, &PressureWindow::Kelvin_Action);
    volume.kgm3.onChoose(this, &PressureWindow::kgm3_Action);
    volume.cm3mol.onChoose(this, &PressureWindow::cm3mol_Action);
    Clear.onClick(this, &PressureWindow::Clear_Action);
    calculate.onClick(this, &PressureWindow::calculate_Action);

    Temperature.setTarget(dataEntryT);
    Pressure.setTarget(Result);
    warning.reserve(warningWidth);
    const toolkit::Block inputs =
        toolkit::grid({{volume.MolarVolume, toolkit::Block(volume.dataEntryV).expanding(),
                        volume.unit},
                       {{}, volume.DensityResult},
                       {Temperature, toolkit::Block(dataEntryT).expanding(), StaticText3}});
    const toolkit::Block units =
        toolkit::column({volume.unitBlock(), temperature.block()}, Spacing::group);
    setContent(toolkit::column(
        {toolkit::row({inputs.expanding(), units}, Spacing::section),
         toolkit::buttonRow({Clear, calculate}),
         toolkit::row({Pressure, Result, StaticText4}), warning},
        Spacing::group));
    setDefault(calculate);
    setFocus(volume.dataEntryV);
}

void PressureWindow::emptyResult() {
    Result.setText("");
    warning.setText("");
}

void PressureWindow::Event_Activate() {
    volume.activated();
    emptyResult();
}

void PressureWindow::dataEntryV_TextChange() {
    volume.showEcho();
    emptyResult();
}

void PressureWindow::dataEntryT_TextChange() {
    emptyResult();
}

void PressureWindow::Clear_Action() {
    volume.dataEntryV.setText("");
    dataEntryT.setText("");
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

void PressureWindow::volumeUnitChosen() {
    volume.unitChosen();
    emptyResult();
}

void PressureWindow::kgm3_Action() {
    volumeUnitChosen();
}

void PressureWindow::cm3mol_Action() {
    volumeUnitChosen();
}

}  // namespace procedures
