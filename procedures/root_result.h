#pragma once

#include <string>
#include <vector>

#include "procedures/root_volume.h"
#include "toolkit/label.h"
#include "toolkit/layout.h"

namespace procedures {

// The slope of the isotherm at a chosen root, its molar volume and its density.
class RootResult {
  public:
    RootResult();

    // The molar volume and the density, each in a row of a grid.
    std::vector<std::vector<toolkit::Block>> rows();
    void show(const RootVolume& root);
    // The same of any root: "---" stands for what it lacks, and a sentence says why, in `warning`
    // where there is no volume.
    void showAny(const RootVolume& root, toolkit::Label& warning);
    void empty();
    // Gives the units their texts of the screen's first activation.
    void showUnits();

  private:
    void showNone(const std::string& text);

  public:
    toolkit::ResultLabel slope{"slope"};
    toolkit::Caption resultCaption{"MolarVolume", "Molar Volume"};
    toolkit::ResultLabel Result{"Result"};
    toolkit::Label Label4{"Label4", " cm3/mol"};
    toolkit::Caption densityCaption{"Density", "Density"};
    toolkit::ResultLabel DensityResult{"DensityResult"};
    toolkit::Label Label01{"Label01", " g/cm3"};
};

}  // namespace procedures
