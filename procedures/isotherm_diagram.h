#pragma once

#include <string>
#include <vector>

#include "model/mixture.h"
#include "procedures/temperature_list.h"
#include "toolkit/plot.h"

namespace procedures {

// What stands in the diagram beside the isotherms.
struct IsothermOverlay {
    bool hasDome = true;  // bubble and dew points
    bool hasSpinodal = false;
    bool hasMechanical = false;
    bool hasCritical = true;
    bool hasTwoPhases = true;   // their pressure where the fluid would split
    bool areDensities = false;  // on the x axis, in place of molar volumes
};

// Isotherms of a fluid between two molar volumes in cm3/mol.
struct IsothermFigure {
    fluid::Mixture mixture;
    std::vector<NamedTemperature> temperatures;
    std::string unit;  // of their names: "K"
    double smallestV = 0.0;
    double largestV = 0.0;
};

// The curves of a figure. `kept`: what its legend says where it stands back in grey behind
// another fluid; empty otherwise.
std::vector<toolkit::PlotSeries> FigureSeries(const IsothermFigure& figure,
                                              const IsothermOverlay& overlay,
                                              const std::string& kept = {});

// The loops and the dome, without the steep branch of the liquid; `isWidthProposed`: and without
// the thin vapour, where the last volume was not typed.
toolkit::FirstView FigureView(const IsothermFigure& figure, bool areDensities,
                              bool isWidthProposed);

}  // namespace procedures
