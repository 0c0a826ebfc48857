#include "procedures/inclusion_list.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "model/van_der_waals.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr int decimals = 6;

// "Th" or the quantity that is given, as its column shows it.
const char* GivenText(const Inclusion& inclusion) {
    if (!inclusion.problem.empty()) return "";
    return inclusion.isByTemperature()        ? "Th"
           : inclusion.by == GivenBy::Density ? "density"
                                              : "molar volume";
}

const char* IntoText(const HomogenizationPoint& point) {
    if (point.isCritical) return "critical";
    return point.into == fluid::Homogenisation::IntoLiquid ? "liquid" : "vapour";
}

}  // namespace

SeriesTable::Row InclusionList::heads(const TemperatureScale& scale) {
    const std::string unit = std::string("(") + scale.name + ")";
    return {"Name",
            "Given",
            "Th\n" + unit,
            "Into",
            "Ph\n(MPa)",
            std::string("Molar Volume\n(") + volumeUnit + ")",
            std::string("Density\n(") + densityUnit + ")",
            "dP/dT\n(MPa/K)",
            "Trapping T\n" + unit,
            "Trapping P\n(MPa)",
            "Remark",
            "Kept fluid"};
}

std::vector<std::size_t> InclusionList::words() {
    return {0, 1, 3, 10, 11};
}

std::string InclusionList::fileHeading() const {
    return "Composition = " + (fluid_ ? fluid_->composition : "") +
           "\nName, Given, Homogenization Temperature, Homogenization into, Homogenization "
           "Pressure, Molar Volume, Density, dP/dT, Trapping Temperature, Trapping Pressure, "
           "Remark, Other Composition\n, , (Celsius), , (MPa), (cm3/mol), (g/cm3), (MPa/K), "
           "(Celsius), (MPa), , \n";
}

std::size_t InclusionList::fileColumns() const {
    return heads(celsiusScale).size();
}

void InclusionList::calculate(Entry& entry) const {
    const std::shared_ptr<const Fluid>& fluid = entry.kept ? entry.kept : fluid_;
    entry.state = InclusionState();
    if (!entry.inclusion.problem.empty()) {
        entry.state.remark = entry.inclusion.problem;
    } else if (fluid) {
        entry.state = StateOf(fluid->mixture, entry.inclusion);
    }
}

const std::shared_ptr<const Fluid>& InclusionList::fluidOf(std::size_t row) const {
    return entries_[row].kept ? entries_[row].kept : fluid_;
}

void InclusionList::calculate(const Fluid& fluid) {
    fluid_ = std::make_shared<const Fluid>(fluid);
    for (Entry& entry : entries_) {
        if (!entry.kept) {
            calculate(entry);
        }
    }
}

void InclusionList::forgetResults() {
    fluid_.reset();
    for (Entry& entry : entries_) {
        if (!entry.kept) {
            calculate(entry);
        }
    }
}

void InclusionList::keep() {
    for (Entry& entry : entries_) {
        if (!entry.kept && entry.inclusion.problem.empty()) {
            entry.kept = fluid_;
        }
    }
}

void InclusionList::add(std::vector<Inclusion> inclusions) {
    entries_.reserve(entries_.size() + inclusions.size());
    for (Inclusion& inclusion : inclusions) {
        if (inclusion.name.empty()) {
            inclusion.name = std::to_string(entries_.size() + 1);
        }
        entries_.push_back({std::move(inclusion), {}, {}});
        calculate(entries_.back());
    }
}

void InclusionList::rename(std::size_t row, const std::string& name) {
    entries_[row].inclusion.name = name;
}

void InclusionList::remove(const Rows& rows) {
    std::size_t at = 0;
    const auto isRemoved = [&](const Entry& /*entry*/) {
        return std::binary_search(rows.begin(), rows.end(), at++);
    };
    // Each entry is asked once, in their order.
    std::vector<Entry> kept;
    kept.reserve(entries_.size());
    std::remove_copy_if(std::make_move_iterator(entries_.begin()),
                        std::make_move_iterator(entries_.end()), std::back_inserter(kept),
                        isRemoved);
    entries_ = std::move(kept);
}

InclusionList::Rows InclusionList::move(const Rows& rows, bool towardsEnd) {
    const bool isAtEnd =
        rows.empty() || (towardsEnd ? rows.back() + 1 == count() : rows.front() == 0);
    if (isAtEnd) return rows;
    Rows moved = rows;
    if (towardsEnd) {
        std::for_each(rows.rbegin(), rows.rend(),
                      [&](std::size_t row) { std::swap(entries_[row], entries_[row + 1]); });
    } else {
        std::for_each(rows.begin(), rows.end(),
                      [&](std::size_t row) { std::swap(entries_[row], entries_[row - 1]); });
    }
    for (std::size_t& row : moved) {
        row = towardsEnd ? row + 1 : row - 1;
    }
    return moved;
}

void InclusionList::chooseNextPoint(const Rows& rows) {
    for (const std::size_t row : rows) {
        Entry& entry = entries_[row];
        const std::size_t points = entry.state.points.size();
        if (points > 1) {
            auto& point = entry.inclusion.point;
            point = point ? (*point + 1) % points : 0;
            calculate(entry);
        }
    }
}

void InclusionList::setTrapping(const Rows& rows, const Trapping& trapping) {
    for (const std::size_t row : rows) {
        entries_[row].inclusion.trapping = trapping;
    }
}

Trapped InclusionList::trapped(std::size_t row) const {
    const Entry& entry = entries_[row];
    const Trapping& own = entry.inclusion.trapping;
    const auto& fluid = fluidOf(row);
    return fluid ? TrappedAt(fluid->mixture, entry.state, own.isKnown() ? own : trapping_)
                 : Trapped();
}

SeriesTable::Row InclusionList::row(std::size_t number, const TemperatureScale& scale,
                                    Digits digits) const {
    const auto& [inclusion, state, kept] = entries_[number];
    const auto text = [digits](double value) { return CellText(value, decimals, digits); };
    Row cells(heads(scale).size());
    cells[0] = inclusion.name;
    cells[1] = GivenText(inclusion);
    if (state.point) {
        cells[2] = text(state.point->T.in(scale));
        cells[3] = IntoText(*state.point);
        cells[4] = text(state.point->P);
    } else if (inclusion.problem.empty() && inclusion.isByTemperature()) {
        cells[2] = text(inclusion.temperature().in(scale));
        cells[3] = inclusion.by == GivenBy::IntoLiquid ? "liquid" : "vapour";
    }
    // What is given stands there without a calculation, too.
    if (state.V > 0.0 || (inclusion.problem.empty() && inclusion.by == GivenBy::MolarVolume)) {
        cells[5] = text(state.V > 0.0 ? state.V : inclusion.number);
    }
    if (state.V > 0.0 || (inclusion.problem.empty() && inclusion.by == GivenBy::Density)) {
        cells[6] = text(state.V > 0.0 ? state.density : inclusion.number);
    }
    if (state.V > 0.0) {
        cells[7] = text(state.slope);
    }
    const Trapped trapping = trapped(number);
    if (trapping.point) {
        cells[8] = text(trapping.point->T.in(scale));
        cells[9] = text(trapping.point->P);
    } else if (inclusion.trapping.T) {
        cells[8] = text(inclusion.trapping.T->in(scale));
    } else if (inclusion.trapping.P) {
        cells[9] = text(*inclusion.trapping.P);
    }
    const bool areTwo = !state.remark.empty() && !trapping.remark.empty();
    const std::string remark = state.remark + (areTwo ? "; " : "") + trapping.remark;
    cells[10] = remark;
    cells[11] = kept ? kept->composition : "";
    return cells;
}

}  // namespace procedures
