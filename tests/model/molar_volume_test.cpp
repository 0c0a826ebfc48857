#include "model/molar_volume.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <tuple>
#include <vector>

#include "model/composition.h"
#include "model/cubic.h"
#include "model/van_der_waals.h"
#include "tests/model/golden.h"

namespace {

constexpr double Step = 1e-4;

// Random states of all three-root and one-root regions, for a mixture of all eleven gases.
TEST(MolarVolume, RealRootsObeyTheEquationOfState) {
    Accept(ReadGolden("van_der_waals.csv", 20).back());
    const auto last = fluid::LastComponent;
    const auto& x = fluid::Fractions;
    const double aMix = fluid::MixtureA(last, x);
    const double bMix = fluid::MixtureB(last, x);
    std::mt19937_64 random(33);
    std::uniform_real_distribution<double> temperatures(0.05, 5.0);
    std::uniform_real_distribution<double> logPressures(-12.0, 4.0);
    int threeReal = 0;
    for (int trial = 0; trial < 20000; ++trial) {
        const double T = temperatures(random) * 8.0 * aMix / (27.0 * bMix * fluid::R);
        const double P = std::pow(10.0, logPressures(random));
        const auto roots = fluid::VolumeCubicSolver(aMix, bMix, T, P);
        if (roots[1].isReal()) {
            ++threeReal;
            ASSERT_LT(roots[1].real, roots[0].real);
            ASSERT_LT(roots[0].real, roots[2].real);
            ASSERT_GT(fluid::IsothermSlope(aMix, bMix, T, roots[0].real, Step), 0.0);
        }
        for (std::size_t i = 0; i < roots.size(); ++i) {
            if (!roots[i].isReal()) continue;
            const double V = roots[i].real;
            const double repulsion = fluid::R * T / (V - bMix);
            ASSERT_LE(Error(fluid::PressureVdW(aMix, bMix, T, V), P, repulsion), 1e-12);
            if (i != 0 || !roots[1].isReal()) {
                ASSERT_LT(fluid::IsothermSlope(aMix, bMix, T, V, Step), 0.0);
            }
            const auto partial = fluid::PartialMolarVolumes(last, x, T, V);
            ASSERT_TRUE(partial);
            ASSERT_LE(RelativeError(fluid::IdealMixtureVolume(last, x, *partial), V), 1e-12);
        }
    }
    EXPECT_GT(threeReal, 1000);
}

// Close to b and far away a difference of pressures has no digit left.
TEST(MolarVolume, SlopeHasItsSignAndValue) {
    AcceptPure(0);
    const double aMix = fluid::a[0][0];
    const double bMix = fluid::b[0];
    for (const double T : {1.0, 300.0, 3000.0}) {
        for (const double V :
             {bMix + 1e-14, bMix + Step, bMix * (1.0 + 1e-9), 1e12, 1e160, 1e300}) {
            const double slope = fluid::IsothermSlope(aMix, bMix, T, V, Step);
            EXPECT_LT(slope, 0.0) << V;
            EXPECT_TRUE(std::isfinite(slope)) << V;
        }
    }
    // The state without a volume: the difference of pressures around V = 0.
    EXPECT_NEAR(fluid::IsothermSlope(aMix, bMix, 300.0, 0.0, Step),
                -fluid::R * 300.0 / (bMix * bMix), 1e-8);
    EXPECT_FALSE(fluid::PartialMolarVolumes(0, fluid::Fractions, 300.0, 0.0));
}

TEST(MolarVolume, RootsOfPureGasesAreChosenInTheOrderOfTheTests) {
    const std::vector<std::vector<double>> cases = {
        // r0, r1, r2, chosen
        {0, 0, 5, 5}, {0, 5, 0, 5},  {5, 0, 0, 5}, {-1, -2, 7, 7},   {2, 1, 3, 3},   {3, 2, 1, 3},
        {0, 2, 3, 3}, {4, 4, -1, 4}, {0, 0, 0, 0}, {-1, -2, -3, -1}, {-5, 0, -2, -5}};
    for (const auto& row : cases) EXPECT_EQ(fluid::PureGasRoot(row[0], row[1], row[2]), row[3]);
}

TEST(MolarVolume, PureGasesTakeTheVapourWhereThereAreThreeRoots) {
    AcceptPure(3);
    // Three volumes, one volume, and p·q of the cubic exactly 0.
    for (const auto& [T, P, root, multiple] :
         {std::tuple{300.0, 2.0, 2, true}, {900.0, 2.0, 0, false}, {373.539, 8.94, 0, false}}) {
        const auto roots = fluid::VolumeCubicSolver(fluid::a[0][0], fluid::b[0], T, P);
        const auto gas = fluid::PureGasVolume(0, T, P);
        EXPECT_EQ(gas.multiple, multiple);
        EXPECT_EQ(gas.volume, roots[static_cast<std::size_t>(root)].real);
        EXPECT_EQ(gas.volume == 0.0, P == fluid::Pc[0]);
    }
}

}  // namespace
