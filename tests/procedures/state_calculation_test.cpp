#include "procedures/state_calculation.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "model/fluid_model.h"
#include "procedures/units.h"
#include "tests/model/golden.h"
#include "tests/procedures/accepted.h"

namespace {

using procedures::PressureAt;
using procedures::TemperatureAt;

double VolumeOf(const std::vector<double>& row) {
    return row[12] > 0.0 ? fluid::MolarVolumeFromDensity(fluid::AcceptedMixture(), row[14])
                         : row[14];
}

TEST(StateCalculationTest, PressuresAndTemperaturesAreTheGoldenOnes) {
    const auto scaleOf = [](const std::vector<double>& row) {
        return procedures::TemperatureScale{"", row[11] > 0.0 ? procedures::zeroCelsius : 0.0};
    };
    for (const auto& row : ReadGolden("pressures.csv", 17)) {
        const fluid::Mixture mixture = AcceptedRow(row);
        const auto P = PressureAt(mixture, VolumeOf(row), scaleOf(row).toKelvin(row[13]));
        EXPECT_LT(RelativeError(P.value_or(0.0), row[15]), 1e-13) << row[15];
    }
    for (const auto& row : ReadGolden("temperatures.csv", 16)) {
        const fluid::Mixture mixture = AcceptedRow(row);
        const auto result = TemperatureAt(mixture, VolumeOf(row), row[13]);
        const double kelvin = scaleOf(row).toKelvin(row[15]);
        ASSERT_TRUE(result.has_value());
        EXPECT_LT(Error(scaleOf(row).fromKelvin(result->T), row[15], kelvin), 1e-13) << row[15];
    }
}

TEST(StateCalculationTest, WhatIsNoStateIsRefusedAndNegativeNumbersAreWarnedOf) {
    AcceptPure(0);
    const fluid::Mixture water = fluid::AcceptedMixture();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const auto& [V, T] : std::vector<std::pair<double, double>>{{0.0, 300.0},
                                                                     {-80.0, 300.0},
                                                                     {80.0, 0.0},
                                                                     {80.0, -1.0},
                                                                     {1e-200, 300.0},
                                                                     {30.5, 1e308},
                                                                     {infinity, 300.0},
                                                                     {80.0, infinity}}) {
        EXPECT_FALSE(PressureAt(water, V, T)) << V << ' ' << T;
    }
    const double b = fluid::AcceptedMixture().covolume;
    EXPECT_EQ(PressureAt(water, b, 300.0), 0.0);

    const std::string negative = "Negative pressures are not excluded. ";
    struct Case {
        double V, P;
        bool isRefused;
        std::string warning;
    };
    for (const Case& c :
         std::vector<Case>{{0.0, 9.0, true, ""},
                           {-80.0, 9.0, true, ""},
                           {infinity, 9.0, true, ""},
                           {1e200, 1e300, true, ""},
                           {80.0, 9.0, false, ""},
                           {80.0, 0.0, false, negative},
                           {80.0, -0.5, false, negative},
                           {b, -1e6, false, negative + "Warning: temperature = 0 K"},
                           {20.0, 10.0, false, "Warning: temperature = -1756.8777397450378 K"}}) {
        SCOPED_TRACE(c.V);
        const auto result = TemperatureAt(water, c.V, c.P);
        ASSERT_EQ(!result, c.isRefused);
        EXPECT_EQ(result ? result->warning : "", c.warning);
    }
}

}  // namespace
