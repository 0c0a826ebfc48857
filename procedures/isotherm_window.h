#pragma once

#include <memory>
#include <optional>

#include "procedures/isotherm_table.h"
#include "procedures/plot_panel.h"
#include "procedures/range_entry.h"
#include "procedures/table_panel.h"
#include "procedures/temperature_unit.h"
#include "procedures/volume_entry.h"
#include "toolkit/screen.h"

namespace procedures {

// The pressures of the mixture over a range of molar volumes or densities at one temperature, and
// the stability of each state.
class IsothermWindow : public toolkit::Screen {
  public:
    explicit IsothermWindow(toolkit::ScreenHost& host);

    void Event_Activate() override;

  private:
    void calculate_Action();
    void Clear_Action();

    void layOut();
    void emptyResults();
    void showUnits();
    void volumeUnitChosen();
    void temperatureUnitChosen();
    // What was typed; nothing where it is refused, by a sentence.
    std::optional<IsothermInput> read();
    void show(const std::shared_ptr<const IsothermTable>& isotherm);
    void plot(const IsothermTable& isotherm);

    fluid::Mixture mixture_;  // of what is shown

    VolumeUnit volumeUnitChoice{"GroupBox3"};
    RangeEntry range{"dataEntryV1", "dataEntryV2"};
    TemperatureUnit temperature{"GroupBox2"};
    toolkit::Caption Temperature{"Temperature", "Temperature"};
    toolkit::Entry dataEntryT{"dataEntryT"};
    toolkit::Label StaticText3{"StaticText3", "Kelvin"};
    toolkit::Button Clear{"Clear", "clear"};
    toolkit::Button calculate{"calculate", "calculate"};
    toolkit::Message warning{"warning"};
    TablePanel table;
    PlotPanel plotPanel;
    toolkit::ResultLabel Boundaries{"Boundaries"};
};

}  // namespace procedures
