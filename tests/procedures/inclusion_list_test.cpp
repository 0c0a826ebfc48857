#include <gtest/gtest.h>

#include <array>
#include <string>
#include <tuple>
#include <vector>

#include "model/composition.h"
#include "model/first_approach.h"
#include "model/phase_equilibrium.h"
#include "model/phase_split.h"
#include "model/van_der_waals.h"
#include "procedures/inclusion_list.h"
#include "procedures/isochore_diagram.h"
#include "tests/model/golden.h"
#include "toolkit/number_text.h"

namespace {

using procedures::Digits;
using procedures::GivenBy;
using procedures::Inclusion;
using procedures::InclusionList;
using procedures::InclusionState;
using procedures::PastePattern;
using procedures::TemperatureScale;
using procedures::WrittenTemperature;

const TemperatureScale kelvin = procedures::kelvinScale;
const TemperatureScale celsius = procedures::celsiusScale;

fluid::Mixture of(const std::array<double, 11>& counts) {
    Accept(counts);
    return fluid::AcceptedMixture();
}
fluid::Mixture carbonic() {
    return of({0, 7e11, 0, 0, 0, 0, 0, 0, 0, 3e11, 0});
}

InclusionList listOf(const fluid::Mixture& mixture, const std::string& text,
                     const PastePattern& pattern = {GivenBy::IntoLiquid, kelvin}) {
    InclusionList list;
    list.calculate({mixture, "CO2 0.7, CH4 0.3"});
    list.add(procedures::ReadPasted(text, pattern).inclusions);
    return list;
}

std::string column(const InclusionList& list, std::size_t cell,
                   const TemperatureScale& scale = kelvin) {
    std::string cells;
    for (std::size_t i = 0; i < list.count(); ++i) {
        cells += list.row(i, scale, Digits::Shown)[cell] + "|";
    }
    return cells;
}

TEST(InclusionListTest, RowsOfASpreadsheetAreUnderstoodOrKeptWithASentence) {
    struct Case {
        std::string text;
        std::string name, given;  // of the inclusion: its quantity, number and unit
        std::string problem;
    };
    const std::string comma = "put a decimal point instead of the comma in ";
    const std::string into = "into the liquid or into the vapour? put L or V behind the number";
    for (const Case& c : std::vector<Case>{
             {"220", "", "L 220 K", ""},
             {" -53.15 \u00B0C ", "", "L -53.15 C", ""},
             {"\u2212"
              "53.15\u02DA"
              "C",
              "", "L -53.15 C", ""},
             {"A\t220", "A", "L 220 K", ""},
             {"A\t220\tV", "A", "V 220 K", ""},
             {"A;220 K;v", "A", "V 220 K", ""},
             {"A 12 220 L", "A 12", "L 220 K", ""},
             {"12 220", "12", "L 220 K", ""},
             {"\"quartz, 3\"\t\"220\"\tliquid\t\t", "quartz, 3", "L 220 K", ""},
             {"A\t220\tK\tinto the vapour", "A", "V 220 K", ""},
             {"A 0.5 g/cm3", "A", "d 0.5", ""},
             {"A;80cm\u00B3/mol", "A", "m 80", ""},
             {"A\t22,5\tL", "A 22,5 L", "", comma + "\u201C22,5\u201D"},
             {"A;bright;L", "A;bright;L", "", "no number in \u201Cbright\u201D"},
             {"A;1;220;L", "A;1;220;L", "", "more columns than a name, a number and L or V"},
             {"1 2 220", "1 2 220", "", "more columns than a name, a number and L or V"},
             {"A;1e999", "A;1e999", "", "no number in \u201C1e999\u201D"},
             {"A 0.5 g/cm3 L", "A 0.5 g/cm3 L", "", "L and V belong to homogenization temp"}}) {
        const auto pasted =
            procedures::ReadPasted("220\n" + c.text, PastePattern{GivenBy::IntoLiquid, kelvin});
        ASSERT_EQ(pasted.inclusions.size(), 2U) << c.text;
        const Inclusion& inclusion = pasted.inclusions[1];
        EXPECT_EQ(inclusion.name, c.name);
        EXPECT_TRUE(inclusion.problem.starts_with(c.problem)) << inclusion.problem;
        EXPECT_EQ(inclusion.problem.empty(), c.problem.empty()) << inclusion.problem;
        EXPECT_EQ(pasted.problems, c.problem.empty() ? 0U : 1U);
        if (c.problem.empty()) {
            const std::string kind(1, "mdLV"[static_cast<int>(inclusion.by)]);
            const std::string unit = !inclusion.isByTemperature() ? ""
                                     : inclusion.scale.isKelvin() ? " K"
                                                                  : " C";
            EXPECT_EQ(kind + " " + toolkit::numberText(inclusion.number) + unit, c.given);
        }
    }
    const auto table = procedures::ReadPasted("Name\tTh (K)\r\n\r\n\t\r\nA\t220\r\nB\t25,5\r\n",
                                              PastePattern{{}, celsius});
    EXPECT_EQ(table.heads, "Name\tTh (K)");
    ASSERT_EQ(table.inclusions.size(), 2U);
    EXPECT_EQ(table.inclusions[0].problem, into);
    EXPECT_EQ(procedures::ReadPasted("A 80", {GivenBy::Density, kelvin}).inclusions[0].by,
              GivenBy::Density);
    EXPECT_TRUE(procedures::ReadPasted(" \n\t;\n", {}).inclusions.size() < 2U);
}

// The same numbers as of the screens Homogenization conditions and Liquid-Vapour equilibria.
TEST(InclusionListTest, InclusionsHomogenizeAndFollowTheirTwoPhasesAsOneByOne) {
    const fluid::Mixture mixture = carbonic();
    const InclusionList list = listOf(
        mixture, "A 220 L\nB 220 V\nC 67.95817259849628 cm3/mol\nD -53.15 C V\nE 0.5 g/cm3\n");
    EXPECT_EQ(column(list, 0), "A|B|C|D|E|");
    EXPECT_EQ(column(list, 1), "Th|Th|molar volume|Th|density|");
    EXPECT_EQ(column(list, 3), "liquid|vapour|liquid|vapour|liquid|");
    EXPECT_EQ(column(list, 4).substr(0, 36), "3.386661|2.422317|3.386661|2.422317|");
    EXPECT_EQ(column(list, 5).substr(0, 44), "67.958173|588.850081|67.958173|588.850081|71");
    EXPECT_EQ(column(list, 10), "|||||");
    EXPECT_EQ(list.row(3, celsius, Digits::Full)[2], "-53.15");
    for (std::size_t i = 0; i < list.count(); ++i) {
        const InclusionState& state = list.state(i);
        ASSERT_TRUE(state.point);
        EXPECT_LT(RelativeError(fluid::FindBoundary(mixture, state.V)->T, state.point->T.kelvin),
                  1e-12);
        EXPECT_NEAR(state.density * state.V, 35.619688, 1e-9);
        EXPECT_EQ(state.slope, fluid::R / (state.V - mixture.covolume));
        const auto line = procedures::LineOf(mixture, state, 180.0, 400.0, 7);
        ASSERT_EQ(line.pieces.size(), 2U);
        const auto& [two, one] = std::tie(line.pieces[0].points, line.pieces[1].points);
        EXPECT_EQ(one.back().P,
                  fluid::PressureVdW(mixture.attraction, mixture.covolume, 400.0, state.V));
        EXPECT_EQ(one.front().P, state.point->P);
        EXPECT_EQ(two.back().P, state.point->P);
        EXPECT_EQ(two.size(), 8U);
        for (std::size_t k = 0; k + 1 < two.size(); ++k) {
            EXPECT_EQ(two[k].P, fluid::SplitAtVolume(mixture, two[k].T, state.V)->phases.P);
        }
        EXPECT_EQ(two.front().T, 180.0);
    }
}

TEST(InclusionListTest, NoneOfSeveralPointsIsPickedSilently) {
    InclusionList list = listOf(carbonic(), "273 V\n273.5 V\n300 V\n");
    const std::string none = "nothing homogenizes into the vapour at this temperature|";
    ASSERT_EQ(list.state(1).points.size(), 2U);
    EXPECT_EQ(column(list, 10), "|2 points: choose one|" + none);
    EXPECT_EQ(list.row(1, kelvin, Digits::Shown)[5], "");
    for (const std::string step : {"point 1 of 2 125.908", "point 2 of 2 143.174"}) {
        list.chooseNextPoint({0, 1, 2});
        const auto row = list.row(1, kelvin, Digits::Shown);
        EXPECT_EQ(row[10] + " " + row[5].substr(0, 7), step);
    }
    EXPECT_EQ(column(list, 10), "|point 2 of 2|" + none);
}

TEST(InclusionListTest, KeptInclusionsStayWithTheirFluid) {
    InclusionList list = listOf(carbonic(), "A 220 L\n");
    const auto kept = list.row(0, kelvin, Digits::Full);
    list.keep();
    AcceptPure(1);
    list.forgetResults();
    list.calculate({fluid::AcceptedMixture(), "CO2 1"});
    list.add(procedures::ReadPasted("B 220 L", {}).inclusions);
    auto row = list.row(0, kelvin, Digits::Full);
    EXPECT_EQ(row.back(), "CO2 0.7, CH4 0.3");
    row.back() = kept.back();
    EXPECT_EQ(row, kept);
    EXPECT_NE(list.row(1, kelvin, Digits::Full)[5], kept[5]);
    EXPECT_EQ(column(list, 11), "CO2 0.7, CH4 0.3||");
    EXPECT_TRUE(list.fileText().starts_with("Composition = CO2 1\n"));
}

TEST(InclusionListTest, RowsAreMovedRemovedRenamedAndForgotten) {
    const fluid::Mixture mixture = carbonic();
    InclusionList list = listOf(mixture, "A 220 L\nB 230 L\nC 240 L\nD 250 L\nE;x\n");
    EXPECT_EQ(list.move({1, 2}, false), (InclusionList::Rows{0, 1}));
    EXPECT_EQ(list.move({0, 1}, false), (InclusionList::Rows{0, 1}));
    EXPECT_EQ(column(list, 0), "B|C|A|D|E;x|");
    EXPECT_EQ(list.move({1, 3}, true), (InclusionList::Rows{2, 4}));
    EXPECT_EQ(column(list, 0), "B|A|C|E;x|D|");
    list.remove({1, 2});
    list.rename(0, "B, \"the\" second");
    list.add({{"", GivenBy::Density, 0.4, kelvin, {}, {}}});
    EXPECT_EQ(column(list, 0), "B, \"the\" second|E;x|D|4|");
    const std::string pressures = column(list, 4);
    EXPECT_TRUE(list.fileText().starts_with(
        "Composition = CO2 0.7, CH4 0.3\nName, Given, Homogenization Temperature, "))
        << list.fileText();
    EXPECT_NE(list.fileText().find("\n\"B, \"\"the\"\" second\", Th, -43.15, liquid, "),
              std::string::npos)
        << list.fileText();
    list.forgetResults();
    EXPECT_EQ(column(list, 4), "||||");
    EXPECT_EQ(column(list, 2), "230.000000||250.000000||");
    EXPECT_EQ(column(list, 6), "|||0.400000|");
    list.calculate({mixture, ""});
    EXPECT_EQ(column(list, 4), pressures);
}

TEST(InclusionListTest, TrappingConditionsLieOnTheIsochores) {
    const fluid::Mixture mixture = carbonic();
    InclusionList list = listOf(mixture, "220 L\n250 L\n");
    list.setTrapping({WrittenTemperature::typed(-33.15, celsius), {}});
    EXPECT_EQ(column(list, 8), "240.000000||");
    EXPECT_EQ(column(list, 10), "|it homogenizes above these trapping conditions|");
    const std::string P = list.row(0, kelvin, Digits::Full)[9];
    list.setTrapping({{}, toolkit::numberOrZero(P)});
    EXPECT_NEAR(toolkit::numberOrZero(list.row(0, kelvin, Digits::Full)[8]), 240.0, 1e-10);
}

TEST(InclusionListTest, ProposedTemperaturesAreRoundAndHoldWhatHappens) {
    const fluid::Mixture mixture = carbonic();
    const InclusionList list = listOf(mixture, "220 L\n250 L\n");
    for (const auto& scale : {kelvin, celsius}) {
        const auto range =
            procedures::proposedTemperatures(mixture, {list.state(0), list.state(1)}, scale);
        EXPECT_EQ(range.values.decimals(), 0);
        EXPECT_GE(range.count(), 40U);
        EXPECT_LE(range.count(), 60U);
        EXPECT_LT(range.lowest().kelvin, 200.0);
        EXPECT_GT(range.highest().kelvin, 350.0);
    }
}

}  // namespace
