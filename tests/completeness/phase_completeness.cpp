// Random mixtures of 2 to 11 gases, with traces, nearly pure and nearly azeotropic ones: the
// sampled boundary must have every point that a fine grid of searches sees, whatever is given, and
// none other; a judge by brute force must find the boundary where the searches do; every point must
// be confirmed by the iteration, and every split be one of equal fugacities that nothing betters.
// usage: phase_completeness [MIXTURES [SEED]]

#include <algorithm>
#include <array>
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

using fluid::BoundarySample;
using fluid::Fractions;
using fluid::Given;
using fluid::Homogenisation;
using fluid::LastComponent;
using fluid::Outcome;
using fluid::Stability;

struct Tally {
    int searches = 0;
    int points = 0;
    int finer = 0;  // between two places of the grid
    int judged = 0;
    int splits = 0;
    int threePhases = 0;
    int faults = 0;
};

Tally tally;
std::mt19937_64 random_;

double Uniform(double from, double to) {
    return std::uniform_real_distribution(from, to)(random_);
}

void Fault(const char* what, double T, double P, double V) {
    ++tally.faults;
    std::printf("%s: T %.15g K, P %.15g MPa, V %.15g cm3/mol:", what, T, P, V);
    for (std::size_t i = 0; i <= static_cast<std::size_t>(LastComponent); ++i) {
        std::printf(" %s %.12g", fluid::ComponentFormulas[fluid::ComponentIndex[i]].data(),
                    Fractions[i]);
    }
    std::puts("");
}

struct Place {
    double x;
    double lnT;  // below every temperature where there is no boundary
    double lnP;
};

std::vector<Place> Grid(const fluid::Mixture& mixture) {
    std::vector<Place> grid;
    for (double x = -9.0; x < 240.0; x += x < 12.0 ? 0.013 : 0.02 * x) {
        const auto sample = BoundaryAt(mixture, x);
        grid.push_back({x, sample ? sample->lnT : -100.0, sample ? sample->lnP : NAN});
    }
    return grid;
}

// The boundary at a place, above and below which brute force must see one phase and more.
void JudgeAt(const fluid::Mixture& mixture, const PhaseReference& reference, const Place& place) {
    const double V = mixture.bMix * (1.0 + std::exp(place.x));
    for (const double side : {1.0, -1.0}) {
        const double T = std::exp(place.lnT) * (1.0 + 1e-4 * side);
        const double P = reference.pressure(T, V);
        if (P > 2000.0) continue;
        ++tally.judged;
        if (reference.judge(T, V, P).unstable != (side < 0.0)) Fault("judged otherwise", T, P, V);
    }
}

void Confirm(Given given, double value) {
    for (const Homogenisation kind : {Homogenisation::IntoLiquid, Homogenisation::IntoVapour}) {
        const auto points = FindHomogenisationPoints(LastComponent, Fractions, given, value, kind);
        for (const fluid::PhasePair& pair : points.points) {
            const auto result = IterateHomogenisation(LastComponent, Fractions, given, value, kind,
                                                      HomogenisationApproach(given, pair));
            const bool same = std::abs(result.phases.P / pair.P - 1.0) < 1e-8 &&
                              std::abs(result.phases.T / pair.T - 1.0) < 1e-8;
            const bool isTrue = result.outcome == Outcome::Converged && same &&
                                result.stability == Stability::Stable;
            // Phases that differ by less than rounding need not be told from one.
            const bool isCritical = std::abs(pair.Vx / pair.Vy - 1.0) < 1e-5;
            if (isTrue || isCritical) continue;
            std::printf("%d %d %d %d: ", given == Given::Temperature,
                        kind == Homogenisation::IntoLiquid, static_cast<int>(result.outcome),
                        static_cast<int>(result.stability));
            Fault("not confirmed", pair.T, pair.P, pair.Vx);
        }
    }
}

void Search(const fluid::PhaseBoundary& boundary, const std::vector<Place>& grid, Given given,
            double value) {
    const fluid::Mixture& mixture = boundary.mixture();
    const bool byT = given == Given::Temperature;
    const auto found = byT ? boundary.atTemperature(value) : boundary.atPressure(value);
    const double target = std::log(value);
    const double coldest = std::log(ColdestT(mixture));
    ++tally.searches;
    std::size_t seen = 0;
    for (std::size_t i = 1; i < grid.size(); ++i) {
        const Place& low = grid[i - 1];
        const Place& high = grid[i];
        const bool exists = byT ? target > coldest : std::min(low.lnT, high.lnT) > coldest;
        const double from = byT ? low.lnT : low.lnP;
        const double to = byT ? high.lnT : high.lnP;
        if (!exists || (from > target) == (to > target)) continue;
        const auto within = [&](const BoundarySample& sample) {
            return sample.x >= low.x - 1e-9 && sample.x <= high.x + 1e-9;
        };
        seen += 1;
        if (std::any_of(found.begin(), found.end(), within)) continue;
        Fault("missed", std::exp(low.lnT), std::exp(low.lnP),
              mixture.bMix * (1.0 + std::exp(low.x)));
    }
    tally.points += static_cast<int>(found.size());
    tally.finer += static_cast<int>(found.size() - std::min(seen, found.size()));
    for (const BoundarySample& sample : found) {
        const auto there = BoundaryAt(mixture, sample.x);
        // Beside a corner P falls so steeply that its last digits tell nothing of the place.
        const double off = byT ? sample.lnT - target : (sample.lnP - target) / sample.slopeP;
        if (!there || std::abs(there->lnT - sample.lnT) > 1e-9 || std::abs(off) > 1e-9) {
            Fault("no point", std::exp(sample.lnT), std::exp(sample.lnP),
                  mixture.bMix * (1.0 + std::exp(sample.x)));
        }
    }
    Confirm(given, value);
}

void Split(const fluid::Mixture& mixture, const PhaseReference& reference, const Place& place) {
    const double V = mixture.bMix * (1.0 + std::exp(place.x));
    const double T = std::exp(place.lnT) * Uniform(0.3, 1.1);
    if (T < 1.01 * ColdestT(mixture) || reference.pressure(T, V) > 1e4) return;
    ++tally.splits;
    const auto approach = fluid::FindEquilibriumApproach(LastComponent, Fractions, T, V);
    const double P = approach.guess.unknown;
    const bool isSplit = approach.kind != fluid::EquilibriumApproach::Kind::Homogeneous;
    if (isSplit != (T < std::exp(place.lnT))) Fault("split or not", T, P, V);
    if (!isSplit) return;
    tally.threePhases += approach.kind == fluid::EquilibriumApproach::Kind::Metastable ? 1 : 0;
    const auto result = fluid::IterateEquilibrium(LastComponent, Fractions, T, V,
                                                  approach.volumeFraction, approach.guess);
    const bool isStable = approach.kind == fluid::EquilibriumApproach::Kind::TwoPhases;
    if (approach.kind == fluid::EquilibriumApproach::Kind::TwoLiquids) return;
    if (result.outcome != Outcome::Converged || !result.fractionInRange ||
        std::abs(result.phases.P / P - 1.0) > 1e-8 ||
        (result.stability == Stability::Stable) != isStable) {
        std::printf("kind %d outcome %d range %d stability %d P %.10g: ",
                    static_cast<int>(approach.kind), static_cast<int>(result.outcome),
                    result.fractionInRange, static_cast<int>(result.stability), result.phases.P);
        Fault("another split", T, P, V);
    }
}

// Temperatures a relative distance from 1e-8 on below a critical point, where the mixture splits on
// both sides of it.
void NearCritical(const fluid::PhaseBoundary& boundary) {
    for (const auto& point : fluid::FindCriticalPoints(LastComponent, Fractions)) {
        if (CriticalStability(LastComponent, Fractions, point) != Stability::Stable) continue;
        const double at = std::log(point.freeVolume / boundary.mixture().bMix);
        const double distance = std::pow(10.0, Uniform(-8.0, -2.0));
        const double reach = 4.0 * std::sqrt(distance);
        std::vector<Place> grid;
        for (int i = -60; i <= 60; ++i) {
            const double x = at + reach * i / 60.0;
            const auto sample = BoundaryAt(boundary.mixture(), x);
            if (sample) grid.push_back({x, sample->lnT, sample->lnP});
        }
        Search(boundary, grid, Given::Temperature, point.T * (1.0 - distance));
    }
}

}  // namespace

int main(int argc, char** argv) {
    const auto argument = [&](int i, int usual) { return argc > i ? std::atoi(argv[i]) : usual; };
    const int mixtures = argument(1, 200);
    random_.seed(static_cast<std::uint64_t>(argument(2, 1)));
    for (int i = 0; i < mixtures; ++i) {
        AcceptAnyMixture(random_);
        const PhaseReference reference;
        const fluid::Mixture mixture = fluid::MixtureOf(LastComponent, Fractions);
        const fluid::PhaseBoundary& boundary = BoundaryOf(mixture);
        const std::vector<Place> grid = Grid(mixture);
        std::vector<Place> existing;
        std::copy_if(grid.begin(), grid.end(), std::back_inserter(existing),
                     [](const Place& place) { return place.lnT > -99.0; });
        if (existing.empty()) continue;
        const auto any = [&] { return existing[random_() % existing.size()]; };
        const double hottest = *std::max_element(fluid::Tc.begin(), fluid::Tc.end());
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
    std::printf("%d searches of the boundary, %d points, of which %d between places of the grid\n",
                tally.searches, tally.points, tally.finer);
    std::printf("%d states judged by brute force; %d splits, %d into more than two phases\n",
                tally.judged, tally.splits, tally.threePhases);
    std::printf("%d faults\n", tally.faults);
    return tally.faults > 0 ? EXIT_FAILURE : EXIT_SUCCESS;
}
