#include "procedures/phase_results.h"

#include "model/fluid_model.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr int quantityDecimals = 6;
constexpr int fractionDecimals = 8;

}  // namespace

std::vector<std::string> gasesOf(const fluid::Mixture& mixture) {
    std::vector<std::string> gases;
    for (std::size_t k = 0; k < mixture.count; ++k) {
        gases.emplace_back(mixture.formula(k));
    }
    return gases;
}

std::string quantityText(double value) {
    return toolkit::resultText(value, quantityDecimals);
}

std::string fractionText(double value) {
    return toolkit::resultText(value, fractionDecimals);
}

PhaseTexts phaseTexts(const fluid::Mixture& mixture, const fluid::ComponentValues& fractions,
                      double V) {
    PhaseTexts texts;
    texts.volume = quantityText(V);
    texts.density =
        quantityText(fluid::MolarVolumeFromDensity(fluid::WithFractions(mixture, fractions), V));
    for (std::size_t k = 0; k < mixture.count; ++k) {
        texts.fractions.push_back(fractionText(fractions[k]));
    }
    return texts;
}

}  // namespace procedures
