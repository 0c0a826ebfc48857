#include "model/first_approach.h"

#include <algorithm>
#include <cmath>

#include "model/phase_split.h"
#include "model/saturation.h"

namespace fluid {

namespace {

// The least pressure in MPa that an iteration starts from: in the deep cold the curves give none.
constexpr double leastP = 1e-300;

// A tenth of the saturation pressures in the proportions of the bulk, MPa.
double SeedPressure(const Mixture& mixture, double T) {
    double sum = 0.0;
    for (std::size_t k = 0; k < mixture.count; ++k) {
        sum += mixture.z[k] * SaturationPressure(mixture.index[k], T);
    }
    constexpr double share = 0.1;
    return std::max(share * sum, leastP);
}

// The temperature in K of a seed pressure: secant steps in ln P over 1/T from 298.15 K, on a curve
// that is nearly straight there. The ends are those of what is worth showing.
double SeedTemperature(const Mixture& mixture, double P) {
    constexpr double coldest = 2.0;
    constexpr double hottest = 2000.0;
    constexpr double start = 298.15;
    constexpr int stepLimit = 50;    // some five are usual
    constexpr double enough = 1e-9;  // for an estimate
    const double target = std::log(P);
    const auto excess = [&](double t) { return std::log(SeedPressure(mixture, 1.0 / t)) - target; };
    double before = 1.0 / start;
    double now = 1.01 / start;
    double excessBefore = excess(before);
    for (int i = 0; i < stepLimit; ++i) {
        const double excessNow = excess(now);
        const double step = (before - now) * excessNow / (excessNow - excessBefore);
        if (!std::isfinite(step) || std::abs(step) < enough * now) break;
        before = now;
        excessBefore = excessNow;
        now = std::clamp(now + step, 1.0 / hottest, 1.0 / coldest);
    }
    return 1.0 / now;
}

// Kept so small and so large that every product and sum of fractions has room in a double, also in
// the deep cold, where there is no vapour pressure left.
ComponentValues WilsonRatios(const Mixture& mixture, double T, double P) {
    constexpr double smallest = 1e-130;
    constexpr double largest = 1e130;
    ComponentValues K{};
    for (std::size_t k = 0; k < mixture.count; ++k) {
        const Gas& gas = gases[mixture.index[k]];
        const double ratio =
            gas.Pc / std::max(P, leastP) * std::exp(5.373 * (1.0 + gas.omega) * (1.0 - gas.Tc / T));
        K[k] = std::clamp(ratio, smallest, largest);
    }
    return K;
}

// Phases with the distribution ratios K and the vapour fraction beta, each adding up to 1.
void Distribute(const Mixture& mixture, const ComponentValues& K, double beta, PhaseGuess& guess) {
    double sumX = 0.0;
    double sumY = 0.0;
    for (std::size_t k = 0; k < mixture.count; ++k) {
        guess.x[k] = mixture.z[k] / ((1.0 - beta) + beta * K[k]);
        guess.y[k] = K[k] * guess.x[k];
        sumX += guess.x[k];
        sumY += guess.y[k];
    }
    for (double& x : guess.x) x /= sumX;
    for (double& y : guess.y) y /= sumY;
}

}  // namespace

PhaseGuess HomogenisationSeed(const Mixture& mixture, Given given, double value,
                              Homogenisation kind) {
    const bool findsP = given == Given::Temperature;
    PhaseGuess guess;
    guess.unknown = findsP ? SeedPressure(mixture, value) : SeedTemperature(mixture, value);
    const double T = findsP ? value : guess.unknown;
    const double P = findsP ? guess.unknown : value;
    const double beta = kind == Homogenisation::IntoLiquid ? 0.0 : 1.0;
    Distribute(mixture, WilsonRatios(mixture, T, P), beta, guess);
    // The bulk to its last digit.
    (kind == Homogenisation::IntoLiquid ? guess.x : guess.y) = mixture.z;
    return guess;
}

PhaseGuess HomogenisationApproach(Given given, const PhasePair& point) {
    // The prescribed first steps of the iteration.
    constexpr double firstPressureStep = 0.95;
    constexpr double firstTemperatureStep = 5.0;
    const double unknown =
        given == Given::Temperature ? point.P / firstPressureStep : point.T + firstTemperatureStep;
    return {unknown, point.x, point.y};
}

EquilibriumApproach FindEquilibriumApproach(const Mixture& mixture, double T, double V) {
    using Kind = EquilibriumApproach::Kind;
    EquilibriumApproach approach;
    const auto split = SplitAtVolume(mixture, T, V);
    if (split && split->found) {
        approach.kind = !TakesItsRoots(mixture, split->phases) ? Kind::TwoLiquids
                        : split->metastable                    ? Kind::Metastable
                                                               : Kind::TwoPhases;
        approach.guess = {split->phases.P, split->phases.x, split->phases.y};
        approach.volumeFraction = split->volumeFraction;
        return approach;
    }
    if (split) approach.kind = Kind::NotFound;
    constexpr double half = 0.5;
    approach.volumeFraction = half;
    approach.guess.unknown = SeedPressure(mixture, T);
    const ComponentValues K = WilsonRatios(mixture, T, approach.guess.unknown);
    Distribute(mixture, K, half, approach.guess);
    return approach;
}

}  // namespace fluid
