#pragma once

#include <vector>

#include "model/phase_diagram.h"
#include "procedures/series_screen.h"
#include "procedures/volume_entry.h"

namespace procedures {

/// The limits of stability of the mixture: at a temperature, at a molar volume, or over a range of
/// temperatures.
class SpinodalWindow : public SeriesScreen {
  public:
    explicit SpinodalWindow(toolkit::ScreenHost& host);

  private:
    /// A row of the table: a point of a spinodal, its temperature in the unit of the screen and in
    /// Celsius, and what it limits.
    struct Limit {
        fluid::StatePoint state;
        double shownT = 0.0;
        double celsius = 0.0;
        const char* name = "";
    };
    using Curves = std::vector<std::vector<fluid::StatePoint>>;

    void calculate_Action() override;
    void Clear_Action() override;
    void Explanations_Action();
    void GivenT_Action();
    void GivenV_Action();
    void GivenRange_Action();
    void PlotT_Action();
    void PlotV_Action();

    void emptyResults() override;
    void showUnits() override;
    void connectHandlers();
    void layOutAroundPlot();
    void givenChosen();
    void plotChosen();
    void volumeUnitChosen();
    void temperatureUnitChosen();

    void calculateAtTemperature();
    void calculateAtVolume();
    void calculateRange();
    /// Adds the limits at a temperature in the unit of the screen, with the decimals of `range`.
    void addLimits(double shownT, const ValueRange& range, std::vector<Limit>& limits) const;
    void show(std::vector<Limit> limits);
    /// Takes the curves of a plot around the temperature T in K, or between two temperatures.
    void traceAround(double T);
    void trace(double lowestT, double highestT);
    void plot();

    VolumeUnit volumeUnitChoice{"GroupBox3"};
    toolkit::RadioGroup givenGroup;
    toolkit::RadioButton GivenT{givenGroup, "GivenT", " Temperature"};
    toolkit::Entry dataEntryT{"dataEntryT", 16};
    toolkit::Label StaticText1{"StaticText1", "Kelvin"};
    toolkit::RadioButton GivenV{givenGroup, "GivenV", " Molar Volume"};
    toolkit::Entry dataEntryV{"dataEntryV", 16};
    toolkit::Label StaticText2{"StaticText2"};
    toolkit::RadioButton GivenRange{givenGroup, "GivenRange", " Between two temperatures"};
    toolkit::RadioGroup plotGroup;
    toolkit::GroupBox GroupBox4{"GroupBox4", "Plot over"};
    toolkit::RadioButton PlotT{plotGroup, "PlotT", " temperature"};
    toolkit::RadioButton PlotV{plotGroup, "PlotV", " molar volume"};
    toolkit::Button Explanations{"Explanations", "explanation"};

    Curves diffusional_;
    Curves mechanical_;  // none for a pure gas, where both are the same
    std::vector<fluid::StatePoint> marks_;
};

}  // namespace procedures
