#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "model/mixture.h"
#include "model/phase_diagram.h"
#include "procedures/inclusion.h"
#include "procedures/value_range.h"
#include "toolkit/plot.h"

namespace procedures {

// Temperatures for inclusions that homogenize there, about fifty steps from somewhat below the
// coldest of them to well above the hottest and the critical point, in round numbers; to the
// `hottestTrapping` in K at least.
TemperatureRange ProposedTemperatures(const fluid::Mixture& mixture,
                                      const std::vector<InclusionState>& inclusions,
                                      const TemperatureScale& scale, double hottestTrapping = 0.0);

// The line of an inclusion in a P-T diagram, from cold to hot.
struct InclusionLine {
    enum class State { OnePhase, TwoPhases, TwoOfThree };
    // States of one kind; the next piece begins where this one ends.
    struct Piece {
        State state = State::OnePhase;
        std::vector<fluid::StatePoint> points;
    };

    std::string name;  // of the inclusion
    std::vector<Piece> pieces;
    std::optional<fluid::StatePoint> homogenization;
    bool isColdEndReached = false;  // whether it ends where nothing is searched
    // The pressure in MPa between the points of two phases, at T in K.
    std::function<std::optional<double>(double T)> pathPressure;
};

// Between two temperatures in K: below the homogenization the pressure of its two phases, if that
// is asked for, in so many steps; from there on the isochore. Of an inclusion of known volume.
InclusionLine LineOf(const fluid::Mixture& mixture, const InclusionState& inclusion, double lowestT,
                     double highestT, std::size_t steps);

// What matters of a diagram over these temperatures: up to the pressures in MPa at which the
// inclusions homogenize, with room for their isochores, and up to those at which they were
// trapped.
toolkit::FirstView DiagramView(const fluid::Mixture& mixture, const TemperatureRange& temperatures,
                               const TemperatureScale& scale, double highestHomogenization,
                               double highestTrapping);

// What has to be said of lines that are drawn from `lowestT` in K on; empty where nothing has.
std::string LineSentences(const fluid::Mixture& mixture, const std::vector<InclusionLine>& lines,
                          double lowestT, const TemperatureScale& scale);

// What stands in a diagram beside the lines.
struct DiagramStyle {
    TemperatureScale scale = kelvinScale;
    double lowestT = 0.0;  // K, of the curves
    bool hasSpinodal = false;
};

// Bubble and dew curves, critical points and the spinodal of a fluid, up to this pressure in MPa
// at least.
std::vector<toolkit::PlotSeries> EnvelopeSeries(const fluid::Mixture& mixture, double highestP,
                                                const DiagramStyle& style);
// The lines in a colour of the palette, each under the name of its inclusion and all as one in the
// legend, and the marks where they begin.
std::vector<toolkit::PlotSeries> LineSeries(const std::vector<InclusionLine>& lines,
                                            const TemperatureScale& scale,
                                            const std::string& legend, std::size_t colour);

}  // namespace procedures
