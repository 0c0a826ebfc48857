#include "procedures/isochore_diagram.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <map>
#include <utility>

#include "model/critical_point.h"
#include "model/phase_split.h"
#include "model/van_der_waals.h"
#include "procedures/phase_curves.h"
#include "procedures/phase_sentences.h"

namespace procedures {

namespace {

using fluid::StatePoint;
using toolkit::PlotSeries;

// The smallest of 1, 2 and 5 times a power of ten that is not below `width`.
double RoundStep(double width) {
    const double power = std::pow(10.0, std::floor(std::log10(width)));
    for (const double times : {1.0, 2.0, 5.0}) {
        if (times * power >= width) return times * power;
    }
    return 10.0 * power;
}

double HottestStable(const fluid::CriticalPoints& points) {
    double hottest = 0.0;
    for (const fluid::CriticalPoint& point : points) {
        if (point.isLocallyStable && point.P > 0.0) {
            hottest = std::max(hottest, point.T);
        }
    }
    return hottest;
}

double InUnit(double kelvin, const TemperatureScale& scale) {
    return WrittenTemperature::calculated(kelvin).in(scale);
}

InclusionLine::State StateOf(const fluid::PhaseSplit& split) {
    return split.metastable ? InclusionLine::State::TwoOfThree : InclusionLine::State::TwoPhases;
}

const char* StateText(InclusionLine::State state) {
    constexpr std::array<const char*, 3> texts = {"one phase", "two phases", "two of three phases"};
    return texts[static_cast<std::size_t>(state)];
}

// The pressures of a curve at its points and wherever it was asked for between them: a plot asks
// for the same places again and again.
class PathPressures {
  public:
    PathPressures(const fluid::Mixture& mixture, double V) : mixture_(mixture), V_(V) {}

    std::optional<double> operator()(double T) {
        constexpr std::size_t most = 20000;
        if (known_.size() > most) {
            known_.clear();
        }
        const auto [at, isNew] = known_.try_emplace(T);
        if (isNew) {
            const auto split = fluid::SplitAtVolume(mixture_, T, V_);
            at->second = split && split->found ? std::optional(split->phases.P) : std::nullopt;
        }
        return at->second;
    }

  private:
    fluid::Mixture mixture_;
    double V_;
    std::map<double, std::optional<double>> known_;
};

// The pressure of two phases from their end at the homogenization down to `lowestT`.
class Path {
  public:
    Path(const fluid::Mixture& mixture, const StatePoint& end, InclusionLine& line)
        : mixture_(mixture), line_(line), last_(end) {}

    void follow(double lowestT, std::size_t steps);

  private:
    struct Place {
        StatePoint point;
        InclusionLine::State state = InclusionLine::State::TwoPhases;
    };
    // Nothing where it is one phase, but for rounding.
    std::optional<Place> at(double T);
    // Goes on to a place of another kind by way of where the kind changes.
    void change(Place next);
    void add(const Place& place);

    const fluid::Mixture& mixture_;
    InclusionLine& line_;
    StatePoint last_;
};

std::optional<Path::Place> Path::at(double T) {
    const auto split = fluid::SplitAtVolume(mixture_, T, last_.V);
    if (split && !split->found) {
        line_.isColdEndReached = true;
    }
    return split && split->found
               ? std::optional(Place{{T, split->phases.P, last_.V}, StateOf(*split)})
               : std::nullopt;
}

void Path::add(const Place& place) {
    if (line_.pieces.back().state != place.state) {
        line_.pieces.push_back({place.state, {last_}});
    }
    last_ = place.point;
    line_.pieces.back().points.push_back(last_);
}

void Path::change(Place next) {
    constexpr int halvings = 20;
    const InclusionLine::State state = line_.pieces.back().state;
    for (int i = 0; i < halvings; ++i) {
        const auto middle = at(0.5 * (last_.T + next.point.T));
        if (!middle) break;
        middle->state == state ? add(*middle) : void(next = *middle);
    }
    add(next);
}

void Path::follow(double lowestT, std::size_t steps) {
    const double highestT = last_.T;
    line_.pieces.push_back({InclusionLine::State::TwoPhases, {last_}});
    for (std::size_t i = 1; i <= steps && !line_.isColdEndReached; ++i) {
        const double share = static_cast<double>(i) / static_cast<double>(steps);
        const auto place = at(std::lerp(highestT, lowestT, share));
        if (!place) continue;
        if (line_.pieces.back().state != place->state) {
            change(*place);
        }
        if (last_.T > place->point.T) {
            add(*place);
        }
    }
    if (line_.pieces.front().points.size() == 1) {
        line_.pieces.erase(line_.pieces.begin());
    }
    // From cold to hot.
    for (InclusionLine::Piece& piece : line_.pieces) {
        std::reverse(piece.points.begin(), piece.points.end());
    }
    std::reverse(line_.pieces.begin(), line_.pieces.end());
}

}  // namespace

TemperatureRange ProposedTemperatures(const fluid::Mixture& mixture,
                                      const std::vector<InclusionState>& inclusions,
                                      const TemperatureScale& scale, double hottestTrapping) {
    double hottest = HottestStable(fluid::FindCriticalPoints(mixture));
    double coldest = std::numeric_limits<double>::infinity();
    for (const InclusionState& inclusion : inclusions) {
        if (inclusion.point) {
            coldest = std::min(coldest, inclusion.point->T.kelvin);
            hottest = std::max(hottest, inclusion.point->T.kelvin);
        }
    }
    if (hottest == 0.0) {
        hottest = fluid::FindPseudoCriticalPoint(mixture).T;
    }
    coldest = std::min(coldest, hottest);
    constexpr double below = 0.75;
    constexpr double above = 1.5;
    constexpr double edge = 1.05;
    constexpr double steps = 50.0;
    const double first = InUnit(std::max(below * coldest, fluid::ColdestT(mixture)), scale);
    const double last = InUnit(std::max(above * hottest, edge * hottestTrapping), scale);
    const double step = RoundStep((last - first) / steps);
    const double start = std::max(step * std::ceil(first / step), step - zeroCelsius);
    return {*ValueRange::of(start, step * std::ceil(last / step), step), scale};
}

InclusionLine LineOf(const fluid::Mixture& mixture, const InclusionState& inclusion, double lowestT,
                     double highestT, std::size_t steps) {
    const auto at = [&, a = mixture.attraction, b = mixture.covolume](double T) {
        return StatePoint{T, fluid::PressureVdW(a, b, T, inclusion.V), inclusion.V};
    };
    InclusionLine line;
    StatePoint start = at(lowestT);
    if (inclusion.point) {
        start = {inclusion.point->T.kelvin, inclusion.point->P, inclusion.V};
        line.homogenization = start;
        if (start.T > lowestT && steps > 0) {
            const double coldest = fluid::ColdestT(mixture);
            Path(mixture, start, line).follow(std::max(lowestT, coldest), steps);
            line.isColdEndReached = line.isColdEndReached || lowestT < coldest;
            line.pathPressure = PathPressures(mixture, start.V);
        } else if (start.T <= lowestT) {
            start = at(lowestT);
        }
    }
    if (start.T < highestT) {
        line.pieces.push_back({InclusionLine::State::OnePhase, {start, at(highestT)}});
    }
    return line;
}

toolkit::FirstView DiagramView(const fluid::Mixture& mixture, const TemperatureRange& temperatures,
                               const TemperatureScale& scale, double highestHomogenization,
                               double highestTrapping) {
    constexpr double room = 4.0;
    constexpr double edge = 1.1;
    const double curves = ShownPressures(fluid::FindCriticalPoints(mixture)).highest;
    const double highest = std::max({room * highestHomogenization, curves, edge * highestTrapping});
    return {
        .x = toolkit::PlotRange{temperatures.lowest().in(scale), temperatures.highest().in(scale)},
        .y = toolkit::PlotRange{0.0, highest}};
}

std::string LineSentences(const fluid::Mixture& mixture, const std::vector<InclusionLine>& lines,
                          double lowestT, const TemperatureScale& scale) {
    const auto hasState = [&lines](InclusionLine::State state) {
        return std::any_of(lines.begin(), lines.end(), [state](const InclusionLine& line) {
            return std::any_of(line.pieces.begin(), line.pieces.end(),
                               [state](const auto& piece) { return piece.state == state; });
        });
    };
    const bool endsCold = std::any_of(lines.begin(), lines.end(), [](const InclusionLine& line) {
        return line.isColdEndReached;
    });
    std::vector<std::string> sentences;
    if (hasState(InclusionLine::State::TwoOfThree)) {
        sentences.emplace_back(
            "Dotted: two phases where three are more stable; their pressure is not that of three.");
    }
    if (endsCold || lowestT < fluid::ColdestT(mixture)) {
        sentences.push_back(
            "Below " + SentenceText(InUnit(fluid::ColdestT(mixture), scale)) + " " + scale.name +
            " nothing is searched: bubble points, dew points and two phases end there.");
    }
    std::string text;
    for (const std::string& sentence : sentences) {
        text += (text.empty() ? "" : " ") + sentence;
    }
    return text;
}

std::vector<PlotSeries> EnvelopeSeries(const fluid::Mixture& mixture, double highestP,
                                       const DiagramStyle& style) {
    const fluid::CriticalPoints critical = fluid::FindCriticalPoints(mixture);
    ShownPressures shown(critical);
    shown.extendTo(highestP);
    shown.lowest = 0.0;
    const auto x = [scale = style.scale](const StatePoint& point) {
        return InUnit(point.T, scale);
    };
    using Pieces = std::vector<std::vector<StatePoint>>;
    Pieces bubble;
    Pieces dew;
    for (fluid::BoundaryPiece& piece : fluid::TraceBoundary(mixture, critical)) {
        const bool isBubble = piece.kind == fluid::Homogenisation::IntoLiquid;
        (isBubble ? bubble : dew).push_back(std::move(piece.points));
    }
    const auto through = [&](PlotSeries curve, const Pieces& pieces) {
        const auto stateAt = [mixture](double V) -> std::optional<StatePoint> {
            const auto point = fluid::FindBoundary(mixture, V);
            return point ? std::optional(StatePoint{point->T, point->P, V}) : std::nullopt;
        };
        return ThroughStates(std::move(curve), pieces, shown, x, stateAt);
    };
    PlotSeries points("critical point", PlotSeries::Style::Markers, 3);
    for (const fluid::CriticalPoint& point : critical) {
        const bool isStable = fluid::CriticalStability(mixture, point) == fluid::Stability::Stable;
        if (isStable && shown.include(point.P)) {
            points.add(InUnit(point.T, style.scale), point.P);
        }
    }
    using Style = PlotSeries::Style;
    PlotSeries bubbles("bubble points", Style::Line, 0);
    PlotSeries dews("dew points", Style::LongDashed, 1);
    constexpr double thick = 1.7;
    bubbles.weight = dews.weight = thick;
    if (mixture.count == 1) {  // both are one curve
        bubbles.legend = dews.legend = "bubble and dew points";
        dews.colour = bubbles.colour;
        dews.parts = bubbles.parts;
    }
    std::vector<PlotSeries> series = {through(std::move(bubbles), bubble),
                                      through(std::move(dews), dew), std::move(points)};
    if (style.hasSpinodal) {
        const auto stateAt = [mixture, limit = fluid::SpinodalOf(
                                           mixture, fluid::SpinodalKind::Diffusional)](double V) {
            const double T = limit.temperature(V);
            return std::optional(
                StatePoint{T, fluid::PressureVdW(mixture.attraction, mixture.covolume, T, V), V});
        };
        series.push_back(ThroughStates(
            PlotSeries("spinodal", PlotSeries::Style::Dotted, 2),
            fluid::TraceSpinodal(mixture, fluid::SpinodalKind::Diffusional, style.lowestT,
                                 std::numeric_limits<double>::infinity()),
            shown, x, stateAt));
    }
    return series;
}

std::vector<PlotSeries> LineSeries(const std::vector<InclusionLine>& lines,
                                   const TemperatureScale& scale, const std::string& legend,
                                   std::size_t colour) {
    using Style = PlotSeries::Style;
    constexpr std::array<Style, 3> styles = {Style::Line, Style::Dashed, Style::Dotted};
    constexpr std::size_t mostLabels = 8;
    constexpr std::size_t mostMarks = 100;
    constexpr std::size_t mostTrueCurves = 60;
    constexpr int chords = 40;  // of an isochore among more of them
    constexpr double thin = 0.75;
    const std::size_t comma = legend.find(", ");
    const std::string ofFluid = comma == std::string::npos ? "" : legend.substr(comma);
    std::vector<PlotSeries> series;
    std::vector<PlotSeries> marks;
    for (const InclusionLine& line : lines) {
        PlotSeries curve(line.name.empty() ? "isochore" : "isochore " + line.name, Style::Line,
                         colour);
        curve.legend = legend;
        curve.weight = thin;
        curve.label = lines.size() <= mostLabels ? line.name : "";
        for (const InclusionLine::Piece& piece : line.pieces) {
            // Further pieces begin where the one before them ends.
            const bool isFirst = curve.size() == 0;
            curve.change(StateText(piece.state), styles[static_cast<std::size_t>(piece.state)]);
            if (piece.state == InclusionLine::State::OnePhase) {  // where its name tells it apart
                curve.labelFrom = curve.parts.size() - 1;
            }
            for (std::size_t i = isFirst ? 0 : 1; i < piece.points.size(); ++i) {
                const StatePoint& to = piece.points[i];
                const bool isLong = i > 0 && piece.state == InclusionLine::State::OnePhase;
                for (int k = 1; isLong && lines.size() > mostTrueCurves && k < chords; ++k) {
                    const double share = static_cast<double>(k) / chords;
                    curve.add(InUnit(std::lerp(piece.points[i - 1].T, to.T, share), scale),
                              std::lerp(piece.points[i - 1].P, to.P, share));
                }
                curve.add(InUnit(to.T, scale), to.P);
            }
        }
        // On a logarithmic axis an isochore is no straight line either.
        if (line.pathPressure || lines.size() <= mostTrueCurves) {
            const double homogenization =
                line.pathPressure && line.homogenization ? line.homogenization->T : 0.0;
            curve.between = [pressure = line.pathPressure, x = curve.x, y = curve.y, scale,
                             homogenization](std::size_t i, double share) -> toolkit::PlotPoint {
                const double at = std::lerp(x[i], x[i + 1], share);
                const double T = scale.toKelvin(at);
                const auto P = T < homogenization ? pressure(T) : std::nullopt;
                return {at, P.value_or(std::lerp(y[i], y[i + 1], share))};
            };
        }
        series.push_back(std::move(curve));
        if (line.homogenization && lines.size() <= mostMarks) {
            PlotSeries mark("homogenization" + (line.name.empty() ? "" : " of " + line.name),
                            Style::Markers, colour);
            mark.legend = "homogenization" + ofFluid;
            mark.add(InUnit(line.homogenization->T, scale), line.homogenization->P);
            marks.push_back(std::move(mark));
        }
    }
    std::move(marks.begin(), marks.end(), std::back_inserter(series));
    return series;
}

}  // namespace procedures
