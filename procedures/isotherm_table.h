#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/mixture.h"
#include "model/phase_boundary.h"
#include "procedures/series_table.h"
#include "procedures/value_range.h"

namespace procedures {

// What an isotherm is calculated from.
struct IsothermInput {
    std::optional<WrittenTemperature> T;
    std::optional<ValueRange> values;  // of molar volumes in cm3/mol, or of densities in g/cm3
    bool areDensities = false;

    // Why it cannot be calculated, as a sentence; empty where it can.
    std::string refusal(const fluid::Mixture& mixture) const;
    // The smallest molar volume of the range.
    double smallestV(const fluid::Mixture& mixture) const;
};

// The pressures of the mixture over a range of molar volumes or densities, and the stability of
// each state.
class IsothermTable : public SeriesTable {
  public:
    struct State {
        double V = 0.0;
        double density = 0.0;
        double P = 0.0;
        fluid::Stability stability = fluid::Stability::Unknown;
    };

    // `input` must not be refused.
    IsothermTable(const fluid::Mixture& mixture, const IsothermInput& input);

    static Row heads();

    std::size_t count() const override { return states_.size(); }
    Row row(std::size_t number, const TemperatureScale& scale, Digits digits) const override;
    std::string fileHeading() const override;
    std::size_t fileColumns() const override { return 3; }

    double T() const { return T_.kelvin; }
    const std::vector<State>& states() const { return states_; }
    const fluid::IsothermStability& stability() const { return stability_; }
    // The bubble and dew points at this temperature, inside the range or not.
    std::string boundarySentences() const;

  private:
    WrittenTemperature T_;
    bool areDensities_;
    int typedDecimals_;
    fluid::IsothermStability stability_;
    std::vector<State> states_;
};

}  // namespace procedures
