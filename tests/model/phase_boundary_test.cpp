#include "model/phase_boundary.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>

#include "model/composition.h"
#include "model/van_der_waals.h"
#include "tests/model/golden.h"

namespace {

using fluid::BoundaryPoint;
using fluid::ComponentValues;
using fluid::Stability;

std::optional<BoundaryPoint> BoundaryAt(double V) {
    return fluid::FindBoundary(fluid::AcceptedMixture(), V);
}

fluid::IsothermStability StabilityAt(double T, double smallestV) {
    return {fluid::AcceptedMixture(), T, smallestV};
}

// The points are those that the homogenisation conditions are tested with, in 60 digits.
TEST(PhaseBoundaryTest, IsochoresMeetItAtTheBubbleAndDewPoints) {
    double worstT = 0.0;
    double worstP = 0.0;
    double worstOther = 0.0;
    for (const auto& row : ReadGolden("phase_equilibria.csv", 27)) {
        Accept(std::span(row).first(fluid::componentCount));
        const bool bubble = row[11] == 0.0;
        const double V = bubble ? row[14] : row[15];
        const double otherV = bubble ? row[15] : row[14];
        const auto point = BoundaryAt(V);
        ASSERT_TRUE(point) << V;
        worstT = std::max(worstT, RelativeError(point->T, row[12]));
        worstP = std::max(worstP, RelativeError(point->P, row[13]));
        worstOther = std::max(worstOther, RelativeError(point->otherV, otherV));
        EXPECT_EQ(point->kind(),
                  bubble ? fluid::Homogenisation::IntoLiquid : fluid::Homogenisation::IntoVapour);
    }
    EXPECT_LT(worstT, 1e-12);
    EXPECT_LT(worstP, 2e-11);
    EXPECT_LT(worstOther, 1e-10);
}

// Another liquid comes before the vapour; T_h and P in 40 digits.
TEST(PhaseBoundaryTest, ColdLiquidsSplitInTwoLiquids) {
    ASSERT_NO_FATAL_FAILURE(Accept(ComponentValues{0, 0, 0, 0, 0.08e12, 0, 0, 0, 0, 0, 0.92e12}));
    const auto point = BoundaryAt(64.532841578208092);
    ASSERT_TRUE(point);
    EXPECT_LE(RelativeError(point->T, 54.09474564384271741), 1e-14);
    EXPECT_LE(RelativeError(point->P, 146.7539407805686575), 1e-13);
}

// A corner at three quarters of the way between two places that are sampled, one at which what is
// followed leaps, one where it is not the highest, and a second phase in the dense limit.
TEST(PhaseBoundaryTest, PointsHaveTheTemperatureOrPressureThatWasAskedForAndTheFirstPhase) {
    const ComponentValues cold = {0, 25885, 1957309773, 998041889643, 0, 0, 0, 0, 0, 774699};
    const ComponentValues hidden = {784011753, 0, 0, 0, 0, 0, 0, 0, 721826521990, 277389466257};
    const ComponentValues higher = {1425039157, 0, 0, 0, 0, 0, 0, 0, 0, 0, 998574960843};
    const ComponentValues dense = {974244291515, 0, 0, 0, 0, 25755708485};
    for (const auto& [counts, P] : {std::pair{cold, 0.18},
                                    {cold, 0.36},
                                    {hidden, 4.312628},
                                    {higher, 0.076249},
                                    {dense, 2.8e11}}) {
        ASSERT_NO_FATAL_FAILURE(Accept(counts));
        const fluid::PhaseBoundary boundary(fluid::AcceptedMixture());
        for (const auto& sample : boundary.atPressure(P)) {
            EXPECT_NEAR(sample.lnP, std::log(P), 1e-9) << std::exp(sample.lnT);
            const auto alone = fluid::BoundaryAt(fluid::AcceptedMixture(), sample.x);
            EXPECT_NEAR(alone ? alone->lnT : 0.0, sample.lnT, 1e-13) << P;
            for (const auto& same : boundary.atTemperature(std::exp(sample.lnT))) {
                EXPECT_NEAR(same.lnT, sample.lnT, 1e-13);
            }
        }
    }
}

// The vapour beside cold water is of 1e-30 mol/cm3 and less; the pressure of the liquid is 0 to
// rounding, and its isochore meets the boundary where a·(V - b) = R·T·V².
TEST(PhaseBoundaryTest, ColdLiquidsMeetTheBoundary) {
    AcceptPure(0);
    const double a = fluid::AcceptedMixture().attraction;
    const double b = fluid::AcceptedMixture().covolume;
    double before = 0.0;
    for (double V = 31.0; V < 36.5; V += 0.1) {
        const auto point = BoundaryAt(V);
        ASSERT_TRUE(point) << V;
        const double T = a * (V - b) / (fluid::R * V * V);
        EXPECT_GT(point->T, before) << V;
        EXPECT_GE(point->T, T * (1.0 - 1e-12)) << V;
        EXPECT_LT(point->T, T * (1.0 + 1e-3)) << V;
        EXPECT_GT(point->P, 0.0) << V;
        EXPECT_EQ(point->kind(), fluid::Homogenisation::IntoLiquid) << V;
        before = point->T;
    }
}

TEST(PhaseBoundaryTest, CriticalPointAndTheEndsOfTheRangesGiveNoNumber) {
    AcceptPure(1);
    const double b = fluid::AcceptedMixture().covolume;
    const auto critical = BoundaryAt(3.0 * b);
    ASSERT_TRUE(critical);
    EXPECT_NEAR(critical->T, fluid::Tc[0], 1e-7 * fluid::Tc[0]);
    EXPECT_NEAR(critical->P, fluid::Pc[0], 1e-6 * fluid::Pc[0]);
    for (const double V : {b, 0.5 * b, 0.0, -1.0, 1e300}) EXPECT_FALSE(BoundaryAt(V)) << V;
    const auto cold = StabilityAt(1.0, 1.1 * b);
    EXPECT_EQ(cold.at(2.0 * b), Stability::Unstable);
    EXPECT_EQ(cold.at(1e9 * b), Stability::Unknown);
    EXPECT_EQ(StabilityAt(1e5, 1.1 * b).at(2.0 * b), Stability::Stable);
}

}  // namespace
