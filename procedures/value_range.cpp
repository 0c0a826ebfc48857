#include "procedures/value_range.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr double largestWhole = 9007199254740992.0;  // whole numbers up to it are exact
constexpr int mostDecimals = 12;

bool IsWholeTimes(double value, double scale) {
    const double whole = std::round(value * scale);
    return std::abs(whole) < largestWhole && whole / scale == value;
}

}  // namespace

std::optional<ValueRange> ValueRange::of(double first, double last, double step) {
    const double width = std::abs(last - first);
    if (!std::isfinite(width) || !std::isfinite(step) || (step == 0.0 && width > 0.0)) {
        return std::nullopt;
    }
    ValueRange range;
    for (double scale = 1e2; scale <= 1e12 && !range.isDecimal_; scale *= 10.0) {
        if (IsWholeTimes(first, scale) && IsWholeTimes(last, scale) && IsWholeTimes(step, scale)) {
            range.isDecimal_ = true;
            range.scale_ = scale;
        }
    }
    const auto scaled = [&range](double value) {
        return range.isDecimal_ ? std::round(value * range.scale_) : value;
    };
    range.first_ = scaled(first);
    range.last_ = scaled(last);
    range.step_ = std::copysign(scaled(step), range.last_ - range.first_);
    if (width > 0.0) {
        const double steps = (range.last_ - range.first_) / range.step_;
        // A last step that rounding alone has left over is none.
        constexpr double rounding = 1e-9;
        const double nearest = std::round(steps);
        const bool divides =
            range.isDecimal_ ? steps == nearest : std::abs(steps - nearest) < rounding * nearest;
        range.count_ = (divides ? nearest : std::ceil(steps)) + 1.0;
    }
    return range;
}

double ValueRange::value(std::size_t k) const {
    const auto steps = static_cast<double>(k);
    return (steps + 1.0 >= count_ ? last_ : first_ + steps * step_) / scale_;
}

double ValueRange::smallest() const {
    return std::min(first_, last_) / scale_;
}

double ValueRange::largest() const {
    return std::max(first_, last_) / scale_;
}

double ValueRange::step() const {
    return std::abs(step_) / scale_;
}

double ValueRange::rounded(double number) const {
    return isDecimal_ ? std::round(number * scale_) / scale_ : number;
}

int ValueRange::decimals() const {
    constexpr int ofAnyNumber = 6;
    if (!isDecimal_) return ofAnyNumber;
    int decimals = 0;
    for (double scale = 1.0; decimals < mostDecimals; scale *= 10.0, ++decimals) {
        const auto fits = [&](double number) { return IsWholeTimes(number / scale_, scale); };
        if (fits(first_) && fits(last_) && fits(step_)) break;
    }
    return decimals;
}

std::string ValueRange::refusal(const std::string& quantity) const {
    constexpr double mostRows = 100000.0;
    constexpr double mostDigits = 1e15;
    if (count_ > mostRows) {
        const std::string count =
            count_ < mostDigits ? toolkit::FixedText(count_, 0) : toolkit::NumberText(count_);
        return "warning: these would be " + count + " " + quantity +
               ", and at most 100000 are listed; put a larger step";
    }
    constexpr double roundings = 64.0;
    const double rounding =
        std::numeric_limits<double>::epsilon() * std::max(std::abs(first_), std::abs(last_));
    if (count_ > 1.0 && !(std::abs(step_) > roundings * rounding)) {
        return "warning: numbers of this size cannot tell steps so small apart; put a larger step";
    }
    return {};
}

WrittenTemperature WrittenTemperature::typed(double number, const TemperatureScale& scale) {
    return TemperatureRange{*ValueRange::of(number, number, 0.0), scale}.at(0);
}

WrittenTemperature TemperatureRange::written(double number) const {
    return scale.isKelvin() ? WrittenTemperature{number, values.rounded(number - zeroCelsius)}
                            : WrittenTemperature{values.rounded(number + zeroCelsius), number};
}

int TemperatureRange::decimals(const TemperatureScale& shown) const {
    constexpr int ofZeroCelsius = 2;
    return shown.isKelvin() == scale.isKelvin() ? values.decimals()
                                                : std::max(values.decimals(), ofZeroCelsius);
}

std::string TemperatureRange::refusal() const {
    if (!(lowest().kelvin > 0.0)) return "warning: temperatures must be above absolute zero";
    return values.refusal("temperatures");
}

}  // namespace procedures
