#include "model/molar_volume.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>
#include <vector>

#include "model/composition.h"
#include "model/cubic.h"
#include "model/van_der_waals.h"
#include "tests/model/golden.h"

namespace {

constexpr double step = 1e-4;

// Close to b and far away a difference of pressures has no digit left.
TEST(MolarVolume, SlopeHasItsSignAndValue) {
    AcceptPure(0);
    const double aMix = fluid::a[0][0];
    const double bMix = fluid::b[0];
    for (const double T : {1.0, 300.0, 3000.0}) {
        for (const double V :
             {bMix + 1e-14, bMix + step, bMix * (1.0 + 1e-9), 1e12, 1e160, 1e300}) {
            const double slope = fluid::IsothermSlope(aMix, bMix, T, V, step);
            EXPECT_LT(slope, 0.0) << V;
            EXPECT_TRUE(std::isfinite(slope)) << V;
        }
    }
    // The state without a volume: the difference of pressures around V = 0.
    EXPECT_NEAR(fluid::IsothermSlope(aMix, bMix, 300.0, 0.0, step),
                -fluid::R * 300.0 / (bMix * bMix), 1e-8);
    EXPECT_FALSE(fluid::PartialMolarVolumes(fluid::AcceptedMixture(), 300.0, 0.0));
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
        const auto gas = fluid::PureGasVolume(fluid::AcceptedMixture(), 0, T, P);
        EXPECT_EQ(gas.multiple, multiple);
        EXPECT_EQ(gas.volume, roots[static_cast<std::size_t>(root)].real);
        EXPECT_EQ(gas.volume == 0.0, P == fluid::Pc[0]);
    }
}

}  // namespace
