#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <random>

#include "model/critical_point.h"
#include "model/fluid_model.h"
#include "model/spinodal.h"
#include "tests/model/phase_reference.h"

// Times of the critical points and the spinodal over random mixtures of 2 to 11 gases. Each mixture
// is solved many times; `worst_us` is the mean time in microseconds of the slowest mixture.

namespace {

using Clock = std::chrono::steady_clock;

constexpr int mixtures = 10000;
constexpr int mostComponents = 11;

template <class Solve>
void OverSample(benchmark::State& run, int calls, const Solve& solve) {
    std::mt19937_64 random(1);
    double worst = 0.0;
    for (auto _ : run) {
        AcceptRandomMixture(random, mostComponents);
        // The best of a few rounds: what else the computer does is not the mixture's doing.
        constexpr int rounds = 3;
        double best = 1.0;
        for (int round = 0; round < rounds; ++round) {
            const auto start = Clock::now();
            for (int i = 0; i < calls; ++i) solve();
            const std::chrono::duration<double> time = Clock::now() - start;
            best = std::min(best, time.count() / calls);
        }
        worst = std::max(worst, best);
        run.SetIterationTime(best);
    }
    run.counters["worst_us"] = worst * 1e6;
}

void CriticalPoints(benchmark::State& run) {
    OverSample(run, 30, [] {
        benchmark::DoNotOptimize(fluid::FindCriticalPoints(fluid::AcceptedMixture()));
    });
}
BENCHMARK(CriticalPoints)->UseManualTime()->Iterations(mixtures);

void CriticalPointsAndTheirStability(benchmark::State& run) {
    OverSample(run, 2, [] {
        for (const auto& point : fluid::FindCriticalPoints(fluid::AcceptedMixture())) {
            benchmark::DoNotOptimize(fluid::CriticalStability(fluid::AcceptedMixture(), point));
        }
    });
}
BENCHMARK(CriticalPointsAndTheirStability)->UseManualTime()->Iterations(mixtures);

void DiffusionalSpinodal(benchmark::State& run) {
    constexpr double T = 200.0;
    OverSample(run, 30, [] {
        benchmark::DoNotOptimize(
            fluid::SpinodalOf(fluid::AcceptedMixture(), fluid::SpinodalKind::Diffusional)
                .volumes(T));
    });
}
BENCHMARK(DiffusionalSpinodal)->UseManualTime()->Iterations(mixtures);

}  // namespace
