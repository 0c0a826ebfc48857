// Gives every solver of the model random input, from ordinary to absurd. Each
// call has to end in time with finite numbers, or the none of its header, and to keep its promises.
// Ends with 1 after a finding; `fuzz 1 SEED CASE` repeats it. usage: fuzz CASES SEED [FIRST]

#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <random>
#include <vector>

#include "model/first_approach.h"
#include "model/fluid_model.h"
#include "model/fluid_state.h"
#include "model/ideal_gas.h"
#include "model/phase_diagram.h"
#include "model/phase_split.h"
#include "model/polynomial.h"
#include "model/properties.h"
#include "model/saturation.h"
#include "model/spinodal.h"

namespace {

using namespace fluid;

// What the solver at work is given: the composition of the model, and a state.
const char* solver = "";
unsigned long number = 0;
unsigned long findings = 0;
std::mt19937_64 draw;
double aMix = 0.0, bMix = 0.0, T = 0.0, P = 0.0, V = 0.0;
const Mixture& mixture = AcceptedMixture();
const ComponentValues& z = mixture.z;

void Demand(bool holds, const char* what) {
    if (holds) return;
    ++findings;
    std::printf("%s: %s; case %lu: T %a, P %a, V %a, b %a", solver, what, number, T, P, V, bMix);
    for (std::size_t k = 0; k < componentCount && z[k] > 0.0; ++k) {
        std::printf(", %s %a", mixture.formula(k).data(), z[k]);
    }
    std::printf("\n");
}

// For structures of doubles alone, or of optional ones.
template <class Value = double>
void DemandFinite(const auto&... structures) {
    constexpr std::size_t size = sizeof(Value);
    const auto demand = [](const auto& structure) {
        using Values = std::array<Value, sizeof(structure) / size>;
        for (const std::optional<double> value : std::bit_cast<Values>(structure)) {
            Demand(std::isfinite(value.value_or(0.0)), "no finite number");
        }
    };
    (demand(structures), ...);
}

double Power(double low, double high) {
    return std::pow(10.0, std::uniform_real_distribution<double>(low, high)(draw));
}

double AnyDouble() {
    return std::bit_cast<double>(draw());
}

// A number above 0: of any size, a place or beside it from its last bit to its half, or ordinary.
double Near(double place) {
    const double off = Power(-17.0, 0.0);
    const std::array numbers = {Power(-300.0, 300.0), place, place * (1.0 + off),
                                place * (1.0 - 0.5 * off)};
    const std::size_t choice = draw() % 10;
    const double chosen = choice < numbers.size() ? numbers[choice] : place * Power(-1.5, 1.5);
    return std::clamp(chosen, 1e-300, 1e300);
}

// Equal parts, parts of all sizes, or traces of one count beside one gas; then a state.
void MakeInput() {
    const double lowest = std::array{0.0, -2.0, -12.0, -100.0}[draw() % 4];
    const std::size_t gases = draw() % componentCount;
    const std::size_t chief = draw() % componentCount;
    double rest = 1e12;
    for (std::size_t i = 1; i < componentCount; ++i) {
        const double part = std::max(1.0, std::floor(Power(lowest, 0.0) * 9e10));
        const double counts = draw() % (componentCount - 1) < gases ? part : 0.0;
        SetFractionCount((chief + i) % componentCount, counts / 1e12);
        rest -= counts;
    }
    SetFractionCount(chief, rest / 1e12);
    Demand(AcceptComposition(), "a refused composition");
    aMix = mixture.attraction;
    bMix = mixture.covolume;
    const PseudoCriticalPoint point = FindPseudoCriticalPoint(mixture);
    T = Near(std::array{point.T, ColdestT(mixture), HottestT(mixture), 300.0}[draw() % 4]);
    V = Near(std::array{bMix, 3.0 * bMix, R * T / point.P}[draw() % 3]);
    const double belonging = PressureVdW(aMix, bMix, T, V);
    P = draw() % 2 == 0 && belonging > 0.0 && belonging < 1e300 ? belonging : Near(point.P);
}

void Cubics() {
    const double sign = draw() % 2 == 0 ? 1.0 : -1.0;
    const CubicRoots volumes = VolumeCubicSolver(aMix, bMix, T, sign * P);
    DemandFinite(volumes, SolveCubic(sign * Near(3.0), Near(3.0), -Near(1.0)));
    for (const CubicRoot& root : volumes) {
        const double free = std::abs(root.real - bMix);
        const double size = R * T / free + aMix / root.real / root.real;
        const double digits = 2e-14 * (1.0 + std::abs(root.real) / free);
        const bool isJudged = root.isReal() && size > 1e-280 && size < 1e290 && digits < 0.1;
        const double off = std::abs(PressureVdW(aMix, bMix, T, root.real) - sign * P);
        Demand(!isJudged || off <= digits * size, "P(V) is not P");
    }
    const std::array c = {sign * Near(3.0), -Near(3.0), sign * Near(3.0), -Near(1.0), Near(1.0)};
    double before = 0.0;
    for (const double root : PositiveRoots(c)) {
        Demand(root > before && std::isfinite(root), "roots out of order");
        before = root;
    }
}

void Operations() {
    Demand(!std::isnan(PressureVdW(aMix, bMix, T, V) + TemperatureVdW(aMix, bMix, P, V)), "NaN");
    if (V != bMix) DemandFinite(IsothermSlope(aMix, bMix, T, V, Near(0.01)));
    DemandFinite(PartialMolarVolumes(mixture, T, V).value_or(ComponentValues{}));
    ComponentValues pure{};
    for (std::size_t k = 0; k < mixture.count; ++k) {
        pure[k] = PureGasVolume(mixture, k, T, P).volume;
        const double saturation = SaturationPressure(mixture.index[k], T);
        DemandFinite(saturation, IdealGas(mixture.index[k], T));
        Demand(saturation <= SaturationPressure(mixture.index[k], 1.001 * T), "does not rise");
    }
    DemandFinite(pure, MolarVolumeFromDensity(mixture, V), IdealMixtureVolume(mixture, pure),
                 FugacityCoefficients(mixture, T, P, V),
                 PureFugacityCoefficient(mixture, 0, T, P, pure[0]));
    for (const double pressure : {std::min(PressureVdW(aMix, bMix, T, V), 1e300), -P}) {
        DemandFinite<std::optional<double>>(PropertiesOf(mixture, T, pressure, V),
                                            ComponentPropertiesOf(mixture, T, pressure, V));
    }
    if (number % 8 != 0) return;  // what follows takes longer than all the rest
    const FluidState state = StateAt(mixture, T, P);
    for (const FluidState::Volume& volume : state.volumes) {
        Demand(volume.V > bMix && std::isfinite(volume.V), "no volume");
    }
    Demand(!(state.stable && state.split), "one phase and two");
    if (state.split) DemandFinite(state.split->phases, state.split->volumeFraction);
}

void DemandPair(const PhasePair& pair) {
    DemandFinite(pair);
    const Mixture x = WithFractions(mixture, pair.x);
    const Mixture y = WithFractions(mixture, pair.y);
    Demand(pair.Vx > x.bMix && pair.Vy > y.bMix, "no free volume");
    const auto X = ComponentPropertiesOf(x, pair.T, pair.P, pair.Vx);
    const auto Y = ComponentPropertiesOf(y, pair.T, pair.P, pair.Vy);
    for (std::size_t k = 0; pair.P < 1e4 && k < mixture.count; ++k) {
        if (std::min(pair.x[k], pair.y[k]) < 1e-9) continue;  // traces have fewer digits
        const double off = X[k].fugacityTerm.value_or(NAN) - Y[k].fugacityTerm.value_or(NAN);
        Demand(std::abs(off) < 1e-5 * R * pair.T, "fugacities that differ");
    }
}

// A first approach as it is, or spoilt as a user may.
PhaseGuess Spoilt(PhaseGuess guess) {
    DemandFinite(guess);
    if (draw() % 2 == 0) return guess;
    for (double* const value : {&guess.unknown, &guess.x[0], &guess.y[draw() % componentCount]}) {
        *value = draw() % 8 == 0 ? AnyDouble() : Near(*value);
    }
    return guess;
}

// The bulk is one of two phases, and stable unless it is said to split in another way.
void DemandTrue(const HomogenisationResult& result, Homogenisation kind) {
    if (result.outcome != Outcome::Converged) return;
    const PhasePair& pair = result.phases;
    DemandPair(pair);
    const bool isLiquid = kind == Homogenisation::IntoLiquid;
    const ComponentValues& bulk = isLiquid ? pair.x : pair.y;
    const auto isSame = [](double x, double y) { return std::abs(x - y) < 1e-9; };
    Demand(std::equal(z.begin(), z.end(), bulk.begin(), isSame), "another bulk");
    Demand(pair.Vy / pair.Vx > 1.0 + 1e-5, "one phase as two");
    const auto boundary = FindBoundary(mixture, isLiquid ? pair.Vx : pair.Vy);
    if (pair.P > 1e4 || !boundary) return;
    const double off = pair.T / boundary->T - 1.0;
    const bool isStable = result.stability == Stability::Stable;
    Demand(isStable ? std::abs(off) < 1e-6 : off < 1e-9, "stable and not so");
}

void Homogenisations() {
    const Given given = draw() % 2 == 0 ? Given::Temperature : Given::Pressure;
    const double value = given == Given::Temperature ? T : P;
    for (const Homogenisation kind : {Homogenisation::IntoLiquid, Homogenisation::IntoVapour}) {
        PhaseGuess guess = HomogenisationSeed(mixture, given, value, kind);
        for (const PhasePair& pair : FindHomogenisationPoints(mixture, given, value, kind).points) {
            DemandPair(pair);
            guess = HomogenisationApproach(given, pair);
        }
        DemandTrue(IterateHomogenisation(mixture, given, value, kind, Spoilt(guess)), kind);
    }
    const EquilibriumApproach approach = FindEquilibriumApproach(mixture, T, V);
    const double share = draw() % 2 == 0 ? approach.volumeFraction : Near(1.0);
    const auto result = IterateEquilibrium(mixture, T, V, share, Spoilt(approach.guess));
    DemandFinite(approach.volumeFraction, result.volumeFraction);
    if (result.outcome != Outcome::Converged) return;
    const PhasePair& pair = result.phases;
    DemandPair(pair);
    // In much larger volumes a fraction of the volume has no digit of the denser phase.
    if (!result.fractionInRange || V > 1e6 * std::min(pair.Vx, pair.Vy)) return;
    const double partY = result.volumeFraction * V / pair.Vy;
    const double partX = (1.0 - result.volumeFraction) * V / pair.Vx;
    for (std::size_t k = 0; k < mixture.count; ++k) {
        const double off = std::abs(partX * pair.x[k] + partY * pair.y[k] - z[k]);
        Demand(off < 1e-7, "phases of another bulk");
    }
}

void Boundaries() {
    const auto boundary = FindBoundary(mixture, V);
    DemandFinite(boundary.value_or(BoundaryPoint{}));
    const auto split = SplitAtVolume(mixture, T, V);
    if (split && split->found) DemandPair(split->phases);
    if (!(V > bMix) || !(T > ColdestT(mixture)) || PressureVdW(aMix, bMix, T, V) > 1e4) return;
    const IsothermStability isotherm(mixture, T, V);
    for (const BoundaryPoint& point : isotherm.boundaries()) DemandFinite(point);
    const bool isClose = boundary && std::abs(T / boundary->T - 1.0) < 1e-6;
    const bool isStable = !boundary || T > boundary->T;
    Demand(isClose || isStable == (isotherm.at(V) == Stability::Stable), "stable and not so");
    Demand(isClose || isStable != split.has_value(), "a split that should not be, or none");
}

void Spinodals() {
    for (const SpinodalKind kind : {SpinodalKind::Diffusional, SpinodalKind::Mechanical}) {
        const Spinodal spinodal = SpinodalOf(mixture, kind);
        for (const double at : spinodal.volumes(T)) {
            const double off = std::abs(spinodal.temperature(at) / T - 1.0);
            Demand(off < 1e-10 * at / std::abs(at - bMix), "another temperature");
        }
        DemandFinite(spinodal.temperature(V));
    }
}

void Diagrams() {
    const CriticalPoints points = FindCriticalPoints(mixture);
    for (const CriticalPoint& point : points) {
        DemandFinite(point.T, point.P, point.V, point.freeVolume);
        CriticalStability(mixture, point);
    }
    const auto demand = [](const std::vector<StatePoint>& curve) {
        for (const StatePoint& point : curve) DemandFinite(point);
    };
    for (const auto& [kind, curve] : TraceBoundary(mixture, points)) demand(curve);
    for (const SpinodalKind kind : {SpinodalKind::Diffusional, SpinodalKind::Mechanical}) {
        for (const auto& curve : TraceSpinodal(mixture, kind, T, 2.0 * T)) demand(curve);
    }
}

struct Solver {
    const char* name;
    unsigned long every;  // cases
    void (*run)();
};
constexpr std::array solvers = {Solver{"cubic", 1, Cubics},
                                Solver{"operation", 1, Operations},
                                Solver{"spinodal", 1, Spinodals},
                                Solver{"homogenisation", 8, Homogenisations},
                                Solver{"phase boundary", 8, Boundaries},
                                Solver{"diagram", 256, Diagrams}};

void Late(int /*signal*/) {
    Demand(false, "takes too long");
    std::fflush(stdout);
    _exit(1);
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 3) return 64;
    const auto argument = [&](int i) {
        return i < count ? std::strtoul(arguments[i], nullptr, 10) : 0;
    };
    // Seconds of processor time a call.
#ifdef __SANITIZE_ADDRESS__
    const itimerval limit = {{0, 0}, {30, 0}};
#else
    const itimerval limit = {{0, 0}, {2, 0}};
#endif
    std::signal(SIGVTALRM, Late);
    for (number = argument(3); number < argument(3) + argument(1); ++number) {
        std::seed_seq seed{argument(2), number};
        draw.seed(seed);
        solver = "composition";
        MakeInput();
        for (const Solver& entry : solvers) {
            if (number % entry.every != 0) continue;
            solver = entry.name;
            setitimer(ITIMER_VIRTUAL, &limit, nullptr);
            entry.run();
        }
    }
    std::printf("%lu cases of seed %lu: %lu findings\n", argument(1), argument(2), findings);
    return findings == 0 ? 0 : 1;
}
