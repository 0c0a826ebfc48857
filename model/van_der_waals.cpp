#include "model/van_der_waals.h"

#include <cassert>
#include <cmath>
#include <cstddef>

#include "model/component_table.h"

namespace fluid {

double MixtureA(std::int32_t lastComponent, std::span<const double> fractions) {
    const auto count = static_cast<std::size_t>(lastComponent) + 1;
    assert(count <= ComponentCount && count <= fractions.size());
    // With a_kl = sqrt(a_kk·a_ll) the double sum is the square of one sum; the defects restore
    // what the rounded roots miss on the diagonal.
    double rootSum = 0.0;
    double defect = 0.0;
    for (std::size_t k = 0; k < count; ++k) {
        rootSum += fractions[k] * aRoot[k];
        defect += fractions[k] * fractions[k] * aRootDefect[k];
    }
    return rootSum * rootSum + defect;
}

double MixtureB(std::int32_t lastComponent, std::span<const double> fractions) {
    const auto count = static_cast<std::size_t>(lastComponent) + 1;
    assert(count <= ComponentCount && count <= fractions.size());
    double covolume = 0.0;
    for (std::size_t k = 0; k < count; ++k) covolume += fractions[k] * b[k];
    return covolume;
}

double PressureVdW(double aMix, double bMix, double T, double V) {
    if (V == bMix) return 0.0;
    return R * T / (V - bMix) - aMix / (V * V);
}

double TemperatureVdW(double aMix, double bMix, double P, double V) {
    if (!(V > 0.0)) return 0.0;
    const double T = (P * V * V + aMix) * (V - bMix) / (R * V * V);
    // V² may have no room in a double.
    return std::isfinite(T) ? T : (P + aMix / V / V) * ((V - bMix) / R);
}

}  // namespace fluid
