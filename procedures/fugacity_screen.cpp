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
    const std::int32_t last = fluid::LastComponent;
    Fugacities fugacities;
    fugacities.coefficients = fluid::FugacityCoefficients(
        last, state.b, fluid::ComponentAttraction(last, fluid::Fractions),
        fluid::ComponentCovolumes(last), state.T, state.P, V);
    for (std::size_t k = 0; k <= static_cast<std::size_t>(last); ++k) {
        fugacities.values[k] = fluid::Fractions[k] * fugacities.coefficients[k] * state.P;
    }
    return fugacities;
}

}  // namespace procedures
