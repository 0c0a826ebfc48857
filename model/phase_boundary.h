#pragma once

#include <optional>
#include <span>
#include <vector>

#include "model/homogenisation.h"
#include "model/trial_phase.h"

namespace fluid {

// A state at which the mixture, stable as one phase, coexists with a trace of another phase.
// Derived in docs/phase_equilibria.md.
struct BoundaryPoint {
    double T = 0.0;           // K
    double P = 0.0;           // MPa
    double V = 0.0;           // cm3/mol
    double otherV = 0.0;      // molar volume of the other phase; V itself at a critical point
    bool twoLiquids = false;  // both are liquids, so that it is neither a bubble nor a dew point

    // The other phase of a bubble point is of larger molar volume, that of a dew point of smaller.
    Homogenisation kind() const {
        return otherV >= V ? Homogenisation::IntoLiquid : Homogenisation::IntoVapour;
    }
    bool isCritical() const;
};

// Stable: no division into phases lowers the Helmholtz energy. Metastable: only a division that
// begins with a finite change does. Unstable: any small change of composition or density grows.
// Unknown: below ColdestT, where nothing is searched; what is unstable is known there as well.
enum class Stability { Stable, Metastable, Unstable, Unknown };

// A point of the boundary as its curve over the volume has it.
struct BoundarySample {
    double x = 0.0;  // ln(V/b - 1)
    double lnT = 0.0;
    double lnP = 0.0;
    double slopeT = 0.0;  // dlnT/dx
    double slopeP = 0.0;  // dlnP/dx
    TrialPhase other;     // the bulk itself at a critical point
};

// The boundary at x = ln(V/b - 1); nothing where the mixture is stable down to ColdestT.
std::optional<BoundarySample> BoundaryAt(const Mixture& mixture, double x);

// All phase boundaries of a mixture: one temperature at each molar volume, sampled so closely that
// T and P are monotonous between neighbours.
class PhaseBoundary {
  public:
    // Samples without a gap between them, from small to large volumes. At a corner, where one
    // second phase gives way to another, two samples of the same place follow each other.
    using Run = std::vector<BoundarySample>;

    explicit PhaseBoundary(const Mixture& mixture);

    const Mixture& mixture() const { return mixture_; }
    const std::vector<Run>& runs() const { return runs_; }
    // Every point at T in K, from large to small volumes; and at P in MPa, from hot to cold.
    std::vector<BoundarySample> atTemperature(double T) const;
    std::vector<BoundarySample> atPressure(double P) const;
    // Below this pressure in MPa the boundary has points colder than ColdestT, too, which are not
    // searched for.
    double coldestP() const { return coldestP_; }

  private:
    Mixture mixture_;
    std::vector<Run> runs_;
    double coldestP_ = 0.0;
};

// The boundary at a place between two neighbouring samples.
std::optional<BoundarySample> BoundaryBetween(const Mixture& mixture, const BoundarySample& from,
                                              const BoundarySample& to, double x);

BoundaryPoint PointOf(const Mixture& mixture, const BoundarySample& sample);
// The bulk and the other phase of a sample.
PhasePair PairOf(const Mixture& mixture, const BoundarySample& sample);

// The boundary of a mixture, sampled once and kept until another mixture is asked for.
const PhaseBoundary& BoundaryOf(const Mixture& mixture);

// The one temperature above which the mixture is stable as one phase at the molar volume V in
// cm3/mol, and below which it is not.
// None where V is not above the co-volume of the mixture, or where it is stable down to ColdestT.
std::optional<BoundaryPoint> FindBoundary(const Mixture& mixture, double V);

// The stability of a mixture at one temperature.
class IsothermStability {
  public:
    // T in K, above 0; smallestV in cm3/mol, above the co-volume: denser states are not asked for.
    IsothermStability(const Mixture& mixture, double T, double smallestV);

    // V in cm3/mol from smallestV on.
    Stability at(double V) const;
    // The phase boundaries, from large to small volumes.
    std::span<const BoundaryPoint> boundaries() const { return boundaries_; }

  private:
    Mixture mixture_;
    double T_;
    bool isKnown_;
    std::vector<BoundaryPoint> boundaries_;
};

}  // namespace fluid
