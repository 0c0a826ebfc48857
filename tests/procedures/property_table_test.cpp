#include "procedures/property_table.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>
#include <tuple>
#include <vector>

#include "model/fluid_model.h"
#include "tests/model/golden.h"
#include "tests/procedures/accepted.h"

namespace {

using fluid::FluidState;
using fluid::Stability;
using procedures::Amount;
using procedures::Digits;
using procedures::StateTable;

const Fractions carbonic = {{"CO2", 0.7}, {"CH4", 0.3}};

FluidState StateAt(double T, double P) {
    return fluid::StateAt(fluid::AcceptedMixture(), T, P);
}

double NumberAt(const StateTable& table, std::size_t line, std::size_t column) {
    return table.lines.at(line).numbers.at(column).value.value();
}

TEST(FluidStates, OneJudgeSaysWhatIsStableAndWhatItIs) {
    struct Case {
        Fractions fractions;
        double T, P;
        std::string stabilities, sentence;
    };
    const std::vector<Case> cases = {
        {{{"CO2", 0.7}, {"CH4", 0.2}, {"N2", 0.1}},
         215.0,
         3.0,
         "mum",
         "Two phases at 3 MPa: X of "},
        {carbonic, 220.0, 5.0, "s", "One stable phase, liquid-like."},
        {carbonic, 220.0, 1.0, "mus", "One stable phase, gas-like."},
        {carbonic, 300.0, 10.0, "s", "One stable phase, supercritical."},
        {carbonic, 300.0, 1.0, "s", "One stable phase, gas-like."},
        {{{"CO2", 1.0}}, 304.128, 7.3773, "s", "One stable phase, at a critical point."},
        {{{"CH4", 1.0}}, 190.564, 4.5922, "s", "One stable phase, at a critical point."},
        {{{"CO2", 1.0}}, 273.15, 4.74, "sum", "One stable phase, liquid-like."},
        {{{"CO2", 1.0}}, 273.15, 4.73, "mus", "One stable phase, gas-like."},
        {{{"CO2", 1.0}}, 3.0, 5.0, "?", "Not examined: "},
        {{{"CO2", 1.0}}, 300.0, 1e20, "", "warning: no molar volume above the co-volume 42."},
        {{{"CO2", 1.0}}, 1e300, 1e-300, "", "warning: no molar volume above the co-volume 42."}};
    for (const Case& c : cases) {
        const fluid::Mixture& mixture = Accepted(c.fractions);
        const FluidState state = StateAt(c.T, c.P);
        SCOPED_TRACE(testing::Message() << c.T << " K " << c.P << " MPa");
        std::string stabilities;
        for (const FluidState::Volume& volume : state.volumes) {
            stabilities += "smu?"[static_cast<std::size_t>(volume.stability)];
        }
        EXPECT_EQ(stabilities, c.stabilities);
        const std::string sentence = procedures::StateSentence(mixture, state);
        EXPECT_TRUE(sentence.starts_with(c.sentence)) << sentence;
    }
    EXPECT_DOUBLE_EQ(StateAt(1.0, 1.0).T, 1.0);
}

// At its own critical point, where the cubic by rule has no root, a pure gas has three equal ones.
TEST(FluidStates, PureGasesHaveThreeCovolumesAtTheirCriticalPoints) {
    for (std::size_t i = 0; i < fluid::componentCount; ++i) {
        AcceptPure(i);
        const FluidState state = StateAt(fluid::Tc[0], fluid::Pc[0]);
        ASSERT_EQ(state.volumes.size(), 1U) << i;
        EXPECT_LT(RelativeError(state.volumes[0].V, 3.0 * fluid::b[0]), 1e-14) << i;
        EXPECT_EQ(state.volumes[0].stability, Stability::Stable) << i;
    }
}

TEST(PropertyTables, PhasesAddUpToTheWhole) {
    enum Line : std::size_t { V, Density, Z, U, H, S, A, G };
    for (const auto& [T, P] : {std::pair(220.0, 3.0), {215.0, 2.5}, {225.0, 3.2}}) {
        const fluid::Mixture& mixture = Accepted(carbonic);
        const FluidState state = StateAt(T, P);
        ASSERT_TRUE(state.split) << T << ' ' << P;
        const auto table = PropertiesAt(mixture, state, {}, Amount::Mole);
        EXPECT_EQ(table.heads,
                  (StateTable::Row{"property", "unit", "phase X", "phase Y", "whole"}));
        const double share = (NumberAt(table, V, 2) - NumberAt(table, V, 0)) /
                             (NumberAt(table, V, 1) - NumberAt(table, V, 0));
        for (const std::size_t line : {U, H, S, A, G}) {
            EXPECT_LT(
                RelativeError(NumberAt(table, line, 2), (1.0 - share) * NumberAt(table, line, 0) +
                                                            share * NumberAt(table, line, 1)),
                1e-12);
        }
        // A gas has one potential in both phases, and the mean of all is the Gibbs energy.
        const auto gases = procedures::PotentialsAt(mixture, state, {});
        ASSERT_EQ(gases.lines.size(), 4U);
        double G = 0.0;
        for (const std::size_t k : {0U, 1U}) {
            const double potential = NumberAt(gases, k, 1);
            EXPECT_LT(RelativeError(NumberAt(gases, k + 2, 1), potential), 1e-12);
            EXPECT_LT(
                Error((1.0 - share) * NumberAt(gases, k, 0) + share * NumberAt(gases, k + 2, 0),
                      mixture.z[k], 1.0),
                1e-12);
            G += mixture.z[k] * potential;
        }
        EXPECT_LT(RelativeError(G, NumberAt(table, Line::G, 2)), 1e-12);
        // One mole of each phase weighs its own.
        const auto perMass = PropertiesAt(mixture, state, {}, Amount::Kilogram);
        for (const std::size_t column : {0U, 1U, 2U}) {
            EXPECT_LT(
                RelativeError(NumberAt(perMass, V, column), 1.0 / NumberAt(table, Density, column)),
                1e-12);
            EXPECT_LT(RelativeError(NumberAt(perMass, H, column),
                                    NumberAt(table, H, column) / NumberAt(table, V, column) /
                                        NumberAt(table, Density, column)),
                      1e-12);
        }
    }
}

// From two phases of known state a bulk is mixed, which has their properties by their amounts.
TEST(PropertyTables, PhasesAndTheirWholeHaveTheGoldenProperties) {
    const auto points = ReadGolden("phase_equilibria.csv", 27);
    for (const auto& row : ReadGolden("two_phases.csv", 20)) {
        const auto& point = points.at(static_cast<std::size_t>(row[0]));
        AcceptedRow(point);
        const fluid::Mixture& mixture = fluid::AcceptedMixture();
        const double shareOfBulk = point[11] == 0.0 ? 1.0 - row[1] : row[1];
        fluid::ComponentValues z{};
        for (std::size_t k = 0; k < mixture.count; ++k) {
            const double other = point[16 + mixture.index[k]];
            z[k] = shareOfBulk * mixture.z[k] + (1.0 - shareOfBulk) * other;
        }
        const auto bulk = fluid::WithFractions(mixture, z);
        const FluidState state = fluid::StateAt(bulk, point[12], point[13]);
        ASSERT_TRUE(state.split) << row[0];
        const auto table = PropertiesAt(bulk, state, {}, Amount::Mole);
        for (std::size_t i = 0; i < 18; ++i) {
            constexpr std::array<std::size_t, 6> lines = {0, 3, 4, 5, 6, 7};
            const double scale = i % 6 == 3 ? fluid::R : i % 6 == 0 ? 0.0 : fluid::R * point[12];
            EXPECT_LT(Error(NumberAt(table, lines[i % 6], i / 6), row[2 + i],
                            scale + std::abs(row[2 + i])),
                      1e-11)
                << row[0] << ' ' << i;
        }
        const auto pressures = *procedures::ValueRange::of(point[13], point[13], 0.0);
        const auto T = procedures::WrittenTemperature::calculated(point[12]);
        const procedures::StateRange range(
            bulk, {.isOverPressure = true, .T = T, .pressures = pressures});
        const auto whole = range.state(0);
        EXPECT_EQ(whole.name, "two phases");
        const auto quantities = procedures::PropertyQuantities(Amount::Mole);
        for (const std::size_t line : {0U, 1U, 3U, 4U, 5U, 6U, 7U}) {
            EXPECT_LT(RelativeError(*quantities[line].value(whole), NumberAt(table, line, 2)),
                      1e-14);
        }
    }
}

TEST(PropertyTables, InversionIsGivenWhereTheFluidIsStable) {
    Accepted({{"N2", 1.0}});
    const auto sentence = [](double P) {
        return procedures::InversionSentence(fluid::AcceptedMixture(), P);
    };
    // The cold point of a low pressure belongs to a liquid that would boil.
    EXPECT_EQ(sentence(0.1).find(" and "), std::string::npos) << sentence(0.1);
    EXPECT_NE(sentence(10.0).find(" and "), std::string::npos) << sentence(10.0);
    EXPECT_EQ(sentence(31.0), "There is no Joule-Thomson inversion at this pressure.");
}

TEST(PropertyTables, RowsHaveFixedDecimalsOnTheScreenAndAllDigitsInCopies) {
    const fluid::Mixture& mixture = Accepted(carbonic);
    const auto table = PropertiesAt(mixture, StateAt(300.0, 10.0), 0, Amount::Mole);
    const auto& enthalpy = table.lines.at(4);
    EXPECT_EQ(RowOf(enthalpy, Digits::Shown),
              (StateTable::Row{"enthalpy", "J/mol", "-297769.027", "-3969.194", "-301738.221"}));
    const auto full = RowOf(enthalpy, Digits::Full);
    EXPECT_GT(full[4].size(), 15U);
    EXPECT_EQ(std::stod(full[4]), enthalpy.numbers[2].value);
    EXPECT_EQ(RowOf(table.lines.at(10), Digits::Shown)[3], "");  // Cp/Cv has no residual part
}

TEST(PropertyTables, WhatIsMissingHasItsReasonAndWhatIsNotStableItsName) {
    const fluid::Mixture& mixture = Accepted(carbonic);
    struct Case {
        double T, P;
        std::size_t volume;
        std::string head, note;
    };
    const std::vector<Case> cases = {{220.0, 3.0, 0, "total (meta-stable)", ""},
                                     {220.0, 3.0, 1, "total (unstable)", ""},
                                     {150.0, 0.1, 1, "total (unstable)", "mechanically unstable"},
                                     {300.0, 10.0, 0, "total", ""},
                                     {7000.0, 10.0, 0, "total", "ideal-gas data"},
                                     {300.0, 1e-303, 0, "total", "too large for a number"}};
    for (const Case& c : cases) {
        const auto table = PropertiesAt(mixture, StateAt(c.T, c.P), c.volume, Amount::Mole);
        SCOPED_TRACE(testing::Message() << c.T << " K " << c.P << " MPa");
        EXPECT_EQ(table.heads.back(), c.head);
        EXPECT_TRUE(c.note.empty() ? table.note.empty()
                                   : table.note.find(c.note) != std::string::npos)
            << table.note;
        const auto gases = procedures::PotentialsAt(mixture, StateAt(c.T, c.P), c.volume);
        for (const auto* const each : {&table, &gases}) {
            for (const auto& line : each->lines) {
                for (const std::string& cell : RowOf(line, Digits::Shown)) {
                    EXPECT_TRUE(cell.find("nan") == std::string::npos && cell != "inf") << cell;
                }
            }
        }
    }
}

}  // namespace
