#include "procedures/bubble_dew_point.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "procedures/explanations.h"
#include "procedures/inclusion_picture.h"
#include "procedures/stability_text.h"
#include "procedures/units.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr int lineWidth = 50;  // characters
constexpr int messageLines = 2;
constexpr int quantityWidth = 24;  // room for "Homogenization Temperature"
constexpr int unitWidth = 7;
constexpr int quantityDecimals = 6;
constexpr int volumeDecimals = 2;
constexpr double pictureHeight = 4.0;  // lines of text
const std::string notUsed = "---";
constexpr const char* noPoint =
    "no homogenization point exists here, the first approach is an estimate only";

}  // namespace

BubbleDewPoint::BubbleDewPoint(toolkit::ScreenHost& host)
    : Screen(host, "BubbleDewPoint", "Homogenization conditions - Drovan W"),
      CanvasLiquid("CanvasLiquid", inclusionPictureWidth * pictureHeight, pictureHeight,
                   "A fluid inclusion whose bubble shrinks until only liquid is left",
                   paintHomogenisationIntoLiquid),
      CanvasVapour("CanvasVapour", inclusionPictureWidth * pictureHeight, pictureHeight,
                   "A fluid inclusion whose bubble grows until only vapour is left",
                   paintHomogenisationIntoVapour) {
    dataEntryTh.setText(notUsed);
    dataEntryPh.setText(notUsed);
    dataEntryTh.setLabelledBy(RadioButtonTh);
    dataEntryTh.setDescribedBy(StaticText3);
    dataEntryPh.setLabelledBy(RadioButtonPh);
    dataEntryPh.setDescribedBy(StaticText4);
    dataEntry2.setAccessibleName("first approach");  // while its caption is empty
    Homogen.setTarget(dataEntry2, Dimension);
    Homogen2.setTarget(Answer, Dimension2);
    Homogen.reserve(quantityWidth);
    Dimension.reserve(unitWidth);
    CanvasLiquid.setVisible(false);
    CanvasVapour.setVisible(false);
    Iterations.setUnobtrusive();
    Iterations.wrapAt(lineWidth);
    warning.wrapAt(lineWidth);
    connectHandlers();
    layOut();
    setDefault(calculate);
    setFocus(RadioButtonTh);
}

void BubbleDewPoint::connectHandlers() {
    RadioButtonTh.onChoose(this, &BubbleDewPoint::RadioButtonTh_Action);
    RadioButtonPh.onChoose(this, &BubbleDewPoint::RadioButtonPh_Action);
    dataEntryTh.onTextChange(this, &BubbleDewPoint::dataEntryTh_TextChange);
    dataEntryPh.onTextChange(this, &BubbleDewPoint::dataEntryPh_TextChange);
    dataEntry2.onTextChange(this, &BubbleDewPoint::dataEntry2_TextChange);
    LiquidMode.onChoose(this, &BubbleDewPoint::LiquidMode_Action);
    VapourMode.onChoose(this, &BubbleDewPoint::VapourMode_Action);
    FirstApproach.onClick(this, &BubbleDewPoint::FirstApproach_Action);
    calculate.onClick(this, &BubbleDewPoint::calculate_Action);
    approachX.list.onCellTextChange(this, &BubbleDewPoint::ListBoxPhaseX_CellTextChange);
    approachY.list.onCellTextChange(this, &BubbleDewPoint::ListBoxPhaseY_CellTextChange);
    Clear.onClick(this, &BubbleDewPoint::Clear_Action);
    temperature.onChange(this, &BubbleDewPoint::temperatureUnitChosen);
    Explanations.onClick(this, &BubbleDewPoint::Explanations_Action);
}

toolkit::Block BubbleDewPoint::inputBlock() {
    using toolkit::Block;
    const Block pictures =
        toolkit::row({CanvasLiquid, CanvasVapour})
            .atLeast(static_cast<int>(std::ceil(pictureHeight * inclusionPictureWidth)),
                     static_cast<int>(std::ceil(pictureHeight)));
    const Block mode =
        modeBox.around(toolkit::row({toolkit::column({LiquidMode, VapourMode}), pictures}));
    return toolkit::column(
        {toolkit::grid({{RadioButtonTh, Block(dataEntryTh).expanding(), StaticText3},
                        {RadioButtonPh, Block(dataEntryPh).expanding(), StaticText4}}),
         toolkit::row({temperature.block(), mode.expanding()})});
}

toolkit::Block BubbleDewPoint::approachBlock() {
    using toolkit::Block;
    return GroupBox5.around(toolkit::column(
        {toolkit::row({FirstApproach, Homogen, Block(dataEntry2).expanding(), Dimension}),
         toolkit::row({approachX.block().expanding(), approachY.block().expanding()})
             .expanding()}));
}

void BubbleDewPoint::layOut() {
    using toolkit::Spacing;
    const toolkit::Block left =
        toolkit::column({inputBlock(), approachBlock().expanding(),
                         toolkit::buttonRow({Explanations, Clear, calculate}),
                         toolkit::Block(warning).atLeast(0, messageLines)},
                        Spacing::group);
    const toolkit::Block right =
        toolkit::column({toolkit::row({Homogen2, Answer, Dimension2}), Iterations,
                         phaseX.block().expanding(), phaseY.block().expanding()},
                        Spacing::group);
    setContent(toolkit::row({left.expanding(), right.expanding()}, Spacing::section));
}

void BubbleDewPoint::emptyResults() {
    warning.setText("");
    Iterations.setText("");
    Answer.setText("");
    phaseX.clear();
    phaseY.clear();
}

void BubbleDewPoint::emptyAll() {
    points_ = {};
    dataEntry2.setText("");
    approachX.clear();
    approachY.clear();
    emptyResults();
}

void BubbleDewPoint::setUse(toolkit::Entry& entry, bool isUsed) {
    if (!isUsed) {
        entry.setText(notUsed);
    } else if (entry.text() == notUsed) {
        entry.setText("");
    }
}

void BubbleDewPoint::showGivenQuantity() {
    setUse(dataEntryTh, RadioButtonTh.isOn());
    setUse(dataEntryPh, RadioButtonPh.isOn());
    std::string quantity;
    std::string unit;
    if (RadioButtonTh.isOn()) {
        quantity = "Homogenization Pressure";
        unit = "MPa";
    } else if (RadioButtonPh.isOn()) {
        quantity = "Homogenization Temperature";
        unit = temperature.unitText();
    }
    Homogen.setText(quantity);
    Homogen2.setText(quantity);
    Dimension.setText(unit);
    Dimension2.setText(unit);
}

void BubbleDewPoint::Event_Activate() {
    phaseX.showUnits();
    phaseY.showUnits();
    showGivenQuantity();
    emptyAll();
}

void BubbleDewPoint::RadioButtonTh_Action() {
    showGivenQuantity();
    emptyAll();
}

void BubbleDewPoint::RadioButtonPh_Action() {
    showGivenQuantity();
    emptyAll();
}

void BubbleDewPoint::dataEntryTh_TextChange() {
    emptyAll();
}

void BubbleDewPoint::dataEntryPh_TextChange() {
    emptyAll();
}

void BubbleDewPoint::dataEntry2_TextChange() {
    emptyResults();
}

void BubbleDewPoint::ListBoxPhaseX_CellTextChange() {
    emptyResults();
}

void BubbleDewPoint::ListBoxPhaseY_CellTextChange() {
    emptyResults();
}

void BubbleDewPoint::LiquidMode_Action() {
    CanvasVapour.setVisible(false);
    CanvasLiquid.setVisible(true);
    GroupBox5.setText("First Approach Bubble-Point Curve");
    emptyAll();
}

void BubbleDewPoint::VapourMode_Action() {
    CanvasLiquid.setVisible(false);
    CanvasVapour.setVisible(true);
    GroupBox5.setText("First Approach Dew-Point Curve");
    emptyAll();
}

void BubbleDewPoint::Clear_Action() {
    quantityGroup.clear();
    modeGroup.clear();
    showGivenQuantity();
    CanvasLiquid.setVisible(false);
    CanvasVapour.setVisible(false);
    GroupBox5.setText("First Approach");
    emptyAll();
}

void BubbleDewPoint::temperatureUnitChosen() {
    StaticText3.setText(temperature.unitText());
    if (RadioButtonTh.isOn()) {
        dataEntryTh.setText("");
    }
    showGivenQuantity();
    emptyAll();
}

void BubbleDewPoint::Explanations_Action() {
    host().open(std::make_unique<ExplainFirst>(host()));
}

fluid::Given BubbleDewPoint::given() const {
    return RadioButtonTh.isOn() ? fluid::Given::Temperature : fluid::Given::Pressure;
}

fluid::Homogenisation BubbleDewPoint::kind() const {
    return LiquidMode.isOn() ? fluid::Homogenisation::IntoLiquid
                             : fluid::Homogenisation::IntoVapour;
}

bool BubbleDewPoint::hasMode() const {
    return LiquidMode.isOn() || VapourMode.isOn();
}

std::optional<double> BubbleDewPoint::givenValue() const {
    std::optional<double> value;
    if (RadioButtonTh.isOn()) {
        value = toolkit::parseNumber(dataEntryTh.text());
        if (value) {
            value = temperature.toKelvin(*value);
        }
    } else if (RadioButtonPh.isOn()) {
        value = toolkit::parseNumber(dataEntryPh.text());
    }
    return value && *value > 0.0 ? value : std::nullopt;
}

double BubbleDewPoint::shownUnknown(double unknown) const {
    return RadioButtonTh.isOn() ? unknown : temperature.fromKelvin(unknown);
}

std::optional<fluid::PhaseGuess> BubbleDewPoint::guess() const {
    const std::optional<double> number = toolkit::parseNumber(dataEntry2.text());
    const std::optional<fluid::ComponentValues> x = approachX.fractions();
    const std::optional<fluid::ComponentValues> y = approachY.fractions();
    if (!number || !x || !y) {
        return std::nullopt;
    }
    const double unknown = RadioButtonTh.isOn() ? *number : temperature.toKelvin(*number);
    return unknown > 0.0 ? std::optional(fluid::PhaseGuess{unknown, *x, *y}) : std::nullopt;
}

void BubbleDewPoint::showApproach(const fluid::PhaseGuess& approach) {
    dataEntry2.setText(toolkit::numberText(shownUnknown(approach.unknown)));
    approachX.show(approach.x);
    approachY.show(approach.y);
    emptyResults();
}

std::string BubbleDewPoint::nowhereSentence() const {
    if (!points_.liquids.empty()) {
        const fluid::PhasePair& pair = points_.liquids.front();
        const double value = RadioButtonTh.isOn() ? pair.P : shownUnknown(pair.T);
        return "two liquids are stable here, at " + toolkit::resultText(value, quantityDecimals) +
               " " + Dimension.text() + "; the roots of a liquid and a vapour cannot hold them";
    }
    if (!points_.isExamined) {
        const fluid::Mixture mixture = fluid::AcceptedMixture();
        return "not examined below " +
               toolkit::resultText(temperature.fromKelvin(ColdestT(mixture)), volumeDecimals) +
               " " + temperature.unitText() +
               " or above 10000 MPa, the first approach is an estimate only";
    }
    return noPoint;
}

std::string BubbleDewPoint::pointsSentence() const {
    const std::vector<fluid::PhasePair>& points = points_.points;
    if (points.empty()) {
        return nowhereSentence();
    }
    if (points.size() == 1) {
        return "";
    }
    std::string values;
    for (const fluid::PhasePair& point : points) {
        const double value = RadioButtonTh.isOn() ? point.P : shownUnknown(point.T);
        values += (values.empty() ? "" : ", ") + toolkit::resultText(value, quantityDecimals);
    }
    return std::to_string(points.size()) + " homogenization points: " + values + " " +
           Dimension.text() + "; this is number " + std::to_string(shownPoint_ + 1);
}

void BubbleDewPoint::FirstApproach_Action() {
    const std::optional<double> value = givenValue();
    if (!value || !hasMode()) {
        emptyAll();
        warning.setText("put a correct number, or select a mode");
        return;
    }
    if (points_.points.size() > 1) {
        shownPoint_ = (shownPoint_ + 1) % points_.points.size();
    } else {
        points_ =
            fluid::FindHomogenisationPoints(fluid::AcceptedMixture(), given(), *value, kind());
        shownPoint_ = 0;
    }
    showApproach(
        !points_.points.empty()
            ? fluid::HomogenisationApproach(given(), points_.points[shownPoint_])
            : fluid::HomogenisationSeed(fluid::AcceptedMixture(), given(), *value, kind()));
    const bool isOneOfSeveral = points_.points.size() > 1;
    warning.setText(pointsSentence() +
                    (isOneOfSeveral ? ", press first approach again for the next" : ""));
}

void BubbleDewPoint::calculate_Action() {
    const std::optional<double> value = givenValue();
    const std::optional<fluid::PhaseGuess> start = guess();
    emptyResults();
    if (!value || !hasMode() || !start) {
        warning.setText("put a correct number, or select a mode");
        return;
    }
    const fluid::HomogenisationResult result =
        fluid::IterateHomogenisation(fluid::AcceptedMixture(), given(), *value, kind(), *start);
    points_ = fluid::FindHomogenisationPoints(fluid::AcceptedMixture(), given(), *value, kind());
    showResult(result);
}

void BubbleDewPoint::showResult(const fluid::HomogenisationResult& result) {
    using fluid::Outcome;
    if (result.outcome == Outcome::NoSolution) {
        Iterations.setText("no solution, adjust First Approach and try again");
    } else {
        showPhases(result.phases);
    }
    if (result.outcome == Outcome::Trivial) {
        Iterations.setText(
            "possible trivial solution, optional: adjust First Approach and try again");
    }
    if (result.outcome != Outcome::Converged) {
        // Where no other approach would do, it is said.
        warning.setText(points_.points.empty() ? pointsSentence() : "");
        return;
    }
    Iterations.setText("solution after " + std::to_string(result.iterations) +
                       " iterations, accuracy 1.0e-10");
    if (LiquidMode.isOn()) {
        phaseX.setRole(", solution (liquid)");
    } else {
        phaseY.setRole(", solution (vapour)");
    }
    const std::vector<fluid::PhasePair>& points = points_.points;
    const auto isResult = [&result](const fluid::PhasePair& point) {
        constexpr double same = 1e-6;
        return std::abs(point.P / result.phases.P - 1.0) < same &&
               std::abs(point.T / result.phases.T - 1.0) < same;
    };
    const auto shown = std::find_if(points.begin(), points.end(), isResult);
    if (result.stability == fluid::Stability::Stable && shown != points.end()) {
        shownPoint_ = static_cast<std::size_t>(shown - points.begin());
        warning.setText(pointsSentence());
    } else {
        warning.setText(splitSentence(result.stability));
    }
}

void BubbleDewPoint::showPhases(const fluid::PhasePair& phases) {
    const double answer = RadioButtonTh.isOn() ? phases.P : shownUnknown(phases.T);
    Answer.setText(toolkit::resultText(answer, quantityDecimals));
    phaseX.show(phases.x, phases.Vx);
    phaseY.show(phases.y, phases.Vy);
}

}  // namespace procedures
