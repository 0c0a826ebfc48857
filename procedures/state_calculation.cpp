#include "procedures/state_calculation.h"

#include <cmath>

#include "model/van_der_waals.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

struct Parameters {
    double a = 0.0;
    double b = 0.0;
};

Parameters parametersOf(const fluid::Mixture& mixture) {
    const auto last = static_cast<std::int32_t>(mixture.count) - 1;
    return {fluid::MixtureA(last, mixture.z), fluid::MixtureB(last, mixture.z)};
}

bool isUsable(double number) {
    return number > 0.0 && std::isfinite(number);
}

}  // namespace

std::optional<double> pressureAt(const fluid::Mixture& mixture, double V, double T) {
    if (!isUsable(V) || !isUsable(T)) {
        return std::nullopt;
    }
    const auto [a, b] = parametersOf(mixture);
    const double P = fluid::PressureVdW(a, b, T, V);
    return std::isfinite(P) ? std::optional(P) : std::nullopt;
}

std::optional<CalculatedTemperature> temperatureAt(const fluid::Mixture& mixture, double V,
                                                   double P) {
    if (!isUsable(V)) {
        return std::nullopt;
    }
    const auto [a, b] = parametersOf(mixture);
    const double T = fluid::TemperatureVdW(a, b, P, V);
    if (!std::isfinite(T)) {
        return std::nullopt;
    }
    CalculatedTemperature result = {T, P > 0.0 ? "" : "Negative pressures are not excluded. "};
    if (!(T > 0.0)) {
        result.warning += "Warning: temperature = " + toolkit::numberText(T) + " K";
    }
    return result;
}

}  // namespace procedures
