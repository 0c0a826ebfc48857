#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "model/fluid_state.h"
#include "procedures/series_table.h"
#include "procedures/value_range.h"
#include "toolkit/plot.h"

namespace procedures {

// What a fluid is at one place of a range.
struct RangeState {
    struct Phase {
        fluid::Mixture mixture;
        double V = 0.0;       // cm3/mol
        double amount = 1.0;  // its share of the fluid
    };

    double T = 0.0;  // K
    double P = 0.0;  // MPa
    std::string name;
    std::vector<Phase> phases;  // none where they are not known
};

// A quantity that can be listed and drawn over a range.
struct RangeQuantity {
    std::string name;
    std::string unit;
    int decimals = 0;
    // Nothing where there is no value, as of what two phases do not have together.
    std::function<std::optional<double>(const RangeState&)> value;

    // As a head of a table.
    std::string head() const { return name + (unit.empty() ? "" : "\n(" + unit + ")"); }
};

// Between two temperatures at a pressure, or between two pressures at a temperature.
struct RangeInput {
    bool isOverPressure = false;
    std::optional<WrittenTemperature> T{};           // that the pressures are at
    std::optional<double> P{};                       // MPa, that the temperatures are at
    std::optional<TemperatureRange> temperatures{};  // over temperature
    std::optional<ValueRange> pressures{};           // over pressure, MPa

    // Why nothing can be calculated, as a sentence; empty where it can.
    std::string refusal() const;
};

// The stable states of a fluid over a range: those of its values, and between them those at which
// its phases change, in the direction of the range.
class StateRange {
  public:
    // `input` must not be refused.
    StateRange(const fluid::Mixture& mixture, const RangeInput& input);

    std::size_t count() const { return rows_.size(); }
    RangeState state(std::size_t row) const;
    // Between the rows, at T in K or P in MPa.
    RangeState stateAt(double value) const;
    bool isOverPressure() const { return input_.isOverPressure; }
    bool isChange(std::size_t row) const { return rows_[row].boundary.has_value(); }
    // T or P of a row, in K or MPa.
    double value(std::size_t row) const { return rows_[row].value; }
    WrittenTemperature temperature(std::size_t row) const;
    // How many decimals show every value in full.
    int decimals(const TemperatureScale& scale) const;
    // The fixed temperature or pressure as a part of a name: "300K", "5MPa".
    std::string fixedText() const;
    const fluid::Mixture& mixture() const { return mixture_; }

  private:
    struct Row {
        double value = 0.0;      // K or MPa
        std::size_t number = 0;  // of the value in the range
        std::optional<fluid::BoundaryPoint> boundary{};
    };

    void addBoundaries();
    RangeState changeAt(const fluid::BoundaryPoint& point) const;

    fluid::Mixture mixture_;
    RangeInput input_;
    std::vector<Row> rows_;
};

// Quantities over a range, as a table: temperature, pressure, the state, and each quantity.
class RangeTable : public SeriesTable {
  public:
    RangeTable(StateRange range, std::vector<RangeQuantity> quantities);

    static Row heads(const std::vector<RangeQuantity>& quantities, const TemperatureScale& scale);

    std::size_t count() const override { return range_.count(); }
    Row row(std::size_t number, const TemperatureScale& scale, Digits digits) const override;
    std::string fileHeading() const override;
    std::size_t fileColumns() const override { return 3 + quantities_.size(); }

    const StateRange& range() const { return range_; }
    // What was left out or could not be found, as a sentence; empty where nothing is missing.
    std::string remark() const;

  private:
    StateRange range_;
    std::vector<RangeQuantity> quantities_;
};

// A quantity over the range: a line where the fluid is one phase, broken where it is two, and
// dotted where it jumps from one phase to another.
toolkit::PlotSeries RangeCurve(const StateRange& range, const RangeQuantity& quantity,
                               const TemperatureScale& scale);

}  // namespace procedures
