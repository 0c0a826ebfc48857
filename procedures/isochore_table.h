#pragma once

#include <optional>
#include <string>

#include "model/mixture.h"
#include "model/phase_boundary.h"
#include "procedures/series_table.h"
#include "procedures/value_range.h"

namespace procedures {

// What an isochore is calculated from.
struct IsochoreInput {
    double V = 0.0;  // cm3/mol, not above 0 where none is given
    std::optional<TemperatureRange> temperatures;

    // Why it cannot be calculated, as a sentence; empty where it can.
    std::string refusal(const fluid::Mixture& mixture) const;
};

// The pressures of a fluid of constant density over a range of temperatures.
class IsochoreTable : public SeriesTable {
  public:
    // `input` must not be refused.
    IsochoreTable(const fluid::Mixture& mixture, const IsochoreInput& input);

    static Row heads(const TemperatureScale& scale);

    std::size_t count() const override { return temperatures_.count(); }
    // Temperature, pressure of the homogeneous fluid, then where it splits the pressure of its two
    // phases and the volume fraction of the lighter one, and the state.
    Row row(std::size_t number, const TemperatureScale& scale, Digits digits) const override;
    std::string fileHeading() const override;
    std::size_t fileColumns() const override { return 2; }

    const TemperatureRange& temperatures() const { return temperatures_; }
    double V() const { return V_; }
    // Where the fluid homogenizes; none where it is stable down to the coldest state searched.
    const std::optional<fluid::BoundaryPoint>& boundary() const { return boundary_; }
    bool splitsAt(double T) const { return boundary_ && T < boundary_->T; }
    // Of the homogeneous fluid in MPa, at T in K.
    double pressure(double T) const;
    // Where and how the fluid homogenizes, inside the range or not.
    std::string homogenizationSentence(const TemperatureScale& scale) const;

  private:
    fluid::Mixture mixture_;
    double V_;
    TemperatureRange temperatures_;
    double a_;
    double b_;
    std::optional<fluid::BoundaryPoint> boundary_;
};

}  // namespace procedures
