#include "model/phase_equilibrium.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "model/cubic.h"
#include "model/phase_roots.h"
#include "model/trial_phase.h"
#include "model/van_der_waals.h"

namespace fluid {

namespace {

constexpr int IterationLimit = 10000;
constexpr double Tolerance = 1e-10;
constexpr double ResidualTolerance = 1e-8;
constexpr double DriftTolerance = 5e-9;
constexpr double Divergence = 1e300;

// The secant search for the unknown of an iteration.
struct Secant {
    double u0 = 0.0;
    double u1 = 0.0;
    double F0 = 0.0;
    double F1 = 0.0;
    double change = 0.0;

    void step() {
        change = F1 != F0 ? (u0 - u1) * F1 / (F1 - F0) : 2.0 * change;
        u0 = u1;
        F0 = F1;
        u1 += change;
        if (!(u1 > 0.0)) u1 = 0.5 * (u1 - change);
    }

    bool failed() const {
        return !std::isfinite(u1) || !std::isfinite(F1) || !(std::abs(change) <= Divergence);
    }
    // drift: see Substitution; a small one means equal fugacities.
    bool converged(double drift) const {
        return std::abs(change) < Tolerance && std::abs(F1) < ResidualTolerance &&
               drift < DriftTolerance;
    }
};

using RootChoice = double(const CubicRoots&, double);

// Two phases that exchange their components by successive substitution.
struct Substitution {
    std::int32_t last = -1;
    ComponentValues z{};
    PhasePair phases;
    ComponentValues logPhiX{};
    ComponentValues logPhiY{};
    ComponentValues K{};
    double drift = 0.0;  // largest relative change of a K in the last substitution

    double evaluate(const ComponentValues& x, RootChoice* choice, ComponentValues& logPhi) const;
    void evaluatePhases();
    // New compositions for the vapour fraction beta; returns the residual.
    double substitute(double beta);
};

// The molar volume of a phase and the logarithms of its fugacity coefficients, with the limits of
// FugacityCoefficients: a coefficient of 1 beyond e^±227 and for a volume that is none.
double Substitution::evaluate(const ComponentValues& x, RootChoice* choice,
                              ComponentValues& logPhi) const {
    constexpr double LogLimit = 227.0;
    const auto count = static_cast<std::size_t>(last) + 1;
    const double bMix = MixtureB(last, x);
    const double V = choice(VolumeCubicSolver(MixtureA(last, x), bMix, phases.T, phases.P), bMix);
    double rootSum = 0.0;
    for (std::size_t i = 0; i < count; ++i) rootSum += x[i] * aRoot[i];
    const double RT = R * phases.T;
    const double u = 1.0 / (V - bMix);
    const double pull = 2.0 * rootSum / (RT * V);
    const double common = std::log(phases.P * (V - bMix) / RT);
    for (std::size_t i = 0; i < count; ++i) {
        const double value = b[i] * u - aRoot[i] * pull - common;
        logPhi[i] = V > 0.0 && std::abs(value) < LogLimit ? value : 0.0;
    }
    return V;
}

void Substitution::evaluatePhases() {
    phases.Vx = evaluate(phases.x, LiquidRoot, logPhiX);
    phases.Vy = evaluate(phases.y, VapourRoot, logPhiY);
}

void Normalise(ComponentValues& x, double sum) {
    if (sum == 1.0) return;
    for (double& fraction : x) fraction /= sum;
}

double Substitution::substitute(double beta) {
    double sumX = 0.0;
    double sumY = 0.0;
    drift = 0.0;
    for (std::size_t i = 0; i <= static_cast<std::size_t>(last); ++i) {
        const double ratio = std::exp(logPhiX[i] - logPhiY[i]);
        // 1 + beta·(K - 1), which would lose a small K
        const double t = (1.0 - beta) + beta * ratio;
        phases.x[i] = t > 0.0 ? z[i] / t : z[i];
        phases.y[i] = ratio * phases.x[i];
        drift = std::max(drift, std::abs(ratio - K[i]) / ratio);
        K[i] = ratio;
        sumX += phases.x[i];
        sumY += phases.y[i];
    }
    Normalise(phases.x, sumX);
    Normalise(phases.y, sumY);
    return sumX - sumY;
}

// Fractions of a guess, normalised; false where they cannot be.
bool Take(std::int32_t last, const ComponentValues& guess, ComponentValues& x) {
    double sum = 0.0;
    x = {};
    for (std::size_t i = 0; i <= static_cast<std::size_t>(last); ++i) {
        if (!(guess[i] >= 0.0)) return false;
        x[i] = guess[i];
        sum += x[i];
    }
    if (!(sum > 0.0) || !std::isfinite(sum)) return false;
    Normalise(x, sum);
    return true;
}

ComponentValues Bulk(std::int32_t last, std::span<const double> fractions) {
    ComponentValues z{};
    std::copy_n(fractions.begin(), last + 1, z.begin());
    return z;
}

BulkState StateOf(const Mixture& mixture, const PhasePair& phases, double V) {
    BulkState state = BulkAt(mixture, phases.T, V - mixture.bMix);
    state.P = phases.P;
    return state;
}

double LogFugacity(const Mixture& mixture, const BulkState& state, std::size_t i) {
    return std::log(mixture.z[i] * state.u) + mixture.b[i] * state.u -
           state.k * mixture.aRoot[i] * state.A;
}

// The two phases of a result as mixtures of their own.
struct Pair {
    Mixture x;
    Mixture y;
    BulkState X;
    BulkState Y;

    Pair(std::int32_t last, const PhasePair& phases)
        : x(MixtureOf(last, phases.x)),
          y(MixtureOf(last, phases.y)),
          X(StateOf(x, phases, phases.Vx)),
          Y(StateOf(y, phases, phases.Vy)) {}
};

bool InEquilibrium(const Pair& pair) {
    constexpr double FugacityTolerance = 1e-8;
    for (std::size_t i = 0; i < pair.x.count; ++i) {
        const double difference = LogFugacity(pair.x, pair.X, i) - LogFugacity(pair.y, pair.Y, i);
        if (!(std::abs(difference) <= FugacityTolerance)) return false;
    }
    return true;
}

// Whether a maximum of D over the bulk is this other phase.
bool IsAmong(const Maxima& maxima, const BulkState& bulk, const BulkState& other) {
    constexpr double Match = 0.01;
    return std::any_of(maxima.begin(), maxima.end(), [&](const TrialPhase& phase) {
        return std::abs(phase.A - other.A) < Match * std::abs(other.A - bulk.A);
    });
}

bool SplitsOtherwise(const Maxima& maxima, const BulkState& bulk) {
    constexpr double DriveTolerance = 1e-8;
    return std::any_of(maxima.begin(), maxima.end(), [&](const TrialPhase& phase) {
        return Drive(bulk, phase) > DriveTolerance;
    });
}

// Two phases so alike that they may be one that the iteration creeps to.
bool LooksTrivial(const Pair& pair) {
    const double volumes = std::abs(pair.X.V / pair.Y.V - 1.0);
    double largest = 0.0;
    bool anyEqual = false;
    for (std::size_t i = 0; i < pair.x.count; ++i) {
        const double change = std::abs(pair.y.z[i] / pair.x.z[i] - 1.0);
        largest = std::max(largest, change);
        anyEqual = anyEqual || (std::abs(pair.x.z[i] - pair.y.z[i]) < 1e-5 && change < 0.01);
    }
    return (largest < 0.02 && volumes < 0.02) || (anyEqual && volumes < 0.05);
}

struct Verdict {
    Outcome outcome;
    bool metastable;
};

// What the phases of a converged iteration are worth. The first is the bulk whose stability counts.
Verdict Judge(std::int32_t last, const PhasePair& phases, bool bulkIsX) {
    const Verdict none = {Outcome::NoSolution, false};
    const bool possible =
        phases.Vx > MixtureB(last, phases.x) && phases.Vy > MixtureB(last, phases.y);
    if (!possible || !std::isfinite(phases.Vx) || !std::isfinite(phases.Vy)) return none;
    const Pair pair(last, phases);
    const Mixture& bulk = bulkIsX ? pair.x : pair.y;
    const BulkState& state = bulkIsX ? pair.X : pair.Y;
    const Verdict refused = {LooksTrivial(pair) ? Outcome::Trivial : Outcome::NoSolution, false};
    if (!InEquilibrium(pair)) return refused;
    const Maxima maxima = FindMaxima(bulk, state);
    constexpr double Alike = 0.05;
    const bool alike = std::abs(phases.Vx / phases.Vy - 1.0) < Alike;
    if (alike && !IsAmong(maxima, state, bulkIsX ? pair.Y : pair.X)) return refused;
    return {Outcome::Converged, SplitsOtherwise(maxima, state)};
}

bool Usable(double number) {
    return number > 0.0 && std::isfinite(number);
}

// Runs the iteration to its end; `unknown` is the one of `pair` that the secant is after, and
// `fraction` the amount fraction of phase Y at each step. Whether it has converged.
template <class Fraction>
bool Converge(Substitution& pair, Secant& secant, double& unknown, const Fraction& fraction,
              int& iterations) {
    do {
        secant.step();
        unknown = secant.u1;
        pair.evaluatePhases();
        secant.F1 = pair.substitute(fraction());
        ++iterations;
    } while (!secant.failed() && !secant.converged(pair.drift) && iterations < IterationLimit);
    if (secant.failed() || !secant.converged(pair.drift)) return false;
    pair.evaluatePhases();
    return true;
}

}  // namespace

HomogenisationResult IterateHomogenisation(std::int32_t lastComponent,
                                           std::span<const double> fractions, Given given,
                                           double value, Homogenisation kind,
                                           const PhaseGuess& guess) {
    HomogenisationResult result;
    if (lastComponent < 0 || !Usable(value) || !Usable(guess.unknown)) return result;
    const bool findsP = given == Given::Temperature;
    const bool intoLiquid = kind == Homogenisation::IntoLiquid;
    Substitution pair;
    pair.last = lastComponent;
    pair.z = Bulk(lastComponent, fractions);
    if (!Take(lastComponent, guess.x, pair.phases.x)) return result;
    if (!Take(lastComponent, guess.y, pair.phases.y)) return result;
    (findsP ? pair.phases.T : pair.phases.P) = value;
    double& unknown = findsP ? pair.phases.P : pair.phases.T;
    const double before = findsP ? 0.9 * guess.unknown : guess.unknown - 10.0;
    Secant secant{before, guess.unknown, -0.01, 0.01};
    const auto fraction = [intoLiquid] { return intoLiquid ? 0.0 : 1.0; };
    if (!Converge(pair, secant, unknown, fraction, result.iterations)) return result;
    const Verdict verdict = Judge(lastComponent, pair.phases, intoLiquid);
    const bool reversed = verdict.outcome == Outcome::Converged && pair.phases.Vx > pair.phases.Vy;
    result.outcome = reversed ? Outcome::NoSolution : verdict.outcome;
    if (result.outcome != Outcome::Converged) return result;
    result.metastable = verdict.metastable;
    result.phases = pair.phases;
    return result;
}

namespace {

// The lever rule on molar volumes: the fraction of the volume that phase Y takes.
double LeverRule(double V, const PhasePair& phases) {
    return (V - phases.Vx) * phases.Vy / ((phases.Vy - phases.Vx) * V);
}

double Damped(double beta, double before) {
    // Beyond an end by rounding alone: the bulk is that phase.
    constexpr double Rounding = 1e-10;
    if (beta > 1.0 && beta < 1.0 + Rounding) return 1.0;
    if (beta < 0.0 && beta > -Rounding) return 0.0;
    if (beta > 1.0) beta = 0.5 * (before + 1.0);
    if (beta < 0.0) beta = 0.5 * before;
    return std::isfinite(beta) ? beta : 0.5;
}

// Rounding makes no fraction leave its range.
double Snapped(double fraction) {
    constexpr double Rounding = 1e-9;
    if (std::abs(fraction) < Rounding) return 0.0;
    return std::abs(fraction - 1.0) < Rounding ? 1.0 : fraction;
}

}  // namespace

EquilibriumResult IterateEquilibrium(std::int32_t lastComponent, std::span<const double> fractions,
                                     double T, double V, double volumeFraction,
                                     const PhaseGuess& guess) {
    EquilibriumResult result;
    if (lastComponent < 0 || !Usable(T) || !Usable(V) || !Usable(guess.unknown)) return result;
    if (!std::isfinite(volumeFraction)) return result;
    Substitution pair;
    pair.last = lastComponent;
    pair.z = Bulk(lastComponent, fractions);
    PhasePair& phases = pair.phases;
    if (!Take(lastComponent, guess.x, phases.x)) return result;
    if (!Take(lastComponent, guess.y, phases.y)) return result;
    phases.T = T;
    phases.P = guess.unknown;
    pair.evaluatePhases();
    const double first = pair.substitute(Damped(volumeFraction * V / phases.Vy, 1.0));
    Secant secant{0.99 * guess.unknown, guess.unknown, -0.01, first};
    double beta = 1.0;
    const auto fraction = [&] {
        beta = Damped(LeverRule(V, phases) * V / phases.Vy, beta);
        return beta;
    };
    if (!Converge(pair, secant, phases.P, fraction, result.iterations)) return result;
    const double share = LeverRule(V, phases);
    if (!std::isfinite(share)) return result;
    const Verdict verdict = Judge(lastComponent, phases, true);
    result.outcome = verdict.outcome;
    if (verdict.outcome != Outcome::Converged) return result;
    result.metastable = verdict.metastable;
    result.swapped = phases.Vx > phases.Vy;
    result.phases = phases;
    result.volumeFraction = Snapped(share);
    result.fractionInRange = result.volumeFraction >= 0.0 && result.volumeFraction <= 1.0;
    return result;
}

}  // namespace fluid
