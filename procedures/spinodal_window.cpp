#include "procedures/spinodal_window.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <iterator>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "model/composition.h"
#include "model/critical_point.h"
#include "model/phase_diagram.h"
#include "model/spinodal.h"
#include "model/van_der_waals.h"
#include "procedures/explanations.h"
#include "procedures/temperature_list.h"
#include "toolkit/layout.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

using fluid::StatePoint;
using toolkit::PlotPoint;
using toolkit::PlotSeries;

constexpr int visibleRows = 6;
constexpr std::size_t mostMarks = 12;
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
    plotPanel.plot.setEmptyText(
        "The spinodals and the phase boundary appear here when they are calculated.");
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
    for (toolkit::RadioButton* const axes : {&PlotT, &PlotV, &PlotTV}) {
        axes->onChoose(this, &SpinodalWindow::Plot_Action);
    }
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
        {GroupBox4.around(toolkit::Row({PlotT, PlotV, PlotTV})), plotPanel.block().expanding()});
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
    if (PlotTV.isOn()) {
        plotPanel.setAxes("Molar Volume", volumeUnit, "Temperature", temperature.scale().symbol());
    } else if (PlotV.isOn()) {
        plotPanel.setAxes("Molar Volume", volumeUnit, "Pressure", "MPa");
    } else {
        plotPanel.setAxes("Temperature", temperature.scale().symbol(), "Pressure", "MPa");
    }
    plot();
}

void SpinodalWindow::Plot_Action() {
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

std::function<PlotPoint(const StatePoint&)> SpinodalWindow::places() const {
    return [isTV = PlotTV.isOn(), isV = PlotV.isOn(),
            scale = temperature.scale()](const StatePoint& point) {
        const double T = scale.fromKelvin(point.T);
        return isTV ? PlotPoint{point.V, T} : PlotPoint{isV ? point.V : T, point.P};
    };
}

std::vector<PlotSeries> SpinodalWindow::boundary(const ShownPressures& shown) const {
    double coldest = std::numeric_limits<double>::infinity();
    for (const auto& curve : limits_->diffusional()) {
        for (const StatePoint& point : curve) coldest = std::min(coldest, point.T);
    }
    std::array<SpinodalTable::Curves, 2> pieces;
    const auto critical = fluid::FindCriticalPoints(mixture_);
    for (const fluid::BoundaryPiece& piece : fluid::TraceBoundary(mixture_, critical)) {
        auto& those = pieces[piece.kind == fluid::Homogenisation::IntoLiquid ? 0 : 1];
        those.emplace_back();
        std::copy_if(piece.points.begin(), piece.points.end(), std::back_inserter(those.back()),
                     [coldest](const StatePoint& point) { return point.T >= coldest; });
    }
    std::vector<PlotSeries> series;
    constexpr std::array<const char*, 2> names = {"bubble points", "dew points"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        PlotSeries curve(names[i], PlotSeries::Style::Line, PlotSeries::ink);
        curve.legend = "bubble and dew points";
        if (PlotTV.isOn()) curve.below = "meta-stable";
        series.push_back(
            ThroughStates(std::move(curve), pieces[i], shown, places(), BoundaryStates(mixture_)));
    }
    return series;
}

toolkit::FirstView SpinodalWindow::firstView() const {
    const LeadingPoint leading = LeadingPointOf(mixture_);
    const ShownPressures matter(fluid::FindCriticalPoints(mixture_));
    toolkit::FirstView view;
    double lowest = matter.lowest;
    double highest = matter.highest;
    double largestV = leading.V;
    for (const SpinodalTable::Limit& limit : limits_->limits()) {
        if (!limit.isThere() || limits_->count() > mostMarks) continue;
        lowest = std::min(lowest, limit.state.P);
        highest = std::max(highest, limit.state.P);
        largestV = std::max(largestV, limit.state.V);
    }
    constexpr double widest = 6.0;
    if (PlotV.isOn() || PlotTV.isOn()) {
        view.x = toolkit::PlotRange{0.0, std::max(widest * leading.V, 2.0 * largestV)};
    }
    if (!PlotTV.isOn()) view.y = toolkit::PlotRange{lowest, highest};
    return view;
}

void SpinodalWindow::plot() {
    if (!limits_) return;
    ShownPressures shown(fluid::FindCriticalPoints(mixture_));
    shown.lowest = -std::numeric_limits<double>::infinity();
    if (PlotTV.isOn()) shown = ShownPressures::all();  // the pressure is on neither axis
    const auto through = [&](PlotSeries series, const SpinodalTable::Curves& pieces,
                             fluid::SpinodalKind kind) {
        return ThroughStates(std::move(series), pieces, shown, places(),
                             SpinodalStates(mixture_, kind));
    };
    std::vector<PlotSeries> series = {
        through(PlotSeries(limits_->isPure() ? "spinodal" : "diffusional spinodal"),
                limits_->diffusional(), fluid::SpinodalKind::Diffusional),
        through(PlotSeries("mechanical spinodal", PlotSeries::Style::Dashed, 1),
                limits_->mechanical(), fluid::SpinodalKind::Mechanical)};
    if (PlotTV.isOn()) series[0].below = "unstable";
    for (PlotSeries& curve : boundary(shown)) series.push_back(std::move(curve));
    PlotSeries marks("in the table", PlotSeries::Style::Markers, 2);
    for (const SpinodalTable::Limit& limit : limits_->limits()) {
        if (!limit.isThere() || limits_->count() > mostMarks) continue;
        const PlotPoint place = places()(limit.state);
        marks.add(place.x, place.y);
    }
    series.push_back(std::move(marks));
    plotPanel.show(std::move(series), firstView());
}

}  // namespace procedures
