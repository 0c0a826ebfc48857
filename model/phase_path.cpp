#include "model/phase_path.h"

#include <algorithm>
#include <cmath>

#include "model/cubic.h"

namespace fluid {

namespace {

// dP/dV of a state
double Stiffness(const BulkState& bulk) {
    return -bulk.RT * bulk.u * bulk.u + 2.0 * bulk.A * bulk.A / bulk.V;
}

std::optional<BulkState> StateAtRoot(const Mixture& mixture, double T, double P, double V) {
    if (!(V > mixture.bMix)) return {};
    BulkState bulk = BulkAt(mixture, T, V - mixture.bMix);
    bulk.P = P;
    if (!std::isfinite(bulk.u) || !(bulk.A > 0.0)) return {};
    return bulk;
}

CubicRoots Roots(const Mixture& mixture, double T, double P) {
    return VolumeCubicSolver(mixture.aRootMix * mixture.aRootMix, mixture.bMix, T, P);
}

}  // namespace

std::optional<BulkState> Isotherm::at(double parameter) const {
    const BulkState bulk = BulkAt(mixture_, T_, mixture_.bMix * std::exp(-parameter));
    if (!std::isfinite(bulk.u) || !(bulk.A > 0.0)) return {};
    return bulk;
}

PathRates Isotherm::rates(const BulkState& bulk) const {
    const double u = bulk.u;
    const double A = bulk.A / (bulk.V * bulk.u);
    return {u, A, bulk.RT * u - 2.0 * bulk.A * A, 0.0};
}

std::optional<BulkState> Isochore::at(double parameter) const {
    const BulkState bulk = BulkAt(mixture_, std::exp(-parameter), V_ - mixture_.bMix);
    if (!std::isfinite(bulk.u) || !(bulk.A > 0.0)) return {};
    return bulk;
}

PathRates Isochore::rates(const BulkState& bulk) const {
    return {0.0, 0.0, -bulk.RT * bulk.u, -1.0};
}

std::optional<BulkState> Isobar::at(double parameter) const {
    const double T = std::exp(-parameter);
    const CubicRoots roots = Roots(mixture_, T, P_);
    if (!roots[1].isReal()) return StateAtRoot(mixture_, T, P_, roots[0].real);
    const auto liquid = StateAtRoot(mixture_, T, P_, roots[1].real);
    const auto vapour = StateAtRoot(mixture_, T, P_, roots[2].real);
    if (!liquid || !vapour) return liquid ? liquid : vapour;
    return MolarFugacity(mixture_, *liquid) < MolarFugacity(mixture_, *vapour) ? liquid : vapour;
}

PathRates Isobar::rates(const BulkState& bulk) const {
    const double V = bulk.RT * bulk.u / Stiffness(bulk);
    return {-bulk.u * bulk.u * V, -bulk.A * V / bulk.V, 0.0, -1.0};
}

std::optional<BulkState> PressureLine::at(double parameter) const {
    const double P = std::exp(parameter);
    const CubicRoots roots = Roots(mixture_, T_, P);
    if (!roots[1].isReal()) return StateAtRoot(mixture_, T_, P, roots[0].real);
    const auto away = [this](const CubicRoot& root) { return std::abs(std::log(root.real / V_)); };
    const CubicRoot& root = away(roots[1]) < away(roots[2]) ? roots[1] : roots[2];
    return StateAtRoot(mixture_, T_, P, root.real);
}

PathRates PressureLine::rates(const BulkState& bulk) const {
    const double V = bulk.P / Stiffness(bulk);
    return {-bulk.u * bulk.u * V, -bulk.A * V / bulk.V, bulk.P, 0.0};
}

double RateOfD(const BulkState& bulk, const PathRates& rates, const TrialPhase& trial) {
    const double push = rates.u * (trial.concentration / bulk.u + trial.packing);
    const double pull = trial.H * (rates.lnT * (bulk.A - trial.A) - rates.A);
    return bulk.RT * (rates.lnT * trial.u + push + bulk.k * pull) - rates.P;
}

}  // namespace fluid
