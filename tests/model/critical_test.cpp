#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
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
using fluid::Fractions;
using fluid::LastComponent;
using fluid::SpinodalVolumes;
using fluid::Stability;

fluid::CriticalPoints FindPoints() {
    return fluid::FindCriticalPoints(LastComponent, Fractions);
}

SpinodalVolumes Volumes(bool mechanical, double T) {
    return mechanical ? fluid::MechanicalSpinodal(LastComponent, Fractions, T)
                      : fluid::DiffusionalSpinodal(LastComponent, Fractions, T);
}

double SpinodalT(bool mechanical, double V) {
    return mechanical ? fluid::MechanicalSpinodalTemperature(LastComponent, Fractions, V)
                      : fluid::DiffusionalSpinodalTemperature(LastComponent, Fractions, V);
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

TEST(CriticalPointTest, CountAndPlacesAreThoseOfAFineGrid) {
    std::mt19937_64 random(7);
    std::array<int, 5> counts{};
    for (int mixture = 0; mixture < 300; ++mixture) {
        AcceptRandomMixture(random, 11);
        const CriticalReference reference;
        const auto points = FindPoints();
        const std::vector<double> places = reference.roots(0.05);
        ASSERT_EQ(points.count, places.size());
        for (std::size_t i = 0; i < places.size(); ++i) {
            EXPECT_LT(RelativeError(points.points[i].freeVolume, places[i]), 1e-10);
        }
        ++counts[points.count];
    }
    EXPECT_GT(counts[0], 10);
    EXPECT_GT(counts[1], 10);
    EXPECT_GT(counts[2], 10);
}

TEST(CriticalPointTest, ConditionsHoldAndWhatSplitsIsNotCalledStable) {
    std::mt19937_64 random(8);
    long double worst = 0.0L;
    std::array<int, 3> kinds{};
    for (int mixture = 0; mixture < 400; ++mixture) {
        AcceptRandomMixture(random, 11);
        const CriticalReference reference;
        const PhaseReference judge;
        for (const CriticalPoint& point : FindPoints()) {
            worst = std::max(worst, std::abs(reference.condition(point.freeVolume)));
            worst =
                std::max(worst, std::abs(reference.temperature(point.freeVolume) / point.T - 1.0L));
            const auto kind = fluid::CriticalStability(LastComponent, Fractions, point);
            if (kind == Stability::Unknown) continue;
            const bool stable = kind == Stability::Stable;
            EXPECT_EQ(stable, !judge.judge(point.T, point.V, point.P).unstable) << point.T;
            EXPECT_TRUE(point.P > 0.0 || !stable);
            ++kinds.at(static_cast<std::size_t>(kind));
        }
    }
    EXPECT_LT(worst, 1e-12L);
    for (const int kind : kinds) EXPECT_GT(kind, 10);
}

TEST(SpinodalTest, VolumesAreThoseOfSixtyDigits) {
    double worst = 0.0;
    for (const auto& row : ReadGolden("spinodals.csv", 17)) {
        Accept(std::span(row).first(fluid::ComponentCount));
        const SpinodalVolumes found = Volumes(row[11] == 1.0, row[12]);
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

TEST(SpinodalTest, ConditionHoldsAndTheMechanicalLiesInsideTheDiffusional) {
    std::mt19937_64 random(9);
    double worst = 0.0;
    for (int mixture = 0; mixture < 500; ++mixture) {
        AcceptRandomMixture(random, 11);
        const double T = RandomT(random);
        for (const bool mechanical : {false, true}) {
            for (const double V : Volumes(mechanical, T)) {
                worst = std::max(worst, RelativeError(SpinodalT(mechanical, V), T));
                EXPECT_LE(SpinodalT(true, V), SpinodalT(false, V) * (1.0 + 1e-15));
            }
        }
        const CriticalReference reference;
        const double b = fluid::MixtureB(LastComponent, Fractions);
        for (const double V : Volumes(false, T)) {
            worst = std::max(
                worst, std::abs(static_cast<double>(reference.temperature(V - b) / T - 1.0L)));
        }
    }
    EXPECT_LT(worst, 1e-12);
}

TEST(PhaseDiagramTest, CurvesHaveNoGapAndReachCriticalPointsAndTheEndsOfTheirRange) {
    std::mt19937_64 random(10);
    int found = 0;
    for (int mixture = 0; mixture < 40; ++mixture) {
        AcceptRandomMixture(random, 5);
        const auto critical = FindPoints();
        const auto pieces = fluid::TraceBoundary(LastComponent, Fractions, critical);
        ASSERT_FALSE(pieces.empty());
        for (std::size_t i = 1; i < pieces.size(); ++i) {
            EXPECT_EQ(pieces[i].points.front().V, pieces[i - 1].points.back().V);
            EXPECT_EQ(pieces[i].points.front().P, pieces[i - 1].points.back().P);
        }
        for (const CriticalPoint& point : critical) {
            const auto kind = fluid::CriticalStability(LastComponent, Fractions, point);
            if (kind != Stability::Stable) continue;
            ++found;
            EXPECT_TRUE(std::any_of(pieces.begin(), pieces.end(), [&](const auto& piece) {
                return piece.points.front().V == point.V || piece.points.back().V == point.V;
            })) << point.V;
        }
        const double T = RandomT(random);
        const SpinodalVolumes volumes = Volumes(false, T);
        std::size_t ends = 0;
        for (const auto& curve : fluid::TraceSpinodal(
                 LastComponent, Fractions, fluid::SpinodalKind::Diffusional, T, 2.0 * T)) {
            for (const auto& point : {curve.front(), curve.back()}) {
                ends += std::count(volumes.begin(), volumes.end(), point.V) > 0 ? 1 : 0;
            }
        }
        EXPECT_EQ(ends, volumes.count) << T;
    }
    EXPECT_GT(found, 10);
}

TEST(PhaseDiagramTest, BubblePointsEndWhereTheyBecomeDewPoints) {
    Accept(std::array<double, fluid::ComponentCount>{5e11, 5e11});
    const auto pieces = fluid::TraceBoundary(LastComponent, Fractions, FindPoints());
    ASSERT_EQ(pieces.size(), 3U);
    const double V = pieces[1].points.front().V;  // the dense dew points end without being critical
    for (const double side : {-1.0, 1.0}) {
        const auto point = fluid::FindBoundary(LastComponent, Fractions, V * (1.0 + 1e-8 * side));
        ASSERT_TRUE(point);
        EXPECT_EQ(point->kind(), pieces[side < 0.0 ? 0 : 1].kind);
    }
}

TEST(SpinodalTest, ArgumentsOutsideTheRangeGiveNoNumber) {
    AcceptPure(1);
    const double b = fluid::MixtureB(LastComponent, Fractions);
    for (const bool mechanical : {false, true}) {
        for (const double T : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN(), 1e6}) {
            EXPECT_EQ(Volumes(mechanical, T).count, 0U) << T;
        }
        for (const double V : {0.0, -1.0, b}) EXPECT_EQ(SpinodalT(mechanical, V), 0.0) << V;
        EXPECT_NEAR(SpinodalT(mechanical, 3.0 * b), fluid::Tc[0], 1e-12 * fluid::Tc[0]);
    }
    EXPECT_EQ(fluid::FindCriticalPoints(-1, {}).count, 0U);
    EXPECT_EQ(fluid::DiffusionalSpinodal(-1, {}, 300.0).count, 0U);
}

}  // namespace
