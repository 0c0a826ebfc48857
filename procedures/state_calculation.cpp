#include "procedures/state_calculation.h"

#include <cmath>

#include "model/van_der_waals.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

bool IsUsable(double number) {
    return number > 0.0 && std::isfinite(number);
}

}  // namespace

std::optional<double> PressureAt(const fluid::Mixture& mixture, double V, double T) {
    if (!IsUsable(V) || !IsUsable(T)) return std::nullopt;
    const double P = fluid::PressureVdW(mixture.attraction, mixture.covolume, T, V);
    return std::isfinite(P) ? std::optional(P) : std::nullopt;
}

std::optional<CalculatedTemperature> TemperatureAt(const fluid::Mixture& mixture, double V,
                                                   double P) {
    if (!IsUsable(V)) return std::nullopt;
    const double T = fluid::TemperatureVdW(mixture.attraction, mixture.covolume, P, V);
    if (!std::isfinite(T)) return std::nullopt;
    CalculatedTemperature result = {T, P > 0.0 ? "" : "Negative pressures are not excluded. "};
    if (!(T > 0.0)) {
        result.warning += "Warning: temperature = " + toolkit::NumberText(T) + " K";
    }
    return result;
}

}  // namespace procedures
