#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/phase_boundary.h"
#include "procedures/series_screen.h"
#include "procedures/volume_entry.h"

namespace procedures {

/// The pressures of the mixture over a range of temperatures at one molar volume or density, and
/// the point at which an inclusion of this density homogenises.
class IsochoreWindow : public SeriesScreen {
  public:
    explicit IsochoreWindow(toolkit::ScreenHost& host);

  private:
    /// The table: temperatures in the chosen unit and MPa.
    struct Isochore {
        double V = 0.0;
        std::vector<double> temperatures;
        std::vector<double> pressures;
        double splitsBelow = 0.0;  // in the chosen unit
    };

    void calculate_Action() override;
    void Clear_Action() override;

    void emptyResults() override;
    void showUnits() override;
    void temperatureUnitChosen();
    bool isUsable(const std::optional<ValueRange>& temperatures);
    void show(Isochore isochore, const ValueRange& temperatures);
    void showBoundary(const std::optional<fluid::BoundaryPoint>& boundary, double lowestT);
    void plot(const Isochore& isochore, const std::optional<fluid::BoundaryPoint>& boundary);

    VolumeEntry volume{"GroupBox3", "StaticText1"};
    toolkit::Entry& dataEntryT1 = first;
    toolkit::Entry& dataEntryT2 = last;
    toolkit::ResultLabel Homogenisation{"Homogenisation"};
};

}  // namespace procedures
