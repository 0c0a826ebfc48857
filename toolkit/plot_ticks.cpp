#include "toolkit/plot_ticks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "toolkit/number_text.h"

namespace toolkit {

namespace {

constexpr int leastExponent = -3;  // of the numbers that are written out
constexpr int mostExponent = 5;

int FloorOf(double value) {
    return static_cast<int>(std::floor(value));
}

// With the minus sign of print.
std::string Label(double value, int decimals) {
    std::string text = FixedText(value, std::max(decimals, 0));
    if (text.starts_with('-')) {
        text.replace(0, 1, "\u2212");
    }
    return text;
}

// The distance between ticks: 1, 2 or 5 times a power of ten.
struct Step {
    int digit = 1;
    int exponent = 0;

    static Step atLeast(double least) {
        int exponent = FloorOf(std::log10(least));
        for (;; ++exponent) {
            for (const int digit : {1, 2, 5}) {
                if (Step{digit, exponent}.size() >= least) {
                    return {digit, exponent};
                }
            }
        }
    }
    double size() const { return at(1.0); }
    // A multiple of the step; powers of ten below 1 have no exact double, but their inverses have.
    double at(double number) const {
        return exponent < 0 ? number * digit / std::pow(10.0, -exponent)
                            : number * digit * std::pow(10.0, exponent);
    }
    // How many parts the minor ticks divide it into.
    int parts() const { return digit == 2 ? 4 : 5; }
};

PlotTicks EvenTicks(const AxisLimits& limits, double most) {
    PlotTicks ticks;
    const Step step = Step::atLeast((limits.high - limits.low) / most);
    const double size = std::max(std::abs(limits.low), std::abs(limits.high));
    const int magnitude = FloorOf(std::log10(size));
    if (magnitude < leastExponent || magnitude >= mostExponent) {
        ticks.exponent = magnitude;
    }
    const Step unit{step.digit, step.exponent - ticks.exponent};
    const double parts = step.parts();
    const double first = std::ceil(limits.low / step.size() * parts);
    for (double i = first; step.at(i / parts) <= limits.high; ++i) {
        if (std::fmod(i, parts) == 0.0) {
            ticks.major.push_back({step.at(i / parts), Label(unit.at(i / parts), -unit.exponent)});
        } else {
            ticks.minor.push_back(step.at(i / parts));
        }
    }
    return ticks;
}

PlotTicks LogarithmicTicks(const AxisLimits& limits, double most) {
    const double span = limits.scaled(limits.high) - limits.scaled(limits.low);
    constexpr double few = 0.9;      // decades: they have too few ticks of their own
    constexpr double several = 2.5;  // beyond, 2 and 5 have no labels
    if (span < few) return EvenTicks(limits, most);
    PlotTicks ticks;
    const int first = FloorOf(limits.scaled(limits.low));
    const int last = FloorOf(limits.scaled(limits.high));
    const int stride = std::max(1, static_cast<int>(std::ceil((last - first) / most)));
    const bool isPlain = first >= leastExponent && last < mostExponent;
    const bool isCrowded = 3.0 * span > most;
    for (int exponent = first; exponent <= last; ++exponent) {
        for (int digit = 1; digit <= (stride == 1 ? 9 : 1); ++digit) {
            const double value = Step{digit, exponent}.size();
            if (!limits.includes(value)) continue;
            const bool isLabelled =
                (digit == 2 || digit == 5) && isPlain && span < several && !isCrowded;
            if (digit == 1 ? exponent % stride == 0 : isLabelled) {
                ticks.major.push_back(
                    {value, isPlain ? Label(value, -exponent) : PowerOfTen(exponent)});
            } else {
                ticks.minor.push_back(value);
            }
        }
    }
    return ticks;
}

}  // namespace

PlotTicks TicksOf(const AxisLimits& limits, double most) {
    const double least = std::max(most, 2.0);
    return limits.isLogarithmic ? LogarithmicTicks(limits, least) : EvenTicks(limits, least);
}

std::string PowerOfTen(int exponent) {
    constexpr std::array<std::string_view, 10> digits = {"\u2070", "\u00b9", "\u00b2", "\u00b3",
                                                         "\u2074", "\u2075", "\u2076", "\u2077",
                                                         "\u2078", "\u2079"};
    std::string text = exponent < 0 ? "10\u207b" : "10";
    for (const char digit : std::to_string(std::abs(exponent))) {
        text += digits[static_cast<std::size_t>(digit - '0')];
    }
    return text;
}

}  // namespace toolkit
