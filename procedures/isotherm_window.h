#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/phase_boundary.h"
#include "procedures/series_screen.h"
#include "procedures/volume_entry.h"

namespace procedures {

/// The pressures of the mixture over a range of molar volumes or densities at one temperature, and
/// the stability of each state.
class IsothermWindow : public SeriesScreen {
  public:
    explicit IsothermWindow(toolkit::ScreenHost& host);

  private:
    struct Isotherm {
        double T = 0.0;  // K
        std::vector<double> volumes;
        std::vector<double> densities;
        std::vector<double> pressures;
        std::vector<fluid::Stability> states;
    };

    void calculate_Action() override;
    void Clear_Action() override;

    void emptyResults() override;
    void showUnits() override;
    void volumeUnitChosen();
    void temperatureUnitChosen();
    /// The temperature in K; nothing where the entry holds no number above absolute zero.
    std::optional<double> typedTemperature() const;
    bool isUsable(const std::optional<double>& T, const std::optional<ValueRange>& volumes);
    Isotherm calculated(double T, const ValueRange& range,
                        const fluid::IsothermStability& stability) const;
    void show(Isotherm isotherm);
    void showBoundaries(const fluid::IsothermStability& stability);
    void plot(const Isotherm& isotherm, const fluid::IsothermStability& stability);

    VolumeUnit volumeUnitChoice{"GroupBox3"};
    toolkit::Caption Temperature{"Temperature", "Temperature"};
    toolkit::Entry dataEntryT{"dataEntryT", 16};
    toolkit::Label StaticText3{"StaticText3", "Kelvin"};
    toolkit::Entry& dataEntryV1 = first;
    toolkit::Entry& dataEntryV2 = last;
    toolkit::ResultLabel Boundaries{"Boundaries"};
};

}  // namespace procedures
