#include "model/cubic.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <vector>

#include "tests/model/golden.h"

namespace {

struct Case {
    std::array<double, 3> coefficients;
    std::array<std::array<double, 2>, 3> roots;
};

TEST(Cubic, EveryRootComesFromItsBranchIntoItsSlot) {
    const double big = std::sqrt(100.001 - 25.0);
    const std::vector<Case> cases = {
        {{-7, 14, -8}, {{{2, 0}, {1, 0}, {4, 0}}}},                 // -1 < s < 1
        {{-6, 9, -4}, {{{1, 0}, {1, 0}, {4, 0}}}},                  // s = 1
        {{-9, 24, -16}, {{{4, 0}, {1, 0}, {4, 0}}}},                // s = -1
        {{-3, -8, -10}, {{{5, 0}, {-1, -1}, {-1, 1}}}},             // s > 1
        {{3, -8, 10}, {{{-5, 0}, {1, 1}, {1, -1}}}},                // s < -1
        {{0, 1e-3, -1000.01}, {{{10, 0}, {-5, -big}, {-5, big}}}},  // p > 0, s far below -1
        {{0, 1e-3, 1000.01}, {{{-10, 0}, {5, -big}, {5, big}}}},    // p > 0, s far above 1
        {{0, 1e12, -1e12}, {{{1, 0}, {-0.5, -1e6}, {-0.5, 1e6}}}},  // p > 0, s near 0
        {{0, 1e-250, -8}, {{{2, 0}, {-1, -std::sqrt(3.0)}, {-1, std::sqrt(3.0)}}}},
        {{0, 0, -8}, {{}}},      // p = 0
        {{0, -4, 0}, {{}}},      // q = 0
        {{-3, 3, -1}, {{}}},     // both
        {{1e200, 1, 1}, {{}}}};  // overflow
    for (const auto& [coefficients, expected] : cases) {
        const auto [a2, a1, a0] = coefficients;
        const auto roots = fluid::SolveCubic(a2, a1, a0);
        for (std::size_t i = 0; i < roots.size(); ++i) {
            SCOPED_TRACE(testing::Message() << a2 << ' ' << a1 << ' ' << a0 << " root " << i);
            const double tolerance = 1e-11 * std::abs(expected[i][0]);
            EXPECT_NEAR(roots[i].real, expected[i][0], tolerance);
            EXPECT_NEAR(roots[i].imaginary, expected[i][1], 1e-11 * std::abs(expected[i][1]));
        }
    }
}

TEST(VolumeCubic, RootsAreCompleteInOrderAndExact) {
    constexpr std::size_t columns = 10;
    double worst = 0.0;
    double worstPair = 0.0;
    for (const auto& row : ReadGolden("volume_roots.csv", columns)) {
        const auto roots = fluid::VolumeCubicSolver(row[0], row[1], row[2], row[3]);
        for (std::size_t i = 0; i < roots.size(); ++i) {
            SCOPED_TRACE(testing::Message() << "T " << row[2] << " P " << row[3] << " root " << i);
            const double imaginary = row[5 + 2 * i];
            ASSERT_EQ(roots[i].isReal(), imaginary == 0.0);
            double& error = roots[i].isReal() ? worst : worstPair;
            error = std::max({error, RelativeError(roots[i].real, row[4 + 2 * i]),
                              RelativeError(roots[i].imaginary, imaginary)});
        }
    }
    std::printf("worst error of real roots %.2g, of complex pairs %.2g\n", worst, worstPair);
    EXPECT_LE(worst, 1e-14);
    EXPECT_LE(worstPair, 1e-14);
}

TEST(VolumeCubic, AbsurdStatesGiveFiniteNumbers) {
    const std::vector<double> values = {0.0,   5e-324, 1e-308, 1e-300, 1e-160, 1e-20,  1.0,
                                        300.0, 1e10,   1e100,  1e160,  1e300,  1.7e308};
    for (const double aMix : values) {
        for (const double bMix : values) {
            for (const double T : values) {
                for (const double size : values) {
                    for (const double P : {size, -size}) {
                        for (const auto& root : fluid::VolumeCubicSolver(aMix, bMix, T, P)) {
                            ASSERT_TRUE(std::isfinite(root.real) && std::isfinite(root.imaginary))
                                << aMix << ' ' << bMix << ' ' << T << ' ' << P;
                        }
                    }
                }
            }
        }
    }
}

}  // namespace
