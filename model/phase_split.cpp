#include "model/phase_split.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "model/van_der_waals.h"

namespace fluid {

namespace {

constexpr std::size_t Unknowns = ComponentCount + 1;

// A phase by its amounts N_i in a share of the bulk's volume; Helmholtz energy and its derivatives
// over R·T per volume of the bulk.
struct Share {
    ComponentValues N{};
    double volume = 0.0;

    double C = 0.0;        // concentration, mol/cm3
    double A = 0.0;        // MPa^½
    double free = 0.0;     // 1 - b/V
    double entropy = 0.0;  // sum of c_i·ln c_i
    bool possible = false;

    void evaluate(const Mixture& mixture) {
        C = A = entropy = 0.0;
        double packing = 0.0;
        possible = volume > 0.0;
        for (std::size_t i = 0; i < mixture.count; ++i) {
            const double c = N[i] / volume;
            possible = possible && c > 0.0;
            C += c;
            A += mixture.aRoot[i] * c;
            packing += mixture.b[i] * c;
            entropy += c * std::log(c);
        }
        free = 1.0 - packing;
        possible = possible && free > 0.0;
    }
    double u() const { return C / free; }
    double energy(double RT) const { return volume * (entropy - C * std::log(free) - A * A / RT); }
    double pressure(double RT) const { return RT * u() - A * A; }
};

// A division of the bulk into two shares; X is what Y leaves.
struct Division {
    Share X;
    Share Y;

    bool possible() const { return X.possible && Y.possible; }
    double energy(double RT) const { return X.energy(RT) + Y.energy(RT); }
};

using Vector = std::array<double, Unknowns>;
using Matrix = std::array<Vector, Unknowns>;

// Minimises the Helmholtz energy over the amounts and the volume of one phase.
class Minimiser {
  public:
    Minimiser(const Mixture& mixture, const BulkState& bulk) : mixture_(mixture), RT_(bulk.RT) {
        for (std::size_t i = 0; i < mixture.count; ++i) c_[i] = mixture.z[i] / bulk.V;
    }

    Division divide(const ComponentValues& N, double volume) const;
    // The best division whose phase Y has these concentrations.
    Division start(const ComponentValues& concentrations) const;
    // Whether a minimum was reached.
    bool minimise(Division& division) const;

  private:
    struct Step {
        Vector change{};        // of the amounts and the volume of phase Y
        double descent = 0.0;   // of the energy, to first order
        double relative = 0.0;  // largest change relative to an amount
    };

    Vector gradient(const Division& division) const;
    Vector scales(const Division& division) const;
    void addHessian(const Share& share, const Vector& scale, Matrix& hessian) const;
    Division moved(const Division& from, const Vector& step, double length) const;
    std::optional<Step> newtonStep(const Division& division, double& shift) const;
    double descend(const Step& step, Division& division) const;

    const Mixture& mixture_;
    double RT_;
    ComponentValues c_{};
};

Division Minimiser::divide(const ComponentValues& N, double volume) const {
    Division division{{{}, 1.0 - volume}, {N, volume}};
    for (std::size_t i = 0; i < mixture_.count; ++i) division.X.N[i] = c_[i] - N[i];
    division.X.evaluate(mixture_);
    division.Y.evaluate(mixture_);
    return division;
}

Division Minimiser::start(const ComponentValues& concentrations) const {
    double volume = 1.0;
    for (std::size_t i = 0; i < mixture_.count; ++i) {
        volume = std::min(volume, c_[i] / concentrations[i]);
    }
    constexpr int Halvings = 40;
    Division best;
    for (int i = 0; i < Halvings; ++i) {
        volume *= 0.5;
        ComponentValues N{};
        for (std::size_t k = 0; k < mixture_.count; ++k) N[k] = volume * concentrations[k];
        const Division division = divide(N, volume);
        if (!division.possible()) continue;
        if (!best.possible() || division.energy(RT_) < best.energy(RT_)) {
            best = division;
        } else {
            break;
        }
    }
    return best;
}

Vector Minimiser::gradient(const Division& division) const {
    const auto& [X, Y] = division;
    Vector result{};
    const double common = std::log(X.free / Y.free);
    for (std::size_t i = 0; i < mixture_.count; ++i) {
        result[i] = std::log(Y.N[i] / Y.volume / (X.N[i] / X.volume)) + common +
                    mixture_.b[i] * (Y.u() - X.u()) - 2.0 * mixture_.aRoot[i] * (Y.A - X.A) / RT_;
    }
    result[mixture_.count] = (X.pressure(RT_) - Y.pressure(RT_)) / RT_;
    return result;
}

// Units of the unknowns in which the ideal part of the Hessian is the unit matrix.
Vector Minimiser::scales(const Division& division) const {
    const auto& [X, Y] = division;
    Vector result{};
    double C = 0.0;
    for (std::size_t i = 0; i < mixture_.count; ++i) {
        result[i] = std::sqrt(X.N[i] * Y.N[i] / c_[i]);
        C += c_[i];
    }
    result[mixture_.count] = std::sqrt(X.volume * Y.volume / C);
    return result;
}

void Minimiser::addHessian(const Share& share, const Vector& scale, Matrix& hessian) const {
    const std::size_t n = mixture_.count;
    Vector along{};  // second derivatives times the concentrations
    double twice = 0.0;
    for (std::size_t i = 0; i < n; ++i) {
        for (std::size_t j = 0; j < n; ++j) {
            const double covolumes =
                (mixture_.b[i] + mixture_.b[j] + mixture_.b[i] * mixture_.b[j] * share.u()) /
                share.free;
            const double attraction = 2.0 * mixture_.aRoot[i] * mixture_.aRoot[j] / RT_;
            const double ideal = i == j ? share.volume / share.N[i] : 0.0;
            const double second = ideal + covolumes - attraction;
            hessian[i][j] += second / share.volume * scale[i] * scale[j];
            along[i] += second * share.N[j] / share.volume;
        }
        twice += along[i] * share.N[i] / share.volume;
    }
    for (std::size_t i = 0; i < n; ++i) {
        const double mixed = -along[i] / share.volume * scale[i] * scale[n];
        hessian[i][n] += mixed;
        hessian[n][i] += mixed;
    }
    hessian[n][n] += twice / share.volume * scale[n] * scale[n];
}

// Solves (matrix + shift) · x = -right by Cholesky's method; false where it is not positive.
bool SolvePositive(Matrix matrix, double shift, const Vector& right, std::size_t n, Vector& x) {
    for (std::size_t j = 0; j < n; ++j) {
        double pivot = matrix[j][j] + shift;
        for (std::size_t k = 0; k < j; ++k) pivot -= matrix[j][k] * matrix[j][k];
        if (!(pivot > 0.0)) return false;
        matrix[j][j] = std::sqrt(pivot);
        for (std::size_t i = j + 1; i < n; ++i) {
            for (std::size_t k = 0; k < j; ++k) matrix[i][j] -= matrix[i][k] * matrix[j][k];
            matrix[i][j] /= matrix[j][j];
        }
    }
    for (std::size_t i = 0; i < n; ++i) {
        x[i] = -right[i];
        for (std::size_t k = 0; k < i; ++k) x[i] -= matrix[i][k] * x[k];
        x[i] /= matrix[i][i];
    }
    for (std::size_t i = n; i-- > 0;) {
        for (std::size_t k = i + 1; k < n; ++k) x[i] -= matrix[k][i] * x[k];
        x[i] /= matrix[i][i];
    }
    return true;
}

Division Minimiser::moved(const Division& from, const Vector& step, double length) const {
    ComponentValues N{};
    for (std::size_t i = 0; i < mixture_.count; ++i) N[i] = from.Y.N[i] + length * step[i];
    return divide(N, from.Y.volume + length * step[mixture_.count]);
}

// The step of Newton's method, with the shift raised until the Hessian is positive.
std::optional<Minimiser::Step> Minimiser::newtonStep(const Division& division,
                                                     double& shift) const {
    constexpr double LeastShift = 1e-4;
    constexpr double LargestShift = 1e12;
    const std::size_t n = mixture_.count + 1;
    const Vector scale = scales(division);
    Vector slope = gradient(division);
    for (std::size_t i = 0; i < n; ++i) slope[i] *= scale[i];
    Matrix hessian{};
    addHessian(division.X, scale, hessian);
    addHessian(division.Y, scale, hessian);
    Step step;
    while (!SolvePositive(hessian, shift, slope, n, step.change)) {
        shift = std::max(4.0 * shift, LeastShift);
        if (shift > LargestShift) return {};
    }
    for (std::size_t i = 0; i < n; ++i) {
        step.descent += step.change[i] * slope[i];
        step.change[i] *= scale[i];
    }
    for (std::size_t i = 0; i < mixture_.count; ++i) {
        const double least = std::min(division.X.N[i], division.Y.N[i]);
        step.relative = std::max(step.relative, std::abs(step.change[i]) / least);
    }
    return step;
}

// Goes along a step as far as the energy falls; returns the part of it that was gone.
double Minimiser::descend(const Step& step, Division& division) const {
    constexpr int Halvings = 40;
    constexpr double Armijo = 1e-4;
    const double energy = division.energy(RT_);
    const double noise = 1e-14 * std::abs(energy);
    double length = 2.0;
    for (int i = 0; i < Halvings; ++i) {
        length *= 0.5;
        const Division next = moved(division, step.change, length);
        const double allowed = energy + Armijo * length * step.descent + noise;
        if (!next.possible() || !(next.energy(RT_) <= allowed)) continue;
        division = next;
        return length;
    }
    return 0.0;
}

bool Minimiser::minimise(Division& division) const {
    constexpr int StepLimit = 300;
    constexpr double Enough = 1e-11;
    constexpr double Level = 1e-20;
    double shift = 0.0;
    for (int i = 0; i < StepLimit; ++i) {
        const auto step = newtonStep(division, shift);
        if (!step) return false;
        const bool level = -step->descent < Level * std::abs(division.energy(RT_));
        if (shift == 0.0 && (step->relative < Enough || level)) {
            division = moved(division, step->change, 1.0);
            return division.possible();
        }
        const double length = descend(*step, division);
        if (length == 0.0) return false;
        constexpr double Bad = 0.3;
        constexpr double Small = 1e-3;
        shift = length < Bad ? std::max(2.0 * shift, Small) : shift < Small ? 0.0 : 0.2 * shift;
    }
    return false;
}

BulkState StateOf(const Mixture& mixture, double T, double V) {
    return BulkAt(mixture, T, V - mixture.bMix);
}

ComponentValues Concentrations(const Mixture& mixture, const BulkState& bulk,
                               const TrialPhase& trial) {
    ComponentValues c = FractionsOf(mixture, bulk, trial);
    for (double& value : c) value *= trial.concentration;
    return c;
}

// A share as a mixture of its own and its state.
struct Phase {
    Mixture mixture;
    BulkState state;

    Phase(const Mixture& bulk, const Share& share, double T) : mixture(bulk) {
        double sum = 0.0;
        for (std::size_t i = 0; i < bulk.count; ++i) sum += share.N[i];
        mixture.bMix = mixture.aRootMix = 0.0;
        for (std::size_t i = 0; i < bulk.count; ++i) {
            mixture.z[i] = share.N[i] / sum;
            mixture.bMix += mixture.z[i] * bulk.b[i];
            mixture.aRootMix += mixture.z[i] * bulk.aRoot[i];
        }
        state = BulkAt(mixture, T, 1.0 / share.u());
    }
};

// Whether no amount of a phase is such a trace of that in the other one that it has lost its
// digits.
bool IsAccurate(const Mixture& mixture, const Share& share, const Share& other) {
    constexpr double Trace = 1e-6;
    for (std::size_t i = 0; i < mixture.count; ++i) {
        if (share.N[i] < Trace * other.N[i]) return false;
    }
    return true;
}

// The phase of equal fugacities over a base, next to the one that the minimum has, which has digits
// only where they matter for the energy.
std::optional<TrialPhase> Sharpened(const Phase& base, const Phase& phase) {
    TrialPhase trial;
    trial.A = phase.state.A;
    trial.u = phase.state.u;
    constexpr double Near = 0.1;
    const bool found = ClimbToMaximum(base.mixture, base.state, trial);
    const double distance = std::abs(base.state.A - phase.state.A);
    const bool isNear = found && std::abs(trial.A - phase.state.A) < Near * distance;
    return isNear ? std::optional(trial) : std::nullopt;
}

PhaseSplit SplitOf(const Mixture& mixture, const Division& division, double T) {
    const Share* base = &division.Y;
    const Share* other = &division.X;
    std::optional<TrialPhase> trial;
    for (int i = 0; i < 2 && !trial; ++i) {
        std::swap(base, other);
        if (!IsAccurate(mixture, *base, *other)) continue;
        trial = Sharpened(Phase(mixture, *base, T), Phase(mixture, *other, T));
    }
    Phase x(mixture, *base, T);
    Phase y(mixture, *other, T);
    if (trial) {
        y.mixture.z = FractionsOf(x.mixture, x.state, *trial);
        y.state.V = trial->volume();
        y.state.P = x.state.RT * trial->u - trial->A * trial->A;
    }
    if (x.state.V > y.state.V) {
        std::swap(x, y);
        std::swap(base, other);
    }
    // The thinner phase has the digits of a small pressure.
    const double P = y.state.P;
    return {{T, P, x.mixture.z, y.mixture.z, x.state.V, y.state.V}, other->volume, false};
}

// The bulk with a trace of the trial phase.
PhaseSplit TraceOf(const Mixture& mixture, const BulkState& bulk, const TrialPhase& trial) {
    const ComponentValues other = FractionsOf(mixture, bulk, trial);
    const double P =
        trial.concentration * bulk.V < 1.0 ? bulk.RT * trial.u - trial.A * trial.A : bulk.P;
    if (trial.volume() < bulk.V) {
        return {{bulk.T, P, other, mixture.z, trial.volume(), bulk.V}, 1.0, false};
    }
    return {{bulk.T, P, mixture.z, other, bulk.V, trial.volume()}, 0.0, false};
}

// The division of lowest energy found from several starts.
class Competition {
  public:
    Competition(const Mixture& mixture, const BulkState& bulk)
        : mixture_(mixture), bulk_(bulk), minimiser_(mixture, bulk) {}

    void enter(const ComponentValues& concentrations);
    const std::optional<Division>& winner() const { return winner_; }

  private:
    const Mixture& mixture_;
    const BulkState& bulk_;
    Minimiser minimiser_;
    std::optional<Division> winner_;
};

// Phases of a negative pressure, which two of three phases may have, are of no use.
void Competition::enter(const ComponentValues& concentrations) {
    Division division = minimiser_.start(concentrations);
    if (!division.possible() || !minimiser_.minimise(division)) return;
    const double RT = bulk_.RT;
    if (std::max(division.X.pressure(RT), division.Y.pressure(RT)) <= 0.0) return;
    if (!winner_ || division.energy(RT) < winner_->energy(RT)) winner_ = division;
}

// Whether both phases are larger than their co-volumes, and their volumes have room in doubles.
bool HasRoom(const Mixture& mixture, const PhasePair& pair) {
    const auto last = static_cast<std::int32_t>(mixture.count) - 1;
    return pair.Vx > MixtureB(last, pair.x) && pair.Vy > MixtureB(last, pair.y) &&
           std::isfinite(pair.Vx) && std::isfinite(pair.Vy);
}

std::optional<PhaseSplit> BestSplit(const Mixture& mixture, const BulkState& bulk) {
    const double T = bulk.T;
    const Maxima maxima = FindMaxima(mixture, bulk);
    const TrialPhase* const best = maxima.best(bulk);
    if (best == nullptr) return {};
    constexpr double Boundary = 1e-10;
    constexpr double Rounding = 1e-14;
    const double noise =
        Boundary * bulk.RT * best->concentration + Rounding * (bulk.RT * bulk.u + bulk.A * bulk.A);
    if (best->D < -noise) return {};
    if (best->D <= noise && BulkSlope(mixture, bulk) < 1.0) return TraceOf(mixture, bulk, *best);
    Competition competition(mixture, bulk);
    for (const TrialPhase& trial : maxima) {
        if (trial.D > 0.0) competition.enter(Concentrations(mixture, bulk, trial));
    }
    constexpr double DriveTolerance = 1e-8;
    constexpr int RoundLimit = 3;
    for (int round = 0; competition.winner(); ++round) {
        const Division division = *competition.winner();
        const Phase phase(mixture, division.X, T);
        const Maxima others = FindMaxima(phase.mixture, phase.state);
        const TrialPhase* const other = others.best(phase.state);
        PhaseSplit split = SplitOf(mixture, division, T);
        if (other == nullptr || Drive(phase.state, *other) < DriveTolerance) return split;
        if (round == RoundLimit) {
            split.metastable = true;
            return split;
        }
        competition.enter(Concentrations(phase.mixture, phase.state, *other));
    }
    // Nothing better than the start was found; it is handed on.
    PhaseSplit split = TraceOf(mixture, bulk, *best);
    split.phases.P = bulk.P + best->D;
    split.metastable = true;
    return split;
}

}  // namespace

std::optional<PhaseSplit> SplitAtVolume(const Mixture& mixture, double T, double V) {
    if (!(T > 0.0 && V > mixture.bMix) || !std::isfinite(T) || !std::isfinite(V)) return {};
    const BulkState bulk = StateOf(mixture, T, V);
    if (!std::isfinite(bulk.u) || !std::isfinite(bulk.k) || !(bulk.A > 0.0)) return {};
    const std::optional<PhaseSplit> split = BestSplit(mixture, bulk);
    return split && HasRoom(mixture, split->phases) ? split : std::nullopt;
}

}  // namespace fluid
