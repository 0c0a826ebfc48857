#pragma once

#include <memory>
#include <optional>

#include "procedures/phase_curves.h"
#include "procedures/plot_panel.h"
#include "procedures/range_entry.h"
#include "procedures/spinodal_table.h"
#include "procedures/table_panel.h"
#include "procedures/temperature_unit.h"
#include "procedures/volume_entry.h"
#include "toolkit/screen.h"

namespace procedures {

// The limits of stability of the mixture: at a temperature, at a molar volume, or over a range of
// temperatures.
class SpinodalWindow : public toolkit::Screen {
  public:
    explicit SpinodalWindow(toolkit::ScreenHost& host);

    void Event_Activate() override;

  private:
    void calculate_Action();
    void Clear_Action();
    void Explanations_Action();
    void GivenT_Action();
    void GivenV_Action();
    void GivenRange_Action();
    void Plot_Action();

    void connectHandlers();
    void layOut();
    void emptyResults();
    void showUnits();
    void givenChosen();
    void plotChosen();
    void volumeUnitChosen();
    void temperatureUnitChosen();
    // What was typed; nothing where it is refused, by a sentence.
    std::optional<SpinodalInput> read();
    void show();
    // Where a state lies between the axes that are chosen.
    std::function<toolkit::PlotPoint(const fluid::StatePoint&)> places() const;
    // The bubble and dew points down to the coldest point of the spinodal.
    std::vector<toolkit::PlotSeries> boundary(const ShownPressures& shown) const;
    // Around what differs: the stable critical points and the limits in the table.
    toolkit::FirstView firstView() const;
    void plot();

    fluid::Mixture mixture_;  // of what is shown
    std::shared_ptr<const SpinodalTable> limits_;

    VolumeUnit volumeUnitChoice{"GroupBox3"};
    RangeEntry range{"dataEntryT1", "dataEntryT2"};
    TemperatureUnit temperature{"GroupBox2"};
    toolkit::RadioGroup givenGroup;
    toolkit::RadioButton GivenT{givenGroup, "GivenT", " Temperature"};
    toolkit::Entry dataEntryT{"dataEntryT"};
    toolkit::Label StaticText1{"StaticText1", "Kelvin"};
    toolkit::RadioButton GivenV{givenGroup, "GivenV", " Molar Volume"};
    toolkit::Entry dataEntryV{"dataEntryV"};
    toolkit::Label StaticText2{"StaticText2"};
    toolkit::RadioButton GivenRange{givenGroup, "GivenRange", " Between two temperatures"};
    toolkit::RadioGroup plotGroup;
    toolkit::GroupBox GroupBox4{"GroupBox4", "Plot"};
    toolkit::RadioButton PlotT{plotGroup, "PlotT", " pressure over T"};
    toolkit::RadioButton PlotV{plotGroup, "PlotV", " pressure over V"};
    toolkit::RadioButton PlotTV{plotGroup, "PlotTV", " T over V with its fields"};
    toolkit::Button Explanations{"Explanations", "explanation"};
    toolkit::Button Clear{"Clear", "clear"};
    toolkit::Button calculate{"calculate", "calculate"};
    toolkit::Message warning{"warning"};
    TablePanel table;
    PlotPanel plotPanel;
};

}  // namespace procedures
