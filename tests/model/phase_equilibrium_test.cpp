#include "model/phase_equilibrium.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <span>
#include <vector>

#include "model/composition.h"
#include "model/first_approach.h"
#include "model/fluid_state.h"
#include "model/van_der_waals.h"
#include "tests/model/golden.h"
#include "tests/model/phase_reference.h"

namespace {

using fluid::ComponentValues;
using fluid::Given;
using fluid::Homogenisation;
using fluid::HomogenisationResult;
using fluid::Outcome;
using fluid::PhaseGuess;
using fluid::PhasePair;
using Kind = fluid::EquilibriumApproach::Kind;

constexpr auto kinds = {Homogenisation::IntoLiquid, Homogenisation::IntoVapour};

fluid::HomogenisationPoints Find(Given given, double value, Homogenisation kind) {
    return fluid::FindHomogenisationPoints(fluid::AcceptedMixture(), given, value, kind);
}

HomogenisationResult Iterate(Given given, double value, Homogenisation kind,
                             const PhaseGuess& guess) {
    return fluid::IterateHomogenisation(fluid::AcceptedMixture(), given, value, kind, guess);
}

double LargestDifference(const ComponentValues& x, const ComponentValues& y) {
    double largest = 0.0;
    for (std::size_t i = 0; i < x.size(); ++i) largest = std::max(largest, std::abs(x[i] - y[i]));
    return largest;
}

// A row of phase_equilibria.csv, its composition made that of the model.
struct GoldenPoint {
    Homogenisation kind;
    PhasePair phases;
    ComponentValues other{};

    explicit GoldenPoint(const std::vector<double>& row) {
        Accept(std::span(row).first(fluid::componentCount));
        kind = row[11] == 0.0 ? Homogenisation::IntoLiquid : Homogenisation::IntoVapour;
        phases.T = row[12];
        phases.P = row[13];
        phases.Vx = row[14];
        phases.Vy = row[15];
        for (std::size_t k = 0; k < fluid::AcceptedMixture().count; ++k) {
            other[k] = row[16 + fluid::AcceptedMixture().index[k]];
        }
        const bool bubble = kind == Homogenisation::IntoLiquid;
        phases.x = bubble ? fluid::AcceptedMixture().fractions : other;
        phases.y = bubble ? other : fluid::AcceptedMixture().fractions;
    }
};

struct Errors {
    double unknown = 0.0;
    double volume = 0.0;
    double fraction = 0.0;

    void take(const PhasePair& found, const PhasePair& golden) {
        unknown =
            std::max({unknown, RelativeError(found.P, golden.P), RelativeError(found.T, golden.T)});
        volume = std::max(
            {volume, RelativeError(found.Vx, golden.Vx), RelativeError(found.Vy, golden.Vy)});
        fraction = std::max(
            {fraction, LargestDifference(found.x, golden.x), LargestDifference(found.y, golden.y)});
    }
};

TEST(Homogenisation, GoldenPointsAreFoundAndReachedFromAside) {
    Errors search;
    Errors iteration;
    int iterations = 0;
    for (const auto& row : ReadGolden("phase_equilibria.csv", 27)) {
        const GoldenPoint golden(row);
        for (const Given given : {Given::Temperature, Given::Pressure}) {
            const bool findsP = given == Given::Temperature;
            const double value = findsP ? golden.phases.T : golden.phases.P;
            const auto points = Find(given, value, golden.kind);
            const auto point =
                std::find_if(points.begin(), points.end(), [&](const PhasePair& found) {
                    return RelativeError(found.P, golden.phases.P) < 1e-4 &&
                           RelativeError(found.T, golden.phases.T) < 1e-4;
                });
            SCOPED_TRACE(testing::Message() << "T " << golden.phases.T << " P " << golden.phases.P);
            ASSERT_NE(point, points.end());
            search.take(*point, golden.phases);
            const auto guess = fluid::HomogenisationApproach(given, *point);
            const auto result = Iterate(given, value, golden.kind, guess);
            ASSERT_EQ(result.outcome, Outcome::Converged);
            EXPECT_EQ(result.stability, fluid::Stability::Stable);
            iteration.take(result.phases, golden.phases);
            iterations = std::max(iterations, result.iterations);
            // From other fractions it takes longer; near a critical point they may lead elsewhere.
            const bool bubble = golden.kind == Homogenisation::IntoLiquid;
            if (fluid::AcceptedMixture().count == 1 || golden.phases.Vy < 2.0 * golden.phases.Vx) {
                continue;
            }
            PhaseGuess aside = guess;
            (bubble ? aside.y : aside.x)[0] *= 1.5;
            const auto again = Iterate(given, value, golden.kind, aside);
            ASSERT_EQ(again.outcome, Outcome::Converged);
            Errors errors;
            errors.take(again.phases, golden.phases);
            EXPECT_LE(errors.unknown, 1e-11);
            EXPECT_LE(errors.fraction, 1e-8);
        }
    }
    for (const Errors& errors : {search, iteration}) {
        std::printf("worst error of P or T %.2g, volumes %.2g, fractions %.2g\n", errors.unknown,
                    errors.volume, errors.fraction);
        EXPECT_LE(errors.unknown, 1e-11);
        EXPECT_LE(errors.volume, 1e-8);
        EXPECT_LE(errors.fraction, 1e-9);
    }
    EXPECT_LE(iterations, 5);
}

void AcceptParts(const ComponentValues& parts) {
    ComponentValues counts{};
    for (std::size_t i = 0; i < counts.size(); ++i) {
        counts[i] = std::round(parts[i] * static_cast<double>(fluid::fractionScale));
    }
    Accept(counts);
}

// The liquid is that of P = 0, and P/RT the sum of z·exp(b/(V - b) - 2·aRoot·aRootMix/RTV)/(V - b).
TEST(Homogenisation, ColdLiquidsBoilIntoAnIdealGas) {
    for (const auto& [T, parts] :
         {std::pair{9.0, ComponentValues{0, 0, 0, 0, 0, 0, 0, 0, 0.49, 0.51}},
          {12.5, {0, 0, 0.37, 0, 0, 0, 0, 0, 0, 0, 0.63}},
          {16.0, {0, 0.93, 0, 0, 0.02, 0, 0.05}}}) {
        ASSERT_NO_FATAL_FAILURE(AcceptParts(parts));
        const fluid::Mixture& mixture = fluid::AcceptedMixture();
        const double RT = fluid::R * T;
        const double a = mixture.attraction;
        const double b = mixture.covolume;
        const double V = 2.0 * b / (1.0 + std::sqrt(1.0 - 4.0 * RT * b / a));
        double P = 0.0;
        for (std::size_t k = 0; k < mixture.count; ++k) {
            const double pull = 2.0 * std::sqrt(fluid::a[k][k] * a) / (RT * V);
            P += RT * mixture.z[k] / (V - b) * std::exp(fluid::b[k] / (V - b) - pull);
        }
        const auto points = Find(Given::Temperature, T, Homogenisation::IntoLiquid);
        ASSERT_EQ(points.points.size(), 1U) << T;
        EXPECT_LE(RelativeError(points.points[0].P, P), 1e-10);
        EXPECT_LE(RelativeError(points.points[0].Vx, V), 1e-10);
    }
}

// From two phases of known state a bulk is mixed that must fall apart into them again.
TEST(Equilibrium, MixedGoldenPhasesAreFoundAgain) {
    double worstP = 0.0;
    double worstFraction = 0.0;
    for (const auto& row : ReadGolden("phase_equilibria.csv", 27)) {
        const GoldenPoint golden(row);
        const PhasePair& phases = golden.phases;
        const bool bubble = golden.kind == Homogenisation::IntoLiquid;
        const double halfOfTheVolume = phases.Vx / (phases.Vx + phases.Vy);
        for (const double amount : {0.0, halfOfTheVolume, 0.2, 0.7, 1.0}) {
            if ((amount == 0.0 && !bubble) || (amount == 1.0 && bubble)) continue;
            const double V = phases.Vx + amount * (phases.Vy - phases.Vx);
            ComponentValues z{};
            for (std::size_t k = 0; k < z.size(); ++k) {
                z[k] = phases.x[k] + amount * (phases.y[k] - phases.x[k]);
            }
            const auto bulk = fluid::WithFractions(fluid::AcceptedMixture(), z);
            const auto start = fluid::FindEquilibriumApproach(bulk, phases.T, V);
            SCOPED_TRACE(testing::Message()
                         << "T " << phases.T << " P " << phases.P << " amount " << amount);
            EXPECT_EQ(start.kind, Kind::TwoPhases);
            worstP = std::max(worstP, RelativeError(start.guess.unknown, phases.P));
            const auto result =
                fluid::IterateEquilibrium(bulk, phases.T, V, start.volumeFraction, start.guess);
            ASSERT_EQ(result.outcome, Outcome::Converged);
            EXPECT_EQ(result.stability, fluid::Stability::Stable);
            EXPECT_TRUE(result.fractionInRange);
            worstP = std::max(worstP, RelativeError(result.phases.P, phases.P));
            worstFraction =
                std::max(worstFraction, std::abs(result.volumeFraction - amount * phases.Vy / V));
            if (amount == 0.0 || amount == 1.0) {
                EXPECT_EQ(result.volumeFraction, amount);
            } else if (bulk.count > 1 && amount != halfOfTheVolume) {
                const auto state = fluid::StateAt(bulk, phases.T, phases.P);
                ASSERT_TRUE(state.split && !state.stable);
                worstP = std::max({worstP, RelativeError(state.split->phases.Vx, phases.Vx),
                                   RelativeError(state.split->phases.Vy, phases.Vy)});
                worstFraction = std::max(
                    worstFraction, std::abs(state.split->volumeFraction - amount * phases.Vy / V));
            }
        }
    }
    std::printf("worst error of P %.2g, of the volume fraction %.2g\n", worstP, worstFraction);
    EXPECT_LE(worstP, 1e-9);
    EXPECT_LE(worstFraction, 1e-9);
}

// What is shown must be an equilibrium by its own numbers, and its bulk stable unless it is said
// not to be.
void ExpectTrue(const HomogenisationResult& result, Homogenisation kind,
                const PhaseReference& reference) {
    const PhasePair& phases = result.phases;
    const auto count = fluid::AcceptedMixture().count;
    SCOPED_TRACE(testing::Message() << "T " << phases.T << " P " << phases.P);
    EXPECT_LT(phases.Vx, phases.Vy);
    EXPECT_GT(std::abs(phases.Vy / phases.Vx - 1.0), 1e-5);
    std::array<std::array<long double, fluid::componentCount>, 2> logs{};
    for (const bool liquid : {true, false}) {
        const ComponentValues& x = liquid ? phases.x : phases.y;
        const long double V = liquid ? phases.Vx : phases.Vy;
        long double b = 0.0;
        long double s = 0.0;
        for (std::size_t i = 0; i < count; ++i) {
            b += static_cast<long double>(x[i]) * fluid::b[i];
            s += x[i] * std::sqrt(static_cast<long double>(fluid::a[i][i]));
        }
        const long double RT = fluid::R * phases.T;
        EXPECT_NEAR(static_cast<double>((RT / (V - b) - s * s / (V * V)) / phases.P), 1.0,
                    1e-12 * static_cast<double>(RT / (V - b)) / phases.P);
        for (std::size_t i = 0; i < count; ++i) {
            logs[liquid][i] =
                std::log(x[i] / (V - b)) + fluid::b[i] / (V - b) -
                2.0L * s * std::sqrt(static_cast<long double>(fluid::a[i][i])) / (RT * V);
        }
    }
    for (std::size_t i = 0; i < count; ++i) {
        EXPECT_LE(std::abs(logs[0][i] - logs[1][i]), 2e-8L);
    }
    const bool bubble = kind == Homogenisation::IntoLiquid;
    EXPECT_LE(LargestDifference(bubble ? phases.x : phases.y, fluid::AcceptedMixture().fractions),
              1e-9);
    constexpr double plain = 1e-7;
    EXPECT_EQ(reference.isUnstable(phases.T, bubble ? phases.Vx : phases.Vy, phases.P, plain),
              result.stability != fluid::Stability::Stable);
}

// The found points at a given value of one kind, each confirmed by the iteration.
std::vector<PhasePair> Confirmed(Given given, double value, Homogenisation kind,
                                 const PhaseReference& reference) {
    std::vector<PhasePair> confirmed;
    for (const PhasePair& point : Find(given, value, kind)) {
        const auto guess = fluid::HomogenisationApproach(given, point);
        const auto result = Iterate(given, value, kind, guess);
        EXPECT_EQ(result.outcome, Outcome::Converged) << "T " << point.T << " P " << point.P;
        EXPECT_EQ(result.stability, fluid::Stability::Stable);
        EXPECT_LE(RelativeError(result.phases.P, point.P), 1e-8);
        ExpectTrue(result, kind, reference);
        confirmed.push_back(result.phases);
    }
    return confirmed;
}

// A second liquid that has a vapour root too is none of the points.
TEST(Homogenisation, ListedPointsAreReachedByTheIteration) {
    for (const auto& [T, parts] : {std::pair{168.0, ComponentValues{0.16, 0.84}},
                                   {288.0, {0.87, 0, 0, 0.04, 0.05, 0, 0, 0, 0, 0, 0.04}}}) {
        ASSERT_NO_FATAL_FAILURE(AcceptParts(parts));
        for (const Homogenisation kind : kinds) {
            Confirmed(Given::Temperature, T, kind, PhaseReference());
        }
    }
}

// Points in ranges of two phases that are short, cold, nearly pure or nearly critical.
TEST(Homogenisation, PointsOfShortRangesAreFoundAndNoneIsMadeUp) {
    struct Case {
        ComponentValues parts;
        Given given;
        double value;
        std::vector<double> bubbles;
        std::vector<double> dews;
    };
    constexpr auto T = Given::Temperature;
    constexpr auto P = Given::Pressure;
    const std::vector<Case> cases = {
        {{0, 0, 0, 0, 0, 0, 0, 0, 0, 0.95, 0.05}, P, 4.7, {196.442367}, {198.264438}},
        {{0, 0.8, 0, 0, 0.1, 0, 0, 0, 0, 0.1}, P, 7.4, {298.941421}, {301.660590, 22.668258}},
        {{0, 0, 0.232571790040, 0, 0, 0.012800985619, 0.474347976487, 0.280279247854},
         P,
         0.0582149841,
         {17.7641524},
         {17.7636433}},
        {{0.009750034144, 0, 0.000142899418, 0, 0, 0, 0, 0, 0, 0.990107066438},
         P,
         1.9680615394106187,
         {156.678527738},
         {}},
        {{0.05, 0.95}, P, 0.03295, {120.1932546}, {171.7223413}},
        {{0, 0, 0, 0, 0.002, 0, 0, 0.998},
         T,
         112.95,
         {1.758618164},
         {1.488152147, 1.627529239, 1.644189348}},
        {{0, 0, 0, 0, 0.9999999999, 1e-10}, P, 0.19210721824709528, {189.090578}, {19.653412}},
        {{0, 0.7, 0, 0, 0, 0, 0, 0, 0, 0.3}, T, 273.5, {}, {6.981779, 7.099969}},
        {{0, 0.7, 0, 0, 0, 0, 0, 0, 0, 0.3}, P, 1500.0, {21.632057}, {}},
        {{0.9, 0, 0, 0, 0, 0, 0, 0, 0, 0.1}, T, 600.0, {23.39391635805086}, {}},
        {{0.25, 0, 0, 0, 0, 0, 0, 0, 0, 0.75}, T, 205.0, {}, {}},
        {{0.2, 0, 0, 0, 0, 0.8}, T, 125.0, {}, {}}};
    for (const Case& one : cases) {
        ASSERT_NO_FATAL_FAILURE(AcceptParts(one.parts));
        const bool findsP = one.given == T;
        for (const Homogenisation kind : kinds) {
            SCOPED_TRACE(one.value);
            const bool bubble = kind == Homogenisation::IntoLiquid;
            const auto found = Confirmed(one.given, one.value, kind, PhaseReference());
            for (const double expected : bubble ? one.bubbles : one.dews) {
                EXPECT_TRUE(std::any_of(found.begin(), found.end(), [&](const auto& pair) {
                    return RelativeError(findsP ? pair.P : pair.T, expected) < 1e-7;
                })) << expected;
            }
            if (!bubble || !one.bubbles.empty()) continue;
            EXPECT_TRUE(found.empty());
            const auto seed =
                fluid::HomogenisationSeed(fluid::AcceptedMixture(), one.given, one.value, kind);
            EXPECT_NE(Iterate(one.given, one.value, kind, seed).outcome, Outcome::Converged);
        }
    }
}

TEST(Homogenisation, TypedPressureLeadsToItsPointOrNowhere) {
    ASSERT_NO_FATAL_FAILURE(AcceptParts({0.9, 0, 0, 0, 0, 0, 0, 0, 0, 0.1}));
    for (const auto& [given, value, isExamined] : {std::tuple{Given::Temperature, 12.0, false},
                                                   {Given::Temperature, 900.0, true},
                                                   {Given::Pressure, 1e-95, false},
                                                   {Given::Pressure, 1e3, true}}) {
        EXPECT_EQ(Find(given, value, Homogenisation::IntoVapour).isExamined, isExamined) << value;
    }
    const auto point = Find(Given::Temperature, 600.0, Homogenisation::IntoLiquid).points.at(0);
    for (double P = 20.0; P < 26.0; P += 0.25) {
        const auto result =
            Iterate(Given::Temperature, 600.0, Homogenisation::IntoLiquid, {P, point.x, point.y});
        if (result.outcome != Outcome::Converged) continue;
        EXPECT_LE(RelativeError(result.phases.P, point.P), 1e-8) << P;
    }
}

TEST(PhaseIteration, PointOfAnUnstableFluidIsCalledUnstable) {
    ASSERT_NO_FATAL_FAILURE(AcceptParts({0.5, 0.5}));
    constexpr auto T = Given::Temperature;
    const auto seed = fluid::HomogenisationSeed(fluid::AcceptedMixture(), T, 100.0, *kinds.begin());
    const auto result = Iterate(T, 100.0, *kinds.begin(), seed);
    EXPECT_EQ(result.outcome, Outcome::Converged);
    EXPECT_EQ(result.stability, fluid::Stability::Unstable);
}

// Traces in one phase, pairs from which the prescribed steps lead away, and nearly critical ones in
// 50 digits.
TEST(Equilibrium, ColdAndAlikePhasesAreFoundAndKept) {
    struct Case {
        ComponentValues parts;
        double T;
        double V;
        double P;
        double fraction;
    };
    for (const auto& [parts, T, V, P, fraction] :
         {Case{{0.001385, 0, 0, 0, 0, 0.998615}, 36.5, 4235.7, 0.070635523755576, 0.999989861},
          {{0.5, 0, 0.5}, 80.0, 1000.0, 0.309411382428, 0.984156488},
          {{0, 0.1, 0, 0, 0, 0.9}, 34.0, 1000.0, 0.241778895688, 0.995563146},
          {{0.468, 0, 0, 0, 0, 0, 0, 0, 0, 0.532}, 195.0, 82.1, 4.8540707, 0.80722903},
          {{0.085, 0, 0, 0, 0, 0, 0, 0, 0, 0.915}, 220.0, 120.8, 7.1103049, 0.981058},
          {{0.03, 0, 0, 0, 0, 0, 0, 0, 0.97}, 165.0, 102.8, 6.4608852, 0.99076425},
          {{0, 0, 0, 0, 0, 0, 0, 0, 0, 0.98, 0.02}, 194.07, 129.3, 4.718368185946, 0.48014614614},
          {{0, 0, 0, 0, 0, 0, 0, 0, 0, 0.98, 0.02},
           194.0738,
           129.292406,
           4.718730929575,
           0.023919485697},
          {{0, 0, 0, 0, 0, 0, 0, 0, 0, 0.98, 0.02},
           194.075,
           129.3453,
           4.718773347951,
           0.499785572325},
          {{0, 0, 0, 3.782e-9, 0, 0.9998768221, 0, 0, 1.23174118e-4},
           13.670415,
           245886.587,
           4.61842132581e-4,
           0.999999983507}}) {
        ASSERT_NO_FATAL_FAILURE(AcceptParts(parts));
        const fluid::Mixture& bulk = fluid::AcceptedMixture();
        const auto start = fluid::FindEquilibriumApproach(bulk, T, V);
        EXPECT_EQ(start.kind, Kind::TwoPhases) << T;
        const auto result =
            fluid::IterateEquilibrium(bulk, T, V, start.volumeFraction, start.guess);
        EXPECT_EQ(result.stability, fluid::Stability::Stable);
        EXPECT_LE(RelativeError(result.phases.P, P), 1e-7) << T;
        EXPECT_NEAR(result.volumeFraction, fraction, 1e-8);
    }
}

// Two liquids whose roots are no liquid's and vapour's; one phase; a bulk just outside of the dew
// volume.
TEST(Equilibrium, WhatIsNoLiquidAndVapourIsSaid) {
    ASSERT_NO_FATAL_FAILURE(AcceptParts({0.934, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0.066}));
    const fluid::Mixture& bulk = fluid::AcceptedMixture();
    const auto liquids = fluid::FindEquilibriumApproach(bulk, 295.0, 40.4);
    EXPECT_EQ(liquids.kind, Kind::TwoLiquids);
    EXPECT_LE(RelativeError(liquids.guess.unknown, 3.6016395), 1e-7);
    EXPECT_NEAR(liquids.volumeFraction, 0.11794, 1e-5);
    ASSERT_NO_FATAL_FAILURE(AcceptParts({0.546857943362, 0, 0, 0, 0, 0.453142056638}));
    const double T = 428.81736755736085;
    const auto start = fluid::FindEquilibriumApproach(bulk, T, 480.0);
    const auto outside =
        fluid::IterateEquilibrium(bulk, T, 480.61464932286259, start.volumeFraction, start.guess);
    EXPECT_FALSE(outside.outcome == Outcome::Converged && outside.fractionInRange);
    AcceptPure(0);
    const auto one = fluid::FindEquilibriumApproach(bulk, 700.0, 90.0);
    const auto same = fluid::IterateEquilibrium(bulk, 700.0, 90.0, one.volumeFraction, one.guess);
    EXPECT_EQ(same.outcome, Outcome::Trivial);
    EXPECT_EQ(same.phases.Vx, same.phases.Vy);
    EXPECT_GT(same.phases.Vx, 0.0);
}

TEST(PhaseIteration, GarbageEndsInATrueResultOrNone) {
    ASSERT_NO_FATAL_FAILURE(Accept(ReadGolden("phase_equilibria.csv", 27).front()));
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const ComponentValues half = {0.5, 0.5};
    const fluid::Mixture& bulk = fluid::AcceptedMixture();
    const PhaseReference reference;
    for (const double bad : {0.0, -1.0, 1e-320, 1e-300, 1e-80, 1e80, 1e300, inf, -inf, nan}) {
        SCOPED_TRACE(bad);
        for (const Given given : {Given::Temperature, Given::Pressure}) {
            for (const Homogenisation kind : kinds) {
                EXPECT_EQ(Find(given, bad, kind).points.size(), 0U);
                for (const auto& [value, guess] : {std::pair{bad, PhaseGuess{bad, half, half}},
                                                   {bad, {200.0, half, half}},
                                                   {200.0, {bad, half, half}},
                                                   {200.0, {3.0, {bad, bad}, half}},
                                                   {200.0, {3.0, half, {nan, 1.0}}},
                                                   {200.0, {3.0, half, {}}}}) {
                    const auto result = Iterate(given, value, kind, guess);
                    if (result.outcome == Outcome::Converged) ExpectTrue(result, kind, reference);
                }
            }
        }
        for (const auto& [T, V] : {std::pair{bad, 100.0}, {220.0, bad}}) {
            const auto start = fluid::FindEquilibriumApproach(bulk, T, V);
            EXPECT_TRUE(start.kind == Kind::Homogeneous || start.kind == Kind::NotFound);
        }
        for (const auto& [T, V, P, F] :
             {std::array{bad, 100.0, 1.0, 0.5}, std::array{220.0, bad, 1.0, 0.5},
              std::array{220.0, 100.0, 1.0, bad}, std::array{220.0, 100.0, bad, 0.5}}) {
            const auto result = fluid::IterateEquilibrium(bulk, T, V, F, {P, half, half});
            EXPECT_TRUE(std::isfinite(result.volumeFraction) && std::isfinite(result.phases.Vx) &&
                        std::isfinite(result.phases.P));
        }
    }
}

// Two liquids and a vapour could coexist, of which one pair may have a negative pressure.
TEST(Equilibrium, ThirdPhasesAndHomogeneityAreTold) {
    const fluid::Mixture& bulk = fluid::AcceptedMixture();
    for (const auto& [T, V, parts] :
         {std::tuple{171.0, 94.71, ComponentValues{0.42, 0, 0, 0, 0, 0, 0, 0, 0.13, 0, 0.45}},
          {194.31066, 43.395, {0.89, 0, 0, 0, 0, 0, 0, 0, 0, 0.11, 0}}}) {
        ASSERT_NO_FATAL_FAILURE(AcceptParts(parts));
        const auto start = fluid::FindEquilibriumApproach(bulk, T, V);
        EXPECT_EQ(start.kind, Kind::Metastable);
        const auto result =
            fluid::IterateEquilibrium(bulk, T, V, start.volumeFraction, start.guess);
        EXPECT_EQ(result.outcome, Outcome::Converged);
        EXPECT_NE(result.stability, fluid::Stability::Stable);
    }
    for (const auto& [T, volume] : {std::pair{1200.0, 100.0}, {400.0, 1e5}, {194.0, 30.0}}) {
        const auto seed = fluid::FindEquilibriumApproach(bulk, T, volume);
        EXPECT_EQ(seed.kind, Kind::Homogeneous) << T;
        EXPECT_GT(seed.guess.unknown, 0.0);
    }
}

// A fluid that has no second phase, and a copy beside one that has.
TEST(PhaseIteration, OnePhaseIsNeverShownAsTwo) {
    for (const auto& [parts, T, isStable, guess] :
         {std::tuple{ComponentValues{0, 0.1, 0, 0, 0, 0, 0, 0, 0, 0.9}, 230.0, true,
                     PhaseGuess{5.0, {0.12, 0.88}, {0.08, 0.92}}},
          {{0, 0.1, 0, 0, 0, 0, 0, 0, 0, 0.9}, 300.0, true, {5.0, {0.12, 0.88}, {0.08, 0.92}}},
          {{0, 0.125, 0, 0, 0.875}, 384.0, false, {12.0, {0.12, 0.88}, {0.14, 0.86}}}}) {
        ASSERT_NO_FATAL_FAILURE(AcceptParts(parts));
        for (const Homogenisation kind : kinds) {
            EXPECT_EQ(Find(Given::Temperature, T, kind).points.empty(), isStable) << T;
            EXPECT_EQ(Iterate(Given::Temperature, T, kind, guess).outcome, Outcome::Trivial) << T;
        }
    }
}

TEST(FirstApproach, SeedsAreAbove0AndGoThereAndBackWithTheRatiosOfWilson) {
    std::mt19937_64 random(13);
    for (int i = 0; i < 50; ++i) {
        AcceptRandomMixture(random, 11);
        for (const double P : {1e-4, 0.1, 3.0, 30.0}) {
            const auto seed = fluid::HomogenisationSeed(fluid::AcceptedMixture(), Given::Pressure,
                                                        P, kinds.begin()[0]);
            const auto back = fluid::HomogenisationSeed(
                fluid::AcceptedMixture(), Given::Temperature, seed.unknown, kinds.begin()[1]);
            EXPECT_LE(RelativeError(back.unknown, P), 1e-6) << seed.unknown;
            EXPECT_LE(LargestDifference(seed.x, fluid::AcceptedMixture().fractions), 1e-12);
            EXPECT_LE(LargestDifference(back.y, fluid::AcceptedMixture().fractions), 1e-12);
            // ln(y/x) of a gas over that of the first one, from Wilson's equation; in the deep cold
            // there is no room for it.
            constexpr double deepCold = 20.0;
            const double T = seed.unknown;
            if (T < deepCold) continue;
            const auto wilson = [T](std::size_t k) {
                return std::log(fluid::Pc[k]) +
                       5.373 * (1.0 + fluid::omega[k]) * (1.0 - fluid::Tc[k] / T);
            };
            for (std::size_t k = 1; k < fluid::AcceptedMixture().count; ++k) {
                const double ratio = wilson(k) - wilson(0);
                for (const auto& [x, y] : {std::pair(seed.x, seed.y), std::pair(back.x, back.y)}) {
                    EXPECT_NEAR(std::log(y[k] / x[k] * x[0] / y[0]), ratio, 1e-9) << T;
                }
            }
        }
        for (const double value : {1e-300, 1e-5, 1.0, 1e308}) {
            for (const Given given : {Given::Temperature, Given::Pressure}) {
                const double unknown = fluid::HomogenisationSeed(fluid::AcceptedMixture(), given,
                                                                 value, kinds.begin()[0])
                                           .unknown;
                EXPECT_TRUE(unknown > 0.0 && std::isfinite(unknown)) << value << ' ' << unknown;
            }
        }
    }
}

// At any temperature and pressure a fluid is one stable phase, by brute force too, or two.
TEST(FluidState, EveryStateIsOneStablePhaseOrTwo) {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> share(0.0, 1.0);
    int two = 0;
    for (int i = 0; i < 100; ++i) {
        AcceptAnyMixture(random);
        const PhaseReference reference;
        const fluid::Mixture& mixture = fluid::AcceptedMixture();
        for (int j = 0; j < 8; ++j) {
            const double T = fluid::HottestT(mixture) * (0.03 + 0.7 * share(random));
            const double P = std::pow(10.0, 6.0 * share(random) - 4.0);
            const auto state = fluid::StateAt(mixture, T, P);
            if (!state.isExamined) continue;
            SCOPED_TRACE(testing::Message() << mixture.count << " gases " << T << ' ' << P);
            EXPECT_NE(state.stable.has_value(), state.split.has_value());
            if (state.stable) {
                EXPECT_FALSE(reference.isUnstable(T, state.volumes[*state.stable].V, P, 1e-7));
            }
            two += state.split ? 1 : 0;
        }
    }
    EXPECT_GT(two, 30);
}

}  // namespace
