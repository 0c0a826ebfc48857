#include "model/phase_equilibrium.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

#include "model/state.h"
#include "model/trial_phase.h"

namespace fluid {

namespace {

// As the iteration is prescribed, but for the drift, which ends a slow approach too early
// otherwise.
constexpr int iterationLimit = 10000;
constexpr double changeTolerance = 1e-10;
constexpr double residualTolerance = 1e-8;
constexpr double driftTolerance = 5e-9;
constexpr double divergence = 1e300;

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
        return !std::isfinite(u1) || !std::isfinite(F1) || !(std::abs(change) <= divergence);
    }
    // drift: see Substitution; a small one means equal fugacities.
    bool converged(double drift) const {
        return std::abs(change) < changeTolerance && std::abs(F1) < residualTolerance &&
               drift < driftTolerance;
    }
};

// Two phases that exchange their components by successive substitution.
struct Substitution {
    explicit Substitution(const Mixture& of) : bulk(of) {}

    const Mixture& bulk;
    PhasePair phases;
    ComponentValues logPhiX{};
    ComponentValues logPhiY{};
    ComponentValues K{};
    double drift = 0.0;  // largest relative change of a K in the last substitution

    double evaluate(const ComponentValues& x, PhaseRoot root, ComponentValues& logPhi) const;
    void evaluatePhases();
    // New compositions for the vapour fraction beta; returns the residual.
    double substitute(double beta);
};

// The molar volume of a phase and the logarithms of its fugacity coefficients, with the limits of
// FugacityCoefficients: a coefficient of 1 beyond e^±227 and for a volume that is none.
double Substitution::evaluate(const ComponentValues& x, PhaseRoot root,
                              ComponentValues& logPhi) const {
    const PhaseState state(bulk, x, phases.T, phases.P, root);
    const double logFree = state.logFree(phases.P);
    for (std::size_t i = 0; i < bulk.count; ++i) {
        const double value = state.interaction(i) - logFree;
        logPhi[i] = state.V > 0.0 && std::abs(value) < largestLogPhi ? value : 0.0;
    }
    return state.V;
}

void Substitution::evaluatePhases() {
    phases.Vx = evaluate(phases.x, PhaseRoot::Smallest, logPhiX);
    phases.Vy = evaluate(phases.y, PhaseRoot::Largest, logPhiY);
}

void Normalise(ComponentValues& x, double sum) {
    if (sum == 1.0) return;
    for (double& fraction : x) fraction /= sum;
}

double Substitution::substitute(double beta) {
    double sumX = 0.0;
    double sumY = 0.0;
    drift = 0.0;
    for (std::size_t i = 0; i < bulk.count; ++i) {
        const double ratio = std::exp(logPhiX[i] - logPhiY[i]);
        // 1 + beta·(K - 1), which would lose a small K
        const double t = (1.0 - beta) + beta * ratio;
        phases.x[i] = t > 0.0 ? bulk.z[i] / t : bulk.z[i];
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
bool Take(const Mixture& bulk, const ComponentValues& guess, ComponentValues& x) {
    double sum = 0.0;
    x = {};
    for (std::size_t i = 0; i < bulk.count; ++i) {
        if (!(guess[i] >= 0.0)) return false;
        x[i] = guess[i];
        sum += x[i];
    }
    if (!(sum > 0.0) || !std::isfinite(sum)) return false;
    Normalise(x, sum);
    return true;
}

// The two phases of a result.
struct Pair {
    PhaseState X;
    PhaseState Y;

    Pair(const Mixture& components, const PhasePair& phases)
        : X(components, phases.x, phases.T, phases.Vx),
          Y(components, phases.y, phases.T, phases.Vy) {}
};

// What rounding leaves of equal fugacities: a volume right to the last digit has a V - b that is
// not.
double Sharpness(const Pair& pair) {
    constexpr double rounding = 1e-13;
    double largest = 1.0;
    for (const PhaseState* phase : {&pair.X, &pair.Y}) {
        const double push = phase->of.largestB * phase->u;
        const double attraction = 2.0 / phase->RT * phase->of.largestARoot * phase->A();
        largest = std::max({largest, push * push, attraction});
    }
    return rounding * largest;
}

// Whether both volumes are possible and all fugacities equal to a share.
bool InEquilibrium(const Pair& pair, double tolerance) {
    if (!pair.X.isPossible() || !pair.Y.isPossible()) return false;
    for (std::size_t i = 0; i < pair.X.of.count; ++i) {
        const double difference = pair.X.logFugacity(i) - pair.Y.logFugacity(i);
        if (!(std::abs(difference) <= tolerance)) return false;
    }
    return true;
}

// As far as a first approach can tell.
bool IsExact(const Pair& pair) {
    return InEquilibrium(pair, Sharpness(pair));
}

// Whether a phase much like the bulk is one that it coexists with, and no copy of the bulk that the
// iteration creeps to: a maximum of D, and of the same pressure. Inside the spinodal there is none.
bool CoexistsWith(const TrialCurve& bulk, const PhaseState& other) {
    const double RT = other.RT;
    if (!(bulk.spinodalRT() < RT)) return false;
    const double lambda = 2.0 / RT * (other.A() - bulk.A());
    if (lambda == 0.0) return false;
    const auto phase = bulk.climbLevel(bulk.at(lambda, other.u));
    constexpr double match = 0.01;  // far above rounding, far below what tells two places apart
    return phase && std::abs(phase->lambda - lambda) < match * std::abs(lambda) &&
           std::abs(phase->levelRT() - RT) < match * (RT - bulk.spinodalRT());
}

Stability StabilityOf(const TrialCurve& bulk, double RT, double P) {
    if (bulk.spinodalRT() > RT) return Stability::Unstable;
    constexpr double driveTolerance = 1e-8;  // that of the fugacities
    const Maxima maxima = bulk.maxima(RT);
    const bool splits = std::any_of(maxima.begin(), maxima.end(), [&](const TrialPhase& phase) {
        return bulk.drive(phase, RT, P) > driveTolerance;
    });
    return splits ? Stability::Metastable : Stability::Stable;
}

// Two phases so alike that they may be one that the iteration creeps to.
bool LooksTrivial(const Pair& pair) {
    const double volumes = std::abs(pair.X.V / pair.Y.V - 1.0);
    double largest = 0.0;
    bool anyEqual = false;
    for (std::size_t i = 0; i < pair.X.of.count; ++i) {
        const double change = std::abs(pair.Y.x[i] / pair.X.x[i] - 1.0);
        largest = std::max(largest, change);
        anyEqual = anyEqual || (std::abs(pair.X.x[i] - pair.Y.x[i]) < 1e-5 && change < 0.01);
    }
    return (largest < 0.02 && volumes < 0.02) || (anyEqual && volumes < 0.05);
}

struct Verdict {
    Outcome outcome;
    Stability stability;
};

// What the phases of a converged iteration are worth. The first is the bulk whose stability counts.
Verdict Judge(const Mixture& components, const PhasePair& phases, bool bulkIsX) {
    constexpr double fugacityTolerance = 1e-8;  // what the iteration leaves of the drift
    const Pair pair(components, phases);
    const bool isPossible = pair.X.free > 0.0 && pair.Y.free > 0.0;
    if (!isPossible || phases.T < ColdestT(components)) {
        return {Outcome::NoSolution, Stability::Stable};
    }
    const Outcome refused = LooksTrivial(pair) ? Outcome::Trivial : Outcome::NoSolution;
    const double tolerance = std::max(fugacityTolerance, Sharpness(pair));
    if (!InEquilibrium(pair, tolerance)) return {refused, Stability::Stable};
    const PhaseState& bulk = bulkIsX ? pair.X : pair.Y;
    const Mixture mixture = WithFractions(components, bulk.x);
    const TrialCurve curve(mixture, bulk.free);
    constexpr double likeness = 0.05;  // copies that were seen are within 0.4 %
    const bool alike = std::abs(phases.Vx / phases.Vy - 1.0) < likeness;
    if (alike && !CoexistsWith(curve, bulkIsX ? pair.Y : pair.X)) {
        return {refused, Stability::Stable};
    }
    return {Outcome::Converged, StabilityOf(curve, bulk.RT, phases.P)};
}

bool Usable(double number) {
    return number > 0.0 && std::isfinite(number);
}

// Runs the iteration to its end; `unknown` is the one of `pair` that the secant is after, and
// `fraction` the amount fraction of phase Y at each step. A first approach that is a solution
// itself `stands` after one iteration, from which the prescribed steps might lead away. Whether it
// has converged.
template <class Fraction, class Stands>
bool Converge(Substitution& pair, Secant& secant, double& unknown, const Fraction& fraction,
              const Stands& stands, int& iterations) {
    do {
        secant.step();
        unknown = secant.u1;
        pair.evaluatePhases();
        ++iterations;
        if (iterations == 1 && stands()) return true;
        secant.F1 = pair.substitute(fraction());
    } while (!secant.failed() && !secant.converged(pair.drift) && iterations < iterationLimit);
    if (secant.failed() || !secant.converged(pair.drift)) return false;
    pair.evaluatePhases();
    return true;
}

// What a first approach may differ from a solution by.
constexpr double exact = 1e-11;

}  // namespace

HomogenisationResult IterateHomogenisation(const Mixture& mixture, Given given, double value,
                                           Homogenisation kind, const PhaseGuess& guess) {
    HomogenisationResult result;
    if (mixture.count == 0 || !Usable(value) || !Usable(guess.unknown)) return result;
    const bool findsP = given == Given::Temperature;
    const bool intoLiquid = kind == Homogenisation::IntoLiquid;
    Substitution pair(mixture);
    PhasePair& phases = pair.phases;
    if (!Take(mixture, guess.x, phases.x)) return result;
    if (!Take(mixture, guess.y, phases.y)) return result;
    (findsP ? phases.T : phases.P) = value;
    double& unknown = findsP ? phases.P : phases.T;
    const double before = findsP ? 0.9 * guess.unknown : guess.unknown - 10.0;
    Secant secant{before, guess.unknown, -0.01, 0.01};
    const auto fraction = [intoLiquid] { return intoLiquid ? 0.0 : 1.0; };
    std::optional<Verdict> verdict;  // on a first approach that stands
    const auto stands = [&] {
        const ComponentValues& kept = intoLiquid ? phases.x : phases.y;
        for (std::size_t i = 0; i < mixture.count; ++i) {
            const double whole = mixture.z[i];
            if (!(std::abs(kept[i] - whole) <= exact * whole)) return false;
        }
        if (!IsExact(Pair(mixture, phases))) return false;
        verdict = Judge(mixture, phases, intoLiquid);
        if (verdict->outcome != Outcome::Converged) verdict.reset();
        return verdict.has_value();
    };
    if (!Converge(pair, secant, unknown, fraction, stands, result.iterations)) return result;
    if (!verdict) verdict = Judge(mixture, phases, intoLiquid);
    const bool reversed = verdict->outcome == Outcome::Converged && phases.Vx > phases.Vy;
    result.outcome = reversed ? Outcome::NoSolution : verdict->outcome;
    if (result.outcome == Outcome::NoSolution) return result;
    result.stability = verdict->stability;
    result.phases = phases;
    return result;
}

namespace {

// The lever rule on molar volumes: the fraction of the volume that phase Y takes.
double LeverRule(double V, const PhasePair& phases) {
    return (V - phases.Vx) * phases.Vy / ((phases.Vy - phases.Vx) * V);
}

double Damped(double beta, double before) {
    // Beyond an end by rounding alone: the bulk is that phase.
    constexpr double rounding = 1e-10;
    if (beta > 1.0 && beta < 1.0 + rounding) return 1.0;
    if (beta < 0.0 && beta > -rounding) return 0.0;
    if (beta > 1.0) beta = 0.5 * (before + 1.0);
    if (beta < 0.0) beta = 0.5 * before;
    return std::isfinite(beta) ? beta : 0.5;
}

// The end that a fraction belongs to where the bulk has the volume of one phase but for rounding.
double Snapped(double fraction, double V, const PhasePair& phases) {
    constexpr double rounding = 2e-13;
    if (std::abs(V / phases.Vx - 1.0) < rounding || std::abs(fraction) < rounding) return 0.0;
    const bool isWhole =
        std::abs(V / phases.Vy - 1.0) < rounding || std::abs(fraction - 1.0) < rounding;
    return isWhole ? 1.0 : fraction;
}

// The fraction of the volume that phase Y takes where two phases make up a bulk, by what differs
// most between them; nothing where they do not.
std::optional<double> ShareOf(const Mixture& bulk, double V, const PhasePair& phases) {
    const ComponentValues& z = bulk.z;
    double contrast = std::abs(phases.Vx - phases.Vy) / V;
    double inX = (phases.Vy - V) / (phases.Vy - phases.Vx);
    double inY = (V - phases.Vx) / (phases.Vy - phases.Vx);
    for (std::size_t i = 0; i < bulk.count; ++i) {
        const double difference = phases.x[i] - phases.y[i];
        if (!(std::abs(difference) > contrast * z[i])) continue;
        contrast = std::abs(difference) / z[i];
        inX = (z[i] - phases.y[i]) / difference;
        inY = (phases.x[i] - z[i]) / difference;
    }
    const auto isSame = [&](double x, double y, double whole) {
        return std::abs(inX * x + inY * y - whole) <= exact * whole;
    };
    bool same = inX >= -exact && inY >= -exact && isSame(phases.Vx, phases.Vy, V);
    for (std::size_t i = 0; i < bulk.count; ++i) {
        same = same && isSame(phases.x[i], phases.y[i], z[i]);
    }
    return same ? std::optional(inY * phases.Vy / V) : std::nullopt;
}

}  // namespace

EquilibriumResult IterateEquilibrium(const Mixture& mixture, double T, double V,
                                     double volumeFraction, const PhaseGuess& guess) {
    EquilibriumResult result;
    if (mixture.count == 0 || !Usable(T) || !Usable(V) || !Usable(guess.unknown)) return result;
    if (!std::isfinite(volumeFraction)) return result;
    Substitution pair(mixture);
    PhasePair& phases = pair.phases;
    if (!Take(mixture, guess.x, phases.x)) return result;
    if (!Take(mixture, guess.y, phases.y)) return result;
    phases.T = T;
    phases.P = guess.unknown;
    pair.evaluatePhases();
    double share = 0.0;
    const auto known = ShareOf(mixture, V, phases);
    std::optional<Verdict> verdict;  // on a first approach that stands
    if (known && IsExact(Pair(mixture, phases))) verdict = Judge(mixture, phases, true);
    if (verdict && verdict->outcome == Outcome::Converged) {
        result.iterations = 1;
        share = Snapped(*known, V, phases);
    } else {
        const double first = pair.substitute(Damped(volumeFraction * V / phases.Vy, 1.0));
        Secant secant{0.99 * guess.unknown, guess.unknown, -0.01, first};
        double beta = 1.0;
        const auto fraction = [&] {
            beta = Damped(LeverRule(V, phases) * V / phases.Vy, beta);
            return beta;
        };
        const auto never = [] { return false; };
        if (!Converge(pair, secant, phases.P, fraction, never, result.iterations)) return result;
        share = Snapped(LeverRule(V, phases), V, phases);
        verdict = Judge(mixture, phases, true);
    }
    result.outcome = verdict->outcome;
    if (verdict->outcome == Outcome::Converged && !std::isfinite(share)) {
        result.outcome = Outcome::NoSolution;
    }
    if (result.outcome == Outcome::NoSolution) return result;
    result.stability = verdict->stability;
    result.swapped = phases.Vx > phases.Vy;
    result.phases = phases;
    if (result.outcome == Outcome::Trivial) return result;
    result.volumeFraction = share;
    result.fractionInRange = share >= 0.0 && share <= 1.0;
    return result;
}

}  // namespace fluid
