#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "model/mixture.h"
#include "model/phase_boundary.h"
#include "procedures/series_table.h"
#include "procedures/temperature_list.h"
#include "procedures/value_range.h"

namespace procedures {

// What isotherms are calculated from.
struct IsothermInput {
    TemperatureList T;
    std::optional<ValueRange> values;  // of molar volumes in cm3/mol, or of densities in g/cm3
    bool areDensities = false;

    // Why they cannot be calculated, as a sentence; empty where they can.
    std::string refusal(const fluid::Mixture& mixture) const;
    double smallestV(const fluid::Mixture& mixture) const;
    double largestV(const fluid::Mixture& mixture) const;
};

// The range that the texts of its first and last value and of its step say; nothing where they say
// none. What is empty is proposed: from 1.05 b to 20 critical volumes, in about a hundred steps.
std::optional<ValueRange> IsothermRange(const fluid::Mixture& mixture, bool areDensities,
                                        const std::array<std::string, 3>& typed);

// The pressures of the mixture over a range of molar volumes or densities at one or several
// temperatures, and the stability of each state.
class IsothermTable : public SeriesTable {
  public:
    struct Isotherm {
        NamedTemperature T;
        fluid::IsothermStability stability;
    };

    // `input` must not be refused.
    IsothermTable(const fluid::Mixture& mixture, const IsothermInput& input);

    static Row heads(const TemperatureScale& scale);

    std::size_t count() const override { return isotherms_.size() * volumes(); }
    // Temperature, molar volume, density, pressure of the homogeneous fluid, then where it splits
    // the pressure of its two phases and the volume fraction of the lighter one, and the state.
    Row row(std::size_t number, const TemperatureScale& scale, Digits digits) const override;
    std::string fileHeading() const override;
    std::size_t fileColumns() const override { return 3; }
    // A block for each isotherm.
    std::string fileText() const override;

    const std::vector<Isotherm>& isotherms() const { return isotherms_; }
    // The bubble and dew points of one isotherm, inside the range or not; of several, how many
    // have some.
    std::string boundarySentences() const;

  private:
    struct State {
        double V = 0.0;
        double density = 0.0;
        double P = 0.0;
    };

    std::size_t volumes() const { return static_cast<std::size_t>(values_.count()); }
    State stateAt(const Isotherm& isotherm, std::size_t number) const;
    static std::string headingOf(const Isotherm& isotherm);

    fluid::Mixture mixture_;
    ValueRange values_;
    bool areDensities_;
    std::vector<Isotherm> isotherms_;
};

}  // namespace procedures
