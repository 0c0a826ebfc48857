#include "procedures/bubble_dew_point.h"

#include <cmath>
#include <memory>

#include "model/fluid_model.h"
#include "procedures/explanations.h"
#include "procedures/inclusion_picture.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr int quantityWidth = 24;  // room for "Homogenization Temperature"
constexpr int unitWidth = 7;
constexpr double pictureHeight = 2.5;  // lines of text
const std::string notUsed = "---";

}  // namespace

BubbleDewPoint::BubbleDewPoint(toolkit::ScreenHost& host)
    : Screen(host, "BubbleDewPoint", "Homogenization conditions - Drovan W"),
      CanvasLiquid("CanvasLiquid", inclusionPictureWidth * pictureHeight, pictureHeight,
                   "A fluid inclusion whose bubble shrinks until only liquid is left",
                   PaintHomogenisationIntoLiquid),
      CanvasVapour("CanvasVapour", inclusionPictureWidth * pictureHeight, pictureHeight,
                   "A fluid inclusion whose bubble grows until only vapour is left",
                   PaintHomogenisationIntoVapour) {
    for (toolkit::Entry* const entry : {&dataEntryTh, &dataEntryPh}) {
        entry->setPlaceholder(notUsed);
        entry->setText(notUsed);
    }
    dataEntryTh.setLabelledBy(RadioButtonTh);
    dataEntryTh.setDescribedBy(StaticText3);
    dataEntryPh.setLabelledBy(RadioButtonPh);
    dataEntryPh.setDescribedBy(StaticText4);
    dataEntry2.setAccessibleName("first approach");  // while its caption is empty
    Homogen.setTarget(dataEntry2, Dimension);
    Homogen2.setTarget(results.Answer, Dimension2);
    for (toolkit::Caption* const quantity : {&Homogen, &Homogen2}) {
        quantity->reserve(quantityWidth);
    }
    for (toolkit::Label* const unit : {&Dimension, &Dimension2}) {
        unit->reserve(unitWidth);
    }
    CanvasLiquid.setVisible(false);
    CanvasVapour.setVisible(false);
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
    approach.onChange(this, &BubbleDewPoint::emptyResults);
    Clear.onClick(this, &BubbleDewPoint::Clear_Action);
    temperature.onChange(this, &BubbleDewPoint::temperatureUnitChosen);
    Explanations.onClick(this, &BubbleDewPoint::Explanations_Action);
}

toolkit::Block BubbleDewPoint::inputBlock() {
    using toolkit::Block;
    const Block pictures = toolkit::Row({CanvasLiquid, CanvasVapour})
                               .asking({pictureHeight * inclusionPictureWidth, pictureHeight});
    const Block mode =
        modeBox.around(toolkit::Row({toolkit::Column({LiquidMode, VapourMode}), pictures}));
    return toolkit::Column(
        {toolkit::Grid({{RadioButtonTh, Block(dataEntryTh).expanding(), StaticText3},
                        {RadioButtonPh, Block(dataEntryPh).expanding(), StaticText4}}),
         toolkit::Row({temperature.block(), mode.expanding()})});
}

toolkit::Block BubbleDewPoint::approachBlock() {
    return GroupBox5.around(
        toolkit::Row({Homogen, toolkit::Block(dataEntry2).expanding(), Dimension}));
}

void BubbleDewPoint::layOut() {
    const toolkit::Block conditions =
        toolkit::Column({inputBlock(), approachBlock(),
                         toolkit::ButtonRow({Explanations, Clear, FirstApproach, calculate}),
                         results.answerBlock(Homogen2, Dimension2)});
    setContent(toolkit::Columns(
        {"conditions", conditions.expanding()},
        {{"first approach", approach.block()}, {"phases", results.phasesBlock()}}));
}

void BubbleDewPoint::emptyResults() {
    results.clear();
}

void BubbleDewPoint::emptyAll() {
    point_.reset();
    dataEntry2.setText("");
    approach.clear();
    emptyResults();
}

void BubbleDewPoint::refuse() {
    results.warning.setText("put a correct number, or select a mode");
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
    results.showUnits();
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
    openBeside(std::make_unique<ExplainFirst>(host()));
}

std::optional<HomogenisationInput> BubbleDewPoint::read() const {
    const bool isTemperature = RadioButtonTh.isOn();
    const bool isIntoLiquid = LiquidMode.isOn();
    HomogenisationInput input;
    input.given = isTemperature ? fluid::Given::Temperature : fluid::Given::Pressure;
    input.kind =
        isIntoLiquid ? fluid::Homogenisation::IntoLiquid : fluid::Homogenisation::IntoVapour;
    input.scale = temperature.scale();
    const toolkit::Entry& entry = isTemperature ? dataEntryTh : dataEntryPh;
    const std::optional<double> number = toolkit::ParseNumber(entry.text());
    if (number) {
        input.value = isTemperature ? input.scale.toKelvin(*number) : *number;
    }
    const bool isChosen =
        (isTemperature || RadioButtonPh.isOn()) && (isIntoLiquid || VapourMode.isOn());
    return isChosen && input.value > 0.0 ? std::optional(input) : std::nullopt;
}

std::optional<fluid::PhaseGuess> BubbleDewPoint::readApproach(
    const HomogenisationInput& input) const {
    const std::optional<double> number = toolkit::ParseNumber(dataEntry2.text());
    const double unknown = number ? input.taken(*number) : 0.0;
    return unknown > 0.0 ? approach.guess(fluid::AcceptedMixture(), unknown) : std::nullopt;
}

void BubbleDewPoint::showApproach(const HomogenisationInput& input) {
    const fluid::Mixture& mixture = fluid::AcceptedMixture();
    const HomogenisationStart start =
        HomogenisationStartOf(mixture, input, point_ ? *point_ + 1 : 0);
    dataEntry2.setText(toolkit::NumberText(input.shown(start.guess.unknown)));
    approach.show(mixture, start.guess);
    emptyResults();
    point_ = start.point;
    results.warning.setText(start.warning);
}

void BubbleDewPoint::FirstApproach_Action() {
    const std::optional<HomogenisationInput> input = read();
    if (input) {
        showApproach(*input);
    } else {
        emptyAll();
        refuse();
    }
}

void BubbleDewPoint::calculate_Action() {
    const std::optional<HomogenisationInput> input = read();
    if (input && approach.isEmpty()) {
        const std::string typed = dataEntry2.text();
        showApproach(*input);
        if (!typed.empty()) {
            dataEntry2.setText(typed);
        }
    }
    const auto guess = input ? readApproach(*input) : std::nullopt;
    emptyResults();
    if (!guess) {
        refuse();
        return;
    }
    const HomogenisationAnswer answer =
        HomogenisationFrom(fluid::AcceptedMixture(), *input, *guess);
    results.show(fluid::AcceptedMixture(), answer.results);
    if (answer.point) {
        point_ = answer.point;
    }
}

}  // namespace procedures
