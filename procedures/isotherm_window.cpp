#include "procedures/isotherm_window.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

#include "model/composition.h"
#include "procedures/composition_text.h"
#include "toolkit/layout.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr int visibleRows = 8;

const TemperatureScale longestScale = {"˚Celsius", zeroCelsius};

}  // namespace

IsothermWindow::IsothermWindow(toolkit::ScreenHost& host)
    : Screen(host, "IsothermWindow", "Isotherms - Drovan W"),
      table(*this, warning, "isotherm",
            {.heads = IsothermTable::heads(longestScale),
             .characters = {11, 12, 9, 11, 10, 8, 11},
             .words = {6}}),
      plotPanel(*this, warning, table.ListBox1, "isotherm",
                "Pressure over molar volume or density at these temperatures") {
    dataEntryT.onTextChange(this, &IsothermWindow::emptyResults);
    volumeUnitChoice.onChange(this, &IsothermWindow::volumeUnitChosen);
    temperature.onChange(this, &IsothermWindow::temperatureUnitChosen);
    range.onTextChange(this, &IsothermWindow::emptyResults);
    Clear.onClick(this, &IsothermWindow::Clear_Action);
    calculate.onClick(this, &IsothermWindow::calculate_Action);
    Keep.onClick(this, &IsothermWindow::Keep_Action);
    for (toolkit::CheckButton* const each : {&Dome, &TwoPhases, &CriticalPoints}) {
        each->turn(true);
    }
    for (toolkit::CheckButton* const each :
         {&Dome, &TwoPhases, &CriticalPoints, &Spinodal, &Mechanical}) {
        each->onToggle(toolkit::Member(this, &IsothermWindow::plotAgain));
    }
    Keep.setTooltip("Leaves these curves in grey when others are calculated");
    dataEntryT.setTooltip("One temperature or several: 215 235 Tc 290, or 200:300:20");
    Temperature.setTarget(dataEntryT, StaticText3);
    table.ListBox1.setEmptyText(
        "The pressure and the state at each volume or density of the range appear here when they "
        "are calculated.");
    plotPanel.plot.setEmptyText("The isotherms appear here when they are calculated.");
    Boundaries.reserve(0, 2);
    showUnits();
    layOut();
    setDefault(calculate);
    setFocus(dataEntryT);
}

void IsothermWindow::layOut() {
    using toolkit::Block;
    std::vector<std::vector<Block>> entries = range.rows();
    entries.insert(entries.begin(), {Temperature, Block(dataEntryT).expanding(), StaticText3});
    const Block inputs =
        toolkit::Row({toolkit::Grid(entries).expanding(),
                      toolkit::Column({volumeUnitChoice.block(), temperature.block()})});
    const Block left =
        toolkit::Column({inputs, toolkit::ButtonRow({Clear, table.Export, calculate}), warning,
                         table.ListBox1.scrolling(visibleRows).expanding(), Boundaries});
    const Block over =
        toolkit::Row({toolkit::Grid({{Dome, TwoPhases, CriticalPoints}, {Spinodal, Mechanical}},
                                    toolkit::Spacing::Touching)
                          .expanding(),
                      Block(Keep).atStart()});
    setContent(toolkit::Columns(
        {"table", left}, {{"plot", toolkit::Column({over, plotPanel.block().expanding()})}}));
}

void IsothermWindow::Event_Activate() {
    showUnits();
    if (!(mixture_ == fluid::AcceptedMixture())) {
        mixture_ = fluid::AcceptedMixture();
        emptyResults();
    }
}

void IsothermWindow::showUnits() {
    volumeUnitChoice.showCaptions();
    StaticText3.setText(temperature.unitText());
    range.setQuantity(volumeUnitChoice.quantityText(), volumeUnitChoice.unitText());
    table.ListBox1.setHeads(IsothermTable::heads(temperature.scale()));
    plotPanel.setAxes(volumeUnitChoice.quantityText(), volumeUnitChoice.unitText(), "Pressure",
                      "MPa");
}

void IsothermWindow::emptyResults() {
    warning.setText("");
    Boundaries.setText("");
    table.clear();
    figure_.reset();
    plot();
}

void IsothermWindow::Clear_Action() {
    dataEntryT.setText("");
    range.clear();
    kept_.clear();
    emptyResults();
}

void IsothermWindow::Keep_Action() {
    if (!figure_) {
        warning.setText("warning: there are no curves to keep yet; calculate some first");
        return;
    }
    std::erase_if(
        kept_, [this](const IsothermFigure& other) { return other.mixture == figure_->mixture; });
    kept_.push_back(*figure_);
    warning.inform("these curves stay in grey while others are calculated");
}

void IsothermWindow::volumeUnitChosen() {
    range.clear();
    showUnits();
    emptyResults();
}

void IsothermWindow::temperatureUnitChosen() {
    dataEntryT.setText("");
    showUnits();
    emptyResults();
}

std::optional<IsothermInput> IsothermWindow::read() {
    IsothermInput input;
    input.T = TemperatureList::read(dataEntryT.text(), temperature.scale(), mixture_);
    input.areDensities = volumeUnitChoice.kgm3.isOn();
    input.values =
        IsothermRange(mixture_, input.areDensities,
                      {range.first.text(), range.last.text(), range.dataEntryStep.text()});
    const std::string refusal = input.refusal(mixture_);
    warning.setText(refusal);
    return refusal.empty() ? std::optional(input) : std::nullopt;
}

void IsothermWindow::calculate_Action() {
    emptyResults();
    if (const std::optional<IsothermInput> input = read()) {
        show(std::make_shared<const IsothermTable>(mixture_, *input), *input);
    }
}

void IsothermWindow::show(const std::shared_ptr<const IsothermTable>& isotherms,
                          const IsothermInput& input) {
    Boundaries.setText(isotherms->boundarySentences());
    figure_ = IsothermFigure{mixture_, input.T.temperatures, temperature.scale().symbol(),
                             input.smallestV(mixture_), input.largestV(mixture_)};
    isWidthProposed_ = range.last.text().empty();
    plot();
    table.show(isotherms, temperature.scale());
}

IsothermOverlay IsothermWindow::overlay() const {
    return {.hasDome = Dome.isOn(),
            .hasSpinodal = Spinodal.isOn(),
            .hasMechanical = Mechanical.isOn(),
            .hasCritical = CriticalPoints.isOn(),
            .hasTwoPhases = TwoPhases.isOn(),
            .areDensities = volumeUnitChoice.kgm3.isOn()};
}

void IsothermWindow::plot() {
    std::vector<toolkit::PlotSeries> all;
    const auto add = [&all](std::vector<toolkit::PlotSeries> series) {
        std::move(series.begin(), series.end(), std::back_inserter(all));
    };
    for (const IsothermFigure& each : kept_) {
        const bool isSame = figure_ && each.mixture == figure_->mixture;
        const std::string difference = isSame ? ", kept" : "";
        add(FigureSeries(each, overlay(), CompositionText(each.mixture) + difference));
    }
    if (!figure_) {
        plotPanel.show(std::move(all), kept_.empty()
                                           ? toolkit::FirstView{}
                                           : FigureView(kept_.back(), volumeUnitChoice.kgm3.isOn(),
                                                        isWidthProposed_));
        return;
    }
    add(FigureSeries(*figure_, overlay()));
    const auto& temperatures = figure_->temperatures;
    std::string given = temperatures.front().name;
    given += temperatures.size() > 1 ? "-" + temperatures.back().name : "";
    std::erase(given, ' ');
    plotPanel.show(std::move(all),
                   FigureView(*figure_, volumeUnitChoice.kgm3.isOn(), isWidthProposed_),
                   given + (temperature.Kelvin.isOn() ? "K" : "C"));
}

void IsothermWindow::plotAgain() {
    const toolkit::PlotLimits limits = plotPanel.plot.view().limits();
    plot();
    if (!plotPanel.plot.isEmpty()) plotPanel.plot.setLimits(limits);
}

}  // namespace procedures
