#include "procedures/isochore_window.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>

#include "model/fluid_model.h"
#include "procedures/units.h"
#include "toolkit/layout.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

using toolkit::numberText;
using toolkit::PlotSeries;

constexpr int sentenceWidth = 66;  // characters of a line

}  // namespace

IsochoreWindow::IsochoreWindow(toolkit::ScreenHost& host)
    : SeriesScreen(host,
                   {.screen = "IsochoreWindow",
                    .title = "Isochores - Drovan W",
                    .fileName = "isochore",
                    .plotDescription = "Pressure over temperature at this molar volume",
                    .firstEntry = "dataEntryT1",
                    .lastEntry = "dataEntryT2"},
                   {"Temperature", "Pressure", "State"}, {21, 22, 12}) {
    using toolkit::Block;
    volume.onChange(this, &IsochoreWindow::emptyResults);
    temperature.onChange(this, &IsochoreWindow::temperatureUnitChosen);
    firstCaption.setText("First Temperature");
    lastCaption.setText("Last Temperature");
    stepCaption.setText("Temperature Step");
    Homogenisation.wrapAt(sentenceWidth);
    const Block entries =
        toolkit::grid({{volume.MolarVolume, Block(volume.dataEntryV).expanding(), volume.unitLabel},
                       {firstCaption, Block(first).expanding(), firstUnit},
                       {lastCaption, Block(last).expanding(), lastUnit},
                       {stepCaption, Block(dataEntryStep).expanding(), stepUnit}});
    const Block inputs = toolkit::column(
        {toolkit::row(
             {entries.expanding(), toolkit::column({volume.unit.block(), temperature.block()})}),
         volume.DensityResult});
    layOut(inputs, Homogenisation);
    setFocus(volume.dataEntryV);
}

void IsochoreWindow::showUnits() {
    volume.activated();
    const std::string unit = temperature.unitText();
    for (toolkit::Label* const label : {&firstUnit, &lastUnit, &stepUnit}) {
        label->setText(unit);
    }
    ListBox1.setHeads({"Temperature (" + unit + ")", "Pressure (MPa)", "State"});
    plotPanel.setAxes("Temperature", unit, "Pressure", "MPa");
}

void IsochoreWindow::emptyResults() {
    SeriesScreen::emptyResults();
    Homogenisation.setText("");
}

void IsochoreWindow::Clear_Action() {
    volume.dataEntryV.setText("");
    SeriesScreen::Clear_Action();
}

void IsochoreWindow::temperatureUnitChosen() {
    first.setText("");
    last.setText("");
    showUnits();
    emptyResults();
}

bool IsochoreWindow::isUsable(const std::optional<ValueRange>& temperatures) {
    const double V = volume.molarVolume();
    const double b = fluid::AcceptedMixture().covolume;
    if (!(V > 0.0) || !std::isfinite(V) || !temperatures) {
        refuse("warning: put a number for molar volume, for both temperatures and for the step");
        return false;
    }
    if (!(std::min(temperature.toKelvin(first.number()), temperature.toKelvin(last.number())) >
          0.0)) {
        refuse("warning: temperatures must be above absolute zero");
        return false;
    }
    if (!(V > b)) {
        refuse("warning: the molar volume must be larger than the co-volume of this fluid, " +
               numberText(b) + " " + volumeUnit);
        return false;
    }
    return canBeListed(*temperatures, "temperatures");
}

void IsochoreWindow::calculate_Action() {
    const std::optional<ValueRange> temperatures = range();
    if (!isUsable(temperatures)) {
        return;
    }
    emptyResults();
    const double a = fluid::AcceptedMixture().attraction;
    const double b = fluid::AcceptedMixture().covolume;
    Isochore isochore;
    isochore.V = volume.molarVolume();
    const auto count = static_cast<std::size_t>(temperatures->count());
    for (std::size_t i = 0; i < count; ++i) {
        const double number = temperatures->value(i);
        const double T = temperatures->rounded(temperature.toKelvin(number));
        isochore.temperatures.push_back(number);
        isochore.pressures.push_back(fluid::PressureVdW(a, b, T, isochore.V));
    }
    show(std::move(isochore), *temperatures);
}

void IsochoreWindow::show(Isochore isochore, const ValueRange& temperatures) {
    const auto boundary = fluid::FindBoundary(fluid::AcceptedMixture(), isochore.V);
    isochore.splitsBelow =
        boundary ? temperature.fromKelvin(boundary->T) : -std::numeric_limits<double>::infinity();
    showBoundary(boundary, std::min(isochore.temperatures.front(), isochore.temperatures.back()));
    plot(isochore, boundary);

    const double density = fluid::MolarVolumeFromDensity(fluid::AcceptedMixture(), isochore.V);
    const std::string heading = "Molar Volume = " + numberText(isochore.V) +
                                " cm3/mol\nDensity = " + numberText(density) +
                                " g/cm3\nTemperature, Pressure\n(Celsius), (MPa)\n";
    const auto table = std::make_shared<const Isochore>(std::move(isochore));
    const bool isKelvin = temperature.Kelvin.isOn();
    showTable(table->temperatures.size(),
              [table](std::size_t i) -> toolkit::List::Row {
                  return {numberText(table->temperatures[i]), numberText(table->pressures[i]),
                          table->temperatures[i] < table->splitsBelow ? "two phases" : ""};
              },
              {heading, [table, isKelvin, temperatures](std::size_t i) -> toolkit::List::Row {
                   const double number = table->temperatures[i];
                   const double celsius =
                       isKelvin ? temperatures.rounded(number - zeroCelsius) : number;
                   return {numberText(celsius), numberText(table->pressures[i])};
               }});
}

/// `lowestT`: of the range, in the chosen unit.
void IsochoreWindow::showBoundary(const std::optional<fluid::BoundaryPoint>& boundary,
                                  double lowestT) {
    const std::string unit = " " + temperature.unitText();
    const double T = boundary ? temperature.fromKelvin(boundary->T) : 0.0;
    if (!boundary || T <= lowestT) {
        Homogenisation.setText(
            "The fluid of this density is homogeneous at every temperature above " +
            numberText(lowestT) + unit);
        return;
    }
    const bool intoLiquid = boundary->kind() == fluid::Homogenisation::IntoLiquid;
    Homogenisation.setText("Homogenisation at " + numberText(T) + unit + " and " +
                           numberText(boundary->P) + " MPa" +
                           (boundary->isCritical() ? ", at the critical point"
                            : intoLiquid           ? ", into the liquid"
                                                   : ", into the vapour"));
}

void IsochoreWindow::plot(const Isochore& isochore,
                          const std::optional<fluid::BoundaryPoint>& boundary) {
    PlotSeries one("one phase", PlotSeries::Style::line, 0);
    PlotSeries two("two phases", PlotSeries::Style::dashed, 1);
    PlotSeries point("homogenisation", PlotSeries::Style::markers, 2);
    const double lowest = std::min(isochore.temperatures.front(), isochore.temperatures.back());
    const double highest = std::max(isochore.temperatures.front(), isochore.temperatures.back());
    // The two lines meet at the boundary.
    const auto meet = [&] {
        for (PlotSeries* const series : {&one, &two, &point}) {
            series->add(isochore.splitsBelow, boundary->P);
        }
    };
    const bool isCrossed = isochore.splitsBelow > lowest && isochore.splitsBelow <= highest;
    for (std::size_t i = 0; i < isochore.temperatures.size(); ++i) {
        const bool splits = isochore.temperatures[i] < isochore.splitsBelow;
        if (isCrossed && i > 0 && point.x.empty() &&
            splits != (isochore.temperatures[i - 1] < isochore.splitsBelow)) {
            meet();
        }
        (splits ? two : one).add(isochore.temperatures[i], isochore.pressures[i]);
    }
    plotPanel.show({std::move(one), std::move(two), std::move(point)});
}

}  // namespace procedures
