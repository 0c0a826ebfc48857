#include "procedures/isochore_diagram.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <utility>

#include "model/critical_point.h"
#include "model/phase_split.h"
#include "model/van_der_waals.h"
#include "procedures/phase_curves.h"

namespace procedures {

namespace {

using fluid::StatePoint;
using toolkit::PlotSeries;

/// The smallest of 1, 2 and 5 times a power of ten that is not below `width`.
double roundStep(double width) {
    const double power = std::pow(10.0, std::floor(std::log10(width)));
    for (const double times : {1.0, 2.0, 5.0}) {
        if (times * power >= width) {
            return times * power;
        }
    }
    return 10.0 * power;
}

double hottestStable(const fluid::CriticalPoints& points) {
    double hottest = 0.0;
    for (const fluid::CriticalPoint& point : points) {
        if (point.isLocallyStable && point.P > 0.0) {
            hottest = std::max(hottest, point.T);
        }
    }
    return hottest;
}

double inUnit(double kelvin, const TemperatureScale& scale) {
    return WrittenTemperature::calculated(kelvin).in(scale);
}

InclusionLine::State stateOf(const fluid::PhaseSplit& split) {
    return split.metastable ? InclusionLine::State::TwoOfThree : InclusionLine::State::TwoPhases;
}

const char* stateText(InclusionLine::State state) {
    constexpr std::array<const char*, 3> texts = {"one phase", "two phases", "two of three phases"};
    return texts[static_cast<std::size_t>(state)];
}

/// The pressure of two phases from their end at the homogenization down to `lowestT`, hot to cold.
void addPath(const fluid::Mixture& mixture, const StatePoint& end, double lowestT,
             std::size_t steps, InclusionLine& line) {
    using Piece = InclusionLine::Piece;
    StatePoint last = end;
    for (std::size_t i = 1; i <= steps; ++i) {
        const double share = static_cast<double>(i) / static_cast<double>(steps);
        const double T = end.T + share * (lowestT - end.T);
        const auto split = fluid::SplitAtVolume(mixture, T, end.V);
        if (!split) {  // one phase, but for rounding
            continue;
        }
        if (!split->found) {
            line.isColdEndReached = true;
            break;
        }
        const InclusionLine::State state = stateOf(*split);
        if (line.pieces.empty() || line.pieces.back().state != state) {
            line.pieces.push_back(Piece{state, {last}});
        }
        last = {T, split->phases.P, end.V};
        line.pieces.back().points.push_back(last);
    }
    for (Piece& piece : line.pieces) {
        std::reverse(piece.points.begin(), piece.points.end());
    }
    std::reverse(line.pieces.begin(), line.pieces.end());
}

}  // namespace

TemperatureRange proposedTemperatures(const fluid::Mixture& mixture,
                                      const std::vector<InclusionState>& inclusions,
                                      const TemperatureScale& scale) {
    double hottest = hottestStable(fluid::FindCriticalPoints(mixture));
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
    constexpr double steps = 50.0;
    const double first = inUnit(std::max(below * coldest, fluid::ColdestT(mixture)), scale);
    const double last = inUnit(above * hottest, scale);
    const double step = roundStep((last - first) / steps);
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
        if (start.T > lowestT) {
            addPath(mixture, start, lowestT, steps, line);
        } else {
            start = at(lowestT);
        }
    }
    if (start.T < highestT) {
        line.pieces.push_back({InclusionLine::State::OnePhase, {start, at(highestT)}});
    }
    return line;
}

std::vector<PlotSeries> EnvelopeSeries(const fluid::Mixture& mixture, double highestP,
                                       const DiagramStyle& style) {
    const fluid::CriticalPoints critical = fluid::FindCriticalPoints(mixture);
    ShownPressures shown(critical);
    shown.extendTo(highestP);
    shown.lowest = 0.0;
    const auto x = [&style](const StatePoint& point) { return inUnit(point.T, style.scale); };
    const auto isWarm = [&style](const StatePoint& point) { return point.T >= style.lowestT; };
    PlotSeries bubble("bubble points", PlotSeries::Style::line, 0);
    PlotSeries dew("dew points", PlotSeries::Style::line, 1);
    for (const fluid::BoundaryPiece& piece : fluid::TraceBoundary(mixture, critical)) {
        std::vector<StatePoint> warm;
        std::copy_if(piece.points.begin(), piece.points.end(), std::back_inserter(warm), isWarm);
        addCurve(piece.kind == fluid::Homogenisation::IntoLiquid ? bubble : dew, warm, shown, x);
    }
    PlotSeries points("critical point", PlotSeries::Style::markers, 3);
    for (const fluid::CriticalPoint& point : critical) {
        const bool isStable = fluid::CriticalStability(mixture, point) == fluid::Stability::Stable;
        if (isStable && shown.include(point.P)) {
            points.add(inUnit(point.T, style.scale), point.P);
        }
    }
    std::vector<PlotSeries> series = {std::move(bubble), std::move(dew), std::move(points)};
    if (style.hasSpinodal) {
        PlotSeries spinodal("spinodal", PlotSeries::Style::dotted, 2);
        for (const auto& piece :
             fluid::TraceSpinodal(mixture, fluid::SpinodalKind::Diffusional, style.lowestT,
                                  std::numeric_limits<double>::infinity())) {
            addCurve(spinodal, piece, shown, x);
        }
        series.push_back(std::move(spinodal));
    }
    return series;
}

std::vector<PlotSeries> LineSeries(const std::vector<InclusionLine>& lines,
                                   const TemperatureScale& scale, const std::string& name,
                                   std::size_t colour) {
    using Style = PlotSeries::Style;
    constexpr std::array<Style, 3> styles = {Style::line, Style::dashed, Style::dotted};
    PlotSeries curves(name, Style::line, colour);
    PlotSeries marks("homogenization", Style::markers, colour);
    for (const InclusionLine& line : lines) {
        bool isFirst = true;
        for (const InclusionLine::Piece& piece : line.pieces) {
            if (isFirst && curves.size() > 0) {
                curves.addGap();
            }
            curves.change(stateText(piece.state), styles[static_cast<std::size_t>(piece.state)]);
            // Further pieces begin where the one before them ends.
            for (std::size_t i = isFirst ? 0 : 1; i < piece.points.size(); ++i) {
                curves.add(inUnit(piece.points[i].T, scale), piece.points[i].P);
            }
            isFirst = false;
        }
        if (line.homogenization) {
            marks.add(inUnit(line.homogenization->T, scale), line.homogenization->P);
        }
    }
    return {std::move(curves), std::move(marks)};
}

}  // namespace procedures
