#pragma once

#include <string>

#include "model/fluid_model.h"
#include "procedures/root_screen.h"

namespace procedures {

/// What the screens of fugacities and of what follows from them have in common: the sentence for a
/// complex root, and the fugacities that belong to a real one.
class FugacityScreen : public RootScreen {
  protected:
    /// The shortest text of a number, "---" where it is infinite or none.
    static std::string valueText(double value);
    /// Per present component: the fugacity coefficient, and the fugacity in MPa.
    struct Fugacities {
        fluid::ComponentValues coefficients{};
        fluid::ComponentValues values{};
    };

    using RootScreen::RootScreen;

    void showComplexRoot() override;
    void showNoVolume() override;
    /// Shows the stability, the volume and the density, and returns the fugacities.
    Fugacities showState(const StatePoint& state, double V);
};

}  // namespace procedures
