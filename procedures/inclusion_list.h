#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "procedures/inclusion.h"
#include "procedures/series_table.h"

namespace procedures {

// A fluid and its composition as a text.
struct Fluid {
    fluid::Mixture mixture;
    std::string composition;
};

// Inclusions in the order of their rows, and what follows from them. They are of the present
// fluid, but for those that were kept with the fluid of their own.
class InclusionList : public SeriesTable {
  public:
    // A selection of rows, ascending.
    using Rows = std::vector<std::size_t>;

    static Row heads(const TemperatureScale& scale);
    // The columns that hold words, not numbers.
    static std::vector<std::size_t> words();

    // Calculates everything anew that was not kept, for this fluid.
    void calculate(const Fluid& fluid);
    // Empties the results of the present fluid and leaves what is given.
    void forgetResults();
    // Leaves the inclusions of the present fluid with it, whatever is calculated later.
    void keep();

    // Puts inclusions at the end. One without a name is called by its number.
    void add(std::vector<Inclusion> inclusions);
    void rename(std::size_t row, const std::string& name);
    void remove(const Rows& rows);
    // Moves the rows one place towards the start or the end, together; returns where they are.
    Rows move(const Rows& rows, bool towardsEnd);
    // Takes the next of several points of homogenization.
    void chooseNextPoint(const Rows& rows);
    // Of all that have no condition of their own.
    void setTrapping(const Trapping& trapping) { trapping_ = trapping; }
    const Trapping& trapping() const { return trapping_; }
    // The own one of these rows; an unknown one leaves them with that of all.
    void setTrapping(const Rows& rows, const Trapping& trapping);

    const Inclusion& inclusion(std::size_t row) const { return entries_[row].inclusion; }
    // Nothing but a remark until it is calculated.
    const InclusionState& state(std::size_t row) const { return entries_[row].state; }
    Trapped trapped(std::size_t row) const;
    // The fluid of a row; null until it is calculated.
    const std::shared_ptr<const Fluid>& fluidOf(std::size_t row) const;
    // The fluid that it was kept with; null for one of the present fluid.
    const std::shared_ptr<const Fluid>& keptFluid(std::size_t row) const {
        return entries_[row].kept;
    }

    std::size_t count() const override { return entries_.size(); }
    Row row(std::size_t number, const TemperatureScale& scale, Digits digits) const override;
    std::string fileHeading() const override;
    std::size_t fileColumns() const override;

  private:
    struct Entry {
        Inclusion inclusion;
        InclusionState state;
        std::shared_ptr<const Fluid> kept;  // null for an inclusion of the present fluid
    };

    void calculate(Entry& entry) const;

    std::shared_ptr<const Fluid> fluid_;  // the present one; null until something is calculated
    Trapping trapping_;
    std::vector<Entry> entries_;
};

}  // namespace procedures
