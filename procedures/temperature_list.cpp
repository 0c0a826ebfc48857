#include "procedures/temperature_list.h"

#include <algorithm>

#include "model/critical_point.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

std::vector<std::string> Parts(const std::string& text, const std::string& separators) {
    std::vector<std::string> words;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find_first_of(separators, start), text.size());
        words.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return words;
}

// The values of "200:300:20", or of a number alone.
std::optional<ValueRange> RangeOf(const std::string& word) {
    std::vector<double> numbers;
    for (const std::string& part : Parts(word, ":")) {
        const auto number = toolkit::ParseNumber(part);
        if (!number) return std::nullopt;
        numbers.push_back(*number);
    }
    constexpr std::size_t withStep = 3;
    return numbers.size() == 1          ? ValueRange::of(numbers[0], numbers[0], 0.0)
           : numbers.size() == withStep ? ValueRange::of(numbers[0], numbers[1], numbers[2])
                                        : std::nullopt;
}

}  // namespace

LeadingPoint LeadingPointOf(const fluid::Mixture& mixture) {
    const fluid::PseudoCriticalPoint pseudo = fluid::FindPseudoCriticalPoint(mixture);
    LeadingPoint leading{pseudo.T, pseudo.P, pseudo.V, false};
    for (const fluid::CriticalPoint& point : fluid::FindCriticalPoints(mixture)) {
        const bool isStable = point.isLocallyStable && point.P > 0.0 &&
                              fluid::CriticalStability(mixture, point) == fluid::Stability::Stable;
        if (isStable && (!leading.isCritical || point.T > leading.T)) {
            leading = {point.T, point.P, point.V, true};
        }
    }
    return leading;
}

TemperatureList TemperatureList::read(const std::string& text, const TemperatureScale& scale,
                                      const fluid::Mixture& mixture) {
    TemperatureList list;
    for (const std::string& word : Parts(text, " \t;")) {
        if (word.empty()) continue;
        if (word == "Tc" || word == "tc" || word == "TC") {
            const LeadingPoint leading = LeadingPointOf(mixture);
            if (!leading.isCritical) {
                return {{}, "warning: this fluid has no stable critical point, and no Tc"};
            }
            constexpr int digits = 5;
            const auto T = WrittenTemperature::calculated(leading.T);
            list.temperatures.push_back(
                {T, "Tc = " + toolkit::SignificantText(T.in(scale), digits)});
            continue;
        }
        const auto values = RangeOf(word);
        if (!values) {
            return {{},
                    "warning: \"" + word +
                        "\" was not understood; put temperatures as 215 235 Tc or 200:300:20"};
        }
        if (values->count() + static_cast<double>(list.temperatures.size()) > most) {
            return {{}, "warning: at most 100 isotherms are drawn; put fewer temperatures"};
        }
        const TemperatureRange range{*values, scale};
        for (std::size_t i = 0; i < range.count(); ++i) {
            list.temperatures.push_back({range.at(i), toolkit::NumberText(range.at(i).in(scale))});
        }
    }
    const bool isCold = std::any_of(list.temperatures.begin(), list.temperatures.end(),
                                    [](const auto& each) { return !(each.T.kelvin > 0.0); });
    if (isCold) {
        return {{}, "warning: temperatures must be above absolute zero"};
    }
    if (list.temperatures.empty()) {
        return {{}, "warning: put a number for temperature, or several"};
    }
    return list;
}

}  // namespace procedures
