#pragma once

#include <string>

#include "model/cubic.h"
#include "model/mixture.h"
#include "procedures/typed_state.h"

namespace procedures {

// What a root of the equation of state is, and the state of the mixture that it gives.
struct RootVolume {
    enum class Kind { Volume, Complex, None };

    Kind kind = Kind::None;  // None: there are three zeros, which stand for no volume
    double V = 0.0;          // cm3/mol
    double density = 0.0;    // g/cm3
    double slope = 0.0;      // of the isotherm, MPa·mol/cm3
};

fluid::CubicRoots RootsAt(const fluid::Mixture& mixture, const TypedState& state);
// `root`: one of these.
RootVolume RootVolumeOf(const fluid::Mixture& mixture, const TypedState& state,
                        const fluid::CubicRoot& root);

inline constexpr const char* missingStateSentence =
    "warning: put a number for temperature and pressure";
inline constexpr const char* complexSentence =
    "complex number (with imaginary part). Choose a real solution";
inline constexpr const char* noVolumeSentence =
    "warning: no molar volume could be calculated here, 0 stands for none";

// What the sign of a slope tells.
std::string SlopeSentence(double slope);

// The shortest text of a number, "---" where it is infinite or none.
std::string ValueText(double value);

}  // namespace procedures
