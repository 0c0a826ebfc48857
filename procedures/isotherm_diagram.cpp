#include "procedures/isotherm_diagram.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <utility>

#include "model/phase_diagram.h"
#include "model/phase_split.h"
#include "model/van_der_waals.h"
#include "procedures/phase_curves.h"
#include "procedures/phase_sentences.h"
#include "procedures/stability_text.h"

namespace procedures {

namespace {

using fluid::Stability;
using fluid::StatePoint;
using toolkit::PlotPoint;
using toolkit::PlotSeries;
using Style = PlotSeries::Style;

Style StyleOf(Stability state) {
    constexpr std::array<Style, 4> styles = {Style::Line, Style::Dashed, Style::Dotted,
                                             Style::DashDotted};
    return styles[static_cast<std::size_t>(state)];
}

double Pressure(const fluid::Mixture& mixture, double T, double V) {
    return fluid::PressureVdW(mixture.attraction, mixture.covolume, T, V);
}

// The pressures of two phases at some volumes, and between them by the cubic through neighbours.
struct SplitCurve {
    std::vector<double> V;
    std::vector<double> P;

    double at(std::size_t i, double share) const {
        const auto secant = [this](std::size_t k) { return (P[k + 1] - P[k]) / (V[k + 1] - V[k]); };
        // That of the parabola through a point and its neighbours.
        const auto slope = [&](std::size_t k) {
            const std::size_t middle = std::clamp(k, std::size_t{1}, V.size() - 2);
            const double before = V[middle] - V[middle - 1];
            const double after = V[middle + 1] - V[middle];
            const double bend = (secant(middle) - secant(middle - 1)) / (before + after);
            return secant(middle - 1) + bend * (2.0 * V[k] - V[middle - 1] - V[middle]);
        };
        const double width = V[i + 1] - V[i];
        const double rest = 1.0 - share;
        return rest * rest * (1.0 + 2.0 * share) * P[i] +
               share * share * (1.0 + 2.0 * rest) * P[i + 1] +
               share * rest * width * (rest * slope(i) - share * slope(i + 1));
    }
};

// Draws the curves of one figure.
class Figure {
  public:
    Figure(const IsothermFigure& figure, const IsothermOverlay& overlay, const std::string& kept)
        : figure_(figure), mixture_(figure.mixture), overlay_(overlay), kept_(kept) {}

    std::vector<PlotSeries> series();

  private:
    double abscissa(double V) const {
        return overlay_.areDensities ? fluid::MolarVolumeFromDensity(mixture_, V) : V;
    }
    PlotSeries isotherm(std::size_t number) const;
    PlotSeries named(const std::string& name, Style style, std::size_t colour) const;
    std::vector<double> volumesOf(const fluid::IsothermStability& stability, double T) const;
    void addStates(PlotSeries& curve, std::vector<double>& volumes, double T,
                   const fluid::IsothermStability& stability) const;
    std::vector<SplitCurve> splits(double T, const fluid::IsothermStability& stability) const;
    PlotSeries through(PlotSeries series, const std::vector<std::vector<StatePoint>>& pieces,
                       const StatesAt& stateAt) const;
    void addDome(std::vector<PlotSeries>& all) const;
    PlotSeries spinodal(fluid::SpinodalKind kind, const std::string& name, Style style,
                        std::size_t colour) const;
    void addCritical(std::vector<PlotSeries>& all) const;

    const IsothermFigure& figure_;
    const fluid::Mixture& mixture_;
    const IsothermOverlay& overlay_;
    const std::string& kept_;
};

PlotSeries Figure::named(const std::string& name, Style style, std::size_t colour) const {
    PlotSeries series(name, style, kept_.empty() ? colour : PlotSeries::grey);
    if (!kept_.empty()) {
        series.name += " of " + kept_;
        series.legend = kept_;
    }
    return series;
}

// Volumes so close that no column of pixels is without one, the limits of the states among them.
std::vector<double> Figure::volumesOf(const fluid::IsothermStability& stability, double T) const {
    constexpr int steps = 120;
    std::vector<double> volumes;
    const double b = mixture_.covolume;
    const double low = std::log(figure_.smallestV - b);
    const double high = std::log(figure_.largestV - b);
    for (int i = 1; i < steps; ++i) {
        volumes.push_back(b + std::exp(std::lerp(low, high, static_cast<double>(i) / steps)));
    }
    volumes.push_back(figure_.smallestV);
    volumes.push_back(figure_.largestV);
    const auto take = [&](double V) {
        if (V > figure_.smallestV && V < figure_.largestV) volumes.push_back(V);
    };
    for (const fluid::BoundaryPoint& point : stability.boundaries()) take(point.V);
    for (const double V :
         fluid::SpinodalOf(mixture_, fluid::SpinodalKind::Diffusional).volumes(T)) {
        take(V);
    }
    std::sort(volumes.begin(), volumes.end());
    volumes.erase(std::unique(volumes.begin(), volumes.end()), volumes.end());
    return volumes;
}

void Figure::addStates(PlotSeries& curve, std::vector<double>& volumes, double T,
                       const fluid::IsothermStability& stability) const {
    std::optional<Stability> before;
    for (const double V : volumesOf(stability, T)) {
        const Stability state = stability.at(volumes.empty() ? V : 0.5 * (volumes.back() + V));
        if (state != before) curve.change(StabilityName(state), StyleOf(state));
        before = state;
        volumes.push_back(V);
        curve.add(abscissa(V), Pressure(mixture_, T, V));
    }
}

// Between the boundaries of what is not stable.
std::vector<SplitCurve> Figure::splits(double T, const fluid::IsothermStability& stability) const {
    std::vector<double> limits = {figure_.smallestV, figure_.largestV};
    for (const fluid::BoundaryPoint& point : stability.boundaries()) {
        limits.push_back(std::clamp(point.V, figure_.smallestV, figure_.largestV));
    }
    std::sort(limits.begin(), limits.end());
    std::vector<SplitCurve> curves;
    for (std::size_t i = 1; i < limits.size(); ++i) {
        const double from = limits[i - 1];
        const double to = limits[i];
        const Stability state = stability.at(0.5 * (from + to));
        if (!(from < to) || state == Stability::Stable || state == Stability::Unknown) continue;
        // Of a pure gas the pressure is the same everywhere.
        const int steps = mixture_.count == 1 ? 2 : 48;
        SplitCurve curve;
        for (int k = 0; k <= steps; ++k) {
            const double V = std::clamp(
                std::exp(std::lerp(std::log(from), std::log(to), static_cast<double>(k) / steps)),
                from, to);
            const bool isEnd = k == 0 || k == steps;
            const auto split = fluid::SplitAtVolume(mixture_, T, V);
            if (split && split->found) {
                curve.V.push_back(V);
                curve.P.push_back(split->phases.P);
            } else if (isEnd && !split) {  // the bubble or dew point itself
                curve.V.push_back(V);
                curve.P.push_back(Pressure(mixture_, T, V));
            }
        }
        if (curve.V.size() > 2) curves.push_back(std::move(curve));
    }
    return curves;
}

PlotSeries Figure::isotherm(std::size_t number) const {
    constexpr std::array<std::size_t, 6> isothermColours = {0, 1, 2, 5, 6, 7};
    const NamedTemperature& temperature = figure_.temperatures[number];
    const double T = temperature.T.kelvin;
    const std::string name = temperature.name + " " + figure_.unit;
    PlotSeries curve =
        named("isotherm " + name, Style::Line, isothermColours[number % isothermColours.size()]);
    const std::string label = temperature.name.starts_with("Tc") ? "Tc" : name;
    curve.label = kept_.empty() ? label : "";
    constexpr double densest = 1.01;
    const fluid::IsothermStability stability(
        mixture_, T, std::min(figure_.smallestV, densest * mixture_.covolume));
    std::vector<double> volumes;
    addStates(curve, volumes, T, stability);
    const std::size_t states = volumes.size();
    auto curves = overlay_.hasTwoPhases ? splits(T, stability) : std::vector<SplitCurve>();
    for (const SplitCurve& split : curves) {
        curve.addGap();
        volumes.push_back(0.0);
        curve.change("two phases", Style::DashDotted);
        for (std::size_t i = 0; i < split.V.size(); ++i) {
            curve.add(abscissa(split.V[i]), split.P[i]);
            volumes.push_back(split.V[i]);
        }
    }
    curve.between = [mixture = mixture_, T, volumes = std::move(volumes), states,
                     curves = std::move(curves),
                     x = overlay_.areDensities](std::size_t i, double share) -> PlotPoint {
        const double V = std::lerp(volumes[i], volumes[i + 1], share);
        const double abscissa = x ? fluid::MolarVolumeFromDensity(mixture, V) : V;
        if (i < states) {
            return {abscissa, Pressure(mixture, T, V)};
        }
        std::size_t first = states + 1;
        std::size_t which = 0;
        while (i >= first + curves[which].V.size()) {
            first += curves[which].V.size() + 1;
            ++which;
        }
        return {abscissa, curves[which].at(i - first, share)};
    };
    return curve;
}

// What of a curve lies between the volumes of the figure, to these volumes themselves.
PlotSeries Figure::through(PlotSeries series, const std::vector<std::vector<StatePoint>>& pieces,
                           const StatesAt& stateAt) const {
    std::vector<std::vector<StatePoint>> inside;
    const auto isInside = [this](const StatePoint& point) {
        return point.V >= figure_.smallestV && point.V <= figure_.largestV;
    };
    for (const auto& piece : pieces) {
        inside.emplace_back();
        for (std::size_t i = 0; i < piece.size(); ++i) {
            if (i > 0 && isInside(piece[i - 1]) != isInside(piece[i])) {
                const double limit = std::min(piece[i - 1].V, piece[i].V) < figure_.smallestV
                                         ? figure_.smallestV
                                         : figure_.largestV;
                if (const auto state = stateAt(limit)) inside.back().push_back(*state);
            }
            if (isInside(piece[i])) inside.back().push_back(piece[i]);
        }
    }
    const std::function<PlotPoint(const StatePoint&)> place = [mixture = mixture_,
                                                               x = overlay_.areDensities](
                                                                  const StatePoint& point) {
        return PlotPoint{x ? fluid::MolarVolumeFromDensity(mixture, point.V) : point.V, point.P};
    };
    return ThroughStates(std::move(series), inside, ShownPressures::all(), place, stateAt);
}

void Figure::addDome(std::vector<PlotSeries>& all) const {
    const fluid::CriticalPoints critical = fluid::FindCriticalPoints(mixture_);
    std::array<std::vector<std::vector<StatePoint>>, 2> pieces;
    for (const fluid::BoundaryPiece& piece : fluid::TraceBoundary(mixture_, critical)) {
        pieces[piece.kind == fluid::Homogenisation::IntoLiquid ? 0 : 1].push_back(piece.points);
    }
    constexpr std::array<const char*, 2> names = {"bubble points", "dew points"};
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        PlotSeries series = named(names[i], Style::Line, PlotSeries::ink);
        if (kept_.empty()) series.legend = "bubble and dew points";
        all.push_back(through(std::move(series), pieces[i], BoundaryStates(mixture_)));
    }
}

PlotSeries Figure::spinodal(fluid::SpinodalKind kind, const std::string& name, Style style,
                            std::size_t colour) const {
    const auto pieces =
        fluid::TraceSpinodal(mixture_, kind, 0.0, std::numeric_limits<double>::infinity());
    return through(named(name, style, colour), pieces, SpinodalStates(mixture_, kind));
}

void Figure::addCritical(std::vector<PlotSeries>& all) const {
    PlotSeries stable = named("critical point", Style::Markers, 3);
    PlotSeries other = named("meta-stable critical point", Style::Markers, 4);
    for (const fluid::CriticalPoint& point : fluid::FindCriticalPoints(mixture_)) {
        const Stability stability = fluid::CriticalStability(mixture_, point);
        if (stability != Stability::Unstable) {
            PlotSeries& marks = stability == Stability::Stable ? stable : other;
            marks.add(abscissa(point.V), point.P);
        }
    }
    all.push_back(std::move(stable));
    all.push_back(std::move(other));
}

std::vector<PlotSeries> Figure::series() {
    std::vector<PlotSeries> all;
    for (std::size_t i = 0; i < figure_.temperatures.size(); ++i) all.push_back(isotherm(i));
    if (overlay_.hasDome) addDome(all);
    using fluid::SpinodalKind;
    constexpr std::size_t violet = 3;
    constexpr std::size_t ochre = 4;
    const bool isPure = mixture_.count == 1;  // both spinodals are the same
    if (overlay_.hasSpinodal || (isPure && overlay_.hasMechanical)) {
        all.push_back(spinodal(SpinodalKind::Diffusional,
                               isPure ? "spinodal" : "diffusional spinodal", Style::Dashed,
                               violet));
    }
    if (overlay_.hasMechanical && !isPure) {
        all.push_back(
            spinodal(SpinodalKind::Mechanical, "mechanical spinodal", Style::Dotted, ochre));
    }
    if (overlay_.hasCritical) addCritical(all);
    return all;
}

}  // namespace

std::vector<PlotSeries> FigureSeries(const IsothermFigure& figure, const IsothermOverlay& overlay,
                                     const std::string& kept) {
    return Figure(figure, overlay, kept).series();
}

toolkit::FirstView FigureView(const IsothermFigure& figure, bool areDensities,
                              bool isWidthProposed) {
    const fluid::Mixture& mixture = figure.mixture;
    const LeadingPoint leading = LeadingPointOf(mixture);
    const ShownPressures shown(fluid::FindCriticalPoints(mixture));
    double top = shown.highest;
    double bottom = 0.0;
    constexpr double widest = 6.0;
    double largestV = widest * leading.V;
    for (const NamedTemperature& each : figure.temperatures) {
        const double T = each.T.kelvin;
        if (T > leading.T && leading.V > figure.smallestV && leading.V < figure.largestV) {
            top = std::max(top, Pressure(mixture, T, leading.V));
        }
        for (const double V :
             fluid::SpinodalOf(mixture, fluid::SpinodalKind::Mechanical).volumes(T)) {
            if (V > figure.smallestV && V < figure.largestV) {
                bottom = std::min(bottom, Pressure(mixture, T, V));
            }
        }
    }
    constexpr double room = 0.06;
    bottom = std::max(bottom, shown.lowest);
    const double height = top - bottom;
    toolkit::FirstView view{.y = toolkit::PlotRange{bottom - room * height, top + room * height}};
    if (isWidthProposed && !areDensities) {
        view.x = toolkit::PlotRange{0.0, std::min(largestV, figure.largestV)};
    }
    return view;
}

}  // namespace procedures
