#include "procedures/spinodal_window.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "model/composition.h"
#include "model/critical_point.h"
#include "model/spinodal.h"
#include "model/van_der_waals.h"
#include "procedures/explanations.h"
#include "procedures/phase_curves.h"
#include "toolkit/layout.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

using fluid::StatePoint;
using toolkit::PlotSeries;

constexpr int visibleRows = 6;
const TemperatureScale longestScale = {"˚Celsius", zeroCelsius};

}  // namespace

SpinodalWindow::SpinodalWindow(toolkit::ScreenHost& host)
    : Screen(host, "SpinodalWindow", "Spinodal - Drovan W"),
      table(*this, warning, "spinodal",
            {.heads = SpinodalTable::heads(longestScale),
             .characters = {11, 12, 13, 10, 20},
             .words = {4}}),
      plotPanel(*this, warning, table.ListBox1, "spinodal", "Pressure on the spinodals") {
    connectHandlers();
    dataEntryT.setLabelledBy(GivenT);
    dataEntryT.setDescribedBy(StaticText1);
    dataEntryV.setLabelledBy(GivenV);
    dataEntryV.setDescribedBy(StaticText2);
    table.ListBox1.setEmptyText("The limits of stability appear here when they are calculated.");
    GivenT.turnOn();
    PlotT.turnOn();
    showUnits();
    layOut();
    setDefault(calculate);
    setFocus(dataEntryT);
}

void SpinodalWindow::connectHandlers() {
    dataEntryT.onTextChange(this, &SpinodalWindow::emptyResults);
    dataEntryV.onTextChange(this, &SpinodalWindow::emptyResults);
    volumeUnitChoice.onChange(this, &SpinodalWindow::volumeUnitChosen);
    temperature.onChange(this, &SpinodalWindow::temperatureUnitChosen);
    range.onTextChange(this, &SpinodalWindow::emptyResults);
    GivenT.onChoose(this, &SpinodalWindow::GivenT_Action);
    GivenV.onChoose(this, &SpinodalWindow::GivenV_Action);
    GivenRange.onChoose(this, &SpinodalWindow::GivenRange_Action);
    PlotT.onChoose(this, &SpinodalWindow::PlotT_Action);
    PlotV.onChoose(this, &SpinodalWindow::PlotV_Action);
    Explanations.onClick(this, &SpinodalWindow::Explanations_Action);
    Clear.onClick(this, &SpinodalWindow::Clear_Action);
    calculate.onClick(this, &SpinodalWindow::calculate_Action);
}

void SpinodalWindow::layOut() {
    using toolkit::Block;
    using toolkit::Spacing;
    std::vector<std::vector<Block>> entries = {{GivenT, Block(dataEntryT).expanding(), StaticText1},
                                               {GivenV, Block(dataEntryV).expanding(), StaticText2},
                                               {GivenRange}};
    for (std::vector<Block>& row : range.rows()) {
        row.front() = row.front().indented(Spacing::Section);
        entries.push_back(row);
    }
    const Block units = toolkit::Column({volumeUnitChoice.block(), temperature.block()});
    const Block left =
        toolkit::Column({toolkit::Row({toolkit::Grid(entries).expanding(), units}),
                         toolkit::ButtonRow({Explanations, Clear, table.Export, calculate}),
                         warning, table.ListBox1.scrolling(visibleRows).expanding()});
    const Block plot = toolkit::Column(
        {GroupBox4.around(toolkit::Row({PlotT, PlotV})), plotPanel.block().expanding()});
    setContent(toolkit::Columns({"table", left}, {{"plot", plot}}));
}

void SpinodalWindow::Event_Activate() {
    showUnits();
    if (!(mixture_ == fluid::AcceptedMixture())) {
        mixture_ = fluid::AcceptedMixture();
        emptyResults();
    }
}

void SpinodalWindow::showUnits() {
    volumeUnitChoice.showCaptions();
    GivenV.setCaption(" " + volumeUnitChoice.quantityText());
    StaticText1.setText(temperature.unitText());
    StaticText2.setText(volumeUnitChoice.unitText());
    range.setQuantity("Temperature", temperature.unitText());
    table.ListBox1.setHeads(SpinodalTable::heads(temperature.scale()));
    plotChosen();
}

void SpinodalWindow::emptyResults() {
    warning.setText("");
    limits_.reset();
    table.clear();
    plotPanel.clear();
}

void SpinodalWindow::Clear_Action() {
    dataEntryT.setText("");
    dataEntryV.setText("");
    range.clear();
    emptyResults();
}

void SpinodalWindow::Explanations_Action() {
    host().open(std::make_unique<ExplainSpinodal>(host()));
}

void SpinodalWindow::givenChosen() {
    dataEntryT.setSensitive(GivenT.isOn());
    dataEntryV.setSensitive(GivenV.isOn());
    range.setSensitive(GivenRange.isOn());
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
        plotPanel.setAxes("Temperature", temperature.scale().symbol(), "Pressure", "MPa");
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
    range.clearEnds();
    emptyResults();
    showUnits();
}

std::optional<SpinodalInput> SpinodalWindow::read() {
    SpinodalInput input;
    std::optional<ValueRange> values;
    if (GivenRange.isOn()) {
        input.given = SpinodalInput::Given::Range;
        values = range.read();
    } else if (GivenV.isOn()) {
        input.given = SpinodalInput::Given::Volume;
        input.V = volumeUnitChoice.toMolarVolume(dataEntryV.number());
    } else if (const auto number = toolkit::ParseNumber(dataEntryT.text())) {
        values = ValueRange::of(*number, *number, 0.0);
    }
    if (values) {
        input.temperatures = TemperatureRange{*values, temperature.scale()};
    }
    const std::string refusal = input.refusal(mixture_);
    warning.setText(refusal);
    return refusal.empty() ? std::optional(input) : std::nullopt;
}

void SpinodalWindow::calculate_Action() {
    emptyResults();
    if (const std::optional<SpinodalInput> input = read()) {
        limits_ = std::make_shared<const SpinodalTable>(mixture_, *input);
        show();
    }
}

void SpinodalWindow::show() {
    warning.setText(limits_->missingSentence(temperature.scale()));
    plot();
    table.show(limits_, temperature.scale());
}

void SpinodalWindow::plot() {
    if (!limits_) return;
    const ShownPressures matter(fluid::FindCriticalPoints(mixture_));
    ShownPressures all = matter;
    all.lowest = -std::numeric_limits<double>::infinity();
    toolkit::FirstView view{.y = toolkit::PlotRange{matter.lowest, matter.highest},
                            .isLogarithmicX = PlotV.isOn()};
    const auto x = [isV = PlotV.isOn(), scale = temperature.scale()](const StatePoint& point) {
        return isV ? point.V : scale.fromKelvin(point.T);
    };
    const auto through = [&](PlotSeries series, const SpinodalTable::Curves& pieces,
                             fluid::SpinodalKind kind) {
        return ThroughStates(std::move(series), pieces, all, x, SpinodalStates(mixture_, kind));
    };
    PlotSeries marks("in the table", PlotSeries::Style::Markers, 2);
    constexpr std::size_t mostMarks = 12;
    for (const SpinodalTable::Limit& limit : limits_->limits()) {
        if (limits_->count() <= mostMarks) {
            marks.add(x(limit.state), limit.state.P);
            view.y->low = std::min(view.y->low, limit.state.P);
            view.y->high = std::max(view.y->high, limit.state.P);
        }
    }
    plotPanel.show({through(PlotSeries(limits_->isPure() ? "spinodal" : "diffusional spinodal"),
                            limits_->diffusional(), fluid::SpinodalKind::Diffusional),
                    through(PlotSeries("mechanical spinodal", PlotSeries::Style::Dashed, 1),
                            limits_->mechanical(), fluid::SpinodalKind::Mechanical),
                    std::move(marks)},
                   view);
}

}  // namespace procedures
