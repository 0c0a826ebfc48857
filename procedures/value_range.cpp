#include "procedures/value_range.h"

#include <cmath>

namespace procedures {

namespace {

constexpr double largestWhole = 9007199254740992.0;  // whole numbers up to it are exact

bool isWholeTimes(double value, double scale) {
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
        if (isWholeTimes(first, scale) && isWholeTimes(last, scale) && isWholeTimes(step, scale)) {
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

double ValueRange::rounded(double number) const {
    return isDecimal_ ? std::round(number * scale_) / scale_ : number;
}

}  // namespace procedures
