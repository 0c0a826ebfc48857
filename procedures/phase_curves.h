#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "model/critical_point.h"
#include "model/phase_diagram.h"
#include "toolkit/plot.h"

namespace procedures {

// The pressures in MPa that a diagram of the present composition shows.
struct ShownPressures {
    // Somewhat beyond the critical points of low pressure, but for the unstable ones. `critical`:
    // all critical points of the composition.
    explicit ShownPressures(const fluid::CriticalPoints& critical);
    static ShownPressures all();

    // Shows this pressure too, with something beyond it.
    void extendTo(double P);
    bool include(double P) const { return P >= lowest && P <= highest; }

    double lowest;
    double highest;

  private:
    ShownPressures(double low, double high) : lowest(low), highest(high) {}
};

// Gives the state of a curve at a molar volume in cm3/mol.
using StatesAt = std::function<std::optional<fluid::StatePoint>(double V)>;

// Adds a curve to a series, with gaps before it and where it leaves the pressures shown; `x` gives
// the abscissa of a point, its pressure is the ordinate.
void AddCurve(toolkit::PlotSeries& series, const std::vector<fluid::StatePoint>& curve,
              const ShownPressures& shown,
              const std::function<double(const fluid::StatePoint&)>& x);

// A series through the pieces of such a curve, between whose points the states are read that
// `stateAt` gives at a molar volume in cm3/mol.
toolkit::PlotSeries ThroughStates(toolkit::PlotSeries series,
                                  const std::vector<std::vector<fluid::StatePoint>>& pieces,
                                  const ShownPressures& shown,
                                  const std::function<double(const fluid::StatePoint&)>& x,
                                  const StatesAt& stateAt);
// The same where `place` gives both numbers of a state.
toolkit::PlotSeries ThroughStates(
    toolkit::PlotSeries series, const std::vector<std::vector<fluid::StatePoint>>& pieces,
    const ShownPressures& shown,
    const std::function<toolkit::PlotPoint(const fluid::StatePoint&)>& place,
    const StatesAt& stateAt);

// What gives the states of the phase boundary and of a spinodal of the mixture at a molar volume.
StatesAt BoundaryStates(const fluid::Mixture& mixture);
StatesAt SpinodalStates(const fluid::Mixture& mixture, fluid::SpinodalKind kind);

}  // namespace procedures
