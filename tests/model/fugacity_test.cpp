#include "model/van_der_waals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <vector>

#include "model/composition.h"
#include "model/cubic.h"
#include "model/molar_volume.h"
#include "tests/model/golden.h"

namespace {

using fluid::ComponentValues;

// Everything a procedure does for one root, from the composition on.
struct Phase {
    double a;
    double b;
    double V;
    ComponentValues phi;

    Phase(double T, double P, std::size_t root)
        : a(fluid::MixtureA(fluid::LastComponent, fluid::Fractions)),
          b(fluid::MixtureB(fluid::LastComponent, fluid::Fractions)),
          V(fluid::VolumeCubicSolver(a, b, T, P)[root].real),
          phi(fluid::FugacityCoefficients(
              fluid::LastComponent, b,
              fluid::ComponentAttraction(fluid::LastComponent, fluid::Fractions),
              fluid::ComponentCovolumes(fluid::LastComponent), T, P, V)) {}
};

TEST(Phases, ValuesAreTheGoldenOnes) {
    constexpr std::size_t columns = 38;
    constexpr double logLimit = 227.0;
    double worstVolume = 0.0;
    double worstSlope = 0.0;
    double worstPhi = 0.0;
    double worstPartial = 0.0;
    int beyondLimit = 0;
    for (const auto& row : ReadGolden("phases.csv", columns)) {
        Accept(std::span(row).first(fluid::componentCount));
        const double T = row[11];
        const Phase phase(T, row[12], static_cast<std::size_t>(row[13]));
        const double slope = fluid::IsothermSlope(phase.a, phase.b, T, phase.V, 1e-4);
        worstVolume = std::max(worstVolume, RelativeError(phase.V, row[14]));
        worstSlope = std::max(worstSlope, RelativeError(slope, row[15]));
        const auto partial = fluid::PartialMolarVolumes(fluid::AcceptedMixture(), T, phase.V);
        ASSERT_TRUE(partial);
        for (std::size_t k = 0; k < fluid::AcceptedMixture().count; ++k) {
            const double logPhi = row[16 + fluid::AcceptedMixture().index[k]];
            const double volume = row[27 + fluid::AcceptedMixture().index[k]];
            worstPartial = std::max(worstPartial, Error((*partial)[k], volume, phase.V));
            if (std::abs(logPhi) >= logLimit) {
                ++beyondLimit;
                ASSERT_EQ(phase.phi[k], 1.0);
                continue;
            }
            // The larger terms of ln phi set its rounding.
            const double scale = std::max(1.0, std::abs(logPhi) + phase.b / (phase.V - phase.b));
            worstPhi = std::max(worstPhi, Error(std::log(phase.phi[k]), logPhi, scale));
        }
    }
    std::printf("worst error of V %.2g, dP/dV %.2g, ln phi %.2g, partial volumes %.2g\n",
                worstVolume, worstSlope, worstPhi, worstPartial);
    EXPECT_LE(worstVolume, 1e-14);
    EXPECT_LE(worstSlope, 1e-12);
    EXPECT_LE(worstPhi, 1e-14);
    EXPECT_LE(worstPartial, 1e-13);
    EXPECT_GT(beyondLimit, 0);
}

TEST(Fugacity, CoefficientsAreGuardedAgainstOverflow) {
    AcceptPure(0);
    const double b = fluid::b[0];
    const auto phi = [](double T, double P, double V) {
        return fluid::PureFugacityCoefficient(fluid::AcceptedMixture(), 0, T, P, V);
    };
    const std::vector<std::array<double, 3>> unusable = {
        {300.0, 0.0, 2500.0},          {0.0, 1.0, 2500.0},
        {-1.0, 1.0, 2500.0},           {300.0, 1.0, b},
        {300.0, 1.0, 0.5 * b},         {300.0, -1.0, 2500.0},
        {300.0, 1.0, b * (1.0 + 1e-6)}};
    for (const auto& [T, P, V] : unusable) {
        EXPECT_EQ(phi(T, P, V), 1.0) << T << ' ' << P << ' ' << V;
    }
    // Either side of the limit: ln phi is near b/(V - b).
    EXPECT_GT(phi(3000.0, 1e5, b * (1.0 + 1.0 / 226.0)), 1e90);
    EXPECT_EQ(phi(3000.0, 1e5, b * (1.0 + 1.0 / 260.0)), 1.0);
}

TEST(Activity, ValuesAreTheGoldenOnes) {
    double worst = 0.0;
    for (const auto& row : ReadGolden("activities.csv", 37)) {
        Accept(std::span(row).first(fluid::componentCount));
        const double T = row[11];
        const double P = row[12];
        const Phase phase(T, P, static_cast<std::size_t>(row[13]));
        ComponentValues volumes{};
        const auto count = fluid::AcceptedMixture().count;
        for (std::size_t k = 0; k < count; ++k) {
            volumes[k] = fluid::PureGasVolume(fluid::AcceptedMixture(), k, T, P).volume;
        }
        const auto standard = fluid::PureFugacities(fluid::AcceptedMixture(), T, row[14], volumes);
        for (std::size_t k = 0; k < count; ++k) {
            const std::size_t i = fluid::AcceptedMixture().index[k];
            const double activity = fluid::Fractions[k] * phase.phi[k] * P / standard[k];
            worst = std::max({worst, RelativeError(volumes[k], row[15 + i]),
                              RelativeError(activity, row[26 + i])});
        }
    }
    std::printf("worst error of pure-gas volumes and activities %.2g\n", worst);
    EXPECT_LE(worst, 1e-13);
}

}  // namespace
