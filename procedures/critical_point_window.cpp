#include "procedures/critical_point_window.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>
#include <memory>
#include <utility>

#include "model/fluid_model.h"
#include "procedures/explanations.h"
#include "procedures/stability_text.h"
#include "procedures/units.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

using fluid::Stability;
using fluid::StatePoint;
using toolkit::PlotSeries;

constexpr int decimals = 6;
constexpr int mostPoints = 4;
constexpr int sentenceWidth = 90;  // characters of a line
constexpr int messageWidth = 40;

std::string resultText(double value) {
    return toolkit::resultText(value, decimals);
}

}  // namespace

CriticalPointWindow::CriticalPointWindow(toolkit::ScreenHost& host)
    : Screen(host, "CriticalPointWindow", "Critical Point - Drovan W"),
      ListBox1("ListBox1", {"", "", "", "", "", ""}),
      Label3("Label3", volumeUnit),
      plotPanel(*this, warning, ListBox1, "critical-point",
                "Phase boundary, spinodal and critical points in pressure over temperature") {
    PlotAll.turnOn();
    calculate.onClick(this, &CriticalPointWindow::calculate_Action);
    Explanations.onClick(this, &CriticalPointWindow::Explanations_Action);
    temperature.onChange(this, &CriticalPointWindow::calculate_Action);
    PlotAll.onChoose(this, &CriticalPointWindow::PlotAll_Action);
    PlotLow.onChoose(this, &CriticalPointWindow::PlotLow_Action);
    Temperature.setTarget(ResultT, Label1);
    Pressure.setTarget(ResultP, Label2);
    MolarVolume.setTarget(ResultV, Label3);
    ListBox1.setAccessibleName("Critical points");
    Count.wrapAt(sentenceWidth);
    warning.wrapAt(messageWidth);
    layOut();
    setDefault(calculate);
    setFocus(calculate);
}

void CriticalPointWindow::layOut() {
    using toolkit::Block;
    using toolkit::Spacing;
    const Block pseudo = GroupBox2.around(toolkit::grid({{Temperature, ResultT, Label1},
                                                         {Pressure, ResultP, Label2},
                                                         {MolarVolume, ResultV, Label3}}));
    const Block left = toolkit::column(
        {pseudo,
         toolkit::row({temperature.block(), GroupBox3.around(toolkit::column({PlotAll, PlotLow}))}),
         toolkit::buttonRow({Explanations, calculate}), warning},
        Spacing::group);
    const Block lower =
        toolkit::row({left, plotPanel.block().expanding()}, Spacing::section).expanding();
    setContent(toolkit::column({Count, ListBox1.framed(mostPoints), lower}, Spacing::group));
}

void CriticalPointWindow::Event_Activate() {
    calculate_Action();
}

void CriticalPointWindow::Explanations_Action() {
    host().open(std::make_unique<ExplainCritical>(host()));
}

void CriticalPointWindow::PlotAll_Action() {
    calculate_Action();
}

void CriticalPointWindow::PlotLow_Action() {
    calculate_Action();
}

void CriticalPointWindow::calculate_Action() {
    warning.setText("");
    points_ = fluid::FindCriticalPoints(fluid::AcceptedMixture());
    kinds_.clear();
    for (const fluid::CriticalPoint& point : points_) {
        kinds_.push_back(fluid::CriticalStability(fluid::AcceptedMixture(), point));
    }
    showPoints();
    showPseudoCriticalPoint();
    plot();
}

std::string CriticalPointWindow::temperatureText(double T) const {
    return resultText(temperature.fromKelvin(T));
}

void CriticalPointWindow::showPoints() {
    ListBox1.setHeads({"Temperature (" + temperature.unitText() + ")", "Pressure (MPa)",
                       std::string("Molar Volume (") + volumeUnit + ")",
                       std::string("Density (") + densityUnit + ")", "Z", "State"});
    std::vector<toolkit::List::Row> rows;
    for (std::size_t i = 0; i < points_.count; ++i) {
        const fluid::CriticalPoint& point = points_.points[i];
        const double density = fluid::MolarVolumeFromDensity(fluid::AcceptedMixture(), point.V);
        const double Z = point.P * point.V / (fluid::R * point.T);
        std::string state = stabilityName(kinds_[i]);
        if (point.P < 0.0) {
            state += ", at negative pressure";
        }
        rows.push_back({temperatureText(point.T), resultText(point.P), resultText(point.V),
                        resultText(density), resultText(Z), state});
    }
    ListBox1.setRows(rows);
    std::string sentence =
        rows.empty()       ? "This fluid has no critical point"
        : rows.size() == 1 ? "This fluid has one critical point"
                           : "This fluid has " + std::to_string(rows.size()) + " critical points";
    const ShownPressures shown = shownPressures();
    for (const fluid::CriticalPoint& point : points_) {
        if (!shown.include(point.P)) {
            sentence += "; that at " + resultText(point.P) + " MPa lies outside of the plot";
        }
    }
    Count.setText(sentence);
}

void CriticalPointWindow::showPseudoCriticalPoint() {
    const auto pseudo = fluid::FindPseudoCriticalPoint(fluid::AcceptedMixture());
    ResultT.setText(temperatureText(pseudo.T));
    Label1.setText(temperature.unitText());
    ResultP.setText(resultText(pseudo.P));
    ResultV.setText(resultText(pseudo.V));
}

ShownPressures CriticalPointWindow::shownPressures() const {
    ShownPressures shown(points_);
    for (const fluid::CriticalPoint& point : points_) {
        if (PlotAll.isOn()) {
            shown.extendTo(point.P);
        }
    }
    return shown;
}

double CriticalPointWindow::coldestShown(const std::vector<fluid::BoundaryPiece>& boundary) const {
    double hottest = 0.0;
    for (const fluid::BoundaryPiece& piece : boundary) {
        for (const StatePoint& point : piece.points) {
            hottest = std::max(hottest, point.T);
        }
    }
    constexpr double share = 0.4;
    double coldest = share * hottest;
    constexpr double below = 0.9;
    const ShownPressures shown = shownPressures();
    for (const fluid::CriticalPoint& point : points_) {
        if (shown.include(point.P)) {
            coldest = std::min(coldest, below * point.T);
        }
    }
    return coldest;
}

void CriticalPointWindow::plot() {
    const auto boundary = fluid::TraceBoundary(fluid::AcceptedMixture(), points_);
    const ShownPressures shown = shownPressures();
    const double coldest = coldestShown(boundary);
    const auto x = [this](const StatePoint& point) { return temperature.fromKelvin(point.T); };
    PlotSeries bubble("bubble points", PlotSeries::Style::line, 0);
    PlotSeries dew("dew points", PlotSeries::Style::line, 1);
    for (const fluid::BoundaryPiece& piece : boundary) {
        std::vector<StatePoint> warm;
        std::copy_if(piece.points.begin(), piece.points.end(), std::back_inserter(warm),
                     [coldest](const StatePoint& point) { return point.T >= coldest; });
        addCurve(piece.kind == fluid::Homogenisation::IntoLiquid ? bubble : dew, warm, shown, x);
    }
    PlotSeries spinodal("spinodal", PlotSeries::Style::dashed, 2);
    for (const auto& piece :
         fluid::TraceSpinodal(fluid::AcceptedMixture(), fluid::SpinodalKind::Diffusional, coldest,
                              std::numeric_limits<double>::infinity())) {
        addCurve(spinodal, piece, shown, x);
    }
    PlotSeries critical("critical point", PlotSeries::Style::markers, 3);
    PlotSeries metastable("meta-stable critical point", PlotSeries::Style::markers, 1);
    PlotSeries unstable("unstable critical point", PlotSeries::Style::markers, 4);
    for (std::size_t i = 0; i < points_.count; ++i) {
        const fluid::CriticalPoint& point = points_.points[i];
        if (shown.include(point.P)) {
            (kinds_[i] == Stability::Unstable     ? unstable
             : kinds_[i] == Stability::Metastable ? metastable
                                                  : critical)
                .add(temperature.fromKelvin(point.T), point.P);
        }
    }
    const auto pseudo = fluid::FindPseudoCriticalPoint(fluid::AcceptedMixture());
    PlotSeries pseudoPoint("pseudo-critical point", PlotSeries::Style::markers, 5);
    pseudoPoint.add(temperature.fromKelvin(pseudo.T), pseudo.P);
    plotPanel.setAxes("Temperature", temperature.unitText(), "Pressure", "MPa");
    plotPanel.show({std::move(bubble), std::move(dew), std::move(spinodal), std::move(critical),
                    std::move(metastable), std::move(unstable), std::move(pseudoPoint)});
}

}  // namespace procedures
