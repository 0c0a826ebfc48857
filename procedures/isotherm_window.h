#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "procedures/isotherm_diagram.h"
#include "procedures/isotherm_table.h"
#include "procedures/plot_panel.h"
#include "procedures/range_entry.h"
#include "procedures/table_panel.h"
#include "procedures/temperature_unit.h"
#include "procedures/volume_entry.h"
#include "toolkit/check_button.h"
#include "toolkit/screen.h"

namespace procedures {

// The pressures of the mixture over a range of molar volumes or densities at one or several
// temperatures, and the stability of each state: a table, and the figure of isotherms, dome,
// spinodals and tie lines.
class IsothermWindow : public toolkit::Screen {
  public:
    explicit IsothermWindow(toolkit::ScreenHost& host);

    void Event_Activate() override;

  private:
    void calculate_Action();
    void Clear_Action();
    void Keep_Action();

    void layOut();
    void emptyResults();
    void showUnits();
    void volumeUnitChosen();
    void temperatureUnitChosen();
    // What was typed; nothing where it is refused, by a sentence.
    std::optional<IsothermInput> read();
    void show(const std::shared_ptr<const IsothermTable>& isotherms, const IsothermInput& input);
    IsothermOverlay overlay() const;
    // Draws the figure and those that are kept, with what is chosen to stand over them.
    void plot();
    // The same with the limits that are in view.
    void plotAgain();

    fluid::Mixture mixture_;  // of what is shown
    std::optional<IsothermFigure> figure_;
    bool isWidthProposed_ = false;
    std::vector<IsothermFigure> kept_;

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
    toolkit::CheckButton Dome{"Dome", "dome"};
    toolkit::CheckButton TwoPhases{"TwoPhases", "two phases"};
    toolkit::CheckButton CriticalPoints{"CriticalPoints", "critical points"};
    toolkit::CheckButton Spinodal{"Spinodal", "spinodal"};
    toolkit::CheckButton Mechanical{"Mechanical", "mechanical spinodal"};
    toolkit::Button Keep{"Keep", "keep"};
    PlotPanel plotPanel;
    toolkit::ResultLabel Boundaries{"Boundaries"};
};

}  // namespace procedures
