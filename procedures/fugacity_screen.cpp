#include "procedures/fugacity_screen.h"

#include <cmath>

#include "toolkit/number_text.h"

namespace procedures {

std::string FugacityScreen::valueText(double value) {
    return std::isfinite(value) ? toolkit::numberText(value) : "---";
}

void FugacityScreen::showComplexRoot() {
    slope.setText("complex number (with imaginary part). Choose a real solution");
    Result.setText("---");
    DensityResult.setText("---");
}

void FugacityScreen::showNoVolume() {
    RootScreen::showNoVolume();
    Result.setText("---");
    DensityResult.setText("---");
}

FugacityScreen::Fugacities FugacityScreen::showState(const StatePoint& state, double V) {
    showStability(state, V);
    showVolume(V);
    const fluid::Mixture& mixture = fluid::AcceptedMixture();
    Fugacities fugacities;
    fugacities.coefficients = fluid::FugacityCoefficients(mixture, state.T, state.P, V);
    for (std::size_t k = 0; k < mixture.count; ++k) {
        fugacities.values[k] = mixture.fractions[k] * fugacities.coefficients[k] * state.P;
    }
    return fugacities;
}

}  // namespace procedures
