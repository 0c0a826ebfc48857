#include "model/van_der_waals.h"

#include <cmath>

#include "model/mixture.h"

namespace fluid {

double MixtureA(std::int32_t lastComponent, std::span<const double> fractions) {
    return MixtureOf(lastComponent, fractions).attraction;
}

double MixtureB(std::int32_t lastComponent, std::span<const double> fractions) {
    return MixtureOf(lastComponent, fractions).covolume;
}

double MolarMass(std::int32_t lastComponent, std::span<const double> fractions) {
    return MixtureOf(lastComponent, fractions).molarMass;
}

double MolarVolumeFromDensity(std::int32_t lastComponent, std::span<const double> fractions,
                              double rho) {
    return MolarVolumeFromDensity(MixtureOf(lastComponent, fractions), rho);
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
