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

constexpr std::size_t stateCount = 4096;
using States = std::array<State, stateCount>;

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
    const std::int64_t part = fluid::fractionScale / static_cast<std::int64_t>(count);
    const std::int64_t first = fluid::fractionScale - part * static_cast<std::int64_t>(count - 1);
    for (std::size_t i = 0; i < fluid::componentCount; ++i) {
        const std::int64_t units = i == 0 ? first : part;
        fluid::SetFractionCount(i, i < count ? static_cast<double>(units) / 1e12 : 0.0);
    }
    fluid::AcceptComposition();
}

constexpr double waterA = 553485.59;
constexpr double waterB = 30.480996;

void VolumeRoots(benchmark::State& run, double lowT, double highT, double lowLogP,
                 double highLogP) {
    const States states = RandomStates(waterA, waterB, lowT, highT, lowLogP, highLogP);
    std::size_t i = 0;
    for ([[maybe_unused]] const auto _ : run) {
        const State& state = states[i++ % stateCount];
        benchmark::DoNotOptimize(fluid::VolumeCubicSolver(waterA, waterB, state.T, state.P));
    }
}
BENCHMARK_CAPTURE(VolumeRoots, everywhere, 0.05, 5.0, -12.0, 3.0);
BENCHMARK_CAPTURE(VolumeRoots, threeReal, 0.3, 0.8, -12.0, -2.0);
BENCHMARK_CAPTURE(VolumeRoots, oneReal, 1.2, 5.0, -3.0, 3.0);
BENCHMARK_CAPTURE(VolumeRoots, nearCritical, 0.99, 1.01, -0.01, 0.01);
BENCHMARK_CAPTURE(VolumeRoots, nearSpinodal, 0.96, 0.98, -0.09, -0.06);

void SolveCubic(benchmark::State& run) {
    const States states = RandomStates(waterA, waterB, 0.3, 1.5, -2.0, 1.0);
    std::size_t i = 0;
    for ([[maybe_unused]] const auto _ : run) {
        const State& state = states[i++ % stateCount];
        const double a2 = -fluid::R * state.T / state.P - waterB;
        const double a1 = waterA / state.P;
        benchmark::DoNotOptimize(fluid::SolveCubic(a2, a1, -a1 * waterB));
    }
}
BENCHMARK(SolveCubic);

// The yardstick of the roots: Cardano's and Vieta's formulas as a textbook has them, which lose the
// small root beside a large one.
void PlainCubic(benchmark::State& run, double lowT, double highT, double lowLogP, double highLogP) {
    const States states = RandomStates(waterA, waterB, lowT, highT, lowLogP, highLogP);
    std::size_t i = 0;
    for ([[maybe_unused]] const auto _ : run) {
        const State& state = states[i++ % stateCount];
        const double a2 = -fluid::R * state.T / state.P - waterB;
        const double a1 = waterA / state.P;
        const double p = (a1 - a2 * a2 / 3.0) / 3.0;
        const double q = (a2 * a2 * a2 / 13.5 - a2 * a1 / 3.0 - a1 * waterB) / 2.0;
        const double discriminant = q * q + p * p * p;
        std::array<double, 3> roots{};
        if (discriminant > 0.0) {
            const double root = std::sqrt(discriminant);
            roots[0] = std::cbrt(root - q) + std::cbrt(-root - q) - a2 / 3.0;
        } else {
            constexpr double third = 2.0943951023931953;  // of a full turn
            const double angle = std::acos(-q / std::sqrt(-p * p * p)) / 3.0;
            for (std::size_t k = 0; k < roots.size(); ++k) {
                roots[k] = 2.0 * std::sqrt(-p) * std::cos(angle + third * static_cast<double>(k)) -
                           a2 / 3.0;
            }
        }
        benchmark::DoNotOptimize(roots);
    }
}
BENCHMARK_CAPTURE(PlainCubic, everywhere, 0.05, 5.0, -12.0, 3.0);
BENCHMARK_CAPTURE(PlainCubic, threeReal, 0.3, 0.8, -12.0, -2.0);
BENCHMARK_CAPTURE(PlainCubic, oneReal, 1.2, 5.0, -3.0, 3.0);

// The yardstick of the fugacities: the sums of the mixing rules over all pairs, the root given.
void PlainFugacities(benchmark::State& run) {
    const auto count = static_cast<std::size_t>(run.range(0));
    Compose(count);
    const fluid::ComponentValues x = fluid::AcceptedMixture().z;
    const fluid::ComponentValues b = fluid::AcceptedMixture().b;
    const double T = 400.0;
    double V = 2.0 * fluid::AcceptedMixture().bMix;
    for ([[maybe_unused]] const auto _ : run) {
        benchmark::DoNotOptimize(V);
        double aMix = 0.0;
        double bMix = 0.0;
        fluid::ComponentValues A{};
        for (std::size_t i = 0; i < count; ++i) {
            bMix += x[i] * b[i];
            for (std::size_t j = 0; j < count; ++j) {
                A[i] += 2.0 * x[j] * fluid::a[i][j];
            }
            aMix += x[i] * A[i] / 2.0;
        }
        const double P = fluid::PressureVdW(aMix, bMix, T, V);
        fluid::ComponentValues phi{};
        for (std::size_t i = 0; i < count; ++i) {
            phi[i] = std::exp(b[i] / (V - bMix) - std::log(P * (V - bMix) / (fluid::R * T)) -
                              A[i] / (fluid::R * T * V));
        }
        benchmark::DoNotOptimize(phi);
    }
}
BENCHMARK(PlainFugacities)->Arg(1)->Arg(2)->Arg(11);

// All coefficients of a mixture at T and P: roots and coefficients.
void FugacityCoefficients(benchmark::State& run, double lowT, double highT) {
    Compose(static_cast<std::size_t>(run.range(0)));
    const fluid::Mixture& mixture = fluid::AcceptedMixture();
    const States states =
        RandomStates(mixture.attraction, mixture.covolume, lowT, highT, -3.0, 1.0);
    std::size_t i = 0;
    for ([[maybe_unused]] const auto _ : run) {
        const auto [T, P] = states[i++ % stateCount];
        const auto roots = fluid::VolumeCubicSolver(mixture.attraction, mixture.covolume, T, P);
        benchmark::DoNotOptimize(fluid::FugacityCoefficients(mixture, T, P, roots[0].real));
    }
}
BENCHMARK_CAPTURE(FugacityCoefficients, threeReal, 0.3, 0.7)->Arg(1)->Arg(2)->Arg(11);
BENCHMARK_CAPTURE(FugacityCoefficients, everywhere, 0.3, 3.0)->Arg(1)->Arg(2)->Arg(11);

// What a thermodynamic screen shows for a root: the mixture's properties, and its components'.
template <auto Calculate>
void Properties(benchmark::State& run) {
    Compose(static_cast<std::size_t>(run.range(0)));
    const fluid::Mixture& mixture = fluid::AcceptedMixture();
    constexpr double T = 400.0;
    double V = 2.0 * mixture.covolume;
    for ([[maybe_unused]] const auto _ : run) {
        benchmark::DoNotOptimize(V);
        const double P = fluid::PressureVdW(mixture.attraction, mixture.covolume, T, V);
        benchmark::DoNotOptimize(Calculate(mixture, T, P, V));
    }
}
BENCHMARK(Properties<fluid::PropertiesOf>)->Arg(1)->Arg(2)->Arg(11);
BENCHMARK(Properties<fluid::ComponentPropertiesOf>)->Arg(1)->Arg(2)->Arg(11);

}  // namespace
