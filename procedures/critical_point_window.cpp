#include "procedures/critical_point_window.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <iterator>
#include <limits>
#include <memory>
#include <optional>
#include <utility>

#include "model/fluid_model.h"
#include "procedures/explanations.h"
#include "procedures/phase_sentences.h"
#include "procedures/units.h"
#include "toolkit/clipboard.h"
#include "toolkit/file_writing.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

using fluid::Stability;
using fluid::StatePoint;
using toolkit::PlotSeries;

constexpr int decimals = 6;
constexpr int mostPoints = 4;
constexpr int resultWidth = 12;  // characters

std::string ResultText(double value) {
    return toolkit::ResultText(value, decimals);
}

}  // namespace

CriticalPointWindow::CriticalPointWindow(toolkit::ScreenHost& host)
    : Screen(host, "CriticalPointWindow", "Critical Point - Drovan W"),
      ListBox1("ListBox1", CriticalTable::heads({"˚Celsius", zeroCelsius}), {11, 10, 12, 9, 8, 16}),
      Label3("Label3", volumeUnit),
      plotPanel(*this, warning, ListBox1, "critical-point",
                "Phase boundary, spinodal and critical points in pressure over temperature") {
    plotPanel.plot.setEmptyText(
        "The phase boundary, the spinodal and the critical points appear here when they are "
        "calculated.");
    AxesTP.turnOn();
    calculate.onClick(this, &CriticalPointWindow::calculate_Action);
    Explanations.onClick(this, &CriticalPointWindow::Explanations_Action);
    Export.onClick(this, &CriticalPointWindow::Export_Action);
    temperature.onChange(this, &CriticalPointWindow::showResults);
    for (toolkit::RadioButton* const axes : {&AxesTP, &AxesVP, &AxesDT}) {
        axes->onChoose(this, &CriticalPointWindow::Axes_Action);
    }
    CopyCurves.onClick(this, &CriticalPointWindow::CopyCurves_Action);
    Temperature.setTarget(ResultT, Label1);
    Pressure.setTarget(ResultP, Label2);
    MolarVolume.setTarget(ResultV, Label3);
    Export.setTooltip("Writes the critical points and all points of the curves to a text file");
    CopyCurves.setTooltip("Copies all points of the curves, to be pasted into a spreadsheet");
    ListBox1.setAccessibleName("Critical points");
    for (std::size_t column = 0; column < 5; ++column) {
        ListBox1.alignRight(column);
    }
    Count.reserve(0, 2);
    for (toolkit::ResultLabel* const result : {&ResultT, &ResultP, &ResultV}) {
        result->reserve(resultWidth);
    }
    layOut();
    setDefault(calculate);
    setFocus(calculate);
}

void CriticalPointWindow::layOut() {
    using toolkit::Block;
    const Block pseudo = GroupBox2.around(toolkit::Grid({{Temperature, ResultT, Label1},
                                                         {Pressure, ResultP, Label2},
                                                         {MolarVolume, ResultV, Label3}}));
    const Block left = toolkit::Column(
        {Count, ListBox1.framed(mostPoints),
         toolkit::Row({pseudo, temperature.block(),
                       GroupBox4.around(toolkit::Column({AxesTP, AxesVP, AxesDT}))}),
         toolkit::ButtonRow({Explanations, Export, CopyCurves, calculate}), warning});
    setContent(toolkit::Columns({"points", left}, {{"diagram", plotPanel.block()}}));
}

void CriticalPointWindow::Event_Activate() {
    if (!(mixture_ == fluid::AcceptedMixture())) {
        calculate_Action();
    }
}

void CriticalPointWindow::Explanations_Action() {
    host().open(std::make_unique<ExplainCritical>(host()));
}

void CriticalPointWindow::Axes_Action() {
    plot();
}

void CriticalPointWindow::calculate_Action() {
    mixture_ = fluid::AcceptedMixture();
    points_ = CriticalTable(mixture_);
    boundary_ = fluid::TraceBoundary(mixture_, points_.places());
    spinodal_ =
        fluid::TraceSpinodal(mixture_, fluid::SpinodalKind::Diffusional, coldestOf(allPressures()),
                             std::numeric_limits<double>::infinity());
    showResults();
}

void CriticalPointWindow::Export_Action() {
    const std::string text = points_.fileText() + "\n" + curves().fileText();
    SaveToFile(*this, warning, "Export", "critical-point", {".txt"},
               [text](const std::string& path) { return toolkit::WriteFile(path, text); });
}

void CriticalPointWindow::CopyCurves_Action() {
    toolkit::SetClipboardText(curves().copiedText(temperature.scale()));
    warning.inform("the points of the curves are on the clipboard");
}

void CriticalPointWindow::showResults() {
    if (mixture_.count == 0) {
        return;  // the choices are made before the screen is shown
    }
    warning.setText("");
    showPoints();
    showPseudoCriticalPoint();
    plot();
}

std::string CriticalPointWindow::temperatureText(double T) const {
    return ResultText(temperature.fromKelvin(T));
}

void CriticalPointWindow::showPoints() {
    const TemperatureScale scale = temperature.scale();
    const auto rows = [this, scale](Digits digits) {
        return [this, scale, digits](std::size_t i) { return points_.row(i, scale, digits); };
    };
    ListBox1.setHeads(CriticalTable::heads(scale));
    ListBox1.setTable(points_.count(), rows(Digits::Shown), rows(Digits::Full));
    const std::size_t count = points_.count();
    std::string sentence = count == 0 ? "This fluid has no critical point"
                           : count == 1
                               ? "This fluid has one critical point"
                               : "This fluid has " + std::to_string(count) + " critical points";
    const ShownPressures shown(points_.places());
    for (const fluid::CriticalPoint& point : points_.places()) {
        if (!shown.include(point.P)) {
            sentence += "; for that at " + SentenceText(point.P) + " MPa press Home in the plot";
        }
    }
    Count.setText(sentence);
}

void CriticalPointWindow::showPseudoCriticalPoint() {
    const auto pseudo = fluid::FindPseudoCriticalPoint(mixture_);
    ResultT.setText(temperatureText(pseudo.T));
    Label1.setText(temperature.unitText());
    ResultP.setText(ResultText(pseudo.P));
    ResultV.setText(ResultText(pseudo.V));
}

ShownPressures CriticalPointWindow::allPressures() const {
    ShownPressures all(points_.places());
    for (const fluid::CriticalPoint& point : points_.places()) {
        all.extendTo(point.P);
    }
    return all;
}

double CriticalPointWindow::coldestOf(const ShownPressures& shown) const {
    double hottest = 0.0;
    for (const fluid::BoundaryPiece& piece : boundary_) {
        for (const StatePoint& point : piece.points) {
            hottest = std::max(hottest, point.T);
        }
    }
    constexpr double share = 0.4;
    double coldest = share * hottest;
    constexpr double below = 0.9;
    for (const fluid::CriticalPoint& point : points_.places()) {
        if (shown.include(point.P)) {
            coldest = std::min(coldest, below * point.T);
        }
    }
    return coldest;
}

toolkit::PlotPoint CriticalPointWindow::placeOf(const StatePoint& state) const {
    if (AxesVP.isOn()) {
        return {state.V, state.P};
    }
    const double T = temperature.fromKelvin(state.T);
    return AxesDT.isOn() ? toolkit::PlotPoint{fluid::MolarVolumeFromDensity(mixture_, state.V), T}
                         : toolkit::PlotPoint{T, state.P};
}

toolkit::FirstView CriticalPointWindow::firstView() const {
    const ShownPressures matter(points_.places());
    const double coldest = coldestOf(matter);
    toolkit::AxisExtent x;
    toolkit::AxisExtent y;
    const auto take = [&](const StatePoint& point) {
        if (matter.include(point.P) && point.T >= coldest) {
            const toolkit::PlotPoint place = placeOf(point);
            x.take(place.x);
            y.take(place.y);
        }
    };
    for (const fluid::BoundaryPiece& piece : boundary_) {
        std::for_each(piece.points.begin(), piece.points.end(), take);
    }
    for (const fluid::CriticalPoint& point : points_.places()) {
        take({point.T, point.P, point.V});
    }
    const auto range = [](const toolkit::AxisExtent& extent, bool isLogarithmic) {
        const toolkit::AxisLimits limits = extent.limits(isLogarithmic);
        return extent.low <= extent.high
                   ? std::optional(toolkit::PlotRange{limits.low, limits.high})
                   : std::nullopt;
    };
    return {range(x, AxesVP.isOn()), range(y, false), AxesVP.isOn()};
}

void CriticalPointWindow::plot() {
    ShownPressures shown = allPressures();
    const double coldest = coldestOf(shown);
    if (AxesDT.isOn()) {  // the pressure is on neither axis
        shown.extendTo(std::numeric_limits<double>::infinity());
        shown.extendTo(-std::numeric_limits<double>::infinity());
    }
    const auto place = [this](const StatePoint& state) { return placeOf(state); };
    const auto through = [&](PlotSeries series, const std::vector<std::vector<StatePoint>>& pieces,
                             const std::function<std::optional<StatePoint>(double V)>& stateAt) {
        return ThroughStates(std::move(series), pieces, shown, place, stateAt);
    };
    std::array<std::vector<std::vector<StatePoint>>, 2> pieces;
    for (const fluid::BoundaryPiece& piece : boundary_) {
        auto& those = pieces[piece.kind == fluid::Homogenisation::IntoLiquid ? 0 : 1];
        those.emplace_back();
        std::copy_if(piece.points.begin(), piece.points.end(), std::back_inserter(those.back()),
                     [coldest](const StatePoint& point) { return point.T >= coldest; });
    }
    PlotSeries bubble = through(PlotSeries("bubble points"), pieces[0], BoundaryStates(mixture_));
    PlotSeries dew = through(PlotSeries("dew points", PlotSeries::Style::Line, 1), pieces[1],
                             BoundaryStates(mixture_));
    if (mixture_.count == 1 && !AxesDT.isOn() && !AxesVP.isOn()) {  // both are one curve
        bubble.legend = dew.legend = "bubble and dew points";
        dew.colour = bubble.colour;
    }
    PlotSeries spinodal = through(PlotSeries("spinodal", PlotSeries::Style::Dashed, 2), spinodal_,
                                  SpinodalStates(mixture_, fluid::SpinodalKind::Diffusional));
    PlotSeries critical("critical point", PlotSeries::Style::Markers, 3);
    PlotSeries metastable("meta-stable critical point", PlotSeries::Style::Markers, 1);
    PlotSeries unstable("unstable critical point", PlotSeries::Style::Markers, 4);
    for (const auto& [point, stability] : points_.points()) {
        PlotSeries& series = stability == Stability::Unstable     ? unstable
                             : stability == Stability::Metastable ? metastable
                                                                  : critical;
        const toolkit::PlotPoint at = placeOf({point.T, point.P, point.V});
        series.add(at.x, at.y);
    }
    const auto pseudo = fluid::FindPseudoCriticalPoint(mixture_);
    PlotSeries pseudoPoint("pseudo-critical point", PlotSeries::Style::Markers, 5);
    const toolkit::PlotPoint at = placeOf({pseudo.T, pseudo.P, pseudo.V});
    pseudoPoint.add(at.x, at.y);
    if (AxesDT.isOn()) {
        plotPanel.setAxes("Density", densityUnit, "Temperature", temperature.scale().symbol());
    } else if (AxesVP.isOn()) {
        plotPanel.setAxes("Molar Volume", volumeUnit, "Pressure", "MPa");
    } else {
        plotPanel.setAxes("Temperature", temperature.scale().symbol(), "Pressure", "MPa");
    }
    plotPanel.show({std::move(bubble), std::move(dew), std::move(spinodal), std::move(critical),
                    std::move(metastable), std::move(unstable), std::move(pseudoPoint)},
                   firstView());
}

}  // namespace procedures
