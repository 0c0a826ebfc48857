#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>
#include <span>
#include <vector>

#include "model/critical_point.h"
#include "model/fluid_model.h"
#include "model/phase_diagram.h"
#include "model/spinodal.h"
#include "tests/model/critical_reference.h"
#include "tests/model/golden.h"
#include "tests/model/phase_reference.h"

namespace {

using fluid::CriticalPoint;
using fluid::SpinodalVolumes;
using fluid::Stability;

fluid::CriticalPoints FindPoints() {
    return fluid::FindCriticalPoints(fluid::AcceptedMixture());
}

fluid::Spinodal Limit(bool mechanical) {
    return fluid::SpinodalOf(fluid::AcceptedMixture(), mechanical
                                                           ? fluid::SpinodalKind::Mechanical
                                                           : fluid::SpinodalKind::Diffusional);
}

double RandomT(std::mt19937_64& random) {
    return std::exp(std::uniform_real_distribution(std::log(5.0), std::log(700.0))(random));
}

TEST(CriticalPointTest, PointsAreThoseOfSixtyDigits) {
    std::vector<double> composition;
    std::size_t number = 0;
    double worst = 0.0;
    for (const auto& row : ReadGolden("critical_points.csv", 17)) {
        const std::vector<double> counts(row.begin(), row.begin() + 11);
        number = counts == composition ? number + 1 : 0;
        composition = counts;
        Accept(counts);
        const auto points = FindPoints();
        ASSERT_EQ(static_cast<double>(points.count), row[11]);
        if (points.count == 0) continue;
        const CriticalPoint& point = points.points[number];
        const double attraction = row[12] * fluid::R / row[15] - row[13];
        worst = std::max({worst, RelativeError(point.T, row[12]), RelativeError(point.V, row[14]),
                          Error(point.P, row[13], std::abs(row[13]) + attraction),
                          RelativeError(point.freeVolume, row[15])});
        EXPECT_EQ(point.isLocallyStable, row[16] == 1.0);
    }
    RecordProperty("worst", std::to_string(worst * 1e15));
    EXPECT_LT(worst, 1e-12);
}

// Other mixtures: --gtest_shuffle --gtest_repeat=100
TEST(CriticalPointTest, PointsAndSpinodalsAreThoseOfAGridAndWhatSplitsIsNotCalledStable) {
    std::mt19937_64 random(
        static_cast<std::uint64_t>(testing::UnitTest::GetInstance()->random_seed()));
    double worst = 0.0;  // of the conditions
    std::array<int, 5> counts{};
    std::array<int, 4> kinds{};
    for (int mixture = 0; mixture < 1500; ++mixture) {
        AcceptAnyMixture(random);
        const CriticalReference reference;
        const PhaseReference judge;
        const auto keep = [&](double freeVolume, double T) {
            const long double ratio = reference.temperature(freeVolume) / T;
            worst = std::max(worst, static_cast<double>(std::abs(ratio - 1.0L)));
        };
        const auto points = FindPoints();
        const std::vector<double> places = reference.roots(0.02);
        ASSERT_EQ(points.count, places.size()) << mixture;
        ++counts.at(points.count);
        for (std::size_t i = 0; i < places.size(); ++i) {
            const CriticalPoint& point = points.points[i];
            EXPECT_LT(RelativeError(point.freeVolume, places[i]), 1e-9);
            const auto condition = std::abs(reference.condition(point.freeVolume));
            worst = std::max(worst, static_cast<double>(condition));
            keep(point.freeVolume, point.T);
            const auto kind = fluid::CriticalStability(fluid::AcceptedMixture(), point);
            ++kinds.at(static_cast<std::size_t>(kind));
            if (kind == Stability::Unknown) continue;
            const bool stable = kind == Stability::Stable;
            EXPECT_EQ(stable, !judge.isUnstable(point.T, point.V, point.P)) << point.T;
            EXPECT_TRUE(point.P > 0.0 || !stable);
        }
        const double T = RandomT(random);
        const double b = fluid::AcceptedMixture().covolume;
        for (const double V : Limit(false).volumes(T)) keep(V - b, T);
        for (const double V : Limit(true).volumes(T)) {
            worst = std::max(worst, RelativeError(Limit(true).temperature(V), T));
            EXPECT_LE(T, Limit(false).temperature(V) * (1.0 + 1e-12));
        }
    }
    EXPECT_LT(worst, 1e-11);
    for (const int count : {counts[0], counts[1], counts[2], kinds[0], kinds[1], kinds[2]}) {
        EXPECT_GT(count, 10);
    }
}

TEST(SpinodalTest, VolumesAreThoseOfSixtyDigits) {
    double worst = 0.0;
    for (const auto& row : ReadGolden("spinodals.csv", 17)) {
        Accept(std::span(row).first(fluid::componentCount));
        const SpinodalVolumes found = Limit(row[11] == 1.0).volumes(row[12]);
        ASSERT_EQ(static_cast<double>(found.count), row[13]);
        for (std::size_t i = 0; i < found.count; ++i) {
            // Beside a critical point the volume follows the root of the distance.
            const double other = row[14 + (i > 0 ? i - 1 : std::min(1UL, found.count - 1))];
            const double apart = found.count > 1 ? std::abs(row[14 + i] / other - 1.0) : 1.0;
            const double error = RelativeError(found.volumes[i], row[14 + i]);
            worst = std::max(worst, error * std::min(1.0, apart));
        }
    }
    RecordProperty("worst", std::to_string(worst * 1e15));
    EXPECT_LT(worst, 1e-13);
}

TEST(PhaseDiagramTest, CurvesHaveNoGapAndReachCriticalPointsAndTheEndsOfTheirRange) {
    std::mt19937_64 random(10);
    int found = 0;
    for (int mixture = 0; mixture < 40; ++mixture) {
        AcceptRandomMixture(random, 5);
        const auto critical = FindPoints();
        const auto pieces = fluid::TraceBoundary(fluid::AcceptedMixture(), critical);
        ASSERT_FALSE(pieces.empty());
        for (std::size_t i = 1; i < pieces.size(); ++i) {
            EXPECT_EQ(pieces[i].points.front().V, pieces[i - 1].points.back().V);
            EXPECT_EQ(pieces[i].points.front().P, pieces[i - 1].points.back().P);
        }
        for (const CriticalPoint& point : critical) {
            const auto kind = fluid::CriticalStability(fluid::AcceptedMixture(), point);
            if (kind != Stability::Stable) continue;
            ++found;
            EXPECT_TRUE(std::any_of(pieces.begin(), pieces.end(), [&](const auto& piece) {
                return piece.points.front().V == point.V || piece.points.back().V == point.V;
            })) << point.V;
        }
        const double T = RandomT(random);
        const SpinodalVolumes volumes = Limit(false).volumes(T);
        std::size_t ends = 0;
        for (const auto& curve : fluid::TraceSpinodal(
                 fluid::AcceptedMixture(), fluid::SpinodalKind::Diffusional, T, 2.0 * T)) {
            for (const auto& point : {curve.front(), curve.back()}) {
                ends += std::count(volumes.begin(), volumes.end(), point.V) > 0 ? 1 : 0;
            }
        }
        EXPECT_EQ(ends, volumes.count) << T;
    }
    EXPECT_GT(found, 10);
}

TEST(PhaseDiagramTest, BubblePointsEndWhereTheyBecomeDewPoints) {
    Accept(std::array<double, fluid::componentCount>{5e11, 5e11});
    const auto pieces = fluid::TraceBoundary(fluid::AcceptedMixture(), FindPoints());
    ASSERT_EQ(pieces.size(), 3U);
    const double V = pieces[1].points.front().V;  // the dense dew points end without being critical
    for (const double side : {-1.0, 1.0}) {
        const auto point = fluid::FindBoundary(fluid::AcceptedMixture(), V * (1.0 + 1e-8 * side));
        ASSERT_TRUE(point);
        EXPECT_EQ(point->kind(), pieces[side < 0.0 ? 0 : 1].kind);
    }
}

TEST(SpinodalTest, ArgumentsOutsideTheRangeGiveNoNumber) {
    AcceptPure(1);
    const double b = fluid::AcceptedMixture().covolume;
    for (const bool mechanical : {false, true}) {
        for (const double T : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN(), 1e6}) {
            EXPECT_EQ(Limit(mechanical).volumes(T).count, 0U) << T;
        }
        for (const double V : {0.0, -1.0, b}) EXPECT_EQ(Limit(mechanical).temperature(V), 0.0) << V;
        EXPECT_NEAR(Limit(mechanical).temperature(3.0 * b), fluid::Tc[0], 1e-12 * fluid::Tc[0]);
    }
    EXPECT_EQ(fluid::FindCriticalPoints({}).count, 0U);
    EXPECT_EQ(fluid::SpinodalOf({}, fluid::SpinodalKind::Diffusional).volumes(300.0).count, 0U);
}

}  // namespace
