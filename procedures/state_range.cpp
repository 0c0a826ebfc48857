#include "procedures/state_range.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <utility>

#include "model/phase_boundary.h"
#include "procedures/composition_text.h"
#include "procedures/phase_sentences.h"
#include "procedures/property_table.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

using fluid::BoundaryPoint;
using fluid::Mixture;
using Style = toolkit::PlotSeries::Style;

RangeState StateOf(const Mixture& mixture, double T, double P) {
    const fluid::FluidState found = fluid::StateAt(mixture, T, P);
    RangeState state{.T = T, .P = P, .name = {}, .phases = {}};
    if (found.volumes.empty()) {
        state.name = "no molar volume";
    } else if (!found.isExamined) {
        state.name = "not examined";
    } else if (found.stable) {
        state.name = KindText(found.kind);
        state.phases = {{mixture, found.volumes[*found.stable].V}};
    } else if (found.split) {
        const fluid::PhasePair& pair = found.split->phases;
        const double y = AmountOfY(*found.split);
        state.name = found.split->metastable ? "two of three phases" : "two phases";
        state.phases = {{fluid::WithFractions(mixture, pair.x), pair.Vx, 1.0 - y},
                        {fluid::WithFractions(mixture, pair.y), pair.Vy, y}};
    } else {
        state.name = "phases not found";
    }
    return state;
}

}  // namespace

std::string RangeInput::refusal() const {
    const bool isFixed = isOverPressure ? T && T->kelvin > 0.0 : P && *P > 0.0;
    if (!isFixed || (isOverPressure ? !pressures : !temperatures)) {
        return isOverPressure
                   ? "warning: put a number for temperature, for both pressures and for the step"
                   : "warning: put a number for pressure, for both temperatures and for the step";
    }
    if (!isOverPressure) return temperatures->refusal();
    return pressures->smallest() > 0.0 ? pressures->refusal("pressures")
                                       : "warning: pressures must be above 0";
}

StateRange::StateRange(const Mixture& mixture, const RangeInput& input)
    : mixture_(mixture), input_(input) {
    const std::size_t count = input.isOverPressure
                                  ? static_cast<std::size_t>(input.pressures->count())
                                  : input.temperatures->count();
    rows_.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        rows_.push_back(
            {input.isOverPressure ? input.pressures->value(i) : input.temperatures->at(i).kelvin,
             i});
    }
    addBoundaries();
}

void StateRange::addBoundaries() {
    const bool isP = input_.isOverPressure;
    const auto& boundary = fluid::BoundaryOf(mixture_);
    const auto samples =
        isP ? boundary.atTemperature(input_.T->kelvin) : boundary.atPressure(*input_.P);
    const bool isRising = rows_.front().value <= rows_.back().value;
    const auto [least, most] = std::minmax(rows_.front().value, rows_.back().value);
    std::vector<Row> changes;
    for (const fluid::BoundarySample& sample : samples) {
        const BoundaryPoint point = fluid::PointOf(mixture_, sample);
        const double value = isP ? point.P : point.T;
        if (value >= least && value <= most) {
            changes.push_back({value, 0, point});
        }
    }
    // The two of a pure gas are at one place: the denser one is the colder and the one of more
    // pressure.
    constexpr double same = 1e-10;
    const auto comesFirst = [&](const Row& one, const Row& other) {
        if (std::abs(one.value / other.value - 1.0) < same) {
            return (one.boundary->V < other.boundary->V) == (isRising != isP);
        }
        return (one.value < other.value) == isRising;
    };
    std::sort(changes.begin(), changes.end(), comesFirst);
    if (mixture_.count == 1 && changes.size() == 2) changes[1].value = changes[0].value;
    std::vector<Row> all;
    all.reserve(rows_.size() + changes.size());
    auto next = changes.begin();
    for (const Row& row : rows_) {
        const auto isPassed = [&](const Row& change) {
            return (change.value < row.value) == isRising || change.value == row.value;
        };
        bool isReplaced = false;
        while (next != changes.end() && isPassed(*next)) {
            isReplaced = isReplaced || next->value == row.value;
            all.push_back(*next++);
        }
        if (!isReplaced) all.push_back(row);
    }
    rows_ = std::move(all);
}

RangeState StateRange::changeAt(const BoundaryPoint& point) const {
    const bool isLiquid = point.kind() == fluid::Homogenisation::IntoLiquid;
    const char* const pure = isLiquid ? "saturated liquid" : "saturated vapour";
    return {input_.isOverPressure ? input_.T->kelvin : point.T,
            input_.isOverPressure ? point.P : *input_.P,
            mixture_.count == 1 ? pure : PointName(point),
            {{mixture_, point.V}}};
}

RangeState StateRange::state(std::size_t row) const {
    const Row& each = rows_[row];
    return each.boundary ? changeAt(*each.boundary) : stateAt(each.value);
}

RangeState StateRange::stateAt(double value) const {
    return input_.isOverPressure ? StateOf(mixture_, input_.T->kelvin, value)
                                 : StateOf(mixture_, value, *input_.P);
}

WrittenTemperature StateRange::temperature(std::size_t row) const {
    if (input_.isOverPressure) return *input_.T;
    return rows_[row].boundary ? WrittenTemperature::calculated(rows_[row].value)
                               : input_.temperatures->at(rows_[row].number);
}

int StateRange::decimals(const TemperatureScale& scale) const {
    return input_.isOverPressure ? input_.pressures->decimals()
                                 : input_.temperatures->decimals(scale);
}

std::string StateRange::fixedText() const {
    return input_.isOverPressure ? toolkit::NumberText(input_.T->kelvin) + "K"
                                 : toolkit::NumberText(*input_.P) + "MPa";
}

RangeTable::RangeTable(StateRange range, std::vector<RangeQuantity> quantities)
    : range_(std::move(range)), quantities_(std::move(quantities)) {}

SeriesTable::Row RangeTable::heads(const std::vector<RangeQuantity>& quantities,
                                   const TemperatureScale& scale) {
    Row heads = {std::string("Temperature\n(") + scale.name + ")", "Pressure\n(MPa)", "State"};
    for (const RangeQuantity& quantity : quantities) heads.push_back(quantity.head());
    return heads;
}

SeriesTable::Row RangeTable::row(std::size_t number, const TemperatureScale& scale,
                                 Digits digits) const {
    const RangeState state = range_.state(number);
    const bool isP = range_.isOverPressure();
    const bool isFixed = !range_.isChange(number);
    const auto given = [digits](double value) {
        return digits == Digits::Full ? toolkit::NumberText(value)
                                      : toolkit::SignificantText(value, 9);
    };
    const double T = range_.temperature(number).in(scale);
    Row cells = {
        isP ? given(T)
            : CellText(T, isFixed ? range_.decimals(scale) : temperatureDecimals, digits),
        isP ? CellText(state.P, isFixed ? range_.decimals(scale) : pressureDecimals, digits)
            : given(state.P),
        state.name};
    for (const RangeQuantity& quantity : quantities_) {
        const auto value = quantity.value(state);
        cells.push_back(value ? CellText(*value, quantity.decimals, digits) : "");
    }
    return cells;
}

std::string RangeTable::fileHeading() const {
    std::string names = "Temperature, Pressure, State";
    std::string units = "(Celsius), (MPa), ";
    for (const RangeQuantity& quantity : quantities_) {
        names += ", " + quantity.name;
        units += ", " + (quantity.unit.empty() ? "" : "(" + quantity.unit + ")");
    }
    return "Composition = " + CompositionName(range_.mixture()) + "\n" + names + "\n" + units +
           "\n";
}

std::string RangeTable::remark() const {
    const double coldest = fluid::ColdestT(range_.mixture());
    const double T =
        std::min(range_.temperature(0).kelvin, range_.temperature(range_.count() - 1).kelvin);
    return T > coldest ? ""
                       : "Below " + SentenceText(coldest) +
                             " Kelvin nothing is searched: there are no values there.";
}

namespace {

// The values of a quantity along a range, each calculated once.
class Values {
  public:
    Values(StateRange range, RangeQuantity quantity)
        : range_(std::move(range)), quantity_(std::move(quantity)) {}

    double at(double value) {
        constexpr std::size_t most = 50000;
        if (known_.size() > most) known_.clear();
        const auto [place, isNew] = known_.try_emplace(value);
        if (isNew) place->second = of(range_.stateAt(value));
        return place->second;
    }
    double of(const RangeState& state) const {
        return quantity_.value(state).value_or(std::numeric_limits<double>::quiet_NaN());
    }

  private:
    StateRange range_;
    RangeQuantity quantity_;
    std::map<double, double> known_;
};

enum class Between { OnePhase, TwoPhases, Change, Nothing };

Between KindOf(const RangeState& state) {
    return state.phases.empty()       ? Between::Nothing
           : state.phases.size() == 1 ? Between::OnePhase
                                      : Between::TwoPhases;
}

}  // namespace

toolkit::PlotSeries RangeCurve(const StateRange& range, const RangeQuantity& quantity,
                               const TemperatureScale& scale) {
    constexpr std::size_t mostPoints = 150;
    const std::size_t stride = range.count() / mostPoints + 1;
    const auto values = std::make_shared<Values>(range, quantity);
    toolkit::PlotSeries curve(quantity.name);
    std::vector<double> at;    // K or MPa, of each point of the curve
    std::vector<bool> isTrue;  // whether there are states between a point and the next one
    std::optional<std::size_t> last;
    Between drawn = Between::Nothing;  // what the curve is at its end
    const auto shown = [&](double value) {
        return range.isOverPressure() ? value : WrittenTemperature::calculated(value).in(scale);
    };
    const auto add = [&](double value, double y) {
        curve.add(shown(value), y);
        at.push_back(value);
        isTrue.push_back(true);
    };
    for (std::size_t row = 0; row < range.count(); ++row) {
        const bool isKept = row % stride == 0 || row + 1 == range.count() || range.isChange(row) ||
                            (row > 0 && range.isChange(row - 1)) ||
                            (row + 1 < range.count() && range.isChange(row + 1));
        if (!isKept) continue;
        const double value = range.value(row);
        const double y = values->of(range.state(row));
        if (last) {
            const double before = range.value(*last);
            const double middle = std::lerp(before, value, 0.5);
            const bool isJump = before == value;
            const Between kind = isJump ? Between::Change : KindOf(range.stateAt(middle));
            const bool hasValue = isJump || std::isfinite(values->at(middle));
            if (!hasValue) {
                curve.addGap();
                at.push_back(value);
                isTrue.push_back(false);
                drawn = Between::Nothing;
            } else if (kind != drawn) {
                if (last == 0U) curve.parts.clear();
                curve.change(kind == Between::Change      ? "phase change"
                             : kind == Between::TwoPhases ? "two phases"
                                                          : "one phase",
                             kind == Between::Change      ? Style::Dotted
                             : kind == Between::TwoPhases ? Style::Dashed
                                                          : Style::Line);
                drawn = kind;
            }
            isTrue.back() = hasValue && !isJump;
        }
        add(value, y);
        last = row;
    }
    curve.between = [values, at = std::move(at), isTrue = std::move(isTrue), x = curve.x,
                     y = curve.y, shown = [isP = range.isOverPressure(), scale](double value) {
                         return isP ? value : WrittenTemperature::calculated(value).in(scale);
                     }](std::size_t i, double share) -> toolkit::PlotPoint {
        if (!isTrue[i]) {
            return {std::lerp(x[i], x[i + 1], share), std::lerp(y[i], y[i + 1], share)};
        }
        const double value = std::lerp(at[i], at[i + 1], share);
        return {shown(value), values->at(value)};
    };
    return curve;
}

}  // namespace procedures
