#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "model/fluid_model.h"
#include "procedures/fugacity_table.h"
#include "procedures/volume_parts.h"
#include "tests/model/golden.h"
#include "tests/procedures/accepted.h"
#include "toolkit/number_text.h"

namespace {

using fluid::Mixture;
using procedures::StandardState;
using procedures::TypedState;

TEST(RootTables, VolumesOfAMixtureAndItsGasesAreTheGoldenOnes) {
    for (const auto& row : ReadGolden("volumes.csv", 58)) {
        const Mixture& mixture = AcceptedRow(row);
        const double T = toolkit::NumberOrZero(toolkit::FixedText(row[12], 3));  // as is shown
        const TypedState state{T + (row[11] > 0.0 ? 273.15 : 0.0), row[13]};
        SCOPED_TRACE(testing::Message() << state.T << " K " << state.P << " MPa");
        const auto number = static_cast<std::size_t>(row[20]);
        const auto parts = VolumePartsAt(mixture, state, number);
        EXPECT_LT(RelativeError(parts.root.V, row[14 + 2 * number]), 1e-13);
        EXPECT_LT(RelativeError(parts.root.slope, row[21]), 1e-11);
        EXPECT_LT(RelativeError(parts.root.density, row[22]), 1e-13);
        EXPECT_LT(RelativeError(parts.ideal.value(), row[23]), 1e-13);
        EXPECT_LT(Error(parts.excess.value(), row[24], parts.root.V + row[23]), 1e-13);
        std::string multiple;
        ASSERT_EQ(parts.gases.size(), mixture.count);
        for (std::size_t k = 0; k < mixture.count; ++k) {
            const std::size_t i = mixture.index[k];
            EXPECT_EQ(parts.gases[k].formula, fluid::componentFormulas[i]);
            EXPECT_LT(RelativeError(parts.gases[k].pure.value(), row[25 + i]), 1e-13);
            EXPECT_LT(Error(parts.gases[k].partial.value(), row[36 + i], parts.root.V), 1e-13);
            if (row[47 + i] > 0.0) {
                multiple += multiple.empty() ? " " : ", ";
                multiple += fluid::componentFormulas[i];
            }
        }
        EXPECT_EQ(
            MultipleSentence(parts),
            multiple.empty() ? "" : "warning: multiple solution for Vm(ideal) of pure" + multiple);
    }
}

TEST(RootTables, FugacitiesAndPartialVolumesAreTheGoldenOnes) {
    int guarded = 0;
    for (const auto& row : ReadGolden("phases.csv", 38)) {
        const Mixture& mixture = AcceptedRow(row);
        const TypedState state{row[11], row[12]};
        SCOPED_TRACE(testing::Message() << state.T << " K " << state.P << " MPa");
        const auto number = static_cast<std::size_t>(row[13]);
        const auto table = FugacitiesAt(mixture, state, number);
        const auto parts = VolumePartsAt(mixture, state, number);
        const double V = table.root.V;
        EXPECT_LT(RelativeError(V, row[14]), 1e-14);
        EXPECT_LT(RelativeError(table.root.slope, row[15]), 1e-12);
        std::string names;
        for (std::size_t k = 0; k < mixture.count; ++k) {
            const auto& gas = table.gases.at(k);
            const double logPhi = row[16 + mixture.index[k]];
            EXPECT_LT(Error(parts.gases[k].partial.value(), row[27 + mixture.index[k]], V), 1e-13);
            EXPECT_EQ(gas.isGuarded, std::abs(logPhi) >= 227.0);
            const double expected = gas.isGuarded ? 1.0 : std::exp(logPhi);
            // The larger terms of ln phi set its rounding.
            const double scale = 1.0 + std::abs(logPhi) + mixture.covolume / (V - mixture.covolume);
            EXPECT_LT(RelativeError(gas.coefficient, expected), 1e-14 * scale);
            EXPECT_LT(RelativeError(gas.fugacity, mixture.fractions[k] * expected * state.P),
                      1e-14 * scale);
            if (gas.isGuarded) {
                names += (names.empty() ? " " : ", ") + std::string(gas.formula);
                ++guarded;
            }
        }
        EXPECT_EQ(GuardSentence(table).find(" of" + names + " has no number") != std::string::npos,
                  !names.empty());
    }
    EXPECT_GT(guarded, 0);
}

TEST(RootTables, ActivitiesAreTheGoldenOnes) {
    for (const auto& row : ReadGolden("activities.csv", 37)) {
        const Mixture& mixture = AcceptedRow(row);
        const TypedState state{row[11], row[12]};
        SCOPED_TRACE(testing::Message() << state.T << " K " << state.P << " MPa");
        const auto fugacities = FugacitiesAt(mixture, state, static_cast<std::size_t>(row[13]));
        const auto real = ActivitiesAt(mixture, state, fugacities, StandardState::Real, row[14]);
        const auto ideal = ActivitiesAt(mixture, state, fugacities, StandardState::Ideal, row[14]);
        for (std::size_t k = 0; k < mixture.count; ++k) {
            const std::size_t i = mixture.index[k];
            const double x = mixture.fractions[k];
            EXPECT_LT(RelativeError(real.gases.at(k).V, row[15 + i]), 1e-13);
            EXPECT_LT(RelativeError(real.gases[k].activity, row[26 + i]), 1e-13);
            EXPECT_LT(RelativeError(real.gases[k].coefficient, row[26 + i] / x), 1e-13);
            EXPECT_LT(RelativeError(ideal.gases[k].V, fluid::R * state.T / row[14]), 1e-15);
            EXPECT_LT(
                RelativeError(ideal.gases[k].activity, fugacities.gases[k].fugacity / row[14]),
                1e-15);
        }
    }
    // A gas without a volume has no standard state; at a negative pressure its coefficient is 1.
    const Mixture& mixture = Accepted({{"H2", 0.5}, {"CH4", 0.5}});
    const TypedState critical{190.564, 4.5922};
    const auto table = ActivitiesAt(mixture, critical, FugacitiesAt(mixture, critical, 0),
                                    StandardState::Real, -1.0);
    EXPECT_EQ(ActivityRow(table.gases.at(1)),
              (std::vector<std::string>{"CH4", "---", "---", "---"}));
    EXPECT_EQ(GuardSentence(table),
              "A fugacity coefficient of H2 has no number here: 1 stands in "
              "its place.");
    EXPECT_EQ(VolumeRow(VolumePartsAt(mixture, critical, 0).gases.at(1))[1], "---");
    EXPECT_FALSE(VolumePartsAt(mixture, critical, 0).ideal);
}

// Numbers of any size give a volume or none, and never another number than they have.
TEST(RootTables, WhatIsNoVolumeIsSaidAndNothingIsInfinite) {
    struct Case {
        std::size_t gas;
        TypedState state;
        const char* slope;  // how its sentence begins; empty where there is no volume
    };
    const std::vector<Case> cases = {
        {3, {373.539, 8.94}, ""},
        {9, {190.564, 4.5922}, ""},
        {10, {305.33, 4.8718}, ""},
        {1, {1e300, 1e-300}, ""},
        {1, {300.0, 1e200}, "Negative slope dP/dV = --- (stable field)"},
        {1, {300.0, 1.7e308}, "Negative slope dP/dV = --- (stable field)"},
        {1, {1e250, 4e251}, "Negative slope dP/dV = -1.924"}};
    for (const Case& c : cases) {
        const Mixture& mixture = Accepted({{fluid::componentFormulas[c.gas], 1.0}});
        const auto table = FugacitiesAt(mixture, c.state, 0);
        const bool isNone = table.root.kind == procedures::RootVolume::Kind::None;
        EXPECT_EQ(isNone, *c.slope == '\0') << c.state.P;
        EXPECT_EQ(table.gases.empty(), isNone);
        EXPECT_TRUE(isNone || procedures::SlopeSentence(table.root.slope).starts_with(c.slope));
        for (const auto& gas : table.gases) {
            for (const std::string& cell : FugacityRow(gas)) {
                EXPECT_EQ(cell.find_first_of("if"), std::string::npos) << cell;
            }
        }
    }
    EXPECT_EQ(procedures::SlopeSentence(0.0),
              "Positive slope dP/dV = 0 (meta-stable). Choose another solution");
}

}  // namespace
