// Random mixtures of 2 to 11 gases, with traces, nearly pure and nearly azeotropic ones: the
// sampled boundary must have every point that a fine grid of searches sees, whatever is given, and
// none other; from elsewhere the iteration must lead to no other either; a judge by brute force
// must find the boundary where the searches do; every point must be confirmed by the iteration, and
// every split be one of equal fugacities that nothing betters. usage: phase_completeness [MIXTURES
// [SEED]]

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

#include "model/critical_point.h"
#include "model/first_approach.h"
#include "model/fluid_model.h"
#include "model/phase_boundary.h"
#include "model/phase_equilibrium.h"
#include "model/phase_split.h"
#include "tests/model/phase_reference.h"

namespace {

using namespace fluid;

struct {
    int searches, points, misled, judged, splits, threePhases, lost, faults;
} tally;
std::mt19937_64 random_;

double Uniform(double from, double to) {
    return std::uniform_real_distribution(from, to)(random_);
}

void Fault(const char* what, double T, double P, double V) {
    ++tally.faults;
    std::printf("%s: T %.15g K, P %.15g MPa, V %.15g cm3/mol:", what, T, P, V);
    for (std::size_t i = 0; i < AcceptedMixture().count; ++i) {
        std::printf(" %s %.12g", AcceptedMixture().formula(i).data(),
                    AcceptedMixture().fractions[i]);
    }
    std::puts("");
}

// A place of the boundary.
struct Place {
    double x;
    double lnT;  // far below every temperature where there is no boundary
    double lnP;
};

double VolumeAt(const Mixture& mixture, double x) {
    return mixture.bMix * (1.0 + std::exp(x));
}

std::vector<Place> Grid(const Mixture& mixture) {
    std::vector<Place> grid;
    for (double x = -9.0; x < 240.0; x += x < 12.0 ? 0.013 : 0.02 * x) {
        const auto sample = BoundaryAt(mixture, x);
        grid.push_back({x, sample ? sample->lnT : -100.0, sample ? sample->lnP : NAN});
    }
    return grid;
}

// Above the boundary brute force must see one phase, and below it more.
void JudgeAt(const Mixture& mixture, const PhaseReference& reference, const Place& place) {
    const double V = VolumeAt(mixture, place.x);
    for (const double side : {1.0, -1.0}) {
        const double T = std::exp(place.lnT) * (1.0 + 1e-4 * side);
        const double P = reference.pressure(T, V);
        if (P > 2000.0) continue;
        ++tally.judged;
        if (reference.isUnstable(T, V, P) != (side < 0.0)) Fault("judged otherwise", T, P, V);
    }
}

bool IsAt(const PhasePair& one, const PhasePair& other, double tolerance) {
    return std::abs(one.P / other.P - 1.0) < tolerance &&
           std::abs(one.T / other.T - 1.0) < tolerance;
}

// From whatever may be typed the iteration must lead to a point that exists or one that it calls
// less than stable, and to no copy of a bulk that splits by itself.
void Mislead(Given given, double value, Homogenisation kind, const HomogenisationPoints& points) {
    PhaseGuess guess = HomogenisationSeed(AcceptedMixture(), given, value, kind);
    if (random_() % 2 == 0) guess.unknown *= std::exp(Uniform(-0.5, 0.5));
    const auto result = IterateHomogenisation(AcceptedMixture(), given, value, kind, guess);
    if (result.outcome != Outcome::Converged || !points.isExamined) return;
    ++tally.misled;
    const PhasePair& phases = result.phases;
    const bool exists = std::any_of(points.begin(), points.end(), [&](const PhasePair& pair) {
        return IsAt(pair, phases, 1e-6);
    });
    const bool isCopy =
        std::abs(phases.Vx / phases.Vy - 1.0) < 0.01 && result.stability == Stability::Unstable;
    if (result.stability == Stability::Stable && !exists) {
        Fault("stable where no point is", phases.T, phases.P, phases.Vx);
    }
    if (isCopy) Fault("a copy of the bulk", phases.T, phases.P, phases.Vx);
}

// From each point that is found the iteration must lead to that point.
void Confirm(Given given, double value) {
    for (const Homogenisation kind : {Homogenisation::IntoLiquid, Homogenisation::IntoVapour}) {
        const auto points = FindHomogenisationPoints(AcceptedMixture(), given, value, kind);
        Mislead(given, value, kind, points);
        for (const PhasePair& pair : points.points) {
            const auto result = IterateHomogenisation(AcceptedMixture(), given, value, kind,
                                                      HomogenisationApproach(given, pair));
            const bool isConfirmed = result.outcome == Outcome::Converged &&
                                     result.stability == Stability::Stable &&
                                     IsAt(result.phases, pair, 1e-8);
            // Phases that differ by less than rounding need not be told from one.
            const bool isCritical = std::abs(pair.Vx / pair.Vy - 1.0) < 1e-3;
            if (!isConfirmed && !isCritical) Fault("not confirmed", pair.T, pair.P, pair.Vx);
        }
    }
}

// The points at one T or P must be those that lie between two places of the grid.
void Search(const PhaseBoundary& boundary, const std::vector<Place>& grid, Given given,
            double value) {
    const Mixture& mixture = boundary.mixture();
    const bool byT = given == Given::Temperature;
    const auto found = byT ? boundary.atTemperature(value) : boundary.atPressure(value);
    const double target = std::log(value);
    const double coldest = std::log(ColdestT(mixture));
    for (std::size_t i = 1; i < grid.size(); ++i) {
        const Place& low = grid[i - 1];
        const Place& high = grid[i];
        const bool exists = byT ? target > coldest : std::min(low.lnT, high.lnT) > coldest;
        const bool isAbove = (byT ? low.lnT : low.lnP) > target;
        if (!exists || isAbove == ((byT ? high.lnT : high.lnP) > target)) continue;
        const auto isWithin = [&](const BoundarySample& sample) {
            return sample.x >= low.x - 1e-9 && sample.x <= high.x + 1e-9;
        };
        if (std::any_of(found.begin(), found.end(), isWithin)) continue;
        Fault("missed", std::exp(low.lnT), std::exp(low.lnP), VolumeAt(mixture, low.x));
    }
    for (const BoundarySample& sample : found) {
        const auto there = BoundaryAt(mixture, sample.x);
        // Beside a corner P falls so steeply that its last digits tell nothing of the place.
        const double off = byT ? sample.lnT - target : (sample.lnP - target) / sample.slopeP;
        if (there && std::abs(there->lnT - sample.lnT) <= 1e-9 && std::abs(off) <= 1e-9) continue;
        Fault("no point", std::exp(sample.lnT), std::exp(sample.lnP), VolumeAt(mixture, sample.x));
    }
    ++tally.searches;
    tally.points += static_cast<int>(found.size());
    Confirm(given, value);
}

// Below the boundary, and only there, the mixture must split, and the iteration must confirm it.
void Split(const Mixture& mixture, const PhaseReference& reference, const Place& place) {
    using Kind = EquilibriumApproach::Kind;
    const double V = VolumeAt(mixture, place.x);
    const double T = std::exp(place.lnT) * Uniform(0.3, 1.1);
    if (T < 1.01 * ColdestT(mixture) || reference.pressure(T, V) > 1e4) return;
    ++tally.splits;
    const auto approach = FindEquilibriumApproach(AcceptedMixture(), T, V);
    const double P = approach.guess.unknown;
    const bool isSplit = approach.kind != Kind::Homogeneous;
    if (isSplit != (T < std::exp(place.lnT))) Fault("split or not", T, P, V);
    tally.threePhases += approach.kind == Kind::Metastable ? 1 : 0;
    if (!isSplit || approach.kind == Kind::TwoLiquids) return;
    const auto result =
        IterateEquilibrium(AcceptedMixture(), T, V, approach.volumeFraction, approach.guess);
    const bool isStable = result.stability == Stability::Stable;
    // Of more than two phases no pair may be found, or be left by the iteration.
    const bool isLost = approach.kind == Kind::NotFound ||
                        (approach.kind == Kind::Metastable && result.outcome != Outcome::Converged);
    tally.lost += isLost ? 1 : 0;
    if (isLost) return;
    if (result.outcome != Outcome::Converged || !result.fractionInRange ||
        std::abs(result.phases.P / P - 1.0) > 1e-8 ||
        isStable != (approach.kind == Kind::TwoPhases)) {
        Fault("another split", T, P, V);
    }
}

// Temperatures a relative distance from 1e-8 on below a critical point, where the mixture splits on
// both sides of it.
void NearCritical(const PhaseBoundary& boundary) {
    for (const auto& point : FindCriticalPoints(AcceptedMixture())) {
        if (CriticalStability(AcceptedMixture(), point) != Stability::Stable) continue;
        const double at = std::log(point.freeVolume / boundary.mixture().bMix);
        const double distance = std::pow(10.0, Uniform(-8.0, -2.0));
        std::vector<Place> grid;
        for (int i = -60; i <= 60; ++i) {
            const double x = at + std::sqrt(distance) * i / 15.0;
            const auto sample = BoundaryAt(boundary.mixture(), x);
            if (sample) grid.push_back({x, sample->lnT, sample->lnP});
        }
        Search(boundary, grid, Given::Temperature, point.T * (1.0 - distance));
    }
}

}  // namespace

int main(int argc, char** argv) {
    const auto argument = [&](int i, int usual) { return argc > i ? std::atoi(argv[i]) : usual; };
    random_.seed(static_cast<std::uint64_t>(argument(2, 1)));
    for (int i = argument(1, 200); i > 0; --i) {
        AcceptAnyMixture(random_);
        const PhaseReference reference;
        const Mixture mixture = AcceptedMixture();
        const PhaseBoundary& boundary = BoundaryOf(mixture);
        const std::vector<Place> grid = Grid(mixture);
        std::vector<Place> existing = grid;
        std::erase_if(existing, [](const Place& place) { return place.lnT < -99.0; });
        if (existing.empty()) continue;
        const auto any = [&] { return existing[random_() % existing.size()]; };
        const double hottest = *std::max_element(Tc.begin(), Tc.end());
        for (int k = 0; k < 10; ++k) {
            const Place place = any();
            if (place.x < 12.0) JudgeAt(mixture, reference, place);
            Search(boundary, grid, Given::Temperature, hottest * Uniform(0.05, 1.3));
            Search(boundary, grid, Given::Temperature, std::exp(any().lnT + Uniform(-0.01, 0.01)));
            Search(boundary, grid, Given::Pressure, std::pow(10.0, Uniform(-8.0, 3.5)));
            Search(boundary, grid, Given::Pressure, std::exp(any().lnP + Uniform(-0.01, 0.01)));
            if (place.x < 12.0 && place.x > -4.0) Split(mixture, reference, place);
        }
        NearCritical(boundary);
    }
    std::printf("%d searches of the boundary, %d points; %d iterations from elsewhere\n",
                tally.searches, tally.points, tally.misled);
    std::printf("%d states judged by brute force; %d splits, %d into more than two phases\n",
                tally.judged, tally.splits, tally.threePhases);
    std::printf("%d splits without their two phases, %d faults\n", tally.lost, tally.faults);
    constexpr int aFew = 3;
    constexpr int rare = 250;
    const bool isRight = tally.faults == 0 && tally.lost < aFew + tally.splits / rare;
    return isRight ? EXIT_SUCCESS : EXIT_FAILURE;
}
