#include "model/trial_phase.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>

namespace fluid {

namespace {

// Sums over e_i = z_i·u_z·exp(-b_i·(u - u_z) + k·aRoot_i·(A - A_z) - shift) of a trial phase at (A,
// u), named for their other factors: b for b_i, s for aRoot_i.
struct Sums {
    double e = 0.0;
    double be = 0.0;
    double se = 0.0;
    double bbe = 0.0;
    double bse = 0.0;
    double sse = 0.0;
    double shift = 0.0;  // 0 unless an e_i would overflow
};

// Accuracy of b·u for the mere sign of H - A, and for the values of a phase that is kept.
constexpr double Rough = 1e-3;
constexpr double Fine = 1e-8;

// Exponents of e_i/(z_i·u_z); returns the shift.
double Exponents(const Mixture& mixture, const BulkState& bulk, double A, double u,
                 ComponentValues& exponents) {
    const double pull = bulk.k * (A - bulk.A);
    const double push = u - bulk.u;
    double largest = -std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < mixture.count; ++i) {
        exponents[i] = mixture.aRoot[i] * pull - mixture.b[i] * push;
        largest = std::max(largest, exponents[i]);
    }
    constexpr double Overflow = 500.0;
    return largest > Overflow ? largest : 0.0;
}

Sums SumUp(const Mixture& mixture, const BulkState& bulk, double A, double u) {
    ComponentValues exponents;
    Sums sums;
    sums.shift = Exponents(mixture, bulk, A, u, exponents);
    for (std::size_t i = 0; i < mixture.count; ++i) {
        const double e = mixture.z[i] * bulk.u * std::exp(exponents[i] - sums.shift);
        const double be = mixture.b[i] * e;
        const double se = mixture.aRoot[i] * e;
        sums.e += e;
        sums.be += be;
        sums.se += se;
        sums.bbe += mixture.b[i] * be;
        sums.bse += mixture.b[i] * se;
        sums.sse += mixture.aRoot[i] * se;
    }
    return sums;
}

// The root u of sum e_i(u) = u and the sums there. Both sum e_i - u and ln(sum e_i) - ln u are
// convex and fall, so that a step of Newton's method on either ends below the root, or at it,
// wherever it starts; so does sum e_i itself from above. The largest of them is taken.
double SolveU(const Mixture& mixture, const BulkState& bulk, double A, double u, double accuracy,
              Sums& sums) {
    constexpr double Close = 0.1;
    constexpr int StepLimit = 100;
    for (int step = 0; step < StepLimit; ++step) {
        sums = SumUp(mixture, bulk, A, u);
        const double plain = (sums.e - u) / (1.0 + sums.be);
        if (sums.shift == 0.0 && std::abs(sums.e - u) <= Close * u) {
            u += plain;
            if (std::abs(plain) * mixture.largestB > accuracy) continue;
            // The sums follow u to first order.
            sums.se -= sums.bse * plain;
            sums.be -= sums.bbe * plain;
            return u;
        }
        if (!(sums.e > 0.0)) {
            u *= 0.5;
            continue;
        }
        const double f = std::log(sums.e / u) + sums.shift;
        const double next = u + f / (sums.be / sums.e + 1.0 / u);
        u = sums.shift > 0.0 ? next : std::max({next, u + plain, std::min(sums.e, u)});
    }
    return u;
}

TrialPhase Trial(const Mixture& mixture, const BulkState& bulk, double A, double guess,
                 double accuracy) {
    Sums sums;
    TrialPhase trial;
    trial.A = A;
    trial.u = SolveU(mixture, bulk, A, guess, accuracy, sums);
    const double share = 1.0 / (1.0 + sums.be);
    const double H = sums.se * share;
    trial.concentration = trial.u * share;
    trial.packing = sums.be * share;
    trial.H = H;
    trial.slope = bulk.k * (sums.sse - H * (2.0 * sums.bse - H * sums.bbe)) * share;
    // Beside the bulk as a difference, else with P as given, which the sum need not cancel to.
    const double rise = trial.u - bulk.u;
    trial.D = std::abs(rise) < 0.5 * bulk.u ? bulk.RT * rise - (A - bulk.A) * (A + bulk.A)
                                            : bulk.RT * trial.u - A * A - bulk.P;
    return trial;
}

// d²H/dA² at the bulk itself, where e_i = z_i·u.
double BulkCurvature(const Mixture& mixture, const BulkState& bulk) {
    double cubes = 0.0;
    double cross = 0.0;
    for (std::size_t i = 0; i < mixture.count; ++i) {
        const double q = mixture.aRoot[i] - mixture.b[i] * bulk.A;
        cubes += mixture.z[i] * q * q * q;
        cross += mixture.z[i] * mixture.b[i] * q;
    }
    const double slope = BulkSlope(mixture, bulk);
    return bulk.k * (bulk.k * cubes - 3.0 * slope * cross) / bulk.V;
}

// u of a trial phase a step further in A, to second order within the bounds that the growth of
// du/dA = k·H sets.
double PredictU(const Mixture& mixture, const BulkState& bulk, const TrialPhase& from,
                double step) {
    const double u = from.u + bulk.k * step * (from.H + 0.5 * step * from.slope);
    constexpr double Least = 0.1;
    if (step < 0.0) return std::clamp(u, Least * from.u, from.u);
    return std::min(u, from.u + bulk.k * step * mixture.densestA);
}

double Rise(const TrialPhase& trial) {
    return trial.H - trial.A;
}

class Search {
  public:
    Search(const Mixture& mixture, const BulkState& bulk, Maxima& maxima)
        : mixture_(mixture),
          bulk_(bulk),
          maxima_(maxima),
          step_(std::max(RelativeStep / (bulk.k * mixture.largestARoot),
                         LeastStep * mixture.densestA)),
          self_(Trial(mixture, bulk, bulk.A, bulk.u, Rough)),
          curvature_(BulkCurvature(mixture, bulk)) {}

    void above();
    void below();

  private:
    // Of the shortest length over which a weight changes by a factor e.
    static constexpr double RelativeStep = 1.0;
    // Of the range, for temperatures so low that no mixture has numbers for its phases.
    static constexpr double LeastStep = 1e-3;

    TrialPhase at(double A, const TrialPhase& from) const {
        return Trial(mixture_, bulk_, A, PredictU(mixture_, bulk_, from, A - from.A), Rough);
    }
    TrialPhase at(double A, const TrialPhase& low, const TrialPhase& high) const;
    bool touchesBulk(const TrialPhase& phase) const { return phase.A == bulk_.A; }
    void within(TrialPhase low, TrialPhase high);
    void firstCell(const TrialPhase& near, int depth);
    void cell(const TrialPhase& low, const TrialPhase& high, int depth);
    void keep(const TrialPhase& low, const TrialPhase& high);

    const Mixture& mixture_;
    const BulkState& bulk_;
    Maxima& maxima_;
    double step_;
    TrialPhase self_;
    double curvature_;  // d²H/dA² at the bulk
};

void Search::above() {
    within(self_, at(mixture_.densestA, self_));
}

void Search::below() {
    within(at(0.0, self_), self_);
}

// A phase between two known ones, from both of which u is foretold.
TrialPhase Search::at(double A, const TrialPhase& low, const TrialPhase& high) const {
    const double fromLow = PredictU(mixture_, bulk_, low, A - low.A);
    const double fromHigh = PredictU(mixture_, bulk_, high, A - high.A);
    const double share = (A - low.A) / (high.A - low.A);
    const double guess = fromLow + share * (fromHigh - fromLow);
    return Trial(mixture_, bulk_, A, std::max(low.u, std::min(guess, high.u)), Rough);
}

// H rises with A, so that every A = H(A) between two phases lies between their H as well. The
// interval is cut down to what they have in common, and halved where that leaves much of it, until
// nothing is left or a cell short enough to be judged by its ends.
void Search::within(TrialPhase low, TrialPhase high) {
    for (;;) {
        const double width = high.A - low.A;
        const double from = std::max(low.A, low.H);
        const double to = std::min(high.A, high.H);
        // The H of a vapour so dilute that they are equal, or apart by rounding alone, still cross
        // A.
        const bool crosses =
            !touchesBulk(low) && !touchesBulk(high) && Rise(low) > 0.0 && Rise(high) <= 0.0;
        if (!(from < to) && !crosses) return;
        if (width <= step_ || !(from < to)) break;
        constexpr double Worthwhile = 0.3;
        if (!touchesBulk(low) && from - low.A > Worthwhile * width) {
            low = at(from, low, high);
        } else if (!touchesBulk(high) && high.A - to > Worthwhile * width) {
            high = at(to, low, high);
        } else {
            const TrialPhase middle = at(0.5 * (low.A + high.A), low, high);
            within(low, middle);
            low = middle;
        }
    }
    if (touchesBulk(low)) {
        firstCell(high, 0);
    } else if (touchesBulk(high)) {
        firstCell(low, 0);
    } else {
        cell(low, high, 0);
    }
}

// Largest value between 0 and 1 of the cubic with these values and slopes at 0 and 1, estimated at
// the extremum that the slopes foretell; the larger end value where they foretell none inside.
double LargestInside(double value0, double slope0, double value1, double slope1) {
    const double ends = std::max(value0, value1);
    if (slope0 <= 0.0 && slope1 >= 0.0) return ends;
    // value0 + t·(slope0 + t·(c2 + t·c3)), derivative slope0 + 2·c2·t + 3·c3·t²
    const double c2 = 3.0 * (value1 - value0) - 2.0 * slope0 - slope1;
    const double c3 = slope0 + slope1 - 2.0 * (value1 - value0);
    const double discriminant = c2 * c2 - 3.0 * c3 * slope0;
    if (discriminant <= 0.0) return ends;
    const double root = std::sqrt(discriminant);
    // The maximum is the root where the second derivative is negative.
    const double t =
        c2 > 0.0 ? (c3 != 0.0 ? (-c2 - root) / (3.0 * c3) : -1.0) : slope0 / (root - c2);
    if (!(t > 0.0 && t < 1.0)) return ends;
    return std::max(ends, value0 + t * (slope0 + t * (c2 + t * c3)));
}

// Beside the bulk every D has its double zero divided out: (H - A)/(A - A_z) is looked at.
void Search::firstCell(const TrialPhase& near, int depth) {
    constexpr int DepthLimit = 14;
    const double width = near.A - bulk_.A;
    const double value0 = self_.slope - 1.0;
    const double value1 = Rise(near) / width;
    const double slope0 = 0.5 * curvature_ * width;
    const double slope1 = near.slope - 1.0 - value1;
    if (value0 > 0.0 && value1 > 0.0) return;
    const double largest = LargestInside(value0, slope0, value1, slope1);
    const double spread = std::abs(value1 - value0) + std::abs(slope0) + std::abs(slope1);
    constexpr double Doubt = 0.1;
    if (largest + Doubt * spread < 0.0 || depth == DepthLimit) return;
    const TrialPhase middle = at(bulk_.A + 0.5 * width, self_);
    firstCell(middle, depth + 1);
    if (width > 0.0) {
        cell(middle, near, 0);
    } else {
        cell(near, middle, 0);
    }
}

void Search::cell(const TrialPhase& low, const TrialPhase& high, int depth) {
    constexpr int DepthLimit = 6;
    const double width = high.A - low.A;
    const double value0 = Rise(low);
    const double value1 = Rise(high);
    if (value0 > 0.0 && value1 <= 0.0) {
        keep(low, high);
        return;
    }
    if (value0 <= 0.0 && value1 > 0.0) return;
    const double sign = value0 > 0.0 ? -1.0 : 1.0;
    const double slope0 = sign * (low.slope - 1.0) * width;
    const double slope1 = sign * (high.slope - 1.0) * width;
    if (slope0 <= 0.0 || slope1 >= 0.0 || depth == DepthLimit) return;
    const double largest = LargestInside(sign * value0, slope0, sign * value1, slope1);
    constexpr double Doubt = 0.025;
    if (largest + Doubt * (slope0 - slope1) < 0.0) return;
    const TrialPhase middle = at(0.5 * (low.A + high.A), low);
    cell(low, middle, depth + 1);
    cell(middle, high, depth + 1);
}

void Search::keep(const TrialPhase& low, const TrialPhase& high) {
    if (maxima_.count == Maxima::Capacity) return;
    double lower = low.A;
    double upper = high.A;
    // From the end that is nearer by its own reckoning.
    const double fromLow = Rise(low) / std::abs(1.0 - low.slope);
    const double fromHigh = -Rise(high) / std::abs(1.0 - high.slope);
    TrialPhase trial = fromLow < fromHigh ? low : high;
    constexpr int StepLimit = 60;
    for (int i = 0; i < StepLimit; ++i) {
        double next = trial.A + Rise(trial) / (1.0 - trial.slope);
        if (trial.slope >= 1.0 || !(next >= lower && next <= upper)) next = 0.5 * (lower + upper);
        const double move = next - trial.A;
        trial = Trial(mixture_, bulk_, next, PredictU(mixture_, bulk_, trial, move), Fine);
        constexpr double Enough = 1e-8;
        if (std::abs(move) <= Enough * next) break;
        (Rise(trial) > 0.0 ? lower : upper) = next;
    }
    maxima_.phases[maxima_.count++] = trial;
}

}  // namespace

Mixture MixtureOf(std::int32_t lastComponent, std::span<const double> fractions) {
    Mixture mixture;
    mixture.count = static_cast<std::size_t>(lastComponent) + 1;
    assert(mixture.count <= ComponentCount && mixture.count <= fractions.size());
    double sum = 0.0;
    for (std::size_t i = 0; i < mixture.count; ++i) sum += fractions[i];
    // Fractions that add up to one but for rounding stay as they were typed.
    constexpr double Rounding = 1e-14;
    if (std::abs(sum - 1.0) < Rounding) sum = 1.0;
    for (std::size_t i = 0; i < mixture.count; ++i) {
        mixture.z[i] = fractions[i] / sum;
        mixture.b[i] = b[i];
        mixture.aRoot[i] = aRoot[i];
        mixture.bMix += mixture.z[i] * b[i];
        mixture.aRootMix += mixture.z[i] * aRoot[i];
        mixture.densestA = std::max(mixture.densestA, aRoot[i] / b[i]);
        mixture.largestB = std::max(mixture.largestB, b[i]);
        mixture.largestARoot = std::max(mixture.largestARoot, aRoot[i]);
    }
    return mixture;
}

double HottestT(const Mixture& mixture) {
    return mixture.densestA * mixture.densestA * mixture.largestB / (2.0 * R);
}

double ColdestT(const Mixture& mixture) {
    constexpr double LargestExponent = 227.0;
    return 2.0 * mixture.largestARoot * mixture.densestA / (R * LargestExponent);
}

BulkState BulkAt(const Mixture& mixture, double T, double freeVolume) {
    BulkState bulk;
    bulk.T = T;
    bulk.RT = R * T;
    bulk.k = 2.0 / bulk.RT;
    bulk.V = mixture.bMix + freeVolume;
    bulk.u = 1.0 / freeVolume;
    bulk.A = mixture.aRootMix / bulk.V;
    bulk.P = bulk.RT * bulk.u - bulk.A * bulk.A;
    return bulk;
}

double MolarFugacity(const Mixture& mixture, const BulkState& bulk) {
    return std::log(bulk.u) + mixture.bMix * bulk.u - bulk.k * mixture.aRootMix * bulk.A;
}

double BulkSlope(const Mixture& mixture, const BulkState& bulk) {
    double sum = 0.0;
    for (std::size_t i = 0; i < mixture.count; ++i) {
        const double q = mixture.aRoot[i] - mixture.b[i] * bulk.A;
        sum += mixture.z[i] * q * q;
    }
    return bulk.k * sum / bulk.V;
}

ComponentValues FractionsOf(const Mixture& mixture, const BulkState& bulk,
                            const TrialPhase& trial) {
    ComponentValues fractions{};
    const double shift = Exponents(mixture, bulk, trial.A, trial.u, fractions);
    double sum = 0.0;
    for (std::size_t i = 0; i < mixture.count; ++i) {
        fractions[i] = mixture.z[i] * std::exp(fractions[i] - shift);
        sum += fractions[i];
    }
    for (double& fraction : fractions) fraction /= sum;
    return fractions;
}

double Drive(const BulkState& bulk, const TrialPhase& trial) {
    return trial.D / (bulk.RT * trial.concentration);
}

bool ClimbToMaximum(const Mixture& mixture, const BulkState& bulk, TrialPhase& trial) {
    constexpr int StepLimit = 30;
    constexpr double Enough = 1e-8;
    for (int i = 0; i < StepLimit; ++i) {
        trial = Trial(mixture, bulk, trial.A, trial.u, Fine);
        if (!(trial.slope < 1.0)) return false;
        const double move = Rise(trial) / (1.0 - trial.slope);
        const double A = trial.A + move;
        if (!(A > 0.0 && A < mixture.densestA)) return false;
        const double u = PredictU(mixture, bulk, trial, move);
        trial = Trial(mixture, bulk, A, u, Fine);
        if (std::abs(move) <= Enough * A) return trial.slope < 1.0;
    }
    return false;
}

const TrialPhase* Maxima::best(const BulkState& bulk) const {
    const auto* const best = std::max_element(
        begin(), end(),
        [&](const TrialPhase& x, const TrialPhase& y) { return Drive(bulk, x) < Drive(bulk, y); });
    return count > 0 ? best : nullptr;
}

Maxima FindMaxima(const Mixture& mixture, const BulkState& bulk) {
    Maxima maxima;
    Search search(mixture, bulk, maxima);
    search.above();
    search.below();
    return maxima;
}

}  // namespace fluid
