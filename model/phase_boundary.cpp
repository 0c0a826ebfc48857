#include "model/phase_boundary.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

#include "model/state.h"

namespace fluid {

namespace {

using Sample = BoundarySample;
using Run = PhaseBoundary::Run;

// Below ColdestT nothing is shown; curves go on a little, so that they reach it.
constexpr double belowColdest = 0.9;

TrialCurve CurveAt(const Mixture& mixture, double x) {
    return {mixture, mixture.bMix * std::exp(x)};
}

// The pressure stands in both phases, and is taken from the one in which it cancels less. Its slope
// follows from d(P/RT) = sum of c_i·dln f_i + A²/2·dk over the phase.
Sample SampleOf(const TrialCurve& curve, double x, const TrialPhase& other) {
    const bool critical = other.lambda == 0.0;
    const double RT = critical ? curve.spinodalRT() : other.levelRT();
    const double free = 1.0 / curve.u();
    const double change = free * (critical ? curve.spinodalSlope() : curve.levelSlope(other));
    const double k = 2.0 / RT;
    const double C = other.concentration;
    Sample sample;
    sample.x = x;
    sample.other = other;
    sample.lnT = std::log(RT / R);
    sample.slopeT = change / RT;
    const double A = curve.A();
    const double thin = std::min(curve.u(), other.u);
    // Two liquids beside a thin vapour have no digits of its pressure.
    constexpr double rounding = 1e-16;
    const double P =
        std::max(SharedPressure(RT, {curve.u(), A}, {other.u, other.H}), rounding * RT * thin);
    sample.lnP = std::log(P);
    if (other.u < curve.u()) {
        const double dk = -k * sample.slopeT;
        const double slope = -C - other.packing * curve.u() + k * other.H * A * free / curve.V() +
                             other.H * (0.5 * other.H - A) * dk;
        sample.slopeP = sample.slopeT + RT * slope / P;
    } else {
        sample.slopeP = (curve.u() * change - RT * curve.u() + 2.0 * A * A * free / curve.V()) / P;
    }
    return sample;
}

// The highest of the second phases over a bulk, and what makes it so: climbed to from several
// sides, then proved by a search for a phase that would be higher still.
class Lead {
  public:
    explicit Lead(const TrialCurve& curve)
        : curve_(curve), coldestRT_(belowColdest * R * ColdestT(curve.mixture())) {}

    // Takes the summit next to a phase if it is the highest so far.
    void consider(const TrialPhase& phase) {
        const auto summit = curve_.climbLevel(phase);
        constexpr double rounding = 1e-15;  // of levelRT
        if (!summit || !(summit->levelRT() > RT() * (1.0 + rounding))) return;
        phase_ = *summit;
    }
    void considerVapour();
    void prove();
    double RT() const { return phase_.lambda == 0.0 ? curve_.spinodalRT() : phase_.levelRT(); }
    bool exists() const { return RT() > coldestRT_; }
    const TrialPhase& phase() const { return phase_.lambda == 0.0 ? curve_.bulk() : phase_; }

  private:
    const TrialCurve& curve_;
    double coldestRT_;
    TrialPhase phase_;
};

// The vapour of no pressure.
void Lead::considerVapour() {
    const double unpressed = curve_.A() * curve_.A() / curve_.u();
    if (unpressed > RT()) {
        const double lambda = -2.0 * curve_.u() / curve_.A();
        consider(curve_.at(lambda, curve_.bulk(), TrialCurve::Accuracy::Fine));
    }
}

void Lead::prove() {
    constexpr int roundLimit = 20;  // each climbs a higher summit, of which there are a few
    for (int i = 0; i < roundLimit; ++i) {
        const double before = std::max(RT(), coldestRT_);
        for (const TrialPhase& phase : curve_.maxima(before)) {
            constexpr double rounding = 1e-14;  // of levelRT
            if (phase.levelRT() > before * (1.0 + rounding)) consider(phase);
        }
        if (!(RT() > before)) return;
    }
}

TrialPhase Moved(const TrialCurve& curve, const TrialPhase& seed) {
    return curve.at(seed.lambda, seed.u);
}

std::optional<Sample> Look(const Mixture& mixture, double x, std::span<const TrialPhase> seeds) {
    const TrialCurve curve = CurveAt(mixture, x);
    Lead lead(curve);
    for (const TrialPhase& seed : seeds) {
        if (seed.lambda != 0.0) lead.consider(Moved(curve, seed));
    }
    lead.considerVapour();
    lead.prove();
    if (!lead.exists()) return {};
    return SampleOf(curve, x, lead.phase());
}

// The sample to which one second phase leads, whether or not it is the highest.
std::optional<Sample> Follow(const Mixture& mixture, double x, const TrialPhase& seed) {
    const TrialCurve curve = CurveAt(mixture, x);
    if (seed.lambda == 0.0) return {};
    const auto summit = curve.climbLevel(Moved(curve, seed));
    if (!summit) return {};
    return SampleOf(curve, x, *summit);
}

// T or P of samples.
struct Quantity {
    double Sample::*value;
    double Sample::*slope;
};
constexpr Quantity temperature = {&Sample::lnT, &Sample::slopeT};
constexpr Quantity pressure = {&Sample::lnP, &Sample::slopeP};

struct ValueAndSlope {
    double value;
    double slope;
};

// How far the middle of a cubic through the values and slopes at two places is from what is there.
// The slope tells corners of which the value alone does not know.
double Misfit(double width, const ValueAndSlope& from, const ValueAndSlope& middle,
              const ValueAndSlope& to) {
    const double rise = to.value - from.value;
    const double value =
        middle.value - 0.5 * (from.value + to.value) - 0.125 * width * (from.slope - to.slope);
    const double slope = middle.slope * width - 1.5 * rise + 0.25 * width * (from.slope + to.slope);
    constexpr double ofSlope = 0.05;  // about what an error of the slope makes of values beside
    return std::max(std::abs(value), ofSlope * std::abs(slope));
}

// Whether cubics between samples follow T and P. Cold bubble points are smooth in ln P; beside a
// second liquid it is P itself that falls smoothly nearly to 0.
bool IsSmooth(const Sample& from, const Sample& middle, const Sample& to) {
    constexpr double enough = 1e-5;  // lower waves may be missed
    const double width = to.x - from.x;
    const auto misfit = [&](const Quantity& of) {
        const auto at = [&of](const Sample& sample) {
            return ValueAndSlope{sample.*of.value, sample.*of.slope};
        };
        return Misfit(width, at(from), at(middle), at(to));
    };
    if (!(misfit(temperature) < enough)) return false;
    if (misfit(pressure) < enough) return true;
    const auto relative = [&middle](const Sample& sample) {
        const double P = std::exp(sample.lnP - middle.lnP);
        return ValueAndSlope{P, P * sample.slopeP};
    };
    const double largest = std::max(relative(from).value, relative(to).value);
    return Misfit(width, relative(from), relative(middle), relative(to)) < enough * largest;
}

class Sampler {
  public:
    explicit Sampler(const Mixture& mixture) : mixture_(mixture) {}

    std::vector<Run> runs();

  private:
    std::optional<Sample> look(double x, const Sample* from, const Sample* to) const;
    void end(const Sample& sample, double beyond, Run& run) const;
    void refine(const Sample& from, const Sample& to, int depth, Run& run) const;
    void corner(const Sample& from, const Sample& to, Run& run) const;
    void extremum(const Sample& from, const Sample& to, const Quantity& of, Run& run) const;
    Run withExtrema(const Run& run, const Quantity& of) const;

    const Mixture& mixture_;
};

std::optional<Sample> Sampler::look(double x, const Sample* from, const Sample* to) const {
    std::array<TrialPhase, 2> seeds{};
    std::size_t count = 0;
    for (const Sample* sample : {from, to}) {
        if (sample != nullptr) seeds[count++] = sample->other;
    }
    return Look(mixture_, x, std::span(seeds).first(count));
}

// Samples from the last one of a run towards a place where there is none, down to ColdestT.
void Sampler::end(const Sample& sample, double beyond, Run& run) const {
    const double coldest = std::log(ColdestT(mixture_));
    Sample last = sample;
    constexpr int halvings = 50;  // to the last digit of x
    for (int i = 0; i < halvings && last.lnT > coldest; ++i) {
        const double x = 0.5 * (last.x + beyond);
        if (const auto next = look(x, &last, nullptr)) {
            refine(last, *next, 0, run);
            run.push_back(*next);
            last = *next;
        } else {
            beyond = x;
        }
    }
}

// Samples between two, as many as a cubic through neighbours needs to be right.
void Sampler::refine(const Sample& from, const Sample& to, int depth, Run& run) const {
    constexpr int depthLimit = 12;  // what is not smooth over 1e-4 of x is a corner
    if (depth == depthLimit) {
        corner(from, to, run);
        return;
    }
    const auto middle = look(0.5 * (from.x + to.x), &from, &to);
    if (!middle) return;
    if (IsSmooth(from, *middle, to)) {
        run.push_back(*middle);
        return;
    }
    refine(from, *middle, depth + 1, run);
    run.push_back(*middle);
    refine(*middle, to, depth + 1, run);
}

// The place between two samples at which the second phase of one gives way to that of the other.
void Sampler::corner(const Sample& from, const Sample& to, Run& run) const {
    double low = from.x;
    double high = to.x;
    std::optional<Sample> left = Follow(mixture_, high, from.other);
    std::optional<Sample> right = Follow(mixture_, low, to.other);
    if (!left || !right || !(left->lnT < to.lnT && right->lnT < from.lnT)) return;
    double excessLow = from.lnT - right->lnT;
    double excessHigh = left->lnT - to.lnT;
    constexpr int stepLimit = 30;  // of regula falsi on a nearly straight line
    for (int i = 0; i < stepLimit; ++i) {
        const double x = low + (high - low) * excessLow / (excessLow - excessHigh);
        left = Follow(mixture_, x, from.other);
        right = Follow(mixture_, x, to.other);
        if (!left || !right) return;
        const double excess = left->lnT - right->lnT;
        if (std::abs(excess) < 1e-15) break;
        (excess > 0.0 ? low : high) = x;
        (excess > 0.0 ? excessLow : excessHigh) = excess;
    }
    // They are three phases of one pressure, of which the thinnest has the digits.
    const Sample& thin = left->other.concentration < right->other.concentration ? *left : *right;
    left->lnP = right->lnP = thin.lnP;
    run.push_back(*left);
    run.push_back(*right);
}

// The extremum between two samples whose slopes differ in sign.
void Sampler::extremum(const Sample& from, const Sample& to, const Quantity& of, Run& run) const {
    Sample low = from;
    Sample high = to;
    constexpr int stepLimit = 40;    // every third halves
    constexpr double enough = 1e-9;  // of x: T and P have all digits there
    Sample found = from;
    for (int i = 0; i < stepLimit; ++i) {
        const double share = low.*of.slope / (low.*of.slope - high.*of.slope);
        // Towards the middle now and then, as one end may stand still.
        const double x =
            low.x + (high.x - low.x) * (i % 3 == 2 ? 0.5 : std::clamp(share, 1e-3, 1.0 - 1e-3));
        const auto next = look(x, &low, &high);
        if (!next) return;
        const bool isEnd = std::abs(next->x - found.x) < enough;
        found = *next;
        if (isEnd || found.*of.slope == 0.0) break;
        (found.*of.slope * (low.*of.slope) > 0.0 ? low : high) = found;
    }
    run.push_back(found);
}

Run Sampler::withExtrema(const Run& run, const Quantity& of) const {
    Run result;
    for (std::size_t i = 0; i < run.size(); ++i) {
        if (i > 0 && run[i - 1].*of.slope * (run[i].*of.slope) < 0.0 && run[i - 1].x < run[i].x) {
            extremum(run[i - 1], run[i], of, result);
        }
        result.push_back(run[i]);
    }
    return result;
}

// Places at which it is looked for a boundary first: evenly where liquids and gases are, wider
// apart in the dense and the dilute limit, where the curve is straight.
std::vector<double> Places() {
    std::vector<double> places = {-36.0, -28.0, -22.0, -16.0, -12.0, -10.0, -8.5, -7.5};
    for (int i = -14; i <= 16; ++i) places.push_back(0.5 * i);
    while (places.back() < 260.0) places.push_back(1.12 * places.back());
    return places;
}

std::vector<Run> Sampler::runs() {
    std::vector<Run> runs;
    std::optional<Sample> last;
    double before = 0.0;
    for (const double x : Places()) {
        const auto next = look(x, last ? &*last : nullptr, nullptr);
        if (next && last) {
            refine(*last, *next, 0, runs.back());
            runs.back().push_back(*next);
        } else if (next) {
            runs.emplace_back();
            if (before != 0.0) {
                end(*next, before, runs.back());
                std::reverse(runs.back().begin(), runs.back().end());
            }
            runs.back().push_back(*next);
        } else if (last) {
            end(*last, x, runs.back());
        }
        last = next;
        before = x;
    }
    for (Run& run : runs) {
        run = withExtrema(withExtrema(run, temperature), pressure);
    }
    return runs;
}

// About where between two samples a quantity has a value: on the cubic through both.
double PlaceOf(const Sample& from, const Sample& to, const Quantity& of, double target) {
    const double width = to.x - from.x;
    const double rise = to.*of.value - from.*of.value;
    const double slope0 = width * from.*of.slope;
    const double c2 = 3.0 * rise - 2.0 * slope0 - width * to.*of.slope;
    const double c3 = rise - slope0 - c2;
    const double aim = target - from.*of.value;
    double share = aim / rise;
    constexpr int steps = 4;  // from the chord
    for (int i = 0; i < steps; ++i) {
        const double excess = share * (slope0 + share * (c2 + share * c3)) - aim;
        const double slope = slope0 + share * (2.0 * c2 + share * 3.0 * c3);
        const double next = share - excess / slope;
        if (!(next > 0.0 && next < 1.0)) break;
        share = next;
    }
    return from.x + share * width;
}

// The place between two samples at which a quantity has a value, on the curve that gives the sample
// at a place. Newton's method between bounds.
template <class Curve>
std::optional<Sample> Between(const Sample& from, const Sample& to, const Quantity& of,
                              double target, const Curve& curve) {
    double low = from.x;
    double high = to.x;
    const bool rises = to.*of.value > from.*of.value;
    double x = PlaceOf(from, to, of, target);
    std::optional<Sample> sample;
    constexpr int stepLimit = 60;    // halvings to the last digit of x
    constexpr double enough = 1e-9;  // a step of Newton's method leaves its square
    constexpr double near = 1e-7;    // the same of the value
    constexpr double rounding = 4e-16;
    bool isLast = false;
    for (int i = 0; i < stepLimit; ++i) {
        sample = curve(x, sample);
        if (!sample) return {};
        const double excess = (*sample).*of.value - target;
        if (excess == 0.0 || isLast) break;
        ((excess > 0.0) == rises ? high : low) = x;
        const double newton = x - excess / ((*sample).*of.slope);
        const bool isInside = newton > low && newton < high;
        const double next = isInside ? newton : 0.5 * (low + high);
        const double shortest = isInside && std::abs(excess) <= near ? enough : rounding;
        isLast = std::abs(next - x) <= shortest * std::max(1.0, std::abs(x));
        x = next;
    }
    return sample;
}

// The points between two samples at which a quantity has a value. Where another second phase turns
// out to be higher, its sample parts the range.
void Find(const Mixture& mixture, const Sample& from, const Sample& to, const Quantity& of,
          double target, int depth, std::vector<Sample>& found) {
    constexpr int depthLimit = 40;  // halvings of the range, if parts were that unequal
    if ((from.*of.value > target) == (to.*of.value > target) || depth == depthLimit) return;
    const std::array seeds = {from.other, to.other};
    const auto follow = [&](double x, const std::optional<Sample>& last) {
        const auto next = last ? Follow(mixture, x, last->other) : std::nullopt;
        return next ? next : BoundaryBetween(mixture, from, to, x);
    };
    const auto search = [&](double x, const auto& /*last*/) { return Look(mixture, x, seeds); };
    auto sample = Between(from, to, of, target, follow);
    // What is followed may leap where the second phases of the ends differ, what is searched not.
    constexpr double rounding = 1e-10;
    const bool leaps = sample && std::abs((*sample).*of.value - target) > rounding;
    if (leaps) sample = Between(from, to, of, target, search);
    if (!sample) return;
    if (CurveAt(mixture, sample->x).isHighest(R * std::exp(sample->lnT))) {
        found.push_back(*sample);
        return;
    }
    const auto higher = Look(mixture, sample->x, seeds);
    if (!higher) return;
    Find(mixture, from, *higher, of, target, depth + 1, found);
    Find(mixture, *higher, to, of, target, depth + 1, found);
}

std::vector<Sample> Level(const Mixture& mixture, const std::vector<Run>& runs, const Quantity& of,
                          double target) {
    std::vector<Sample> found;
    for (const Run& run : runs) {
        for (std::size_t i = 1; i < run.size(); ++i) {
            Find(mixture, run[i - 1], run[i], of, target, 0, found);
        }
    }
    return found;
}

}  // namespace

bool BoundaryPoint::isCritical() const {
    constexpr double alike = 1e-5;  // of V: 1e-10 below the critical temperature
    return std::abs(otherV / V - 1.0) < alike;
}

std::optional<BoundarySample> BoundaryAt(const Mixture& mixture, double x) {
    const auto sample = Look(mixture, x, {});
    return sample && std::exp(sample->lnT) >= ColdestT(mixture) ? sample : std::nullopt;
}

std::optional<BoundarySample> BoundaryBetween(const Mixture& mixture, const BoundarySample& from,
                                              const BoundarySample& to, double x) {
    const double share = (x - from.x) / (to.x - from.x);
    TrialPhase seed;
    seed.lambda = from.other.lambda + share * (to.other.lambda - from.other.lambda);
    seed.u = from.other.u + share * (to.other.u - from.other.u);
    const auto sample = Follow(mixture, x, seed);
    return sample ? sample : Look(mixture, x, {});
}

PhaseBoundary::PhaseBoundary(const Mixture& mixture)
    : mixture_(mixture), runs_(Sampler(mixture_).runs()) {
    constexpr double justAbove = 1.0 + 1e-12;
    const double coldest = justAbove * ColdestT(mixture_);
    std::vector<Sample> cold = atTemperature(coldest);
    for (const Run& run : runs_) {
        std::copy_if(run.begin(), run.end(), std::back_inserter(cold),
                     [end = std::log(coldest)](const Sample& sample) { return sample.lnT <= end; });
    }
    for (const Sample& sample : cold) coldestP_ = std::max(coldestP_, std::exp(sample.lnP));
}

std::vector<BoundarySample> PhaseBoundary::atTemperature(double T) const {
    if (!(T > ColdestT(mixture_))) return {};
    auto found = Level(mixture_, runs_, temperature, std::log(T));
    std::reverse(found.begin(), found.end());
    return found;
}

std::vector<BoundarySample> PhaseBoundary::atPressure(double P) const {
    if (!(P > 0.0)) return {};
    auto found = Level(mixture_, runs_, pressure, std::log(P));
    std::erase_if(found, [coldest = std::log(ColdestT(mixture_))](const Sample& sample) {
        return sample.lnT < coldest;
    });
    std::sort(found.begin(), found.end(),
              [](const Sample& one, const Sample& two) { return one.lnT > two.lnT; });
    return found;
}

BoundaryPoint PointOf(const Mixture& mixture, const BoundarySample& sample) {
    const double V = mixture.bMix * (1.0 + std::exp(sample.x));
    const double other = sample.other.lambda == 0.0 ? V : sample.other.volume();
    const double T = std::exp(sample.lnT);
    const auto isLiquid = [T](double root, double covolume, double volume) {
        return State({root * root, covolume, root}, T, volume).isLiquid();
    };
    const bool areLiquids = isLiquid(mixture.aRootMix, mixture.bMix, V) &&
                            isLiquid(sample.other.H * other, sample.other.packing * other, other);
    return {T, std::exp(sample.lnP), V, other, areLiquids};
}

PhasePair PairOf(const Mixture& mixture, const BoundarySample& sample) {
    const BoundaryPoint point = PointOf(mixture, sample);
    const ComponentValues other = CurveAt(mixture, sample.x).fractions(sample.other);
    const bool bubble = point.kind() == Homogenisation::IntoLiquid;
    PhasePair pair;
    pair.T = point.T;
    pair.P = point.P;
    pair.x = bubble ? mixture.z : other;
    pair.y = bubble ? other : mixture.z;
    pair.Vx = bubble ? point.V : point.otherV;
    pair.Vy = bubble ? point.otherV : point.V;
    return pair;
}

const PhaseBoundary& BoundaryOf(const Mixture& mixture) {
    static std::optional<PhaseBoundary> kept;
    if (!kept || !(kept->mixture() == mixture)) kept.emplace(mixture);
    return *kept;
}

std::optional<BoundaryPoint> FindBoundary(const Mixture& mixture, double V) {
    if (mixture.count == 0 || !std::isfinite(V) || !(V > mixture.bMix)) return {};
    const double x = std::log(V / mixture.bMix - 1.0);
    const auto sample = BoundaryAt(mixture, x);
    if (!sample) return {};
    BoundaryPoint point = PointOf(mixture, *sample);
    point.V = V;
    return point;
}

IsothermStability::IsothermStability(const Mixture& mixture, double T, double smallestV)
    : mixture_(mixture), T_(T), isKnown_(T > ColdestT(mixture_)) {
    if (!isKnown_ || T >= HottestT(mixture_) || !(smallestV > mixture_.bMix)) return;
    for (const BoundarySample& sample : BoundaryOf(mixture_).atTemperature(T)) {
        const BoundaryPoint point = PointOf(mixture_, sample);
        if (point.V >= smallestV) boundaries_.push_back(point);
    }
}

Stability IsothermStability::at(double V) const {
    // Beyond this share of the co-volume nothing changes any more.
    constexpr double dilute = 1e100;
    const TrialCurve curve(mixture_, std::min(V, dilute * mixture_.bMix) - mixture_.bMix);
    if (curve.spinodalRT() > R * T_) return Stability::Unstable;
    if (!isKnown_) return Stability::Unknown;
    bool stable = true;
    for (const BoundaryPoint& point : boundaries_) {
        // On the boundary itself it is stable still.
        if (stable ? V < point.V : V <= point.V) stable = !stable;
    }
    return stable ? Stability::Stable : Stability::Metastable;
}

}  // namespace fluid
