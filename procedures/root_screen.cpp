#include "procedures/root_screen.h"

#include <cmath>

#include "procedures/units.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr int lineWidth = 60;         // characters of a line of the longer sentences
constexpr double slopeStep = 0.0001;  // cm3/mol, of the central difference
constexpr const char* noVolume =
    "warning: no molar volume could be calculated here, 0 stands for none";

}  // namespace

RootScreen::RootScreen(toolkit::ScreenHost& host, const Names& names)
    : Screen(host, names.screen, names.title),
      temperatureUnitLabel(names.unitLabel, "Kelvin"),
      inputWarning(names.inputWarning),
      ListBox1("ListBox1", names.heads) {
    dataEntryT.onTextChange(this, &RootScreen::dataEntryT_TextChange);
    dataEntryP.onTextChange(this, &RootScreen::dataEntryP_TextChange);
    temperature.onChange(this, &RootScreen::temperatureUnitChosen);
    calculate.onClick(this, &RootScreen::calculate_Action);
    Clear.onClick(this, &RootScreen::Clear_Action);
    choice.Choice0.onChoose(this, &RootScreen::Choice0_Action);
    choice.Choice1.onChoose(this, &RootScreen::Choice1_Action);
    choice.Choice2.onChoose(this, &RootScreen::Choice2_Action);
    Temperature.setTarget(dataEntryT, temperatureUnitLabel);
    Pressure.setTarget(dataEntryP, pressureUnitLabel);
    resultCaption.setTarget(Result, Label4);
    densityCaption.setTarget(DensityResult, Label01);
    for (toolkit::RadioButton* const root : {&choice.Choice0, &choice.Choice1, &choice.Choice2}) {
        root->setDescribedBy(Label4);
    }
    ListBox1.setAccessibleName("results of each gas");
    slope.setUnobtrusive();
    slope.wrapAt(lineWidth);
    inputWarning.wrapAt(lineWidth);
}

toolkit::Block RootScreen::inputBlock() {
    using toolkit::Block;
    const Block inputs =
        toolkit::grid({{Temperature, Block(dataEntryT).expanding(), temperatureUnitLabel},
                       {Pressure, Block(dataEntryP).expanding(), pressureUnitLabel}});
    return toolkit::column(
        {toolkit::row({inputs.expanding(), temperature.block()}, toolkit::Spacing::section),
         toolkit::buttonRow({Clear, calculate}), inputWarning});
}

std::vector<std::vector<toolkit::Block>> RootScreen::volumeRows() {
    return {{resultCaption, Result, Label4}, {densityCaption, DensityResult, Label01}};
}

void RootScreen::Event_Activate() {
    Label4.setText(std::string(" ") + volumeUnit);
    Label01.setText(std::string(" ") + densityUnit);
    choice.clear();  // the roots may be those of an older composition
    emptyResults();
}

std::string RootScreen::temperatureToShow() const {
    const bool isZeroCelsius =
        temperature.Celsius.isOn() && temperature.toKelvin(dataEntryT.number()) == zeroCelsius;
    return isZeroCelsius ? "0.000" : dataEntryT.text();
}

std::string RootScreen::inputSentence() const {
    return "warning: put a number for temperature and pressure";
}

RootScreen::StatePoint RootScreen::readState() const {
    return {temperature.toKelvin(dataEntryT.number()), dataEntryP.number(),
            fluid::AcceptedMixture().attraction, fluid::AcceptedMixture().covolume};
}

void RootScreen::calculate_Action() {
    const std::string shown = temperatureToShow();
    const double T = temperature.toKelvin(toolkit::numberOrZero(shown));
    emptyAll();
    if (!(T > 0.0) || !(dataEntryP.number() > 0.0)) {
        inputWarning.setText(inputSentence());
        return;
    }
    dataEntryT.setText(shown);
    const StatePoint state = readState();
    const fluid::CubicRoots roots = fluid::VolumeCubicSolver(state.a, state.b, state.T, state.P);
    choice.show(roots);
    if (roots[0].real == 0.0) {
        inputWarning.setText(noVolume);
    }
}

void RootScreen::rootChosen(std::size_t index) {
    emptyResults();
    const fluid::CubicRoot& root = choice.root(index);
    if (!root.isReal()) {
        showComplexRoot();
    } else if (root.real > 0.0) {
        showRoot(readState(), root.real);
    } else {
        showNoVolume();
    }
}

void RootScreen::Choice0_Action() {
    rootChosen(0);
}

void RootScreen::Choice1_Action() {
    rootChosen(1);
}

void RootScreen::Choice2_Action() {
    rootChosen(2);
}

void RootScreen::showNoVolume() {
    inputWarning.setText(noVolume);
}

void RootScreen::showVolume(double V) {
    Result.setText(toolkit::numberText(V));
    DensityResult.setText(
        toolkit::numberText(fluid::MolarVolumeFromDensity(fluid::AcceptedMixture(), V)));
}

void RootScreen::showStability(const StatePoint& state, double V) {
    const double value = fluid::IsothermSlope(state.a, state.b, state.T, V, slopeStep);
    // The smallest number stands for a slope that has no room in a double.
    const bool isKnown = value == 0.0 || std::isnormal(value);
    const std::string number = isKnown ? toolkit::numberText(value) : "---";
    slope.setText(value < 0.0 ? "Negative slope dP/dV = " + number + " (stable field)"
                              : "Positive slope dP/dV = " + number +
                                    " (meta-stable). Choose another solution");
}

void RootScreen::emptyResults() {
    inputWarning.setText("");
    slope.setText("");
    Result.setText("");
    DensityResult.setText("");
    ListBox1.clear();
}

void RootScreen::emptyAll() {
    choice.clear();
    emptyResults();
}

void RootScreen::Clear_Action() {
    dataEntryT.setText("");
    dataEntryP.setText("");
    emptyAll();
}

void RootScreen::temperatureUnitChosen() {
    temperatureUnitLabel.setText(temperature.unitText());
    dataEntryT.setText("");
    emptyAll();
}

void RootScreen::dataEntryT_TextChange() {
    emptyAll();
}

void RootScreen::dataEntryP_TextChange() {
    emptyAll();
}

}  // namespace procedures
