#include "procedures/isotherm_table.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstddef>
#include <utility>

#include "model/phase_split.h"
#include "model/van_der_waals.h"
#include "procedures/phase_sentences.h"
#include "procedures/stability_text.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

// Denser states than that of the table are of interest for their boundaries, up to this V/b.
constexpr double densest = 1.01;

double Rounded(double value, int digits) {
    return toolkit::NumberOrZero(toolkit::SignificantText(value, digits));
}

// The largest of 1, 2 and 5 times a power of ten that is not above `value`.
double RoundStep(double value) {
    const double power = Rounded(std::pow(10.0, std::floor(std::log10(value))), 1);
    const double times = value / power;
    return Rounded((times >= 5.0 ? 5.0 : times >= 2.0 ? 2.0 : 1.0) * power, 1);
}

}  // namespace

double IsothermInput::smallestV(const fluid::Mixture& mixture) const {
    return areDensities ? fluid::MolarVolumeFromDensity(mixture, values->largest())
                        : values->smallest();
}

double IsothermInput::largestV(const fluid::Mixture& mixture) const {
    return areDensities ? fluid::MolarVolumeFromDensity(mixture, values->smallest())
                        : values->largest();
}

std::string IsothermInput::refusal(const fluid::Mixture& mixture) const {
    if (!T.refusal.empty()) return T.refusal;
    if (!values || !(values->smallest() > 0.0)) {
        return "warning: put numbers above 0 for volumes or densities and for the step, or leave "
               "them empty";
    }
    const double b = mixture.covolume;
    const double smallest = smallestV(mixture);
    if (!(smallest > b)) {
        return "warning: molar volumes must be larger than the co-volume of this fluid, " +
               SentenceText(b) + " " + volumeUnit + ", and densities smaller than " +
               SentenceText(fluid::MolarVolumeFromDensity(mixture, b)) + " " + densityUnit;
    }
    std::string refused = values->refusal(areDensities ? "densities" : "molar volumes");
    if (!refused.empty()) return refused;
    constexpr double mostRows = 100000.0;
    const double rows = values->count() * static_cast<double>(T.temperatures.size());
    if (rows > mostRows) {
        return "warning: these would be " + toolkit::FixedText(rows, 0) +
               " rows, and at most 100000 are listed; put a larger step";
    }
    const bool isTooLarge = std::any_of(
        T.temperatures.begin(), T.temperatures.end(), [&](const NamedTemperature& each) {
            return !std::isfinite(
                fluid::PressureVdW(mixture.attraction, b, each.T.kelvin, smallest));
        });
    return isTooLarge || !std::isfinite(largestV(mixture)) ? tooLarge : "";
}

std::optional<ValueRange> IsothermRange(const fluid::Mixture& mixture, bool areDensities,
                                        const std::array<std::string, 3>& typed) {
    constexpr double densestProposed = 1.05;
    constexpr double widest = 20.0;
    constexpr double steps = 100.0;
    const double smallestV = densestProposed * mixture.covolume;
    const double largestV = widest * LeadingPointOf(mixture).V;
    const double low = areDensities ? fluid::MolarVolumeFromDensity(mixture, largestV) : smallestV;
    const double high = areDensities ? fluid::MolarVolumeFromDensity(mixture, smallestV) : largestV;
    const auto number = [&typed](std::size_t i, double proposed) {
        return typed[i].empty() ? std::optional(proposed) : toolkit::ParseNumber(typed[i]);
    };
    constexpr int digits = 3;
    const auto first = number(0, Rounded(low, digits));
    const auto last = number(1, Rounded(high, digits));
    if (!first || !last) return std::nullopt;
    const double width = std::abs(*last - *first);
    const auto step = number(2, width > 0.0 ? RoundStep(width / steps) : 0.0);
    return step ? ValueRange::of(*first, *last, *step) : std::nullopt;
}

IsothermTable::IsothermTable(const fluid::Mixture& mixture, const IsothermInput& input)
    : mixture_(mixture), values_(*input.values), areDensities_(input.areDensities) {
    const double smallest = std::min(input.smallestV(mixture), densest * mixture.covolume);
    isotherms_.reserve(input.T.temperatures.size());
    for (const NamedTemperature& each : input.T.temperatures) {
        isotherms_.push_back({each, {mixture, each.T.kelvin, smallest}});
    }
}

IsothermTable::State IsothermTable::stateAt(const Isotherm& isotherm, std::size_t number) const {
    const double value = values_.value(number);
    const double other = fluid::MolarVolumeFromDensity(mixture_, value);
    const double V = areDensities_ ? other : value;
    return {V, areDensities_ ? value : other,
            fluid::PressureVdW(mixture_.attraction, mixture_.covolume, isotherm.T.T.kelvin, V)};
}

SeriesTable::Row IsothermTable::heads(const TemperatureScale& scale) {
    return {std::string("Temperature\n(") + scale.name + ")",
            std::string("Molar Volume\n(") + volumeUnit + ")",
            std::string("Density\n(") + densityUnit + ")",
            "Pressure\n(MPa)",
            "Two phases\n(MPa)",
            "Vapour\nfraction",
            "State"};
}

SeriesTable::Row IsothermTable::row(std::size_t number, const TemperatureScale& scale,
                                    Digits digits) const {
    const Isotherm& isotherm = isotherms_[number / volumes()];
    const State state = stateAt(isotherm, number % volumes());
    const fluid::Stability stability = isotherm.stability.at(state.V);
    Row cells = {
        CellText(isotherm.T.T.in(scale), temperatureDecimals, digits),
        CellText(state.V, areDensities_ ? volumeDecimals : values_.decimals(), digits),
        CellText(state.density, areDensities_ ? values_.decimals() : densityDecimals, digits),
        CellText(state.P, pressureDecimals, digits),
        "",
        "",
        StabilityName(stability)};
    const auto split = stability == fluid::Stability::Stable
                           ? std::nullopt
                           : fluid::SplitAtVolume(mixture_, isotherm.T.T.kelvin, state.V);
    if (split && split->found) {
        constexpr std::size_t splitPressure = 4;
        constexpr int fractionDecimals = 6;
        cells[splitPressure] = CellText(split->phases.P, pressureDecimals, digits);
        cells[splitPressure + 1] = CellText(split->volumeFraction, fractionDecimals, digits);
    }
    return cells;
}

std::string IsothermTable::headingOf(const Isotherm& isotherm) {
    return "Temperature = " + toolkit::NumberText(isotherm.T.T.celsius) +
           " Celsius\nMolar Volume, Density, Pressure\n(cm3/mol), (g/cm3), (MPa)\n";
}

std::string IsothermTable::fileHeading() const {
    return headingOf(isotherms_.front());
}

std::string IsothermTable::fileText() const {
    std::string text;
    for (const Isotherm& isotherm : isotherms_) {
        text += (text.empty() ? "" : "\n") + headingOf(isotherm);
        for (std::size_t i = 0; i < volumes(); ++i) {
            const State state = stateAt(isotherm, i);
            text += toolkit::NumberText(state.V) + ", " + toolkit::NumberText(state.density) +
                    ", " + toolkit::NumberText(state.P) + '\n';
        }
    }
    return text;
}

std::string IsothermTable::boundarySentences() const {
    const auto hasBoundary = [](const Isotherm& isotherm) {
        return !isotherm.stability.boundaries().empty();
    };
    if (isotherms_.size() > 1) {
        const auto count = std::count_if(isotherms_.begin(), isotherms_.end(), hasBoundary);
        return std::to_string(count) + " of " + std::to_string(isotherms_.size()) +
               " isotherms have bubble or dew points";
    }
    const Isotherm& isotherm = isotherms_.front();
    if (!hasBoundary(isotherm)) return "No bubble or dew point was found at this temperature";
    std::string sentences;
    for (std::size_t i = isotherm.stability.boundaries().size(); i-- > 0;) {
        const fluid::BoundaryPoint& point = isotherm.stability.boundaries()[i];
        std::string name = PointName(point);
        name.front() = static_cast<char>(std::toupper(name.front()));
        sentences += sentences.empty() ? "" : "\n";
        sentences += name + " at " + SentenceText(point.V) + " " + volumeUnit + " and " +
                     SentenceText(point.P);
        sentences += " MPa";
    }
    return sentences;
}

}  // namespace procedures
