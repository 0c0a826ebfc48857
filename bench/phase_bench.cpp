#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <random>

#include "model/first_approach.h"
#include "model/fluid_model.h"
#include "model/phase_equilibrium.h"
#include "model/phase_split.h"
#include "tests/model/phase_reference.h"

// Times of the phase equilibria over random mixtures of 2 to 5 gases; `worst_us` is the slowest
// single call in microseconds.

namespace {

using fluid::Fractions;
using fluid::Given;
using fluid::Homogenisation;
using fluid::LastComponent;
using Clock = std::chrono::steady_clock;

constexpr int MostComponents = 5;

double HottestTc() {
    return *std::max_element(fluid::Tc.begin(), fluid::Tc.end());
}

// What the two buttons of a screen do one after the other.
void SolvePoint(Given given, double value, Homogenisation kind) {
    const auto points =
        fluid::FindHomogenisationPoints(LastComponent, Fractions, given, value, kind);
    const auto guess =
        points.count > 0 ? fluid::HomogenisationApproach(given, points.points[0])
                         : fluid::HomogenisationSeed(LastComponent, Fractions, given, value, kind);
    benchmark::DoNotOptimize(
        fluid::IterateHomogenisation(LastComponent, Fractions, given, value, kind, guess));
}

void SolveSplit(double T, double V) {
    const auto start = fluid::FindEquilibriumApproach(LastComponent, Fractions, T, V);
    benchmark::DoNotOptimize(fluid::IterateEquilibrium(LastComponent, Fractions, T, V,
                                                       start.volumeFraction, start.guess));
}

// Times one call for each random mixture, apart from making the mixture.
template <class Solve>
void OverSample(benchmark::State& run, const Solve& solve) {
    std::mt19937_64 random(1);
    std::chrono::duration<double> worst{};
    for (auto _ : run) {
        AcceptRandomMixture(random, MostComponents);
        const auto call = solve(random);
        const auto start = Clock::now();
        call();
        const std::chrono::duration<double> time = Clock::now() - start;
        worst = std::max(worst, time);
        run.SetIterationTime(time.count());
    }
    run.counters["worst_us"] = worst.count() * 1e6;
}

void HomogenisationPoint(benchmark::State& run, Given given, Homogenisation kind) {
    OverSample(run, [=](std::mt19937_64& random) {
        std::uniform_real_distribution<double> share(0.0, 1.0);
        const double value = given == Given::Temperature
                                 ? HottestTc() * (0.3 + 0.8 * share(random))
                                 : std::pow(10.0, -2.0 + 4.0 * share(random));
        return [=] { SolvePoint(given, value, kind); };
    });
}
BENCHMARK_CAPTURE(HomogenisationPoint, bubbleAtT, Given::Temperature, Homogenisation::IntoLiquid)
    ->UseManualTime()
    ->Iterations(5000);
BENCHMARK_CAPTURE(HomogenisationPoint, dewAtT, Given::Temperature, Homogenisation::IntoVapour)
    ->UseManualTime()
    ->Iterations(5000);
BENCHMARK_CAPTURE(HomogenisationPoint, bubbleAtP, Given::Pressure, Homogenisation::IntoLiquid)
    ->UseManualTime()
    ->Iterations(5000);
BENCHMARK_CAPTURE(HomogenisationPoint, dewAtP, Given::Pressure, Homogenisation::IntoVapour)
    ->UseManualTime()
    ->Iterations(5000);

void Equilibrium(benchmark::State& run) {
    OverSample(run, [](std::mt19937_64& random) {
        std::uniform_real_distribution<double> share(0.0, 1.0);
        const double T = HottestTc() * (0.3 + 0.8 * share(random));
        const double V = fluid::MixtureB(LastComponent, Fractions) *
                         (1.0 + std::pow(10.0, -1.5 + 4.5 * share(random)));
        return [=] { SolveSplit(T, V); };
    });
}
BENCHMARK(Equilibrium)->UseManualTime()->Iterations(5000);

// One step of the iteration for CO2 + CH4, from a start that takes many.
void IterationStep(benchmark::State& run) {
    for (std::size_t i = 0; i < fluid::ComponentCount; ++i) fluid::SetFractionCount(i, 0.0);
    fluid::SetFractionCount(1, 0.7);
    fluid::SetFractionCount(9, 0.3);
    fluid::AcceptComposition();
    constexpr double T = 220.0;
    const fluid::PhaseGuess guess = {2.0, {0.7, 0.3}, {0.3, 0.7}};
    double steps = 0.0;
    for (auto _ : run) {
        const auto result = fluid::IterateHomogenisation(
            LastComponent, Fractions, Given::Temperature, T, Homogenisation::IntoLiquid, guess);
        steps += result.iterations;
        benchmark::DoNotOptimize(result);
    }
    run.counters["steps"] = steps / static_cast<double>(run.iterations());
    run.counters["time_per_step"] =
        benchmark::Counter(steps, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(IterationStep);

}  // namespace
