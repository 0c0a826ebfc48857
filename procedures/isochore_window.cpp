#include "procedures/isochore_window.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "model/composition.h"
#include "toolkit/layout.h"

namespace procedures {

namespace {

using toolkit::PlotSeries;

constexpr int sentenceWidth = 66;  // characters of a line
constexpr int messageWidth = 56;
constexpr int visibleRows = 12;

}  // namespace

IsochoreWindow::IsochoreWindow(toolkit::ScreenHost& host)
    : Screen(host, "IsochoreWindow", "Isochores - Drovan W"),
      table(*this, warning, "isochore", {14, 15, 15, 11, 19}),
      plotPanel(*this, warning, table.ListBox1, "isochore",
                "Pressure over temperature at this molar volume") {
    volume.onChange(this, &IsochoreWindow::emptyResults);
    temperature.onChange(this, &IsochoreWindow::temperatureUnitChosen);
    range.onTextChange(this, &IsochoreWindow::emptyResults);
    Clear.onClick(this, &IsochoreWindow::Clear_Action);
    calculate.onClick(this, &IsochoreWindow::calculate_Action);
    warning.wrapAt(messageWidth);
    Homogenisation.wrapAt(sentenceWidth);
    layOut();
    setDefault(calculate);
    setFocus(volume.dataEntryV);
}

void IsochoreWindow::layOut() {
    using toolkit::Block;
    using toolkit::Spacing;
    std::vector<std::vector<Block>> entries = range.rows();
    entries.insert(entries.begin(),
                   {volume.MolarVolume, Block(volume.dataEntryV).expanding(), volume.unitLabel});
    const Block inputs = toolkit::column(
        {toolkit::row({toolkit::grid(entries).expanding(),
                       toolkit::column({volume.unit.block(), temperature.block()})}),
         volume.DensityResult});
    const Block left =
        toolkit::column({inputs, toolkit::buttonRow({Clear, table.Export, calculate}), warning,
                         table.ListBox1.scrolling(visibleRows).expanding(), Homogenisation},
                        Spacing::group);
    setContent(toolkit::row({left, plotPanel.block().expanding()}, Spacing::section));
}

void IsochoreWindow::Event_Activate() {
    showUnits();
    if (!(mixture_ == fluid::AcceptedMixture())) {
        mixture_ = fluid::AcceptedMixture();
        emptyResults();
    }
}

void IsochoreWindow::showUnits() {
    volume.activated();
    range.setQuantity("Temperature", temperature.unitText());
    table.ListBox1.setHeads(IsochoreTable::heads(temperature.scale()));
    plotPanel.setAxes("Temperature", temperature.unitText(), "Pressure", "MPa");
}

void IsochoreWindow::emptyResults() {
    warning.setText("");
    Homogenisation.setText("");
    table.clear();
    plotPanel.clear();
}

void IsochoreWindow::Clear_Action() {
    volume.dataEntryV.setText("");
    range.clear();
    emptyResults();
}

void IsochoreWindow::temperatureUnitChosen() {
    range.clearEnds();
    showUnits();
    emptyResults();
}

std::optional<IsochoreInput> IsochoreWindow::read() {
    IsochoreInput input;
    input.V = volume.molarVolume();
    if (const auto values = range.read()) {
        input.temperatures = TemperatureRange{*values, temperature.scale()};
    }
    const std::string refusal = input.refusal(mixture_);
    warning.setText(refusal);
    return refusal.empty() ? std::optional(input) : std::nullopt;
}

void IsochoreWindow::calculate_Action() {
    emptyResults();
    if (const std::optional<IsochoreInput> input = read()) {
        show(std::make_shared<const IsochoreTable>(mixture_, *input));
    }
}

void IsochoreWindow::show(const std::shared_ptr<const IsochoreTable>& isochore) {
    Homogenisation.setText(isochore->homogenizationSentence(temperature.scale()));
    plot(*isochore);
    table.show(isochore, temperature.scale());
}

void IsochoreWindow::plot(const IsochoreTable& isochore) {
    PlotSeries one("one phase", PlotSeries::Style::line, 0);
    PlotSeries two("two phases", PlotSeries::Style::dashed, 1);
    PlotSeries point("homogenization", PlotSeries::Style::markers, 2);
    const TemperatureRange& temperatures = isochore.temperatures();
    const auto& boundary = isochore.boundary();
    // The two lines meet at the boundary.
    const auto meet = [&] {
        for (PlotSeries* const series : {&one, &two, &point}) {
            series->add(temperature.fromKelvin(boundary->T), boundary->P);
        }
    };
    const bool isCrossed = boundary && boundary->T > temperatures.lowest().kelvin &&
                           boundary->T <= temperatures.highest().kelvin;
    bool didSplit = false;
    for (std::size_t i = 0; i < isochore.count(); ++i) {
        const WrittenTemperature T = temperatures.at(i);
        const bool splits = isochore.splitsAt(T.kelvin);
        if (isCrossed && i > 0 && point.x.empty() && splits != didSplit) {
            meet();
        }
        didSplit = splits;
        (splits ? two : one).add(T.in(temperature.scale()), isochore.pressure(T.kelvin));
    }
    plotPanel.show({std::move(one), std::move(two), std::move(point)});
}

}  // namespace procedures
