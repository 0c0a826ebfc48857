#include "procedures/spinodal_window.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <optional>
#include <utility>

#include "model/critical_point.h"
#include "model/fluid_model.h"
#include "model/spinodal.h"
#include "procedures/explanations.h"
#include "procedures/phase_curves.h"
#include "procedures/units.h"
#include "toolkit/layout.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

using fluid::SpinodalKind;
using fluid::StatePoint;
using toolkit::numberText;
using toolkit::PlotSeries;

constexpr int decimals = 6;
constexpr std::array<SpinodalKind, 2> bothKinds = {SpinodalKind::Diffusional,
                                                   SpinodalKind::Mechanical};

bool isPure() {
    return fluid::AcceptedMixture().count == 1;
}

fluid::SpinodalVolumes volumesAt(SpinodalKind kind, double T) {
    return kind == SpinodalKind::Diffusional
               ? fluid::DiffusionalSpinodal(fluid::AcceptedMixture(), T)
               : fluid::MechanicalSpinodal(fluid::AcceptedMixture(), T);
}

double temperatureAt(SpinodalKind kind, double V) {
    return kind == SpinodalKind::Diffusional
               ? fluid::DiffusionalSpinodalTemperature(fluid::AcceptedMixture(), V)
               : fluid::MechanicalSpinodalTemperature(fluid::AcceptedMixture(), V);
}

double densityOf(double V) {
    return fluid::MolarVolumeFromDensity(fluid::AcceptedMixture(), V);
}

StatePoint stateAt(double T, double V) {
    const double a = fluid::AcceptedMixture().attraction;
    const double b = fluid::AcceptedMixture().covolume;
    return {T, fluid::PressureVdW(a, b, T, V), V};
}

/// The dilute fluid is stable, so that each volume of a spinodal is a vapour side or a liquid side
/// of unstable states by its place from the largest one.
const char* limitName(SpinodalKind kind, bool isLiquid) {
    if (isPure()) {
        return isLiquid ? "liquid side" : "vapour side";
    }
    if (kind == SpinodalKind::Diffusional) {
        return isLiquid ? "diffusional, liquid side" : "diffusional, vapour side";
    }
    return isLiquid ? "mechanical, liquid side" : "mechanical, vapour side";
}

bool isLiquidSide(const fluid::SpinodalVolumes& volumes, std::size_t number) {
    return (volumes.count - number) % 2 == 0;
}

bool isLiquidSide(SpinodalKind kind, double T, double V) {
    const fluid::SpinodalVolumes volumes = volumesAt(kind, T);
    const auto* const nearest =
        std::min_element(volumes.begin(), volumes.end(),
                         [V](double x, double y) { return std::abs(x - V) < std::abs(y - V); });
    return isLiquidSide(volumes, static_cast<std::size_t>(nearest - volumes.begin()));
}

}  // namespace

SpinodalWindow::SpinodalWindow(toolkit::ScreenHost& host)
    : SeriesScreen(host,
                   {.screen = "SpinodalWindow",
                    .title = "Spinodal - Drovan W",
                    .fileName = "spinodal",
                    .plotDescription = "Pressure on the spinodals",
                    .firstEntry = "dataEntryT1",
                    .lastEntry = "dataEntryT2"},
                   {"", "", "", "", "Limit"}, {13, 14, 13, 12, 25}) {
    connectHandlers();
    firstCaption.setText("First Temperature");
    lastCaption.setText("Last Temperature");
    stepCaption.setText("Temperature Step");
    dataEntryT.setLabelledBy(GivenT);
    dataEntryT.setDescribedBy(StaticText1);
    dataEntryV.setLabelledBy(GivenV);
    dataEntryV.setDescribedBy(StaticText2);
    GivenT.turnOn();
    PlotT.turnOn();
    layOutAroundPlot();
    setDefault(calculate);
    setFocus(dataEntryT);
}

void SpinodalWindow::connectHandlers() {
    dataEntryT.onTextChange(this, &SpinodalWindow::entry_TextChange);
    dataEntryV.onTextChange(this, &SpinodalWindow::entry_TextChange);
    GivenT.onChoose(this, &SpinodalWindow::GivenT_Action);
    GivenV.onChoose(this, &SpinodalWindow::GivenV_Action);
    GivenRange.onChoose(this, &SpinodalWindow::GivenRange_Action);
    PlotT.onChoose(this, &SpinodalWindow::PlotT_Action);
    PlotV.onChoose(this, &SpinodalWindow::PlotV_Action);
    Explanations.onClick(this, &SpinodalWindow::Explanations_Action);
    volumeUnitChoice.onChange(this, &SpinodalWindow::volumeUnitChosen);
    temperature.onChange(this, &SpinodalWindow::temperatureUnitChosen);
}

void SpinodalWindow::layOutAroundPlot() {
    using toolkit::Block;
    using toolkit::Spacing;
    constexpr int visibleRows = 7;
    const Block entries = toolkit::grid(
        {{GivenT, Block(dataEntryT).expanding(), StaticText1},
         {GivenV, Block(dataEntryV).expanding(), StaticText2},
         {GivenRange},
         {Block(firstCaption).indented(Spacing::section), Block(first).expanding(), firstUnit},
         {Block(lastCaption).indented(Spacing::section), Block(last).expanding(), lastUnit},
         {Block(stepCaption).indented(Spacing::section), Block(dataEntryStep).expanding(),
          stepUnit}});
    const Block choices = toolkit::row({volumeUnitChoice.block(), temperature.block(),
                                        GroupBox4.around(toolkit::column({PlotT, PlotV}))});
    const Block left = toolkit::column(
        {entries, choices, toolkit::buttonRow({Explanations, Clear, Export, calculate}), warning},
        Spacing::group);
    const Block upper = toolkit::row({left, plotPanel.block().expanding()}, Spacing::section);
    setContent(toolkit::column({upper.expanding(), ListBox1.scrolling(visibleRows).expanding()},
                               Spacing::group));
}

void SpinodalWindow::showUnits() {
    volumeUnitChoice.showCaptions();
    GivenV.setCaption(" " + volumeUnitChoice.quantityText());
    StaticText2.setText(volumeUnitChoice.unitText());
    const std::string unit = temperature.unitText();
    for (toolkit::Label* const label : {&StaticText1, &firstUnit, &lastUnit, &stepUnit}) {
        label->setText(unit);
    }
    ListBox1.setHeads({"Temperature (" + unit + ")", "Pressure (MPa)",
                       std::string("Molar Volume (") + volumeUnit + ")",
                       std::string("Density (") + densityUnit + ")", "Limit"});
    plotChosen();
}

void SpinodalWindow::emptyResults() {
    SeriesScreen::emptyResults();
    diffusional_.clear();
    mechanical_.clear();
    marks_.clear();
}

void SpinodalWindow::Clear_Action() {
    dataEntryT.setText("");
    dataEntryV.setText("");
    SeriesScreen::Clear_Action();
}

void SpinodalWindow::Explanations_Action() {
    host().open(std::make_unique<ExplainSpinodal>(host()));
}

void SpinodalWindow::givenChosen() {
    dataEntryT.setSensitive(GivenT.isOn());
    dataEntryV.setSensitive(GivenV.isOn());
    for (toolkit::Entry* const entry : {&first, &last, &dataEntryStep}) {
        entry->setSensitive(GivenRange.isOn());
    }
    emptyResults();
}

void SpinodalWindow::GivenT_Action() {
    givenChosen();
}

void SpinodalWindow::GivenV_Action() {
    givenChosen();
}

void SpinodalWindow::GivenRange_Action() {
    givenChosen();
}

void SpinodalWindow::plotChosen() {
    if (PlotV.isOn()) {
        plotPanel.setAxes("Molar Volume", volumeUnit, "Pressure", "MPa");
    } else {
        plotPanel.setAxes("Temperature", temperature.unitText(), "Pressure", "MPa");
    }
    plot();
}

void SpinodalWindow::PlotT_Action() {
    plotChosen();
}

void SpinodalWindow::PlotV_Action() {
    plotChosen();
}

void SpinodalWindow::volumeUnitChosen() {
    dataEntryV.setText("");
    emptyResults();
    showUnits();
}

void SpinodalWindow::temperatureUnitChosen() {
    dataEntryT.setText("");
    first.setText("");
    last.setText("");
    emptyResults();
    showUnits();
}

void SpinodalWindow::calculate_Action() {
    if (GivenT.isOn()) {
        calculateAtTemperature();
    } else if (GivenV.isOn()) {
        calculateAtVolume();
    } else {
        calculateRange();
    }
}

void SpinodalWindow::addLimits(double shownT, const ValueRange& range,
                               std::vector<Limit>& limits) const {
    const double T = range.rounded(temperature.toKelvin(shownT));
    const double celsius =
        temperature.Celsius.isOn() ? shownT : range.rounded(shownT - zeroCelsius);
    for (const SpinodalKind kind : bothKinds) {
        if (kind == SpinodalKind::Mechanical && isPure()) {
            continue;
        }
        const fluid::SpinodalVolumes volumes = volumesAt(kind, T);
        for (std::size_t i = 0; i < volumes.count; ++i) {
            limits.push_back({stateAt(T, volumes.volumes[i]), shownT, celsius,
                              limitName(kind, isLiquidSide(volumes, i))});
        }
    }
}

void SpinodalWindow::calculateAtTemperature() {
    const std::optional<double> number = toolkit::parseNumber(dataEntryT.text());
    if (!number) {
        refuse("warning: put a number for temperature");
        return;
    }
    if (!(temperature.toKelvin(*number) > 0.0)) {
        refuse("warning: temperatures must be above absolute zero");
        return;
    }
    emptyResults();
    std::vector<Limit> limits;
    const auto range = ValueRange::of(*number, *number, 0.0);
    addLimits(*number, *range, limits);
    traceAround(temperature.toKelvin(*number));
    show(std::move(limits));
}

void SpinodalWindow::calculateAtVolume() {
    const double V = volumeUnitChoice.toMolarVolume(dataEntryV.number());
    const double b = fluid::AcceptedMixture().covolume;
    if (!(V > 0.0) || !std::isfinite(V)) {
        refuse("warning: put a number for molar volume");
        return;
    }
    if (!(V > b)) {
        refuse("warning: the molar volume must be larger than the co-volume of this fluid, " +
               numberText(b) + " " + volumeUnit);
        return;
    }
    emptyResults();
    std::vector<Limit> limits;
    for (const SpinodalKind kind : bothKinds) {
        if (kind == SpinodalKind::Mechanical && isPure()) {
            continue;
        }
        const double T = temperatureAt(kind, V);
        limits.push_back({stateAt(T, V), temperature.fromKelvin(T), T - zeroCelsius,
                          limitName(kind, isLiquidSide(kind, T, V))});
    }
    traceAround(limits.front().state.T);
    show(std::move(limits));
}

void SpinodalWindow::calculateRange() {
    const std::optional<ValueRange> temperatures = range();
    if (!temperatures) {
        refuse("warning: put a number for both temperatures and for the step");
        return;
    }
    const auto [lowest, highest] =
        std::minmax({temperature.toKelvin(first.number()), temperature.toKelvin(last.number())});
    if (!(lowest > 0.0)) {
        refuse("warning: temperatures must be above absolute zero");
        return;
    }
    if (!canBeListed(*temperatures, "temperatures")) {
        return;
    }
    emptyResults();
    std::vector<Limit> limits;
    for (std::size_t i = 0; i < static_cast<std::size_t>(temperatures->count()); ++i) {
        addLimits(temperatures->value(i), *temperatures, limits);
    }
    trace(lowest, highest);
    show(std::move(limits));
}

void SpinodalWindow::show(std::vector<Limit> limits) {
    constexpr std::size_t mostMarks = 12;
    for (const Limit& limit : limits) {
        if (limits.size() <= mostMarks) {
            marks_.push_back(limit.state);
        }
    }
    if (limits.empty()) {
        warning.setText(
            "There is no spinodal: the fluid withstands small changes at every molar volume");
    }
    plot();
    const auto table = std::make_shared<const std::vector<Limit>>(std::move(limits));
    showTable(table->size(),
              [table](std::size_t i) -> toolkit::List::Row {
                  const Limit& limit = (*table)[i];
                  return {toolkit::resultText(limit.shownT, decimals),
                          toolkit::resultText(limit.state.P, decimals),
                          toolkit::resultText(limit.state.V, decimals),
                          toolkit::resultText(densityOf(limit.state.V), decimals), limit.name};
              },
              {"Temperature, Pressure, Molar Volume, Density, Limit\n(Celsius), (MPa), (cm3/mol), "
               "(g/cm3)\n",
               [table](std::size_t i) -> toolkit::List::Row {
                   const Limit& limit = (*table)[i];
                   return {numberText(limit.celsius), numberText(limit.state.P),
                           numberText(limit.state.V), numberText(densityOf(limit.state.V)),
                           limit.name};
               }});
}

void SpinodalWindow::traceAround(double T) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    trace(0.0, infinity);
    double hottest = 0.0;
    for (const auto& curve : diffusional_) {
        for (const StatePoint& point : curve) {
            hottest = std::max(hottest, point.T);
        }
    }
    constexpr double share = 0.6;
    constexpr double below = 0.9;
    trace(std::min(share * hottest, below * T), infinity);
}

void SpinodalWindow::trace(double lowestT, double highestT) {
    diffusional_ = fluid::TraceSpinodal(fluid::AcceptedMixture(), SpinodalKind::Diffusional,
                                        lowestT, highestT);
    mechanical_ = isPure() ? Curves()
                           : fluid::TraceSpinodal(fluid::AcceptedMixture(),
                                                  SpinodalKind::Mechanical, lowestT, highestT);
}

void SpinodalWindow::plot() {
    ShownPressures shown(fluid::FindCriticalPoints(fluid::AcceptedMixture()));
    shown.lowest = -std::numeric_limits<double>::infinity();
    const auto x = [this](const StatePoint& point) {
        return PlotV.isOn() ? point.V : temperature.fromKelvin(point.T);
    };
    PlotSeries diffusional(isPure() ? "spinodal" : "diffusional spinodal");
    PlotSeries mechanical("mechanical spinodal", PlotSeries::Style::dashed, 1);
    PlotSeries marks("in the table", PlotSeries::Style::markers, 2);
    for (const auto& curve : diffusional_) {
        addCurve(diffusional, curve, shown, x);
    }
    for (const auto& curve : mechanical_) {
        addCurve(mechanical, curve, shown, x);
    }
    for (const StatePoint& mark : marks_) {
        marks.add(x(mark), mark.P);
    }
    plotPanel.show({std::move(diffusional), std::move(mechanical), std::move(marks)},
                   {.isLogarithmicX = PlotV.isOn()});
}

}  // namespace procedures
