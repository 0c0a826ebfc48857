#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>

#include "model/fluid_model.h"
#include "model/properties.h"

namespace {

struct State {
    double T;
    double P;
};

constexpr std::size_t StateCount = 4096;
using States = std::array<State, StateCount>;

// Random states in units of 8a/(27bR) and a/(27b²); every solver branch is met in random order.
States RandomStates(double aMix, double bMix, double lowT, double highT, double lowLogP,
                    double highLogP) {
    const double unitT = 8.0 * aMix / (27.0 * bMix * fluid::R);
    const double unitP = aMix / (27.0 * bMix * bMix);
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> temperatures(lowT, highT);
    std::uniform_real_distribution<double> logPressures(lowLogP, highLogP);
    States states{};
    for (State& state : states) {
        state = {unitT * temperatures(random), unitP * std::pow(10.0, logPressures(random))};
    }
    return states;
}

void Compose(std::size_t count) {
    const std::int64_t part = fluid::FractionScale / static_cast<std::int64_t>(count);
    const std::int64_t first = fluid::FractionScale - part * static_cast<std::int64_t>(count - 1);
    for (std::size_t i = 0; i < fluid::ComponentCount; ++i) {
        const std::int64_t units = i == 0 ? first : part;
        fluid::SetFractionCount(i, i < count ? static_cast<double>(units) / 1e12 : 0.0);
    }
    fluid::AcceptComposition();
}

constexpr double WaterA = 553485.59;
constexpr double WaterB = 30.480996;

void VolumeRoots(benchmark::State& run, double lowT, double highT, double lowLogP,
                 double highLogP) {
    const States states = RandomStates(WaterA, WaterB, lowT, highT, lowLogP, highLogP);
    std::size_t i = 0;
    for ([[maybe_unused]] const auto _ : run) {
        const State& state = states[i++ % StateCount];
        benchmark::DoNotOptimize(fluid::VolumeCubicSolver(WaterA, WaterB, state.T, state.P));
    }
}
BENCHMARK_CAPTURE(VolumeRoots, everywhere, 0.05, 5.0, -12.0, 3.0);
BENCHMARK_CAPTURE(VolumeRoots, threeReal, 0.3, 0.8, -12.0, -2.0);
BENCHMARK_CAPTURE(VolumeRoots, oneReal, 1.2, 5.0, -3.0, 3.0);
BENCHMARK_CAPTURE(VolumeRoots, nearCritical, 0.99, 1.01, -0.01, 0.01);
BENCHMARK_CAPTURE(VolumeRoots, nearSpinodal, 0.96, 0.98, -0.09, -0.06);

void SolveCubic(benchmark::State& run) {
    const States states = RandomStates(WaterA, WaterB, 0.3, 1.5, -2.0, 1.0);
    std::size_t i = 0;
    for ([[maybe_unused]] const auto _ : run) {
        const State& state = states[i++ % StateCount];
        const double a2 = -fluid::R * state.T / state.P - WaterB;
        const double a1 = WaterA / state.P;
        benchmark::DoNotOptimize(fluid::SolveCubic(a2, a1, -a1 * WaterB));
    }
}
BENCHMARK(SolveCubic);

// All coefficients at T, P and x: mixture parameters, roots and coefficients.
void FugacityCoefficients(benchmark::State& run, double lowT, double highT) {
    Compose(static_cast<std::size_t>(run.range(0)));
    const std::int32_t last = fluid::LastComponent;
    const fluid::ComponentValues x = fluid::Fractions;
    const States states =
        RandomStates(fluid::MixtureA(last, x), fluid::MixtureB(last, x), lowT, highT, -3.0, 1.0);
    std::size_t i = 0;
    for ([[maybe_unused]] const auto _ : run) {
        const auto [T, P] = states[i++ % StateCount];
        const double bMix = fluid::MixtureB(last, x);
        const auto roots = fluid::VolumeCubicSolver(fluid::MixtureA(last, x), bMix, T, P);
        benchmark::DoNotOptimize(
            fluid::FugacityCoefficients(last, bMix, fluid::ComponentAttraction(last, x),
                                        fluid::ComponentCovolumes(last), T, P, roots[0].real));
    }
}
BENCHMARK_CAPTURE(FugacityCoefficients, threeReal, 0.3, 0.7)->Arg(1)->Arg(2)->Arg(11);
BENCHMARK_CAPTURE(FugacityCoefficients, everywhere, 0.3, 3.0)->Arg(1)->Arg(2)->Arg(11);

// What a thermodynamic screen shows for a root: the mixture's properties, and its components'.
template <auto Calculate>
void Properties(benchmark::State& run) {
    Compose(static_cast<std::size_t>(run.range(0)));
    const std::int32_t last = fluid::LastComponent;
    const fluid::ComponentValues x = fluid::Fractions;
    constexpr double T = 400.0;
    double V = 2.0 * fluid::MixtureB(last, x);
    for ([[maybe_unused]] const auto _ : run) {
        benchmark::DoNotOptimize(V);
        const double P =
            fluid::PressureVdW(fluid::MixtureA(last, x), fluid::MixtureB(last, x), T, V);
        benchmark::DoNotOptimize(Calculate(last, x, T, P, V));
    }
}
BENCHMARK(Properties<fluid::PropertiesOf>)->Arg(1)->Arg(2)->Arg(11);
BENCHMARK(Properties<fluid::ComponentPropertiesOf>)->Arg(1)->Arg(2)->Arg(11);

}  // namespace
