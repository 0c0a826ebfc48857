#include "procedures/isotherm_table.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstddef>

#include "model/van_der_waals.h"
#include "procedures/phase_sentences.h"
#include "procedures/stability_text.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

// Denser states than that of the table are of interest for their boundaries, up to this V/b.
constexpr double densest = 1.01;

}  // namespace

double IsothermInput::smallestV(const fluid::Mixture& mixture) const {
    return areDensities ? fluid::MolarVolumeFromDensity(mixture, values->largest())
                        : values->smallest();
}

std::string IsothermInput::refusal(const fluid::Mixture& mixture) const {
    if (!T || !(T->kelvin > 0.0) || !values || !(values->smallest() > 0.0)) {
        return "warning: put a number for temperature, for both volumes or densities and for the "
               "step";
    }
    const double b = mixture.covolume;
    const double smallest = smallestV(mixture);
    if (!(smallest > b)) {
        return "warning: molar volumes must be larger than the co-volume of this fluid, " +
               SentenceText(b) + " " + volumeUnit + ", and densities smaller than " +
               SentenceText(fluid::MolarVolumeFromDensity(mixture, b)) + " " + densityUnit;
    }
    const double largest = areDensities ? fluid::MolarVolumeFromDensity(mixture, values->smallest())
                                        : values->largest();
    const double P = fluid::PressureVdW(mixture.attraction, b, T->kelvin, smallest);
    const std::string refused = values->refusal(areDensities ? "densities" : "molar volumes");
    return refused.empty() && !(std::isfinite(P) && std::isfinite(largest)) ? tooLarge : refused;
}

IsothermTable::IsothermTable(const fluid::Mixture& mixture, const IsothermInput& input)
    : T_(*input.T),
      areDensities_(input.areDensities),
      typedDecimals_(input.values->decimals()),
      stability_(mixture, input.T->kelvin,
                 std::min(input.smallestV(mixture), densest * mixture.covolume)) {
    const double a = mixture.attraction;
    const double b = mixture.covolume;
    states_.resize(static_cast<std::size_t>(input.values->count()));
    for (std::size_t i = 0; i < states_.size(); ++i) {
        State& state = states_[i];
        const double number = input.values->value(i);
        const double other = fluid::MolarVolumeFromDensity(mixture, number);
        state.V = areDensities_ ? other : number;
        state.density = areDensities_ ? number : other;
        state.P = fluid::PressureVdW(a, b, T_.kelvin, state.V);
        state.stability = stability_.at(state.V);
    }
}

SeriesTable::Row IsothermTable::heads() {
    return {std::string("Molar Volume\n(") + volumeUnit + ")",
            std::string("Density\n(") + densityUnit + ")", "Pressure\n(MPa)", "State"};
}

SeriesTable::Row IsothermTable::row(std::size_t number, const TemperatureScale& /*scale*/,
                                    Digits digits) const {
    const State& state = states_[number];
    return {CellText(state.V, areDensities_ ? volumeDecimals : typedDecimals_, digits),
            CellText(state.density, areDensities_ ? typedDecimals_ : densityDecimals, digits),
            CellText(state.P, pressureDecimals, digits), StabilityName(state.stability)};
}

std::string IsothermTable::fileHeading() const {
    return "Temperature = " + toolkit::NumberText(T_.celsius) +
           " Celsius\nMolar Volume, Density, Pressure\n(cm3/mol), (g/cm3), (MPa)\n";
}

std::string IsothermTable::boundarySentences() const {
    if (stability_.boundaries().empty()) {
        return "No bubble or dew point was found at this temperature";
    }
    std::string sentences;
    for (std::size_t i = stability_.boundaries().size(); i-- > 0;) {
        const fluid::BoundaryPoint& point = stability_.boundaries()[i];
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
