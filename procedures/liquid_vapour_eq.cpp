#include "procedures/liquid_vapour_eq.h"

#include <cmath>
#include <memory>

#include "procedures/explanations.h"
#include "procedures/stability_text.h"
#include "procedures/units.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr int lineWidth = 50;  // characters
constexpr int messageLines = 2;
constexpr int quantityDecimals = 6;
constexpr int fractionDecimals = 8;
const std::string notShared = "---";  // one phase has no share in itself

/// What a user has to know of a first approach; empty where it is an equilibrium like any other.
std::string sentenceOf(const fluid::EquilibriumApproach& approach) {
    using Kind = fluid::EquilibriumApproach::Kind;
    switch (approach.kind) {
        case Kind::Homogeneous:
            return "the fluid is homogeneous at this temperature and density";
        case Kind::Metastable:
            return "these two phases are meta-stable, three phases would be more stable";
        case Kind::TwoLiquids:
            return "two liquids are stable here, at " +
                   toolkit::resultText(approach.guess.unknown, quantityDecimals) +
                   " MPa; the roots of a liquid and a vapour cannot hold them";
        case Kind::NotFound:
            return "not homogeneous, but no two phases were found; the first approach is an "
                   "estimate "
                   "only";
        default:
            return "";
    }
}

}  // namespace

LiquidVapourEq::LiquidVapourEq(toolkit::ScreenHost& host)
    : Screen(host, "LiquidVapourEq", "Liquid-Vapour equilibria - Drovan W") {
    Pressure.setTarget(dataEntryP, pressureUnit);
    VapourFraction.setTarget(dataEntryF);
    answerCaption.setTarget(Answer, answerUnit);
    iterations.setUnobtrusive();
    iterations.wrapAt(lineWidth);
    warning.wrapAt(lineWidth);
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
    approachX.list.onCellTextChange(this, &LiquidVapourEq::ListBoxPhaseX_CellTextChange);
    approachY.list.onCellTextChange(this, &LiquidVapourEq::ListBoxPhaseY_CellTextChange);
    Clear.onClick(this, &LiquidVapourEq::Clear_Action);
    PushButton1.onClick(this, &LiquidVapourEq::PushButton1_Action);
}

toolkit::Block LiquidVapourEq::inputBlock() {
    using toolkit::Block;
    const Block entries = toolkit::grid(
        {{temperature.Temperature, Block(temperature.dataEntryT).expanding(),
          temperature.unitLabel},
         {volume.MolarVolume, Block(volume.dataEntryV).expanding(), volume.unitLabel}});
    return toolkit::column({entries, volume.DensityResult,
                            toolkit::row({temperature.unit.block(), volume.unit.block()})});
}

toolkit::Block LiquidVapourEq::approachBlock() {
    using toolkit::Block;
    const Block numbers = toolkit::grid({{Pressure, Block(dataEntryP).expanding(), pressureUnit},
                                         {VapourFraction, Block(dataEntryF).expanding()}});
    return approachBox.around(toolkit::column(
        {toolkit::row({Block(CalFirstApproach).atStart(), numbers.expanding()}),
         toolkit::row({approachX.block().expanding(), approachY.block().expanding()})
             .expanding()}));
}

void LiquidVapourEq::layOut() {
    using toolkit::Spacing;
    const toolkit::Block left =
        toolkit::column({inputBlock(), approachBlock().expanding(),
                         toolkit::buttonRow({PushButton1, Clear, calculate}),
                         toolkit::Block(warning).atLeast(0, messageLines)},
                        Spacing::group);
    const toolkit::Block right =
        toolkit::column({toolkit::row({answerCaption, Answer, answerUnit}),
                         toolkit::Block(iterations).atLeast(0, messageLines),
                         phaseX.block().expanding(), phaseY.block().expanding()},
                        Spacing::group);
    setContent(toolkit::row({left.expanding(), right.expanding()}, Spacing::section));
}

void LiquidVapourEq::emptyResults() {
    warning.setText("");
    iterations.setText("");
    Answer.setText("");
    phaseX.clear();
    phaseY.clear();
}

void LiquidVapourEq::emptyApproach() {
    dataEntryP.setText("");
    dataEntryF.setText("");
    approachX.clear();
    approachY.clear();
    emptyResults();
}

void LiquidVapourEq::Event_Activate() {
    volume.activated();
    phaseX.showUnits();
    phaseY.showUnits();
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

void LiquidVapourEq::ListBoxPhaseX_CellTextChange() {
    emptyResults();
}

void LiquidVapourEq::ListBoxPhaseY_CellTextChange() {
    emptyResults();
}

void LiquidVapourEq::Clear_Action() {
    temperature.dataEntryT.setText("");
    volume.dataEntryV.setText("");
    emptyApproach();
}

void LiquidVapourEq::PushButton1_Action() {
    host().open(std::make_unique<ExplainSecond>(host()));
}

std::optional<LiquidVapourEq::State> LiquidVapourEq::state() const {
    const State state = {temperature.kelvin().value_or(0.0), volume.molarVolume()};
    const double b = fluid::AcceptedMixture().covolume;
    const bool isUsable = state.T > 0.0 && state.V > b && std::isfinite(state.V);
    return isUsable ? std::optional(state) : std::nullopt;
}

std::optional<fluid::PhaseGuess> LiquidVapourEq::guess() const {
    const std::optional<double> P = toolkit::parseNumber(dataEntryP.text());
    const std::optional<fluid::ComponentValues> x = approachX.fractions();
    const std::optional<fluid::ComponentValues> y = approachY.fractions();
    const bool isUsable = P && *P > 0.0 && x && y;
    return isUsable ? std::optional(fluid::PhaseGuess{*P, *x, *y}) : std::nullopt;
}

std::optional<double> LiquidVapourEq::volumeFraction() const {
    const std::optional<double> fraction = toolkit::parseNumber(dataEntryF.text());
    return fraction && *fraction >= 0.0 && *fraction <= 1.0 ? fraction : std::nullopt;
}

void LiquidVapourEq::CalFirstApproach_Action() {
    const std::optional<State> given = state();
    emptyApproach();
    if (!given) {
        warning.setText("put a correct number for temperature and density");
        return;
    }
    const fluid::EquilibriumApproach approach =
        fluid::FindEquilibriumApproach(fluid::AcceptedMixture(), given->T, given->V);
    dataEntryP.setText(toolkit::numberText(approach.guess.unknown));
    dataEntryF.setText(toolkit::numberText(approach.volumeFraction));
    approachX.show(approach.guess.x);
    approachY.show(approach.guess.y);
    warning.setText(sentenceOf(approach));
}

void LiquidVapourEq::calculate_Action() {
    const std::optional<State> given = state();
    const std::optional<fluid::PhaseGuess> start = guess();
    const std::optional<double> fraction = volumeFraction();
    emptyResults();
    if (!given || !start || !fraction) {
        iterations.setText(
            "put a correct number for temperature, pressure, density and volume fraction");
        return;
    }
    const fluid::EquilibriumResult result =
        fluid::IterateEquilibrium(fluid::AcceptedMixture(), given->T, given->V, *fraction, *start);
    showResult(result);
    const fluid::EquilibriumApproach approach =
        fluid::FindEquilibriumApproach(fluid::AcceptedMixture(), given->T, given->V);
    const bool isSolution = result.outcome == fluid::Outcome::Converged && result.fractionInRange;
    if (!isSolution || approach.kind == fluid::EquilibriumApproach::Kind::TwoLiquids) {
        // Where another approach would do no better, it is said.
        warning.setText(sentenceOf(approach));
    }
}

void LiquidVapourEq::showResult(const fluid::EquilibriumResult& result) {
    switch (result.outcome) {
        case fluid::Outcome::NoSolution:
            iterations.setText("no solution, adjust First Approach and try again");
            break;
        case fluid::Outcome::Trivial:
            showPhases(result.phases, notShared, notShared);
            iterations.setText(
                "Comments to result: possible trivial solution, optional: adjust First Approach "
                "and try again");
            break;
        case fluid::Outcome::Converged:
            showSolution(result);
            break;
    }
}

void LiquidVapourEq::showPhases(const fluid::PhasePair& phases, const std::string& shareX,
                                const std::string& shareY) {
    Answer.setText(toolkit::resultText(phases.P, quantityDecimals));
    phaseX.show(phases.x, phases.Vx, shareX);
    phaseY.show(phases.y, phases.Vy, shareY);
}

void LiquidVapourEq::showSolution(const fluid::EquilibriumResult& result) {
    const auto share = [&result](double fraction) {
        return result.fractionInRange ? toolkit::resultText(fraction, fractionDecimals) : "error";
    };
    showPhases(result.phases, share(1.0 - result.volumeFraction), share(result.volumeFraction));
    if (!result.fractionInRange) {
        iterations.setText(
            "Comment to result: warning: the fractions must have a number between 0 and 1");
        return;
    }
    iterations.setText("Comments to result: solution after " + std::to_string(result.iterations) +
                       " iterations, precision 1.0e-10");
    phaseX.setRole(result.swapped ? " (vapour)" : " (liquid)");
    phaseY.setRole(result.swapped ? " (liquid)" : " (vapour)");
    warning.setText(splitSentence(result.stability));
}

}  // namespace procedures
