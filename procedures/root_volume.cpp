#include "procedures/root_volume.h"

#include <cmath>

#include "model/fluid_model.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr double slopeStep = 0.0001;  // cm3/mol, of the central difference

}  // namespace

fluid::CubicRoots RootsAt(const fluid::Mixture& mixture, const TypedState& state) {
    return fluid::VolumeCubicSolver(mixture.attraction, mixture.covolume, state.T, state.P);
}

RootVolume RootVolumeOf(const fluid::Mixture& mixture, const TypedState& state,
                        const fluid::CubicRoot& root) {
    if (!root.isReal()) {
        return {.kind = RootVolume::Kind::Complex};
    }
    if (!(root.real > 0.0)) {
        return {};
    }
    return {
        RootVolume::Kind::Volume, root.real, fluid::MolarVolumeFromDensity(mixture, root.real),
        fluid::IsothermSlope(mixture.attraction, mixture.covolume, state.T, root.real, slopeStep)};
}

std::string SlopeSentence(double slope) {
    // The smallest number stands for a slope that has no room in a double.
    const bool isKnown = slope == 0.0 || std::isnormal(slope);
    const std::string number = isKnown ? toolkit::NumberText(slope) : "---";
    return slope < 0.0
               ? "Negative slope dP/dV = " + number + " (stable field)"
               : "Positive slope dP/dV = " + number + " (meta-stable). Choose another solution";
}

std::string ValueText(double value) {
    return std::isfinite(value) ? toolkit::NumberText(value) : "---";
}

}  // namespace procedures
