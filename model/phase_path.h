#pragma once

#include <optional>

#include "model/trial_phase.h"

namespace fluid {

// Changes of a bulk state per unit of a path's parameter.
struct PathRates {
    double u;
    double A;
    double P;
    double lnT;
};

// A line of states of one composition along which its stability is followed.
class Path {
  public:
    virtual ~Path() = default;
    // The state at a value of the parameter; none where the state has no room in doubles.
    virtual std::optional<BulkState> at(double parameter) const = 0;
    virtual PathRates rates(const BulkState& bulk) const = 0;
};

// T in K is given, the parameter is -ln(V/b - 1): from gas to liquid.
class Isotherm final : public Path {
  public:
    Isotherm(const Mixture& mixture, double T) : mixture_(mixture), T_(T) {}
    std::optional<BulkState> at(double parameter) const override;
    PathRates rates(const BulkState& bulk) const override;

  private:
    const Mixture& mixture_;
    double T_;
};

// V in cm3/mol, above bMix, is given, the parameter is -ln T: from hot to cold.
class Isochore final : public Path {
  public:
    Isochore(const Mixture& mixture, double V) : mixture_(mixture), V_(V) {}
    std::optional<BulkState> at(double parameter) const override;
    PathRates rates(const BulkState& bulk) const override;

  private:
    const Mixture& mixture_;
    double V_;
};

// P in MPa is given, the parameter is -ln T: from hot to cold, on the root of lowest fugacity.
class Isobar final : public Path {
  public:
    Isobar(const Mixture& mixture, double P) : mixture_(mixture), P_(P) {}
    std::optional<BulkState> at(double parameter) const override;
    PathRates rates(const BulkState& bulk) const override;

  private:
    const Mixture& mixture_;
    double P_;
};

// T in K is given, the parameter is ln P, on the root nearest to V in cm3/mol.
class PressureLine final : public Path {
  public:
    PressureLine(const Mixture& mixture, double T, double V) : mixture_(mixture), T_(T), V_(V) {}
    std::optional<BulkState> at(double parameter) const override;
    PathRates rates(const BulkState& bulk) const override;

  private:
    const Mixture& mixture_;
    double T_;
    double V_;
};

// Change of D at the given A per unit of the parameter, MPa.
double RateOfD(const BulkState& bulk, const PathRates& rates, const TrialPhase& trial);

}  // namespace fluid
