#include "model/trial_phase.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace fluid {

// Sums over w_i = z_i·exp(theta_i - shift), theta_i = lambda·q_i - b_i·excess, named for their
// other factors: b for b_i, s for aRoot_i; and over z_i·(exp(theta_i) - 1), which cancel nothing.
struct TrialCurve::Sums {
    double e = 0.0;
    double be = 0.0;
    double se = 0.0;
    double bbe = 0.0;
    double bse = 0.0;
    double sse = 0.0;
    double gain = 0.0;     // of exp(theta) - 1 - theta
    double bGrowth = 0.0;  // of b·(exp(theta) - 1)
    double qGrowth = 0.0;  // of q·(exp(theta) - 1)
    double shift = 0.0;    // 0 unless an exponential would overflow
};

namespace {

// 1/n!
constexpr double OverFactorial(int n) {
    return n < 2 ? 1.0 : OverFactorial(n - 1) / n;
}

constexpr double small = 0.25;  // of the series

// From its series, right to the last bits for x between -0.25 and 0.25.
double SmallExpGain(double x) {
    constexpr int last = 14;
    constexpr auto over = [] {
        std::array<double, last + 1> values{};
        for (int n = 0; n <= last; ++n) values[n] = OverFactorial(n);
        return values;
    }();
    const double square = x * x;
    double even = over[last];
    double odd = over[last - 1];
    for (int n = last - 2; n > 2; n -= 2) {
        even = even * square + over[n];
        odd = odd * square + over[n - 1];
    }
    return square * (0.5 + (x * odd + square * even));
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

// Whether the cubic with these values and slopes at 0 and 1 falls all the way, by a safe margin.
bool Falls(double value0, double slope0, double value1, double slope1) {
    constexpr double margin = 0.1;  // the cubic is an estimate
    const double limit = -margin * (value0 - value1);
    if (!(slope0 < limit && slope1 < limit)) return false;
    // slope0 + 2·c2·t + 3·c3·t²
    const double c2 = 3.0 * (value1 - value0) - 2.0 * slope0 - slope1;
    const double c3 = slope0 + slope1 - 2.0 * (value1 - value0);
    if (c3 >= 0.0) return true;
    const double t = -c2 / (3.0 * c3);
    return !(t > 0.0 && t < 1.0) || slope0 + c2 * t < limit;
}

}  // namespace

double ExpGain(double x) {
    return std::abs(x) < small ? SmallExpGain(x) : std::exp(x) - 1.0 - x;
}

double SharedPressure(double RT, const Push& one, const Push& other) {
    const auto& [u, A] = one.u < other.u ? one : other;
    return RT * u - A * A;
}

TrialCurve::TrialCurve(const Mixture& mixture, double freeVolume)
    : mixture_(&mixture),
      V_(mixture.bMix + freeVolume),
      u_(1.0 / freeVolume),
      A_(mixture.aRootMix / V_) {
    double bb = 0.0, bq = 0.0, qq = 0.0, bqq = 0.0, qqq = 0.0, qqqq = 0.0;
    for (std::size_t i = 0; i < mixture.count; ++i) {
        q_[i] = (mixture.aRoot[i] * freeVolume + mixture.difference[i]) / V_;
        const double zb = mixture.z[i] * mixture.b[i];
        const double zqq = mixture.z[i] * q_[i] * q_[i];
        bb += zb * mixture.b[i];
        bq += zb * q_[i];
        qq += zqq;
        bqq += zqq * mixture.b[i];
        qqq += zqq * q_[i];
        qqqq += zqq * q_[i] * q_[i];
    }
    bulk_.u = u_;
    bulk_.concentration = 1.0 / V_;
    bulk_.packing = mixture.bMix / V_;
    bulk_.H = A_;
    bulk_.slope = qq / V_;
    curvature_ = (qqq - 3.0 * bulk_.slope * bq) / V_;
    third_ = (qqqq - 6.0 * bulk_.slope * bqq + 3.0 * bulk_.slope * bulk_.slope * bb -
              4.0 * curvature_ * bq) /
             V_;
    spinodalSlope_ = (4.0 * A_ * bq / V_ - 2.0 * bulk_.slope) / V_;
}

bool TrialCurve::isNear(double u) const {
    return std::abs(u - u_) < 0.5 * u_;
}

TrialCurve::Sums TrialCurve::sumUp(double lambda, double excess) const {
    const Mixture& mixture = *mixture_;
    ComponentValues theta;
    Sums sums;
    double largest = -std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < mixture.count; ++i) {
        theta[i] = lambda * q_[i] - mixture.b[i] * excess;
        largest = std::max(largest, theta[i]);
    }
    constexpr double overflow = 600.0;  // e^600 times b² or s² has room
    if (largest > overflow) sums.shift = largest;
    for (std::size_t i = 0; i < mixture.count; ++i) {
        const double z = mixture.z[i];
        const double co = mixture.b[i];
        const double s = mixture.aRoot[i];
        double gain = 0.0;
        double exponential = 0.0;
        if (std::abs(theta[i]) < small && sums.shift == 0.0) {
            gain = SmallExpGain(theta[i]);
            exponential = 1.0 + theta[i] + gain;
        } else {
            exponential = std::exp(theta[i] - sums.shift);
            gain = exponential - 1.0 - theta[i];
        }
        const double growth = z * (theta[i] + gain);
        const double e = z * exponential;
        const double be = co * e;
        const double se = s * e;
        sums.e += e;
        sums.be += be;
        sums.se += se;
        sums.bbe += co * be;
        sums.bse += co * se;
        sums.sse += s * se;
        sums.gain += z * gain;
        sums.bGrowth += co * growth;
        sums.qGrowth += q_[i] * growth;
    }
    return sums;
}

TrialPhase TrialCurve::phase(double lambda, double excess, double u, const Sums& sums) const {
    const double share = 1.0 / (1.0 + u_ * sums.be);
    TrialPhase trial;
    trial.lambda = lambda;
    trial.excess = excess;
    trial.u = u;
    trial.concentration = u * share;
    trial.packing = u_ * sums.be * share;
    trial.H = u_ * sums.se * share;
    trial.rise = u_ * sums.qGrowth * share;
    trial.slope = u_ * (sums.sse - trial.H * (2.0 * sums.bse - trial.H * sums.bbe)) * share;
    return trial;
}

// Beside the bulk by Newton's method on sum z_i·(exp(theta_i) - 1 - theta_i) = V·excess, which has
// all digits of a small excess. Elsewhere it is sum e_i(u) = u for e_i = z_i·u_z·exp(theta_i): both
// sum e_i - u and ln(sum e_i) - ln u are convex and fall, so that a step of Newton's method on
// either ends below the root, or at it, wherever it starts; so does sum e_i itself from above. The
// largest of them is taken.
TrialPhase TrialCurve::solve(double lambda, double excess, double u, Accuracy accuracy) const {
    const double enough = accuracy == Accuracy::Rough ? 1e-3 : 1e-8;
    const auto moved = [this](Sums& sums, double step) {
        // The sums follow to first order.
        sums.be -= sums.bbe * step;
        sums.se -= sums.bse * step;
        sums.qGrowth -= (sums.bse - A_ * sums.bbe) * step;
    };
    constexpr int nearLimit = 8;
    constexpr int stepLimit = 100;
    Sums sums;
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < nearLimit && isNear(u); ++i) {
            sums = sumUp(lambda, excess);
            if (sums.shift > 0.0) break;
            const double step = (sums.gain - V_ * excess) / (V_ + sums.bGrowth);
            excess += step;
            u = u_ + (lambda * A_ + excess);
            if (std::abs(step) > enough * excess) continue;
            moved(sums, step);
            return phase(lambda, excess, u, sums);
        }
        const auto go = [&](double step) {
            excess += step;
            u += step;
        };
        if (!(u > 0.0)) go(1e-3 * u_ - u);
        for (int i = 0; i < stepLimit; ++i) {
            sums = sumUp(lambda, excess);
            const double e = u_ * sums.e;
            const double plain = (e - u) / (1.0 + u_ * sums.be);
            constexpr double close = 0.1;  // where the plain step converges
            if (sums.shift == 0.0 && std::abs(e - u) <= close * u) {
                go(plain);
                if (std::abs(plain) * mixture_->largestB > enough) continue;
                moved(sums, plain);
                if (!isNear(u) || round == 1) return phase(lambda, excess, u, sums);
                break;
            }
            if (!(e > 0.0)) {
                go(-0.5 * u);
                continue;
            }
            const double f = std::log(e / u) + sums.shift;
            double step = f / (sums.be / sums.e + 1.0 / u);
            if (sums.shift == 0.0) step = std::max(step, plain);
            if (sums.shift == 0.0 && e < u && u + step <= e) {
                excess += e - u;
                u = e;
            } else {
                go(step);
            }
        }
    }
    return phase(lambda, excess, u, sums);
}

TrialPhase TrialCurve::at(double lambda, const TrialPhase& near, Accuracy accuracy) const {
    const double step = lambda - near.lambda;
    // Within the bounds that the growth of du/dlambda = H sets.
    const double most = step < 0.0 ? -step * A_ : step * (mixture_->densestA - A_);
    const double least = step < 0.0 ? most - 0.9 * near.u : 0.0;
    const double rise = std::clamp(step * (near.rise + 0.5 * step * near.slope), least, most);
    return solve(lambda, near.excess + rise, near.u + (step * A_ + rise), accuracy);
}

TrialPhase TrialCurve::at(double lambda, double u) const {
    return solve(lambda, u - u_ - lambda * A_, u, Accuracy::Fine);
}

// A vapour so thin that D is small beside the terms it is made of has its own pressure.
double TrialCurve::drive(const TrialPhase& trial, double RT, double P) const {
    constexpr double thin = 1e-3;
    constexpr double rounding = 1e-13;  // of levelRT
    const bool isThin = trial.concentration * V_ < thin;
    if (isThin) return (RT * trial.u - trial.H * trial.H - P) * trial.volume() / RT;
    const bool isRounding = std::abs(trial.levelRT() / RT - 1.0) < rounding;
    if (isRounding) return 0.0;
    return (trial.excess - 0.25 * RT * trial.lambda * trial.lambda) * trial.volume();
}

double TrialCurve::levelSlope(const TrialPhase& trial) const {
    const double square = trial.lambda * trial.lambda;
    const double spread = trial.u / (trial.concentration * u_);  // V + sum of b·(exp(theta) - 1)
    return 4.0 / square * (trial.lambda * A_ * (spread / V_ - 1.0) - trial.excess) / spread;
}

ComponentValues TrialCurve::fractions(const TrialPhase& trial) const {
    ComponentValues x{};
    double largest = -std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < mixture_->count; ++i) {
        x[i] = trial.lambda * q_[i] - mixture_->b[i] * trial.excess;
        largest = std::max(largest, x[i]);
    }
    double sum = 0.0;
    for (std::size_t i = 0; i < mixture_->count; ++i) {
        x[i] = mixture_->z[i] * std::exp(x[i] - largest);
        sum += x[i];
    }
    for (double& fraction : x) fraction /= sum;
    return x;
}

// The slope of levelRT is 4/lambda³ times lambda·rise - 2·excess, on which Newton's method is used.
std::optional<TrialPhase> TrialCurve::climbLevel(const TrialPhase& from) const {
    constexpr int stepLimit = 60;
    constexpr double enough = 1e-8;
    const double least = 1e-9 / mixture_->largestARoot;
    TrialPhase trial = from;
    double longest = 2.0 * std::abs(from.lambda);
    for (int i = 0; i < stepLimit; ++i) {
        if (std::abs(trial.lambda) < least) return {};
        const double slope = trial.lambda * trial.rise - 2.0 * trial.excess;
        const double bend = trial.lambda * trial.slope - trial.rise;
        const double side = trial.lambda < 0.0 ? -1.0 : 1.0;
        double move = -slope / bend;
        // Where it bends upwards Newton's method leads down.
        if (!(side * bend < 0.0)) move = side * std::copysign(0.5 * trial.lambda, slope);
        move = std::clamp(move, -longest, longest);
        if (side * (trial.lambda + move) < 0.1 * std::abs(trial.lambda)) move = -0.9 * trial.lambda;
        const TrialPhase next = at(trial.lambda + move, trial, Accuracy::Fine);
        const bool isEnd = std::abs(move) <= enough * std::abs(trial.lambda);
        if (isEnd) return next;
        if (next.levelRT() < trial.levelRT() * (1.0 - 1e-14)) {
            longest = 0.5 * std::abs(move);
            continue;
        }
        trial = next;
    }
    return trial;
}

// The search for all maxima of D at one temperature.
class TrialCurve::Search {
  public:
    Search(const TrialCurve& curve, double RT, Maxima& maxima)
        : curve_(curve),
          k_(2.0 / RT),
          maxima_(maxima),
          step_(std::max(relativeStep / curve.mixture_->largestARoot,
                         leastStep * k_ * curve.mixture_->densestA)) {}

    void above();
    void below();

  private:
    // Of the shortest length over which a weight changes by a factor e.
    static constexpr double relativeStep = 1.0;
    // Of the range, for temperatures so low that no mixture has numbers for its phases.
    static constexpr double leastStep = 1e-3;
    // Beyond both ends, on which a phase of the densest component alone and an empty one lie.
    static constexpr double beyond = 1.001;

    TrialPhase at(double lambda, const TrialPhase& from) const {
        return curve_.at(lambda, from, Accuracy::Rough);
    }
    TrialPhase at(double lambda, const TrialPhase& low, const TrialPhase& high) const;
    // k·(H - A)
    double ascent(const TrialPhase& phase) const { return k_ * phase.rise - phase.lambda; }
    static bool isBulk(const TrialPhase& phase) { return phase.lambda == 0.0; }
    void within(TrialPhase low, TrialPhase high);
    void firstCell(const TrialPhase& near, int depth);
    void cell(const TrialPhase& low, const TrialPhase& high, int depth);
    void keep(const TrialPhase& low, const TrialPhase& high);

    const TrialCurve& curve_;
    double k_;
    Maxima& maxima_;
    double step_;
};

void TrialCurve::Search::above() {
    const double densest = k_ * (beyond * curve_.mixture_->densestA - curve_.A_);
    within(curve_.bulk_, at(densest, curve_.bulk_));
}

void TrialCurve::Search::below() {
    within(at(-beyond * k_ * curve_.A_, curve_.bulk_), curve_.bulk_);
}

// A phase between two known ones, from the nearer of which it is foretold.
TrialPhase TrialCurve::Search::at(double lambda, const TrialPhase& low,
                                  const TrialPhase& high) const {
    return at(lambda, lambda - low.lambda < high.lambda - lambda ? low : high);
}

// H rises with A, so that every A = H(A) between two phases lies between their H as well. The
// interval is cut down to what they have in common, and halved where that leaves much of it, until
// nothing is left or a cell short enough to be judged by its ends.
void TrialCurve::Search::within(TrialPhase low, TrialPhase high) {
    for (;;) {
        const double width = high.lambda - low.lambda;
        const double from = std::max(low.lambda, k_ * low.rise);
        const double to = std::min(high.lambda, k_ * high.rise);
        // The H of a vapour so dilute that they are equal, or apart by rounding alone, still cross
        // A.
        const bool crosses =
            !isBulk(low) && !isBulk(high) && ascent(low) > 0.0 && ascent(high) <= 0.0;
        if (!(from < to) && !crosses) return;
        if (width <= step_ || !(from < to)) break;
        constexpr double worthwhile = 0.3;  // less than halving
        // Not onto a place of H = A itself, on which rounding would hide it.
        constexpr double part = 0.99;
        if (!isBulk(low) && from - low.lambda > worthwhile * width) {
            low = at(low.lambda + part * (from - low.lambda), low, high);
        } else if (!isBulk(high) && high.lambda - to > worthwhile * width) {
            high = at(high.lambda - part * (high.lambda - to), low, high);
        } else {
            const TrialPhase middle = at(0.5 * (low.lambda + high.lambda), low, high);
            within(low, middle);
            low = middle;
        }
    }
    if (isBulk(low)) {
        firstCell(high, 0);
    } else if (isBulk(high)) {
        firstCell(low, 0);
    } else {
        cell(low, high, 0);
    }
}

// Beside the bulk every D has its double zero divided out: (H - A)/(A - A_z) is looked at.
void TrialCurve::Search::firstCell(const TrialPhase& near, int depth) {
    constexpr int depthLimit = 24;  // halvings towards the bulk
    const double width = near.lambda;
    const double value0 = k_ * curve_.bulk_.slope - 1.0;
    const double value1 = ascent(near) / width;
    const double slope0 = 0.5 * k_ * curve_.curvature_ * width;
    const double slope1 = k_ * near.slope - 1.0 - value1;
    if (value0 > 0.0 && value1 > 0.0) return;
    constexpr double doubt = 0.1;  // of the cubic, as tested by brute force
    double place = 0.5 * width;
    constexpr double parabolic = 0.05;
    if (std::abs(width) * curve_.mixture_->largestARoot < parabolic) {
        // So near the bulk it is value0 + 2·half·t + bend·t² for t from 0 to 1.
        const double half = 0.5 * slope0;
        const double bend = k_ * curve_.third_ * width * width / 6.0;
        const double peak = bend < 0.0 ? -half / bend : 0.0;
        if (value0 > 0.0) {
            const double root = std::sqrt(std::max(half * half - value0 * bend, 0.0));
            place = 0.5 * width * std::min(1.0, value0 / (root - half));  // well before its root
        } else if (value1 > 0.0 || !(peak > 0.0 && peak < 1.0) ||
                   !(value0 + peak * (half - doubt * bend * peak) > 0.0)) {
            return;
        } else {
            place = peak * width;
        }
    } else {
        const double largest = LargestInside(value0, slope0, value1, slope1);
        const double spread = std::abs(value1 - value0) + std::abs(slope0) + std::abs(slope1);
        if (largest + doubt * spread < 0.0) return;
    }
    if (depth == depthLimit) return;
    const TrialPhase middle = at(place, curve_.bulk_);
    firstCell(middle, depth + 1);
    if (width > 0.0) {
        cell(middle, near, 0);
    } else {
        cell(near, middle, 0);
    }
}

void TrialCurve::Search::cell(const TrialPhase& low, const TrialPhase& high, int depth) {
    constexpr int depthLimit = 6;  // a 64th of the shortest length of change
    const double value0 = ascent(low);
    const double value1 = ascent(high);
    const double width = high.lambda - low.lambda;
    if (value0 > 0.0 && value1 <= 0.0) {
        const double slope0 = (k_ * low.slope - 1.0) * width;
        const double slope1 = (k_ * high.slope - 1.0) * width;
        if (depth == depthLimit || Falls(value0, slope0, value1, slope1)) {
            keep(low, high);
            return;
        }
        // There may be three places of H = A instead of one.
        const TrialPhase middle = at(0.5 * (low.lambda + high.lambda), low);
        cell(low, middle, depth + 1);
        cell(middle, high, depth + 1);
        return;
    }
    if (value0 <= 0.0 && value1 > 0.0) return;
    const double sign = value0 > 0.0 ? -1.0 : 1.0;
    const double slope0 = sign * (k_ * low.slope - 1.0) * width;
    const double slope1 = sign * (k_ * high.slope - 1.0) * width;
    if (slope0 <= 0.0 || slope1 >= 0.0 || depth == depthLimit) return;
    const double largest = LargestInside(sign * value0, slope0, sign * value1, slope1);
    constexpr double doubt = 0.025;  // of the cubic, as tested by brute force
    if (largest + doubt * (slope0 - slope1) < 0.0) return;
    const TrialPhase middle = at(0.5 * (low.lambda + high.lambda), low);
    cell(low, middle, depth + 1);
    cell(middle, high, depth + 1);
}

void TrialCurve::Search::keep(const TrialPhase& low, const TrialPhase& high) {
    double lower = low.lambda;
    double upper = high.lambda;
    // From the end that is nearer by its own reckoning.
    const double fromLow = ascent(low) / std::abs(1.0 - k_ * low.slope);
    const double fromHigh = -ascent(high) / std::abs(1.0 - k_ * high.slope);
    TrialPhase trial = fromLow < fromHigh ? low : high;
    constexpr int stepLimit = 60;
    for (int i = 0; i < stepLimit; ++i) {
        double next = trial.lambda + ascent(trial) / (1.0 - k_ * trial.slope);
        if (k_ * trial.slope >= 1.0 || !(next >= lower && next <= upper)) {
            next = 0.5 * (lower + upper);
        }
        const double move = next - trial.lambda;
        trial = curve_.at(next, trial, Accuracy::Fine);
        constexpr double enough = 1e-8;
        if (std::abs(move) <= enough * std::abs(next)) break;
        (ascent(trial) > 0.0 ? lower : upper) = next;
    }
    maxima_.push_back(trial);
}

Maxima TrialCurve::maxima(double RT) const {
    Maxima maxima;
    Search search(*this, RT, maxima);
    search.above();
    search.below();
    return maxima;
}

bool TrialCurve::isHighest(double RT) const {
    constexpr double rounding = 1e-12;
    const Maxima all = maxima(RT);
    return std::none_of(all.begin(), all.end(), [RT](const TrialPhase& phase) {
        return phase.levelRT() > RT * (1.0 + rounding);
    });
}

}  // namespace fluid
