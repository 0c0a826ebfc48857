#pragma once

#include <memory>
#include <optional>

#include "procedures/isochore_table.h"
#include "procedures/plot_panel.h"
#include "procedures/range_entry.h"
#include "procedures/table_panel.h"
#include "procedures/temperature_unit.h"
#include "procedures/volume_entry.h"
#include "toolkit/screen.h"

namespace procedures {

/// The pressures of the mixture over a range of temperatures at one molar volume or density, and
/// the point at which an inclusion of this density homogenizes.
class IsochoreWindow : public toolkit::Screen {
  public:
    explicit IsochoreWindow(toolkit::ScreenHost& host);

    void Event_Activate() override;

  private:
    void calculate_Action();
    void Clear_Action();

    void layOut();
    void emptyResults();
    void showUnits();
    void temperatureUnitChosen();
    /// What was typed; nothing where it is refused, by a sentence.
    std::optional<IsochoreInput> read();
    void show(const std::shared_ptr<const IsochoreTable>& isochore);
    void plot(const IsochoreTable& isochore);

    fluid::Mixture mixture_;  // of what is shown

    VolumeEntry volume{"GroupBox3", "StaticText1"};
    RangeEntry range{"dataEntryT1", "dataEntryT2"};
    TemperatureUnit temperature{"GroupBox2"};
    toolkit::Button Clear{"Clear", "clear"};
    toolkit::Button calculate{"calculate", "calculate"};
    toolkit::Message warning{"warning"};
    TablePanel table;
    PlotPanel plotPanel;
    toolkit::ResultLabel Homogenisation{"Homogenisation"};
};

}  // namespace procedures
