#include "procedures/critical_point_window.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>
#include <memory>
#include <utility>

#include "model/fluid_model.h"
#include "procedures/explanations.h"
#include "procedures/phase_sentences.h"
#include "procedures/units.h"
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

std::string resultText(double value) {
    return toolkit::resultText(value, decimals);
}

}  // namespace

CriticalPointWindow::CriticalPointWindow(toolkit::ScreenHost& host)
    : Screen(host, "CriticalPointWindow", "Critical Point - Drovan W"),
      ListBox1("ListBox1", CriticalTable::heads({"˚Celsius", zeroCelsius}), {10, 11, 10, 9, 8, 16}),
      Label3("Label3", volumeUnit),
      plotPanel(*this, warning, ListBox1, "critical-point",
                "Phase boundary, spinodal and critical points in pressure over temperature") {
    PlotAll.turnOn();
    AxesTP.turnOn();
    calculate.onClick(this, &CriticalPointWindow::calculate_Action);
    Explanations.onClick(this, &CriticalPointWindow::Explanations_Action);
    Export.onClick(this, &CriticalPointWindow::Export_Action);
    temperature.onChange(this, &CriticalPointWindow::showResults);
    for (toolkit::RadioButton* const axes : {&AxesTP, &AxesVP, &AxesDT}) {
        axes->onChoose(this, &CriticalPointWindow::Axes_Action);
    }
    PlotAll.onChoose(this, &CriticalPointWindow::PlotAll_Action);
    PlotLow.onChoose(this, &CriticalPointWindow::PlotLow_Action);
    Temperature.setTarget(ResultT, Label1);
    Pressure.setTarget(ResultP, Label2);
    MolarVolume.setTarget(ResultV, Label3);
    Export.setTooltip("Writes the critical points and all points of the curves to a text file");
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
    const Block pseudo = GroupBox2.around(toolkit::grid({{Temperature, ResultT, Label1},
                                                         {Pressure, ResultP, Label2},
                                                         {MolarVolume, ResultV, Label3}}));
    const Block left =
        toolkit::column({Count, ListBox1.framed(mostPoints),
                         toolkit::row({pseudo, temperature.block(),
                                       GroupBox3.around(toolkit::column({PlotAll, PlotLow}))}),
                         toolkit::buttonRow({Explanations, Export, calculate}), warning});
    const Block diagram =
        toolkit::column({GroupBox4.around(toolkit::column({AxesTP, AxesVP, AxesDT})),
                         plotPanel.block().expanding()});
    setContent(toolkit::columns({"points", left}, {{"diagram", diagram}}));
}

void CriticalPointWindow::Event_Activate() {
    if (!(mixture_ == fluid::AcceptedMixture())) {
        calculate_Action();
    }
}

void CriticalPointWindow::Explanations_Action() {
    host().open(std::make_unique<ExplainCritical>(host()));
}

void CriticalPointWindow::PlotAll_Action() {
    showResults();
}

void CriticalPointWindow::PlotLow_Action() {
    showResults();
}

void CriticalPointWindow::Axes_Action() {
    plot();
}

void CriticalPointWindow::calculate_Action() {
    mixture_ = fluid::AcceptedMixture();
    points_ = CriticalTable(mixture_);
    boundary_ = fluid::TraceBoundary(mixture_, points_.places());
    ShownPressures all(points_.places());
    for (const fluid::CriticalPoint& point : points_.places()) {
        all.extendTo(point.P);
    }
    spinodal_ = fluid::TraceSpinodal(mixture_, fluid::SpinodalKind::Diffusional, coldestOf(all),
                                     std::numeric_limits<double>::infinity());
    showResults();
}

void CriticalPointWindow::Export_Action() {
    const std::string text =
        points_.fileText() + "\n" + CurveTable(mixture_, boundary_, spinodal_).fileText();
    saveToFile(*this, warning, "Export", "critical-point", {".txt"},
               [text](const std::string& path) { return toolkit::writeFile(path, text); });
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
    return resultText(temperature.fromKelvin(T));
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
    const ShownPressures shown = shownPressures();
    for (const fluid::CriticalPoint& point : points_.places()) {
        if (!shown.include(point.P)) {
            sentence += "; that at " + sentenceText(point.P) + " MPa lies outside of the plot";
        }
    }
    Count.setText(sentence);
}

void CriticalPointWindow::showPseudoCriticalPoint() {
    const auto pseudo = fluid::FindPseudoCriticalPoint(mixture_);
    ResultT.setText(temperatureText(pseudo.T));
    Label1.setText(temperature.unitText());
    ResultP.setText(resultText(pseudo.P));
    ResultV.setText(resultText(pseudo.V));
}

ShownPressures CriticalPointWindow::shownPressures() const {
    ShownPressures shown(points_.places());
    for (const fluid::CriticalPoint& point : points_.places()) {
        if (PlotAll.isOn()) {
            shown.extendTo(point.P);
        }
    }
    return shown;
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

void CriticalPointWindow::addShown(PlotSeries& series, const std::vector<StatePoint>& curve,
                                   double coldest) const {
    const ShownPressures shown = shownPressures();
    bool isGap = true;
    for (const StatePoint& point : curve) {
        const bool isShown = point.T >= coldest && shown.include(point.P);
        if (isShown && isGap && series.size() > 0) {
            series.addGap();
        }
        isGap = !isShown;
        if (isShown) {
            const toolkit::PlotPoint place = placeOf(point);
            series.add(place.x, place.y);
        }
    }
}

void CriticalPointWindow::plot() {
    const ShownPressures shown = shownPressures();
    const double coldest = coldestOf(shown);
    PlotSeries bubble("bubble points", PlotSeries::Style::line, 0);
    PlotSeries dew("dew points", PlotSeries::Style::line, 1);
    for (const fluid::BoundaryPiece& piece : boundary_) {
        addShown(piece.kind == fluid::Homogenisation::IntoLiquid ? bubble : dew, piece.points,
                 coldest);
    }
    PlotSeries spinodal("spinodal", PlotSeries::Style::dashed, 2);
    for (const auto& piece : spinodal_) {
        addShown(spinodal, piece, coldest);
    }
    PlotSeries critical("critical point", PlotSeries::Style::markers, 3);
    PlotSeries metastable("meta-stable critical point", PlotSeries::Style::markers, 1);
    PlotSeries unstable("unstable critical point", PlotSeries::Style::markers, 4);
    for (const auto& [place, stability] : points_.points()) {
        PlotSeries& series = stability == Stability::Unstable     ? unstable
                             : stability == Stability::Metastable ? metastable
                                                                  : critical;
        if (shown.include(place.P)) {
            const toolkit::PlotPoint at = placeOf({place.T, place.P, place.V});
            series.add(at.x, at.y);
        }
    }
    const auto pseudo = fluid::FindPseudoCriticalPoint(mixture_);
    PlotSeries pseudoPoint("pseudo-critical point", PlotSeries::Style::markers, 5);
    const toolkit::PlotPoint place = placeOf({pseudo.T, pseudo.P, pseudo.V});
    pseudoPoint.add(place.x, place.y);
    if (AxesDT.isOn()) {
        plotPanel.setAxes("Density", densityUnit, "Temperature", temperature.scale().symbol());
    } else if (AxesVP.isOn()) {
        plotPanel.setAxes("Molar Volume", volumeUnit, "Pressure", "MPa");
    } else {
        plotPanel.setAxes("Temperature", temperature.scale().symbol(), "Pressure", "MPa");
    }
    plotPanel.show({std::move(bubble), std::move(dew), std::move(spinodal), std::move(critical),
                    std::move(metastable), std::move(unstable), std::move(pseudoPoint)},
                   {.isLogarithmicX = AxesVP.isOn()});
}

}  // namespace procedures
