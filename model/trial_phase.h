#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "model/mixture.h"

namespace fluid {

// docs/phase_equilibria.md derives everything in this header.

// exp(x) - 1 - x, which has all its digits.
double ExpGain(double x);

// What the pressure of a phase is made of: R·T·u - A².
struct Push {
    double u;
    double A;
};
// The pressure in MPa of two phases that coexist, from the one in which it cancels less.
double SharedPressure(double RT, const Push& one, const Push& other);

// A phase whose components have the fugacities of the bulk. With the fugacities given, such phases
// are a curve that knows no temperature: its place on it is lambda = k·(A - A_z).
struct TrialPhase {
    double lambda = 0.0;         // cm3/(mol·MPa^½)
    double excess = 0.0;         // u - u_z - lambda·A_z, never below 0, mol/cm3
    double u = 0.0;              // 1/(V - b), mol/cm3
    double concentration = 0.0;  // 1/V, mol/cm3
    double packing = 0.0;        // b/V
    double H = 0.0;              // sum of aRoot_i·c_i, MPa^½
    double rise = 0.0;           // H - A_z, MPa^½
    double slope = 0.0;          // dH/dlambda, above 0

    double volume() const { return 1.0 / concentration; }
    // R·T at which this phase has the pressure of the bulk, below which D > 0; twice the slope at
    // the bulk itself.
    double levelRT() const { return 4.0 * excess / (lambda * lambda); }
};

// The maxima of D other than the bulk itself.
using Maxima = std::vector<TrialPhase>;

// All trial phases of a bulk of one composition and molar volume.
class TrialCurve {
  public:
    // freeVolume: V - bMix > 0 in cm3/mol. The mixture must outlive the curve.
    TrialCurve(const Mixture& mixture, double freeVolume);

    const Mixture& mixture() const { return *mixture_; }
    double V() const { return V_; }
    double u() const { return u_; }
    double A() const { return A_; }

    // How closely a phase is wanted: for the mere sign of H - A, or to the last digits.
    enum class Accuracy { Rough, Fine };
    // The phase at a place of the curve; `near` is one whose place is known.
    TrialPhase at(double lambda, const TrialPhase& near, Accuracy accuracy) const;
    // The same where about the u of the phase is known, in mol/cm3.
    TrialPhase at(double lambda, double u) const;
    // The bulk itself, lambda = 0.
    const TrialPhase& bulk() const { return bulk_; }
    // R·T of the diffusional spinodal at this volume.
    double spinodalRT() const { return 2.0 * bulk_.slope; }
    // Its change with V, MPa.
    double spinodalSlope() const { return spinodalSlope_; }

    // D at a maximum in units of the phase's own R·T/V: how much more stable it is than the bulk,
    // whose pressure is P in MPa; 0 where that is less than rounding.
    double drive(const TrialPhase& trial, double RT, double P) const;

    // All maxima of D over the curve, from dense to dilute ones on either side of the bulk.
    Maxima maxima(double RT) const;
    // Whether the levels of all are at most this, but for rounding.
    bool isHighest(double RT) const;
    // Climbs from a phase to the next maximum of levelRT; nothing where that is the bulk itself.
    std::optional<TrialPhase> climbLevel(const TrialPhase& from) const;
    // d(levelRT)/dV at the place of a phase, in MPa.
    double levelSlope(const TrialPhase& trial) const;
    // Amount fractions of a phase.
    ComponentValues fractions(const TrialPhase& trial) const;

  private:
    struct Sums;
    class Search;

    bool isNear(double u) const;
    Sums sumUp(double lambda, double excess) const;
    TrialPhase phase(double lambda, double excess, double u, const Sums& sums) const;
    TrialPhase solve(double lambda, double excess, double u, Accuracy accuracy) const;

    const Mixture* mixture_;
    double V_;
    double u_;
    double A_;
    ComponentValues q_{};  // aRoot_i - b_i·A_z
    TrialPhase bulk_;
    double curvature_ = 0.0;  // d²H/dlambda² at the bulk
    double third_ = 0.0;      // d³H/dlambda³ at the bulk
    double spinodalSlope_ = 0.0;
};

}  // namespace fluid
