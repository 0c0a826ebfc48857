#include "model/saturation.h"

#include <gtest/gtest.h>

#include <cmath>

#include "model/component_table.h"
#include "tests/model/golden.h"

namespace {

TEST(Saturation, CoefficientsAreThePublishedOnes) {
    for (const auto& row : ReadGolden("saturation_curves.csv", 4)) {
        const auto component = static_cast<std::size_t>(row[0]);
        const double error = RelativeError(fluid::SaturationPressure(component, row[1]), row[2]);
        EXPECT_LE(error, row[3]) << fluid::componentFormulas[component] << " at " << row[1] << " K";
    }
}

TEST(Saturation, ContinuationRisesSmoothly) {
    constexpr double ratio = 1.0002;
    for (std::size_t component = 0; component < fluid::componentCount; ++component) {
        double lastSlope = 0.0;
        double last = std::log(fluid::SaturationPressure(component, 10.0 / ratio));
        for (double T = 10.0; T < 3000.0; T *= ratio) {
            const double next = std::log(fluid::SaturationPressure(component, T));
            // d ln P/d(1/T), in K
            const double slope = (next - last) / (ratio - 1.0) * T;
            EXPECT_GT(slope, 0.0);
            EXPECT_TRUE(lastSlope == 0.0 || std::abs(slope / lastSlope - 1.0) < 0.01) << T;
            lastSlope = slope;
            last = next;
        }
        EXPECT_EQ(fluid::SaturationPressure(component, 0.0), 0.0);
        EXPECT_EQ(fluid::SaturationPressure(component, -5.0), 0.0);
    }
}

}  // namespace
