#include "model/phase_split.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>
#include <utility>
#include <vector>

namespace fluid {

namespace {

// Any two phases of equal fugacities have concentrations c_i(Y)/c_i(X) = exp(C0 + C1·b_i + C2·s_i).
// So four numbers describe a division of a bulk: these three, with those of the chief components as
// their units, and the share of the volume that phase Y takes, as ln(share/(1 - share)).
constexpr std::size_t unknowns = 4;
constexpr std::size_t shareAt = 3;
using Vector = std::array<double, unknowns>;
using Matrix = std::array<Vector, unknowns>;

// One phase of a division: concentrations in mol/cm3 and sums over them.
struct Phase {
    ComponentValues c{};
    double volume = 0.0;  // share of the bulk's
    double C = 0.0;
    double A = 0.0;  // MPa^½
    double free = 0.0;

    double u() const { return C / free; }
    // Helmholtz energy over R·T per volume of the bulk.
    double energy(double RT) const {
        double entropy = 0.0;
        for (const double amount : c) entropy += amount > 0.0 ? amount * std::log(amount) : 0.0;
        return volume * (entropy - C * std::log(free) - A * A / RT);
    }
};

struct Division {
    Vector at{};
    Phase X;
    Phase Y;
    ComponentValues weights{};  // N_i(X)·N_i(Y)/c_i, the change of N_i(Y) with ln(c_i(Y)/c_i(X))
    // Y less X, each summed up as a difference
    double C = 0.0;
    double A = 0.0;
    double packing = 0.0;
    double u = 0.0;
    bool possible = false;

    double energy(double RT) const { return X.energy(RT) + Y.energy(RT); }
};

enum class Pivots { Largest, Positive };

// Solves matrix · x = -right by Gauss's method; false where the matrix is singular or, with pivots
// taken as they come, not positive.
bool Solve(Matrix matrix, Vector right, Vector& x, Pivots pivots) {
    for (std::size_t j = 0; j < unknowns; ++j) {
        std::size_t pivot = j;
        for (std::size_t i = j + 1; pivots == Pivots::Largest && i < unknowns; ++i) {
            if (std::abs(matrix[i][j]) > std::abs(matrix[pivot][j])) pivot = i;
        }
        std::swap(matrix[j], matrix[pivot]);
        std::swap(right[j], right[pivot]);
        const double size = pivots == Pivots::Largest ? std::abs(matrix[j][j]) : matrix[j][j];
        if (!(size > 0.0)) return false;
        for (std::size_t i = j + 1; i < unknowns; ++i) {
            const double factor = matrix[i][j] / matrix[j][j];
            for (std::size_t k = j; k < unknowns; ++k) matrix[i][k] -= factor * matrix[j][k];
            right[i] -= factor * right[j];
        }
    }
    for (std::size_t i = unknowns; i-- > 0;) {
        x[i] = -right[i];
        for (std::size_t k = i + 1; k < unknowns; ++k) x[i] -= matrix[i][k] * x[k];
        x[i] /= matrix[i][i];
    }
    return true;
}

// Minimises the Helmholtz energy of two phases of a bulk by Newton's method over the four numbers.
class Minimiser {
  public:
    Minimiser(const Mixture& mixture, double T, double V)
        : mixture_(mixture), RT_(R * T), k_(2.0 / RT_) {
        for (std::size_t i = 0; i < mixture.count; ++i) c_[i] = mixture.z[i] / V;
    }

    // The best share for the phase ratios of two trial phases over a bulk, or of one and the bulk.
    Division start(const TrialCurve& curve, const TrialPhase& X, const TrialPhase& Y) const;
    // What the Hessian is raised by where it is not positive. The more of its ideal part, the more
    // a step is one of successive substitution, which does not overlook traces.
    enum class Raise { Unit, Ideal };
    // Whether an equilibrium was reached.
    bool minimise(Division& division, Raise raise) const;
    double RT() const { return RT_; }

  private:
    struct Step {
        Vector change{};
        double descent = 0.0;  // of the energy, to first order
        double length = 0.0;   // largest change of a logarithm
    };

    struct Changes;

    Division divide(const Vector& at) const;
    // ln of the ratio of x_i·u in the two phases
    double theta(const Vector& at, double off, std::size_t i) const {
        return off + at[1] * mixture_.b[i] / mixture_.largestB +
               at[2] * mixture_.aRoot[i] / mixture_.largestARoot;
    }
    Vector residual(const Division& division) const;
    Changes changes(const Division& division, const Phase& phase) const;
    Matrix jacobian(const Division& division, const Vector& off) const;
    Vector gradient(const Division& division) const;
    Matrix hessian(const Division& division, Matrix* ideal) const;
    std::optional<Step> newtonStep(const Division& division, Raise raise, double& shift) const;
    double descend(const Step& step, Division& division) const;
    double effect(const Division& division, const Vector& change) const;
    bool polish(Division& division) const;

    const Mixture& mixture_;
    double RT_;
    double k_;
    ComponentValues c_{};
};

Division Minimiser::divide(const Vector& at) const {
    Division division;
    division.at = at;
    auto& [place, X, Y, weights, C, A, packing, u, possible] = division;
    Y.volume = 1.0 / (1.0 + std::exp(-at[shareAt]));
    X.volume = 1.0 / (1.0 + std::exp(at[shareAt]));
    possible = X.volume > 0.0 && Y.volume > 0.0;
    double packingX = 0.0;
    double packingY = 0.0;
    for (std::size_t i = 0; i < mixture_.count; ++i) {
        const double log = at[0] + at[1] * mixture_.b[i] / mixture_.largestB +
                           at[2] * mixture_.aRoot[i] / mixture_.largestARoot;
        const double ratio = std::exp(log);
        const double x = c_[i] / (X.volume + Y.volume * ratio);
        const double y = c_[i] / (X.volume / ratio + Y.volume);
        const double difference = std::abs(log) < 1.0 ? x * std::expm1(log) : y - x;
        X.c[i] = x;
        Y.c[i] = y;
        possible = possible && x > 0.0 && y > 0.0;
        weights[i] = X.volume * x * (Y.volume * y) / c_[i];
        X.C += x;
        Y.C += y;
        C += difference;
        X.A += mixture_.aRoot[i] * x;
        Y.A += mixture_.aRoot[i] * y;
        A += mixture_.aRoot[i] * difference;
        packingX += mixture_.b[i] * x;
        packingY += mixture_.b[i] * y;
        packing += mixture_.b[i] * difference;
    }
    X.free = 1.0 - packingX;
    Y.free = 1.0 - packingY;
    u = C / Y.free + X.C * packing / (X.free * Y.free);
    possible = possible && X.free > 0.0 && Y.free > 0.0;
    return division;
}

Division Minimiser::start(const TrialCurve& curve, const TrialPhase& X, const TrialPhase& Y) const {
    const double lambda = Y.lambda - X.lambda;
    Vector at = {std::log(X.u / X.concentration * Y.concentration / Y.u),
                 -(lambda * curve.A() + (Y.excess - X.excess)) * mixture_.largestB,
                 lambda * mixture_.largestARoot, 0.0};
    const ComponentValues x = curve.fractions(Y);
    // About the share at which the component that gathers most in Y would be used up.
    double largest = 0.0;
    for (std::size_t i = 0; i < mixture_.count; ++i) {
        largest = std::max(largest, Y.concentration * x[i] / c_[i]);
    }
    // From there down to the small shares for which D > 0 promises that the energy falls, which its
    // derivative tells long after it has no digits of that itself.
    constexpr int shares = 40;
    constexpr double stride = 1.2;
    Division best;
    double shareAbove = 0.0;
    double slopeAbove = 0.0;
    at[shareAt] = std::min(0.0, -std::log(largest));
    for (int i = 0; i < shares; ++i, at[shareAt] -= stride) {
        best = divide(at);
        if (!best.possible) continue;
        const double share = best.Y.volume;
        const double slope = gradient(best)[shareAt] / share;
        if (slope < 0.0) {
            if (!(slopeAbove > 0.0)) break;
            // Beside the boundary it is a line.
            const double place = (share * slopeAbove - shareAbove * slope) / (slopeAbove - slope);
            at[shareAt] = std::log(place / (1.0 - place));
            best = divide(at);
            break;
        }
        shareAbove = share;
        slopeAbove = slope;
    }
    return best;
}

// What the three numbers differ from those of the phases by; and the difference of the pressures
// over R·T less what comes of these: sum of c_i(X)·(exp(theta_i) - 1 - theta_i) - k·(difference of
// A)²/2, which has digits however alike the phases are. All 0 in equilibrium.
Vector Minimiser::residual(const Division& division) const {
    Vector off = {division.at[0] - std::log1p(-division.packing / division.X.free),
                  division.at[1] + mixture_.largestB * division.u,
                  division.at[2] - mixture_.largestARoot * k_ * division.A,
                  -0.5 * k_ * division.A * division.A};
    for (std::size_t i = 0; i < mixture_.count; ++i) {
        off[shareAt] += division.X.c[i] * ExpGain(theta(division.at, off[0], i));
    }
    return off;
}

// Along the four numbers. That along the amounts is ln(f_i(Y)/f_i(X)), the sum of what the three
// numbers are off by times 1, b_i and s_i.
Vector Minimiser::gradient(const Division& division) const {
    const Vector off = residual(division);
    Vector result{};
    for (std::size_t i = 0; i < mixture_.count; ++i) {
        const double b = mixture_.b[i] / mixture_.largestB;
        const double s = mixture_.aRoot[i] / mixture_.largestARoot;
        const double part = division.weights[i] * (off[0] + off[1] * b + off[2] * s);
        result[0] += part;
        result[1] += part * b;
        result[2] += part * s;
    }
    const Phase& X = division.X;
    const double pressure = off[shareAt] + X.C * off[0] +
                            (1.0 - X.free) / mixture_.largestB * off[1] +
                            X.A / mixture_.largestARoot * off[2];
    result[shareAt] = result[0] - pressure * X.volume * division.Y.volume;
    return result;
}

// Changes of the sums of a phase's concentrations, and of these themselves, along each number.
struct Minimiser::Changes {
    std::array<ComponentValues, unknowns> c{};
    Vector C{};
    Vector A{};
    Vector packing{};
};

Minimiser::Changes Minimiser::changes(const Division& division, const Phase& phase) const {
    Changes result;
    const double sign = &phase == &division.Y ? 1.0 : -1.0;
    const double share = division.X.volume * division.Y.volume;
    for (std::size_t i = 0; i < mixture_.count; ++i) {
        const double weight = sign * division.weights[i] / phase.volume;
        result.c[0][i] = weight;
        result.c[1][i] = weight * mixture_.b[i] / mixture_.largestB;
        result.c[2][i] = weight * mixture_.aRoot[i] / mixture_.largestARoot;
        result.c[shareAt][i] = weight - sign * phase.c[i] * share / phase.volume;
        for (std::size_t k = 0; k < unknowns; ++k) {
            result.C[k] += result.c[k][i];
            result.A[k] += mixture_.aRoot[i] * result.c[k][i];
            result.packing[k] += mixture_.b[i] * result.c[k][i];
        }
    }
    return result;
}

// The second derivatives over the amounts and the volume, taken along the four numbers, and the
// part of them that ideal gases have where it is asked for.
Matrix Minimiser::hessian(const Division& division, Matrix* ideal) const {
    Matrix whole{};
    if (ideal != nullptr) *ideal = {};
    for (const Phase* phase : {&division.X, &division.Y}) {
        const Changes change = changes(division, *phase);
        for (std::size_t k = 0; k < unknowns; ++k) {
            for (std::size_t l = 0; l <= k; ++l) {
                double sum = 0.0;
                for (std::size_t i = 0; i < mixture_.count; ++i) {
                    sum += change.c[k][i] * change.c[l][i] / phase->c[i];
                }
                const double excess =
                    (change.C[k] * change.packing[l] + change.C[l] * change.packing[k]) /
                        phase->free +
                    phase->C * change.packing[k] * change.packing[l] / (phase->free * phase->free) -
                    k_ * change.A[k] * change.A[l];
                whole[k][l] += (sum + excess) * phase->volume;
                whole[l][k] = whole[k][l];
                if (ideal == nullptr) continue;
                (*ideal)[k][l] += sum * phase->volume;
                (*ideal)[l][k] = (*ideal)[k][l];
            }
        }
    }
    return whole;
}

// The step of Newton's method, with the shift raised until the Hessian is positive.
std::optional<Minimiser::Step> Minimiser::newtonStep(const Division& division, Raise raise,
                                                     double& shift) const {
    // With fewer than three components some of the four numbers do the same.
    constexpr double ridge = 1e-13;
    constexpr double leastShift = 1e-3;
    constexpr double largestShift = 1e12;
    const Vector slope = gradient(division);
    Matrix ideal;
    const Matrix whole = hessian(division, raise == Raise::Ideal ? &ideal : nullptr);
    double weight = 0.0;
    for (std::size_t i = 0; i < mixture_.count; ++i) weight += division.weights[i];
    Step step;
    for (;;) {
        Matrix raised = whole;
        for (std::size_t k = 0; k < unknowns; ++k) {
            raised[k][k] += (ridge + (raise == Raise::Unit ? shift : 0.0)) * weight;
            if (raise == Raise::Unit) continue;
            for (std::size_t l = 0; l < unknowns; ++l) raised[k][l] += shift * ideal[k][l];
        }
        if (Solve(raised, slope, step.change, Pivots::Positive)) break;
        shift = std::max(4.0 * shift, leastShift);
        if (!(shift < largestShift)) return {};
    }
    for (std::size_t k = 0; k < unknowns; ++k) {
        step.descent += step.change[k] * slope[k];
        step.length = std::max(step.length, std::abs(step.change[k]));
    }
    if (!std::isfinite(step.length)) return {};
    return step;
}

Vector Along(const Vector& from, const Vector& change, double length) {
    Vector at = from;
    for (std::size_t k = 0; k < unknowns; ++k) at[k] += length * change[k];
    return at;
}

// Goes along a step as far as the energy falls; returns the part of it that was gone.
double Minimiser::descend(const Step& step, Division& division) const {
    constexpr int halvings = 40;
    constexpr double armijo = 1e-4;
    const double energy = division.energy(RT_);
    const double noise = 1e-14 * std::abs(energy);
    constexpr double longest = 8.0;
    double length = 2.0 * std::min(1.0, longest / step.length);
    for (int i = 0; i < halvings; ++i) {
        length *= 0.5;
        const Division next = divide(Along(division.at, step.change, length));
        const double allowed = energy + armijo * length * step.descent + noise;
        if (!next.possible || !(next.energy(RT_) <= allowed)) continue;
        division = next;
        return length;
    }
    return 0.0;
}

// The derivatives of the residual `off`.
Matrix Minimiser::jacobian(const Division& division, const Vector& off) const {
    const Phase& X = division.X;
    const Phase& Y = division.Y;
    const Changes x = changes(division, X);
    const Changes y = changes(division, Y);
    const auto push = [](const Phase& phase, const Changes& change, std::size_t k) {
        return change.C[k] / phase.free + phase.C * change.packing[k] / (phase.free * phase.free);
    };
    Matrix result{};
    for (std::size_t k = 0; k < unknowns; ++k) {
        const double A = y.A[k] - x.A[k];
        result[0][k] = y.packing[k] / Y.free - x.packing[k] / X.free;
        result[1][k] = mixture_.largestB * (push(Y, y, k) - push(X, x, k));
        result[2][k] = -mixture_.largestARoot * k_ * A;
        if (k != shareAt) result[k][k] += 1.0;
        result[shareAt][k] = X.free * division.u * result[0][k] - k_ * division.A * A;
    }
    for (std::size_t i = 0; i < mixture_.count; ++i) {
        const double change = theta(division.at, off[0], i);
        const double gain = ExpGain(change);
        const double growth = X.c[i] * (change + gain);
        for (std::size_t k = 0; k < unknowns; ++k) result[shareAt][k] += x.c[k][i] * gain;
        result[shareAt][1] += growth * mixture_.b[i] / mixture_.largestB;
        result[shareAt][2] += growth * mixture_.aRoot[i] / mixture_.largestARoot;
    }
    return result;
}

// The largest relative change of a concentration. The share of a phase much like the other, or one
// of next to nothing, hardly changes any.
double Minimiser::effect(const Division& division, const Vector& change) const {
    const double share = division.Y.volume;
    double most = share * division.X.volume;
    for (std::size_t i = 0; i < mixture_.count; ++i) {
        most = std::max(most, std::abs(share * division.Y.c[i] / c_[i] - share));
    }
    return std::max({std::abs(change[0]), std::abs(change[1]), std::abs(change[2]),
                     most * std::abs(change[shareAt])});
}

// The last digits, which the energy does not tell, and traces, which it hardly knows: Newton's
// method on the residual, as long as its steps shorten.
bool Minimiser::polish(Division& division) const {
    constexpr int stepLimit = 20;
    constexpr double enough = 1e-15;
    constexpr double close = 1e-6;
    double before = std::numeric_limits<double>::infinity();
    double last = before;
    for (int i = 0; i < stepLimit; ++i) {
        const Vector off = residual(division);
        Vector change{};
        if (!Solve(jacobian(division, off), off, change, Pivots::Largest)) break;
        double length = 0.0;
        for (const double part : change) length = std::max(length, std::abs(part));
        constexpr int tries = 4;  // steps that need not shorten, from aside
        if (!(length < 0.5 * before) && (i >= tries || before < close)) break;
        const Division next = divide(Along(division.at, change, 1.0));
        if (!next.possible) break;
        before = length;
        last = effect(division, change);
        division = next;
        if (length < enough) break;
    }
    constexpr double settled = 0.01;  // of a share that rounding moves still
    return before < settled && last < close &&
           !(std::abs(division.A) < close * (division.X.A + division.Y.A) &&
             std::abs(division.C) < close * (division.X.C + division.Y.C));
}

bool Minimiser::minimise(Division& division, Raise raise) const {
    constexpr int stepLimit = 100;
    constexpr double near = 0.1;  // from where the polish converges
    double shift = 0.0;
    for (int i = 0; i < stepLimit; ++i) {
        const auto step = newtonStep(division, raise, shift);
        if (!step || (shift == 0.0 && step->length < near)) break;
        const double length = descend(*step, division);
        if (length == 0.0) break;
        constexpr double bad = 0.3;
        constexpr double small = 1e-3;
        shift = length < bad ? std::max(2.0 * shift, small) : shift < small ? 0.0 : 0.1 * shift;
    }
    return polish(division);
}

// A phase as a mixture of its own.
Mixture MixtureOf(const Mixture& bulk, const Phase& phase) {
    ComponentValues z{};
    for (std::size_t i = 0; i < bulk.count; ++i) z[i] = phase.c[i] / phase.C;
    return WithFractions(bulk, z);
}

PhaseSplit SplitOf(const Mixture& mixture, const Division& division, double T) {
    const Phase* x = &division.X;
    const Phase* y = &division.Y;
    if (x->C < y->C) std::swap(x, y);
    PhaseSplit split;
    for (std::size_t i = 0; i < mixture.count; ++i) {
        split.phases.x[i] = x->c[i] / x->C;
        split.phases.y[i] = y->c[i] / y->C;
    }
    split.found = true;
    split.phases.T = T;
    split.phases.P = SharedPressure(R * T, {x->u(), x->A}, {y->u(), y->A});
    split.phases.Vx = 1.0 / x->C;
    split.phases.Vy = 1.0 / y->C;
    split.volumeFraction = y->volume;
    return split;
}

// The bulk with a trace of the trial phase.
PhaseSplit TraceOf(const TrialCurve& curve, const TrialPhase& trial, double T) {
    const ComponentValues& z = curve.mixture().z;
    const ComponentValues other = curve.fractions(trial);
    const bool isDilute = trial.concentration * curve.V() < 1.0;
    const double P = SharedPressure(R * T, {trial.u, trial.H}, {curve.u(), curve.A()});
    if (isDilute) return {true, {T, P, z, other, curve.V(), trial.volume()}, 0.0, false};
    return {true, {T, P, other, z, trial.volume(), curve.V()}, 1.0, false};
}

// Starts, and the divisions that they have led to.
class Competition {
  public:
    explicit Competition(const Minimiser& minimiser) : minimiser_(minimiser) {}

    // Where a trial phase is made of traces that are soon used up: what is more stable than the
    // bulk without them, and so on; and the phases between the bulk and the trial phase, which hold
    // more of what there is more of.
    void enterWidely(const TrialCurve& curve, const TrialPhase& trial);
    // The division that two trial phases lead to, or one and the bulk.
    void enter(const TrialCurve& curve, const TrialPhase& X, const TrialPhase& Y) {
        wait(minimiser_.start(curve, X, Y));
    }
    // What the start of lowest energy that is left leads to, unless that is known already.
    std::optional<Division> next();

  private:
    struct Start {
        Division division;
        double energy;
    };

    void wait(const Division& division) {
        if (division.possible) starts_.push_back({division, division.energy(minimiser_.RT())});
    }

    const Minimiser& minimiser_;
    std::vector<Start> starts_;
    std::vector<double> known_;  // energies of the divisions
};

// The trial phase that lies highest; null where there is none.
const TrialPhase* HighestOf(const Maxima& maxima) {
    const auto isLower = [](const TrialPhase& one, const TrialPhase& other) {
        return one.levelRT() < other.levelRT();
    };
    const auto highest = std::max_element(maxima.begin(), maxima.end(), isLower);
    return highest == maxima.end() ? nullptr : &*highest;
}

void Competition::enterWidely(const TrialCurve& curve, const TrialPhase& trial) {
    const Mixture& bulk = curve.mixture();
    ComponentValues left = bulk.z;
    ComponentValues gathered = curve.fractions(trial);
    for (std::size_t round = 1; round < bulk.count; ++round) {
        std::size_t chief = bulk.count;
        for (std::size_t i = 0; i < bulk.count; ++i) {
            const bool isAny = left[i] > 0.0;
            if (isAny &&
                (chief == bulk.count || gathered[i] * left[chief] > gathered[chief] * left[i])) {
                chief = i;
            }
        }
        left[chief] = 0.0;
        const double amount = std::accumulate(left.begin(), left.end(), 0.0);
        const Mixture rest = WithFractions(bulk, left);
        const TrialCurve over(rest, curve.V() / amount - rest.bMix);
        const Maxima maxima = over.maxima(minimiser_.RT());
        const TrialPhase* const next = HighestOf(maxima);
        if (next == nullptr || !(next->levelRT() > minimiser_.RT())) break;
        enter(over, over.bulk(), *next);
        gathered = over.fractions(*next);
    }
    constexpr int parts = 12;
    for (int i = 2; i < parts; ++i) {
        enter(curve, curve.bulk(),
              curve.at(trial.lambda * i / parts, trial, TrialCurve::Accuracy::Fine));
    }
}

std::optional<Division> Competition::next() {
    constexpr double rounding = 1e-14;
    const auto isLower = [](const Start& one, const Start& other) {
        return one.energy < other.energy;
    };
    while (!starts_.empty()) {
        const auto best = std::min_element(starts_.begin(), starts_.end(), isLower);
        Division division = best->division;
        const Division start = division;
        starts_.erase(best);
        if (!minimiser_.minimise(division, Minimiser::Raise::Unit)) {
            division = start;
            if (!minimiser_.minimise(division, Minimiser::Raise::Ideal)) continue;
        }
        const double energy = division.energy(minimiser_.RT());
        const auto isSame = [energy](double known) {
            return std::abs(known - energy) < rounding * std::abs(energy);
        };
        if (std::any_of(known_.begin(), known_.end(), isSame)) continue;
        known_.push_back(energy);
        return division;
    }
    return {};
}

// Each division of the competition brings the phases into it that would be more stable than its
// own, until there is none. Divisions of a negative pressure, which two of three phases may have,
// lead to others, but are no result themselves.
std::optional<PhaseSplit> BestSplit(const Mixture& mixture, double T, double V) {
    const double RT = R * T;
    const TrialCurve curve(mixture, V - mixture.bMix);
    const Maxima maxima = curve.maxima(RT);
    const TrialPhase* const lead = HighestOf(maxima);
    // On the boundary itself but for rounding.
    constexpr double rounding = 2e-14;
    if (lead == nullptr || lead->levelRT() < RT * (1.0 - rounding)) return {};
    const bool isBoundary = lead->levelRT() <= RT * (1.0 + rounding) && curve.spinodalRT() < RT;
    if (isBoundary) return TraceOf(curve, *lead, T);
    if (T < ColdestT(mixture)) return PhaseSplit{};
    const Minimiser minimiser(mixture, T, V);
    Competition competition(minimiser);
    const bool isBetween = curve.spinodalRT() > RT && maxima.size() > 1;
    for (const TrialPhase& one : maxima) {
        if (!isBetween && one.levelRT() > RT) competition.enter(curve, curve.bulk(), one);
        for (const TrialPhase& other : maxima) {
            if (isBetween && one.lambda != other.lambda) competition.enter(curve, one, other);
        }
    }
    constexpr double driveTolerance = 1e-8;
    constexpr int roundLimit = 16;  // as many divisions of eleven gases have never been seen
    PhaseSplit best;
    double lowest = 0.0;
    int wider = isBetween ? 0 : 1;
    for (int round = 0; round < roundLimit; ++round) {
        std::optional<Division> division = competition.next();
        for (; !division && wider < 2; ++wider) {
            for (const TrialPhase& trial : maxima) {
                if (!(trial.levelRT() > RT)) continue;
                if (wider == 0) competition.enter(curve, curve.bulk(), trial);
                if (wider == 1) competition.enterWidely(curve, trial);
            }
            division = competition.next();
        }
        if (!division) break;
        PhaseSplit split = SplitOf(mixture, *division, T);
        const double P = split.phases.P;
        const Phase& base = division->X.u() > division->Y.u() ? division->X : division->Y;
        const Mixture phase = MixtureOf(mixture, base);
        const TrialCurve over(phase, 1.0 / base.u());
        for (const TrialPhase& other : over.maxima(RT)) {
            if (over.drive(other, RT, P) < driveTolerance) continue;
            split.metastable = true;
            competition.enter(over, over.bulk(), other);
        }
        if (!(P > 0.0)) continue;
        if (!split.metastable) return split;
        const double energy = division->energy(RT);
        if (best.found && !(energy < lowest)) continue;
        best = split;
        lowest = energy;
    }
    return best;
}

// Whether both volumes are larger than the co-volumes and have room in doubles.
bool HasRoom(const Mixture& mixture, const PhasePair& pair) {
    const auto fits = [&](const ComponentValues& x, double V) {
        return V > WithFractions(mixture, x).bMix && std::isfinite(V);
    };
    return fits(pair.x, pair.Vx) && fits(pair.y, pair.Vy);
}

}  // namespace

std::optional<PhaseSplit> SplitAtVolume(const Mixture& mixture, double T, double V) {
    if (!(T > 0.0 && V > mixture.bMix) || !std::isfinite(T) || !std::isfinite(V)) return {};
    // Where fugacities differ by e^22700 and every fluid that has a volume in doubles would split.
    constexpr double absurd = 0.01;
    if (T < absurd * ColdestT(mixture)) return PhaseSplit{};
    std::optional<PhaseSplit> split = BestSplit(mixture, T, V);
    if (split && split->found) split->found = HasRoom(mixture, split->phases);
    return split;
}

}  // namespace fluid
