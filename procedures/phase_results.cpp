#include "procedures/phase_results.h"

#include "model/fluid_model.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr int quantityDecimals = 6;
constexpr int fractionDecimals = 8;

}  // namespace

std::vector<std::string> GasesOf(const fluid::Mixture& mixture) {
    std::vector<std::string> gases;
    for (std::size_t k = 0; k < mixture.count; ++k) {
        gases.emplace_back(mixture.formula(k));
    }
    return gases;
}

std::string QuantityText(double value) {
    return toolkit::ResultText(value, quantityDecimals);
}

std::string FractionText(double value) {
    return toolkit::ResultText(value, fractionDecimals);
}

PhaseTexts PhaseTextsOf(const fluid::Mixture& mixture, const fluid::ComponentValues& fractions,
                        double V) {
    PhaseTexts texts;
    texts.volume = QuantityText(V);
    texts.density =
        QuantityText(fluid::MolarVolumeFromDensity(fluid::WithFractions(mixture, fractions), V));
    for (std::size_t k = 0; k < mixture.count; ++k) {
        texts.fractions.push_back(FractionText(fractions[k]));
    }
    return texts;
}

}  // namespace procedures
