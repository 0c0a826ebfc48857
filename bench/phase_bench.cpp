#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <ctime>
#include <random>

#include "model/first_approach.h"
#include "model/fluid_model.h"
#include "model/phase_boundary.h"
#include "model/phase_equilibrium.h"
#include "tests/model/phase_reference.h"

// Processor times of the phase equilibria over random mixtures of 2 to 5 gases; `worst_us` is the
// slowest single call in microseconds.

namespace {

using fluid::Given;
using fluid::Homogenisation;

constexpr int mostComponents = 5;

// Seconds that this thread has computed.
double ProcessorTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

double HottestTc() {
    return *std::max_element(fluid::Tc.begin(), fluid::Tc.end());
}

// What the two buttons of a screen do one after the other. Without a point the first approach is a
// seed, and nothing is iterated.
void SolvePoint(Given given, double value, Homogenisation kind) {
    const auto points =
        fluid::FindHomogenisationPoints(fluid::AcceptedMixture(), given, value, kind);
    if (points.points.empty()) {
        benchmark::DoNotOptimize(
            fluid::HomogenisationSeed(fluid::AcceptedMixture(), given, value, kind));
        return;
    }
    const auto guess = fluid::HomogenisationApproach(given, points.points[0]);
    benchmark::DoNotOptimize(
        fluid::IterateHomogenisation(fluid::AcceptedMixture(), given, value, kind, guess));
}

void SolveSplit(double T, double V) {
    const auto start = fluid::FindEquilibriumApproach(fluid::AcceptedMixture(), T, V);
    benchmark::DoNotOptimize(fluid::IterateEquilibrium(fluid::AcceptedMixture(), T, V,
                                                       start.volumeFraction, start.guess));
}

// Times one call for each random mixture, apart from making the mixture.
template <class Solve>
void OverSample(benchmark::State& run, const Solve& solve) {
    std::mt19937_64 random(1);
    double worst = 0.0;
    for (auto _ : run) {
        AcceptRandomMixture(random, mostComponents);
        // Sampled when a composition is first asked for its boundary, and kept.
        benchmark::DoNotOptimize(BoundaryOf(fluid::AcceptedMixture()));
        const auto call = solve(random);
        const double start = ProcessorTime();
        call();
        const double time = ProcessorTime() - start;
        worst = std::max(worst, time);
        run.SetIterationTime(time);
    }
    run.counters["worst_us"] = worst * 1e6;
}

void Boundary(benchmark::State& run) {
    OverSample(run, [](std::mt19937_64& /*random*/) {
        return [] { benchmark::DoNotOptimize(fluid::PhaseBoundary(fluid::AcceptedMixture())); };
    });
}
BENCHMARK(Boundary)->UseManualTime()->Iterations(2000);

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
        const double V =
            fluid::AcceptedMixture().covolume * (1.0 + std::pow(10.0, -1.5 + 4.5 * share(random)));
        return [=] { SolveSplit(T, V); };
    });
}
BENCHMARK(Equilibrium)->UseManualTime()->Iterations(5000);

// One step of the iteration for two components, from a start that takes all 10000 of them.
void IterationStep(benchmark::State& run) {
    for (std::size_t i = 0; i < fluid::componentCount; ++i) fluid::SetFractionCount(i, 0.0);
    fluid::SetFractionCount(0, 0.8147);
    fluid::SetFractionCount(9, 0.1853);
    fluid::AcceptComposition();
    constexpr double P = 0.0729952;
    constexpr auto kind = Homogenisation::IntoLiquid;
    const auto guess =
        fluid::HomogenisationSeed(fluid::AcceptedMixture(), Given::Pressure, P, kind);
    double steps = 0.0;
    while (run.KeepRunning()) {
        auto result =
            fluid::IterateHomogenisation(fluid::AcceptedMixture(), Given::Pressure, P, kind, guess);
        steps += result.iterations;
        benchmark::DoNotOptimize(result);
    }
    run.counters["steps"] = steps / static_cast<double>(run.iterations());
    run.counters["time_per_step"] =
        benchmark::Counter(steps, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(IterationStep);

}  // namespace
