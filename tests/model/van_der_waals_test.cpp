#include "model/van_der_waals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "model/composition.h"
#include "tests/model/golden.h"

namespace {

TEST(ComponentTable, ConstantsAreThePublishedOnes) {
    const auto rows = ReadGolden("components.csv", 9);
    for (std::size_t i = 0; i < fluid::componentCount; ++i) {
        AcceptPure(i);
        const std::array values = {fluid::M[0],  fluid::Ttriple[0], fluid::Tc[0],
                                   fluid::Pc[0], fluid::Vc[0],      fluid::omega[0],
                                   fluid::Zc[0], fluid::a[0][0],    fluid::b[0]};
        for (std::size_t column = 0; column < values.size(); ++column) {
            // The first six are the source's own numbers.
            const double tolerance = column < 6 ? 0.0 : 1e-15;
            EXPECT_LE(RelativeError(values[column], rows[i][column]), tolerance) << column;
        }
    }
}

TEST(VanDerWaals, ValuesAreTheGoldenOnes) {
    constexpr std::size_t columns = 20;
    double worst = 0.0;
    for (const auto& row : ReadGolden("van_der_waals.csv", columns)) {
        Accept(std::span(row).first(fluid::componentCount));
        const double* const value = row.data() + fluid::componentCount;
        const auto last = fluid::LastComponent;
        const auto& x = fluid::Fractions;
        const double volume = fluid::MolarVolumeFromDensity(last, x, value[2]);
        // Where the two terms of the pressure cancel, their rounding is all that can be asked for.
        const double pressure = fluid::PressureVdW(value[3], value[4], value[0], value[1]);
        worst = std::max({worst, RelativeError(fluid::MixtureA(last, x), value[3]),
                          RelativeError(fluid::MixtureB(last, x), value[4]),
                          RelativeError(fluid::MolarMass(last, x), value[5]),
                          RelativeError(volume, value[6]), Error(pressure, value[7], value[8])});
    }
    std::printf("worst error of mixture values and pressures: %.2g\n", worst);
    EXPECT_LE(worst, 1e-14);
}

TEST(VanDerWaals, PureComponentsAndPairsAreThoseOfTheTable) {
    Accept(ReadGolden("van_der_waals.csv", 20).back());
    for (std::size_t k = 0; k < fluid::componentCount; ++k) {
        fluid::ComponentValues x{};
        x[k] = 1.0;
        EXPECT_EQ(fluid::MixtureA(10, x), fluid::a[k][k]);
        EXPECT_EQ(fluid::MixtureB(10, x), fluid::b[k]);
        for (std::size_t l = 0; l < k; ++l) {
            EXPECT_EQ(fluid::a[k][l], std::sqrt(fluid::a[k][k] * fluid::a[l][l]));
            EXPECT_EQ(fluid::a[k][l], fluid::a[l][k]);
        }
    }
    EXPECT_EQ(fluid::MixtureA(-1, {}), 0.0);
    EXPECT_EQ(fluid::MixtureB(-1, {}), 0.0);
}

TEST(VanDerWaals, GuardsAreAsWideAsTheyMustBe) {
    AcceptPure(0);
    const double aMix = fluid::a[0][0];
    const double bMix = fluid::b[0];
    EXPECT_EQ(fluid::PressureVdW(aMix, bMix, 500.0, bMix), 0.0);
    EXPECT_LT(fluid::PressureVdW(aMix, bMix, 500.0, std::nextafter(bMix, 0.0)), -1e15);
    EXPECT_EQ(fluid::TemperatureVdW(aMix, bMix, 1.0, 0.0), 0.0);
    EXPECT_EQ(fluid::TemperatureVdW(aMix, bMix, 1.0, -40.0), 0.0);
    EXPECT_LT(fluid::TemperatureVdW(aMix, bMix, 1.0, 0.9 * bMix), 0.0);
    EXPECT_EQ(fluid::MolarVolumeFromDensity(0, fluid::Fractions, 0.0), 0.0);
    EXPECT_EQ(fluid::MolarVolumeFromDensity(0, fluid::Fractions, -1.0), 0.0);
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

// The operations by lists of fractions are those of a mixture.
TEST(Fugacity, ListsAndMixturesGiveTheSame) {
    Accept(std::vector<double>{3e11, 0, 0, 0, 0, 0, 0, 0, 0, 7e11, 0});
    const auto last = fluid::LastComponent;
    const double b = fluid::MixtureB(last, fluid::Fractions);
    const double V = 2.0 * b;
    const double P = fluid::PressureVdW(fluid::MixtureA(last, fluid::Fractions), b, 500.0, V);
    EXPECT_EQ(
        fluid::FugacityCoefficients(last, b, fluid::ComponentAttraction(last, fluid::Fractions),
                                    fluid::ComponentCovolumes(last), 500.0, P, V),
        fluid::FugacityCoefficients(fluid::AcceptedMixture(), 500.0, P, V));
}

}  // namespace
