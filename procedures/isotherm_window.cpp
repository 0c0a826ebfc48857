#include "procedures/isotherm_window.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "model/composition.h"
#include "model/critical_point.h"
#include "model/spinodal.h"
#include "model/van_der_waals.h"
#include "procedures/phase_curves.h"
#include "procedures/phase_sentences.h"
#include "procedures/stability_text.h"
#include "toolkit/layout.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

using fluid::Stability;
using toolkit::PlotSeries;

constexpr int visibleRows = 8;

PlotSeries::Style StyleOf(Stability state) {
    constexpr std::array<PlotSeries::Style, 4> styles = {
        PlotSeries::Style::Line, PlotSeries::Style::Dashed, PlotSeries::Style::Dotted,
        PlotSeries::Style::DashDotted};
    return styles[static_cast<std::size_t>(state)];
}

}  // namespace

IsothermWindow::IsothermWindow(toolkit::ScreenHost& host)
    : Screen(host, "IsothermWindow", "Isotherms - Drovan W"),
      table(*this, warning, "isotherm",
            {.heads = IsothermTable::heads(), .characters = {14, 14, 14, 11}, .words = {3}}),
      plotPanel(*this, warning, table.ListBox1, "isotherm",
                "Pressure over molar volume at this temperature") {
    dataEntryT.onTextChange(this, &IsothermWindow::emptyResults);
    volumeUnitChoice.onChange(this, &IsothermWindow::volumeUnitChosen);
    temperature.onChange(this, &IsothermWindow::temperatureUnitChosen);
    range.onTextChange(this, &IsothermWindow::emptyResults);
    Clear.onClick(this, &IsothermWindow::Clear_Action);
    calculate.onClick(this, &IsothermWindow::calculate_Action);
    Temperature.setTarget(dataEntryT, StaticText3);
    table.ListBox1.setEmptyText(
        "The pressure and the state at each volume or density of the range appear here when they "
        "are calculated.");
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
    setContent(toolkit::Columns({"table", left}, {{"plot", plotPanel.block()}}));
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
    table.ListBox1.setHeads(IsothermTable::heads());
    plotPanel.setAxes("Molar Volume", volumeUnit, "Pressure", "MPa");
}

void IsothermWindow::emptyResults() {
    warning.setText("");
    Boundaries.setText("");
    table.clear();
    plotPanel.clear();
}

void IsothermWindow::Clear_Action() {
    dataEntryT.setText("");
    range.clear();
    emptyResults();
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
    if (const auto number = toolkit::ParseNumber(dataEntryT.text())) {
        input.T = WrittenTemperature::typed(*number, temperature.scale());
    }
    input.values = range.read();
    input.areDensities = volumeUnitChoice.kgm3.isOn();
    const std::string refusal = input.refusal(mixture_);
    warning.setText(refusal);
    return refusal.empty() ? std::optional(input) : std::nullopt;
}

void IsothermWindow::calculate_Action() {
    emptyResults();
    if (const std::optional<IsothermInput> input = read()) {
        show(std::make_shared<const IsothermTable>(mixture_, *input));
    }
}

void IsothermWindow::show(const std::shared_ptr<const IsothermTable>& isotherm) {
    Boundaries.setText(isotherm->boundarySentences());
    plot(*isotherm);
    table.show(isotherm, temperature.scale());
}

void IsothermWindow::plot(const IsothermTable& isotherm) {
    const double a = mixture_.attraction;
    const double b = mixture_.covolume;
    const double T = isotherm.T();
    const fluid::IsothermStability& stability = isotherm.stability();
    std::vector<double> volumes;
    for (const IsothermTable::State& state : isotherm.states()) {
        volumes.push_back(state.V);
    }
    const auto [smallest, largest] = std::minmax({volumes.front(), volumes.back()});
    std::map<std::string, PlotSeries> points;
    PlotSeries spinodal("spinodal", PlotSeries::Style::Markers, 2);
    std::vector<double> marked;  // pressures
    const auto mark = [&, low = smallest, high = largest](PlotSeries& series, double V, double P) {
        if (V >= low && V <= high) {
            volumes.push_back(V);
            series.add(V, P);
            marked.push_back(P);
        }
    };
    for (const fluid::BoundaryPoint& point : stability.boundaries()) {
        const std::string name = PointName(point);
        const std::size_t colour = point.twoLiquids                                    ? 3
                                   : point.kind() == fluid::Homogenisation::IntoLiquid ? 4
                                                                                       : 5;
        mark(points.try_emplace(name, name, PlotSeries::Style::Markers, colour).first->second,
             point.V, point.P);
    }
    for (const double V :
         fluid::SpinodalOf(mixture_, fluid::SpinodalKind::Diffusional).volumes(T)) {
        mark(spinodal, V, fluid::PressureVdW(a, b, T, V));
    }
    std::sort(volumes.begin(), volumes.end());
    const std::string given = toolkit::NumberText(dataEntryT.number());
    PlotSeries curve("isotherm " + given + " " + temperature.scale().symbol());
    std::optional<Stability> before;
    for (const double V : volumes) {
        if (!curve.x.empty() && !(V > curve.x.back())) continue;
        const Stability state = stability.at(curve.x.empty() ? V : 0.5 * (curve.x.back() + V));
        if (state != before) {
            curve.change(StabilityName(state), StyleOf(state));
        }
        before = state;
        curve.add(V, fluid::PressureVdW(a, b, T, V));
    }
    curve.between = [a, b, T, Vs = curve.x](std::size_t i, double share) -> toolkit::PlotPoint {
        const double V = std::lerp(Vs[i], Vs[i + 1], share);
        return {V, fluid::PressureVdW(a, b, T, V)};
    };
    // The loop matters, not the steep branch of the liquid.
    toolkit::FirstView view{.isLogarithmicX = true};
    if (!marked.empty()) {
        const auto [lowest, highest] = std::minmax_element(marked.begin(), marked.end());
        const double critical = ShownPressures(fluid::FindCriticalPoints(mixture_)).highest;
        constexpr double room = 0.1;
        const double top = std::max(*highest, critical);
        const double bottom = std::min(*lowest, 0.0);
        view.y = {bottom - room * (top - bottom), top + room * (top - bottom)};
    }
    std::vector<PlotSeries> series = {std::move(curve), std::move(spinodal)};
    for (auto& [name, marks] : points) {
        series.push_back(std::move(marks));
    }
    plotPanel.show(std::move(series), view, given + (temperature.Kelvin.isOn() ? "K" : "C"));
}

}  // namespace procedures
