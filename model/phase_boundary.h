#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "model/homogenisation.h"
#include "model/trial_phase.h"

namespace fluid {

// A state at which the mixture, stable as one phase, coexists with a trace of another phase.
// Derived in docs/isochores.md.
struct BoundaryPoint {
    double T = 0.0;       // K
    double P = 0.0;       // MPa
    double V = 0.0;       // cm3/mol
    double otherV = 0.0;  // molar volume of the other phase; V itself at a critical point

    // The other phase of a bubble point is of larger molar volume, that of a dew point of smaller.
    Homogenisation kind() const {
        return otherV >= V ? Homogenisation::IntoLiquid : Homogenisation::IntoVapour;
    }
    bool isCritical() const;
};

// The one temperature above which the mixture is stable as one phase at the molar volume V in
// cm3/mol, and below which it is not. lastComponent, fractions: the bulk, as for MixtureA.
// None where V is not above the co-volume of the mixture, or where it is stable down to ColdestT.
std::optional<BoundaryPoint> FindBoundary(std::int32_t lastComponent,
                                          std::span<const double> fractions, double V);

// Stable: no division into phases lowers the Helmholtz energy. Metastable: only a division that
// begins with a finite change does. Unstable: any small change of composition or density grows.
// Unknown: below ColdestT, where nothing is searched; what is unstable is known there as well.
enum class Stability { Stable, Metastable, Unstable, Unknown };

// The stability of a mixture at one temperature.
class IsothermStability {
  public:
    // lastComponent, fractions: the bulk, as for MixtureA; T in K, above 0; smallestV in cm3/mol,
    // above the co-volume: denser states are not asked for.
    IsothermStability(std::int32_t lastComponent, std::span<const double> fractions, double T,
                      double smallestV);

    // V in cm3/mol from smallestV on.
    Stability at(double V) const;
    // The phase boundaries, from large to small volumes.
    std::span<const BoundaryPoint> boundaries() const { return {boundaries_.data(), count_}; }

  private:
    static constexpr std::size_t Capacity = 16;

    Mixture mixture_;
    double T_;
    bool isKnown_;
    bool isGasStable_ = true;
    std::array<BoundaryPoint, Capacity> boundaries_{};
    std::size_t count_ = 0;
};

}  // namespace fluid
