#include "procedures/isotherm_window.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>

#include "model/fluid_model.h"
#include "model/spinodal.h"
#include "procedures/stability_text.h"
#include "procedures/units.h"
#include "toolkit/layout.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

using fluid::Stability;
using toolkit::numberText;
using toolkit::PlotSeries;

constexpr int sentenceWidth = 90;  // characters of a line

/// A line for each state, which meet where the state changes.
class StateLines {
  public:
    StateLines() {
        using Style = PlotSeries::Style;
        constexpr std::array<Style, 4> styles = {Style::line, Style::dashed, Style::dotted,
                                                 Style::dotted};
        for (std::size_t i = 0; i < lines_.size(); ++i) {
            lines_[i] = PlotSeries(stabilityName(static_cast<Stability>(i)), styles[i], i);
        }
    }

    /// The line of that state, which from here on starts at (V, P).
    PlotSeries& from(Stability state, double V, double P) {
        PlotSeries& line = lines_[static_cast<std::size_t>(state)];
        if (line.x.empty() || line.x.back() != V) {
            if (!line.x.empty()) {
                line.add(std::numeric_limits<double>::quiet_NaN(), 0.0);
            }
            line.add(V, P);
        }
        return line;
    }

    std::vector<PlotSeries> take() { return {lines_.begin(), lines_.end()}; }

  private:
    std::array<PlotSeries, 4> lines_;
};

}  // namespace

IsothermWindow::IsothermWindow(toolkit::ScreenHost& host)
    : SeriesScreen(host,
                   {.screen = "IsothermWindow",
                    .title = "Isotherms - Drovan W",
                    .fileName = "isotherm",
                    .plotDescription = "Pressure over molar volume at this temperature",
                    .firstEntry = "dataEntryV1",
                    .lastEntry = "dataEntryV2"},
                   {"", "", "", "State"}, {18, 22, 21, 10}) {
    using toolkit::Block;
    dataEntryT.onTextChange(this, &IsothermWindow::entry_TextChange);
    volumeUnitChoice.onChange(this, &IsothermWindow::volumeUnitChosen);
    temperature.onChange(this, &IsothermWindow::temperatureUnitChosen);
    Temperature.setTarget(dataEntryT, StaticText3);
    Boundaries.wrapAt(sentenceWidth);
    const Block inputs =
        toolkit::row({toolkit::grid({{Temperature, Block(dataEntryT).expanding(), StaticText3},
                                     {firstCaption, Block(first).expanding(), firstUnit},
                                     {lastCaption, Block(last).expanding(), lastUnit},
                                     {stepCaption, Block(dataEntryStep).expanding(), stepUnit}})
                          .expanding(),
                      toolkit::column({volumeUnitChoice.block(), temperature.block()})});
    layOut(inputs, Boundaries);
    setFocus(dataEntryT);
}

void IsothermWindow::showUnits() {
    volumeUnitChoice.showCaptions();
    StaticText3.setText(temperature.unitText());
    const std::string quantity = volumeUnitChoice.quantityText();
    firstCaption.setText("First " + quantity);
    lastCaption.setText("Last " + quantity);
    stepCaption.setText(quantity + " Step");
    for (toolkit::Label* const label : {&firstUnit, &lastUnit, &stepUnit}) {
        label->setText(volumeUnitChoice.unitText());
    }
    ListBox1.setHeads({std::string("Molar Volume (") + volumeUnit + ")",
                       std::string("Density (") + densityUnit + ")", "Pressure (MPa)", "State"});
    plotPanel.setAxes("Molar Volume", volumeUnit, "Pressure", "MPa");
}

void IsothermWindow::emptyResults() {
    SeriesScreen::emptyResults();
    Boundaries.setText("");
}

void IsothermWindow::Clear_Action() {
    dataEntryT.setText("");
    SeriesScreen::Clear_Action();
}

void IsothermWindow::volumeUnitChosen() {
    first.setText("");
    last.setText("");
    dataEntryStep.setText("");
    showUnits();
    emptyResults();
}

void IsothermWindow::temperatureUnitChosen() {
    dataEntryT.setText("");
    showUnits();
    emptyResults();
}

std::optional<double> IsothermWindow::typedTemperature() const {
    const auto number = toolkit::parseNumber(dataEntryT.text());
    const double T = number ? temperature.toKelvin(*number) : 0.0;
    return T > 0.0 ? std::optional(T) : std::nullopt;
}

bool IsothermWindow::isUsable(const std::optional<double>& T,
                              const std::optional<ValueRange>& volumes) {
    if (!T || !volumes || !(first.number() > 0.0) || !(last.number() > 0.0)) {
        refuse(
            "warning: put a number for temperature, for both volumes or densities and for the "
            "step");
        return false;
    }
    const double b = fluid::AcceptedMixture().covolume;
    const double smallest = std::min(volumeUnitChoice.toMolarVolume(first.number()),
                                     volumeUnitChoice.toMolarVolume(last.number()));
    if (!(smallest > b)) {
        const double densest = fluid::MolarVolumeFromDensity(fluid::AcceptedMixture(), b);
        refuse("warning: molar volumes must be larger than the co-volume of this fluid, " +
               numberText(b) + " " + volumeUnit + ", and densities smaller than " +
               numberText(densest) + " " + densityUnit);
        return false;
    }
    return canBeListed(*volumes, volumeUnitChoice.kgm3.isOn() ? "densities" : "molar volumes");
}

IsothermWindow::Isotherm IsothermWindow::calculated(
    double T, const ValueRange& range, const fluid::IsothermStability& stability) const {
    const double a = fluid::AcceptedMixture().attraction;
    const double b = fluid::AcceptedMixture().covolume;
    Isotherm isotherm;
    isotherm.T = T;
    const auto count = static_cast<std::size_t>(range.count());
    for (std::size_t i = 0; i < count; ++i) {
        const double number = range.value(i);
        const double other = fluid::MolarVolumeFromDensity(fluid::AcceptedMixture(), number);
        const double V = volumeUnitChoice.kgm3.isOn() ? other : number;
        isotherm.volumes.push_back(V);
        isotherm.densities.push_back(volumeUnitChoice.kgm3.isOn() ? number : other);
        isotherm.pressures.push_back(fluid::PressureVdW(a, b, T, V));
        isotherm.states.push_back(stability.at(V));
    }
    return isotherm;
}

void IsothermWindow::calculate_Action() {
    const std::optional<double> T = typedTemperature();
    const std::optional<ValueRange> volumes = range();
    if (!isUsable(T, volumes)) {
        return;
    }
    emptyResults();
    const double smallest = std::min(volumeUnitChoice.toMolarVolume(first.number()),
                                     volumeUnitChoice.toMolarVolume(last.number()));
    // The boundaries are of interest beyond the range as well.
    constexpr double denseLiquid = 1.01;
    const double b = fluid::AcceptedMixture().covolume;
    const fluid::IsothermStability stability(fluid::AcceptedMixture(), *T,
                                             std::min(smallest, denseLiquid * b));
    Isotherm isotherm = calculated(*T, *volumes, stability);
    showBoundaries(stability);
    plot(isotherm, stability);
    show(std::move(isotherm));
}

void IsothermWindow::show(Isotherm isotherm) {
    const ValueRange celsius = *ValueRange::of(dataEntryT.number(), dataEntryT.number(), 0.0);
    const double T = temperature.Kelvin.isOn() ? celsius.rounded(dataEntryT.number() - zeroCelsius)
                                               : dataEntryT.number();
    const std::string heading = "Temperature = " + numberText(T) +
                                " Celsius\nMolar Volume, Density, Pressure\n(cm3/mol), (g/cm3), "
                                "(MPa)\n";
    const auto table = std::make_shared<const Isotherm>(std::move(isotherm));
    const auto numbers = [table](std::size_t i) -> toolkit::List::Row {
        return {numberText(table->volumes[i]), numberText(table->densities[i]),
                numberText(table->pressures[i])};
    };
    showTable(table->volumes.size(),
              [table, numbers](std::size_t i) {
                  toolkit::List::Row row = numbers(i);
                  row.emplace_back(stabilityName(table->states[i]));
                  return row;
              },
              {heading, numbers});
}

void IsothermWindow::showBoundaries(const fluid::IsothermStability& stability) {
    if (stability.boundaries().empty()) {
        Boundaries.setText("No bubble or dew point was found at this temperature");
        return;
    }
    std::string sentences;
    for (std::size_t i = stability.boundaries().size(); i-- > 0;) {
        const fluid::BoundaryPoint& point = stability.boundaries()[i];
        const bool isBubble = point.kind() == fluid::Homogenisation::IntoLiquid;
        sentences += sentences.empty() ? "" : "\n";
        sentences += isBubble ? "Bubble point at " : "Dew point at ";
        sentences += numberText(point.V) + " " + volumeUnit + " and " + numberText(point.P);
        sentences += " MPa";
    }
    Boundaries.setText(sentences);
}

void IsothermWindow::plot(const Isotherm& isotherm, const fluid::IsothermStability& stability) {
    const double a = fluid::AcceptedMixture().attraction;
    const double b = fluid::AcceptedMixture().covolume;
    const auto [smallest, largest] = std::minmax(isotherm.volumes.front(), isotherm.volumes.back());
    PlotSeries bubble("bubble point", PlotSeries::Style::markers, 4);
    PlotSeries dew("dew point", PlotSeries::Style::markers, 5);
    PlotSeries spinodal("spinodal", PlotSeries::Style::markers, 2);
    std::vector<double> volumes = isotherm.volumes;
    const auto mark = [&, low = smallest, high = largest](PlotSeries& series, double V, double P) {
        if (V >= low && V <= high) {
            volumes.push_back(V);
            series.add(V, P);
        }
    };
    for (const fluid::BoundaryPoint& point : stability.boundaries()) {
        mark(point.kind() == fluid::Homogenisation::IntoLiquid ? bubble : dew, point.V, point.P);
    }
    for (const double V : fluid::DiffusionalSpinodal(fluid::AcceptedMixture(), isotherm.T)) {
        mark(spinodal, V, fluid::PressureVdW(a, b, isotherm.T, V));
    }
    std::sort(volumes.begin(), volumes.end());
    // Between few rows the curve bends visibly.
    constexpr std::size_t smooth = 400;
    const std::size_t pieces = 1 + smooth / volumes.size();
    StateLines lines;
    double V = volumes.front();
    double P = fluid::PressureVdW(a, b, isotherm.T, V);
    lines.from(stability.at(V), V, P);
    for (const double next : volumes) {
        if (!(next > V)) {
            continue;
        }
        PlotSeries& line = lines.from(stability.at(0.5 * (V + next)), V, P);
        for (std::size_t k = 1; k < pieces; ++k) {
            const double share = static_cast<double>(k) / static_cast<double>(pieces);
            const double between = b + (V - b) * std::pow((next - b) / (V - b), share);
            if (between > V && between < next) {
                line.add(between, fluid::PressureVdW(a, b, isotherm.T, between));
            }
        }
        V = next;
        P = fluid::PressureVdW(a, b, isotherm.T, V);
        line.add(V, P);
    }
    std::vector<PlotSeries> series = lines.take();
    series.push_back(std::move(spinodal));
    series.push_back(std::move(bubble));
    series.push_back(std::move(dew));
    plotPanel.show(std::move(series), {.isLogarithmicX = true});
}

}  // namespace procedures
