#include "procedures/liquid_vapour_eq.h"

#include <cmath>
#include <memory>

#include "model/fluid_model.h"
#include "procedures/explanations.h"
#include "toolkit/number_text.h"

namespace procedures {

LiquidVapourEq::LiquidVapourEq(toolkit::ScreenHost& host)
    : Screen(host, "LiquidVapourEq", "Liquid-Vapour equilibria - Drovan W") {
    Pressure.setTarget(dataEntryP, pressureUnit);
    VapourFraction.setTarget(dataEntryF);
    answerCaption.setTarget(results.Answer, answerUnit);
    connectHandlers();
    layOut();
    setDefault(calculate);
    setFocus(temperature.dataEntryT);
}

void LiquidVapourEq::connectHandlers() {
    CalFirstApproach.onClick(this, &LiquidVapourEq::CalFirstApproach_Action);
    calculate.onClick(this, &LiquidVapourEq::calculate_Action);
    temperature.onChange(this, &LiquidVapourEq::emptyApproach);
    volume.onChange(this, &LiquidVapourEq::emptyApproach);
    dataEntryP.onTextChange(this, &LiquidVapourEq::dataEntryP_TextChange);
    dataEntryF.onTextChange(this, &LiquidVapourEq::dataEntryF_TextChange);
    approach.onChange(this, &LiquidVapourEq::emptyResults);
    Clear.onClick(this, &LiquidVapourEq::Clear_Action);
    PushButton1.onClick(this, &LiquidVapourEq::PushButton1_Action);
}

toolkit::Block LiquidVapourEq::inputBlock() {
    using toolkit::Block;
    const Block entries = toolkit::Grid(
        {{temperature.Temperature, Block(temperature.dataEntryT).expanding(),
          temperature.unitLabel},
         {volume.MolarVolume, Block(volume.dataEntryV).expanding(), volume.unitLabel}});
    return toolkit::Column({entries, volume.DensityResult,
                            toolkit::Row({temperature.unit.block(), volume.unit.block()})});
}

toolkit::Block LiquidVapourEq::approachBlock() {
    using toolkit::Block;
    const Block numbers = toolkit::Grid({{Pressure, Block(dataEntryP).expanding(), pressureUnit},
                                         {VapourFraction, Block(dataEntryF).expanding()}});
    return approachBox.around(
        toolkit::Row({Block(CalFirstApproach).atStart(), numbers.expanding()}));
}

void LiquidVapourEq::layOut() {
    const toolkit::Block conditions = toolkit::Column(
        {inputBlock(), approachBlock(), toolkit::ButtonRow({PushButton1, Clear, calculate}),
         results.answerBlock(answerCaption, answerUnit)});
    setContent(toolkit::Columns(
        {"conditions", conditions.expanding()},
        {{"first approach", approach.block()}, {"phases", results.phasesBlock()}}));
}

void LiquidVapourEq::emptyResults() {
    results.clear();
}

void LiquidVapourEq::emptyApproach() {
    dataEntryP.setText("");
    dataEntryF.setText("");
    approach.clear();
    emptyResults();
}

void LiquidVapourEq::Event_Activate() {
    volume.activated();
    results.showUnits();
    if (composition_ == fluid::AcceptedMixture()) {
        emptyResults();
    } else {
        composition_ = fluid::AcceptedMixture();
        emptyApproach();
    }
}

void LiquidVapourEq::dataEntryP_TextChange() {
    emptyResults();
}

void LiquidVapourEq::dataEntryF_TextChange() {
    emptyResults();
}

void LiquidVapourEq::Clear_Action() {
    temperature.dataEntryT.setText("");
    volume.dataEntryV.setText("");
    emptyApproach();
}

void LiquidVapourEq::PushButton1_Action() {
    openBeside(std::make_unique<ExplainSecond>(host()));
}

std::optional<EquilibriumInput> LiquidVapourEq::read() const {
    const EquilibriumInput input = {temperature.kelvin().value_or(0.0), volume.molarVolume()};
    const bool isUsable =
        input.T > 0.0 && input.V > fluid::AcceptedMixture().covolume && std::isfinite(input.V);
    return isUsable ? std::optional(input) : std::nullopt;
}

std::optional<EquilibriumStart> LiquidVapourEq::readApproach() const {
    const std::optional<double> P = toolkit::ParseNumber(dataEntryP.text());
    const std::optional<double> fraction = toolkit::ParseNumber(dataEntryF.text());
    if (!P || !(*P > 0.0) || !fraction || *fraction < 0.0 || *fraction > 1.0) return std::nullopt;
    const std::optional<fluid::PhaseGuess> guess = approach.guess(fluid::AcceptedMixture(), *P);
    return guess ? std::optional(EquilibriumStart{*guess, *fraction, ""}) : std::nullopt;
}

void LiquidVapourEq::CalFirstApproach_Action() {
    const std::optional<EquilibriumInput> input = read();
    emptyApproach();
    if (!input) {
        results.warning.setText("put a correct number for temperature and density");
        return;
    }
    const fluid::Mixture& mixture = fluid::AcceptedMixture();
    const EquilibriumStart start = EquilibriumStartOf(mixture, *input);
    dataEntryP.setText(toolkit::NumberText(start.guess.unknown));
    dataEntryF.setText(toolkit::NumberText(start.volumeFraction));
    approach.show(mixture, start.guess);
    emptyResults();
    results.warning.setText(start.warning);
}

void LiquidVapourEq::calculate_Action() {
    const std::optional<EquilibriumInput> input = read();
    const std::optional<EquilibriumStart> start = readApproach();
    emptyResults();
    if (!input || !start) {
        results.report.setText(
            "put a correct number for temperature, pressure, density and volume fraction");
        return;
    }
    results.show(fluid::AcceptedMixture(), EquilibriumFrom(fluid::AcceptedMixture(), *input,
                                                           start->volumeFraction, start->guess));
}

}  // namespace procedures
