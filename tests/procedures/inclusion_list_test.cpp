#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "model/composition.h"
#include "model/first_approach.h"
#include "model/phase_equilibrium.h"
#include "model/phase_split.h"
#include "model/van_der_waals.h"
#include "procedures/homogenisation_conditions.h"
#include "procedures/inclusion_list.h"
#include "procedures/isochore_diagram.h"
#include "procedures/isochore_table.h"
#include "procedures/two_phases.h"
#include "tests/model/golden.h"
#include "tests/procedures/accepted.h"
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

const Fractions carbonic = {{"CO2", 0.7}, {"CH4", 0.3}};

InclusionList ListOf(const fluid::Mixture& mixture, const std::string& text,
                     const PastePattern& pattern = {GivenBy::IntoLiquid, kelvin}) {
    InclusionList list;
    list.calculate({mixture, "CO2 0.7, CH4 0.3"});
    list.add(procedures::ReadPasted(text, pattern).inclusions);
    return list;
}

std::string Column(const InclusionList& list, std::size_t cell,
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
            EXPECT_EQ(kind + " " + toolkit::NumberText(inclusion.number) + unit, c.given);
        }
    }
    const auto table = procedures::ReadPasted("Name\tTh (K)\r\n\r\n\t\r\nA\t220\r\nB\t25,5\r\n",
                                              PastePattern{{}, celsius});
    EXPECT_EQ(table.heads, "Name\tTh (K)");
    ASSERT_EQ(table.inclusions.size(), 2U);
    EXPECT_EQ(table.inclusions[0].problem, into);
    EXPECT_TRUE(table.inclusions[0].scale.isKelvin());  // by the heads
    for (const auto& [heads, unit] :
         {std::pair("Name;Th (\u00B0C);Into", "\u00B0C"), {"Name\tTh/K", "K"}, {"Name Th", ""}}) {
        const std::string rows = std::string(heads) + "\nA 22 L\nB 22 K L\n";
        const auto pasted = procedures::ReadPasted(rows, PastePattern{{}, kelvin});
        EXPECT_EQ(pasted.unit, unit);
        ASSERT_EQ(pasted.inclusions.size(), 2U);
        EXPECT_EQ(pasted.inclusions[0].scale.isKelvin(), pasted.unit != "\u00B0C");
        EXPECT_TRUE(pasted.inclusions[1].scale.isKelvin());
    }
    for (const char* const row : {"A\tca. 215\tL", "<215", "a;1.234,5;L", "Th L"}) {
        const auto pasted = procedures::ReadPasted(row, PastePattern{{}, kelvin});
        EXPECT_TRUE(pasted.heads.empty() && pasted.problems == 1) << row;  // lost would it be else
    }
    EXPECT_EQ(procedures::ReadPasted("A 80", {GivenBy::Density, kelvin}).inclusions[0].by,
              GivenBy::Density);
    EXPECT_TRUE(procedures::ReadPasted(" \n\t;\n", {}).inclusions.size() < 2U);
}

// To all digits that the screens Homogenization conditions and Liquid-Vapour equilibria show.
TEST(InclusionListTest, InclusionsHomogenizeAndFollowTheirTwoPhasesAsOneByOne) {
    using fluid::Homogenisation;
    const fluid::Mixture mixture = Accepted(carbonic);
    std::string text = "C 67.95817259849628 cm3/mol\nD -53.15 C V\nE 0.5 g/cm3\n";
    for (const char* const T : {"150", "187.5", "200.1", "220", "245.75", "260"}) {
        text += std::string("L ") + T + " L\nV " + T + " V\n";
    }
    const InclusionList list = ListOf(mixture, text);
    ASSERT_EQ(list.count(), 15U);
    EXPECT_EQ(Column(list, 1).substr(0, 24), "molar volume|Th|density|");
    EXPECT_EQ(list.row(1, celsius, Digits::Full)[2], "-53.15");
    for (std::size_t i = 0; i < list.count(); ++i) {
        const InclusionState& state = list.state(i);
        const auto row = list.row(i, kelvin, Digits::Shown);
        SCOPED_TRACE(row[0] + row[2] + row[3]);
        ASSERT_TRUE(state.point);
        const double T = state.point->T.kelvin;
        const procedures::HomogenisationInput given = {fluid::Given::Temperature, T,
                                                       state.point->into, kelvin};
        const auto start = HomogenisationStartOf(mixture, given, 0);
        const auto alone = HomogenisationFrom(mixture, given, start.guess).results;
        const auto& bulk = row[3] == "liquid" ? alone.x : alone.y;
        EXPECT_EQ(row[4] + " " + row[5] + " " + row[6],
                  alone.answer + " " + bulk->volume + " " + bulk->density);
        EXPECT_LT(RelativeError(fluid::FindBoundary(mixture, state.V)->T, T), 1e-12);
        EXPECT_EQ(state.slope, fluid::R / (state.V - mixture.covolume));
        const auto range = *procedures::ValueRange::of(0.9 * T, 1.1 * T, 0.03 * T);
        const procedures::IsochoreTable isochore(mixture, {state.V, {{range, kelvin}}});
        const auto line = procedures::LineOf(mixture, state, 0.9 * T, 400.0, 7);
        ASSERT_EQ(line.pieces.size(), 2U);
        const auto& [two, one] = std::tie(line.pieces[0].points, line.pieces[1].points);
        EXPECT_EQ(one.back().P,
                  fluid::PressureVdW(mixture.attraction, mixture.covolume, 400.0, state.V));
        EXPECT_EQ(one.front().P, state.point->P);
        EXPECT_EQ(two.back().P, state.point->P);
        EXPECT_EQ(two.size(), 8U);
        for (std::size_t k = 0; isochore.splitsAt(range.value(k)); ++k) {
            const procedures::EquilibriumInput input = {range.value(k), state.V};
            const auto first = EquilibriumStartOf(mixture, input);
            const auto phases = EquilibriumFrom(mixture, input, first.volumeFraction, first.guess);
            const auto cells = isochore.row(k, kelvin, Digits::Shown);
            EXPECT_EQ(cells[2] + " " + cells[3], phases.answer + " " + phases.y->volumeFraction);
            EXPECT_EQ(toolkit::FixedText(*line.pathPressure(range.value(k)), 6), phases.answer);
        }
    }
}

// A bulk mixed of two phases of known state, in 60 digits, has their pressure on its way.
TEST(InclusionListTest, PathsHaveTheGoldenPressures) {
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
        const InclusionState state =
            procedures::StateOf(bulk, {"", GivenBy::MolarVolume, row[14], kelvin});
        const double T = point[12];
        const auto line = procedures::LineOf(bulk, state, T, 2.0 * T, 5);
        ASSERT_GE(line.pieces.size(), 2U);
        EXPECT_LT(RelativeError(line.pieces.front().points.front().P, point[13]), 1e-11) << row[0];
        EXPECT_EQ(line.pathPressure(T), line.pieces.front().points.front().P);
    }
}

TEST(InclusionListTest, NoneOfSeveralPointsIsPickedSilently) {
    InclusionList list = ListOf(Accepted(carbonic), "273 V\n273.5 V\n300 V\n");
    const std::string none = "nothing homogenizes into the vapour at this temperature|";
    ASSERT_EQ(list.state(1).points.size(), 2U);
    EXPECT_EQ(Column(list, 10), "|2 points: choose one|" + none);
    EXPECT_EQ(list.row(1, kelvin, Digits::Shown)[5], "");
    for (const std::string step : {"point 1 of 2 125.908", "point 2 of 2 143.174"}) {
        list.chooseNextPoint({0, 1, 2});
        const auto row = list.row(1, kelvin, Digits::Shown);
        EXPECT_EQ(row[10] + " " + row[5].substr(0, 7), step);
    }
    EXPECT_EQ(Column(list, 10), "|point 2 of 2|" + none);
}

TEST(InclusionListTest, KeptInclusionsStayWithTheirFluid) {
    InclusionList list = ListOf(Accepted(carbonic), "A 220 L\n");
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
    EXPECT_EQ(Column(list, 11), "CO2 0.7, CH4 0.3||");
    EXPECT_TRUE(list.fileText().starts_with("Composition = CO2 1\n"));
}

TEST(InclusionListTest, RowsAreMovedRemovedRenamedAndForgotten) {
    const fluid::Mixture mixture = Accepted(carbonic);
    InclusionList list = ListOf(mixture, "A 220 L\nB 230 L\nC 240 L\nD 250 L\nE;x\n");
    EXPECT_EQ(list.move({1, 2}, false), (InclusionList::Rows{0, 1}));
    EXPECT_EQ(list.move({0, 1}, false), (InclusionList::Rows{0, 1}));
    EXPECT_EQ(Column(list, 0), "B|C|A|D|E;x|");
    EXPECT_EQ(list.move({1, 3}, true), (InclusionList::Rows{2, 4}));
    EXPECT_EQ(Column(list, 0), "B|A|C|E;x|D|");
    list.remove({1, 2});
    list.rename(0, "B, \"the\" second");
    list.add({{"", GivenBy::Density, 0.4, kelvin}});
    EXPECT_EQ(Column(list, 0), "B, \"the\" second|E;x|D|4|");
    const std::string pressures = Column(list, 4);
    EXPECT_TRUE(list.fileText().starts_with(
        "Composition = CO2 0.7, CH4 0.3\nName, Given, Homogenization Temperature, "))
        << list.fileText();
    EXPECT_NE(list.fileText().find("\n\"B, \"\"the\"\" second\", Th, -43.15, liquid, "),
              std::string::npos)
        << list.fileText();
    list.forgetResults();
    EXPECT_EQ(Column(list, 4), "||||");
    EXPECT_EQ(Column(list, 2), "230.000000||250.000000||");
    EXPECT_EQ(Column(list, 6), "|||0.400000|");
    list.calculate({mixture, ""});
    EXPECT_EQ(Column(list, 4), pressures);
}

TEST(InclusionListTest, TrappingConditionsLieOnTheIsochores) {
    const fluid::Mixture mixture = Accepted(carbonic);
    InclusionList list = ListOf(mixture, "220 L\n250 L\n273.5 V\n1e120 cm3/mol\n5 g/cm3\n");
    const std::string cold = "it homogenizes above this trapping ";
    const std::string several = "|2 points: choose one|";
    list.setTrapping({WrittenTemperature::typed(-33.15, celsius), {}});
    EXPECT_EQ(Column(list, 8), "240.000000|||240.000000||");
    EXPECT_TRUE(Column(list, 10).starts_with("|" + cold + "temperature" + several));
    EXPECT_NE(Column(list, 10).find("|the molar volume must be larger"), std::string::npos);
    const std::string P = list.row(0, kelvin, Digits::Full)[9];
    list.setTrapping({{}, toolkit::NumberOrZero(P)});
    EXPECT_NEAR(toolkit::NumberOrZero(list.row(0, kelvin, Digits::Full)[8]), 240.0, 1e-10);
    list.setTrapping({{}, 1e-121});
    EXPECT_TRUE(Column(list, 10).starts_with(cold + "pressure|" + cold + "pressure" + several))
        << Column(list, 10);
    EXPECT_NE(Column(list, 10).find("so cold that it is not known"), std::string::npos);
    // An own condition comes before that of all, and stays without a result.
    list.setTrapping({0, 1}, {WrittenTemperature::typed(300.0, kelvin), {}});
    EXPECT_EQ(Column(list, 8).substr(0, 24), "300.000000|300.000000|||");
    list.setTrapping({1}, {});
    list.setTrapping({{}, 20.0});
    EXPECT_EQ(Column(list, 9).substr(0, 23),
              list.row(0, kelvin, Digits::Shown)[9] + "|20.000000||20");
    list.forgetResults();
    EXPECT_EQ(Column(list, 8) + Column(list, 9), "300.000000||||||||||");
}

TEST(InclusionListTest, LinesSayWhereThreePhasesAreAndWhereNothingIsSearched) {
    const fluid::Mixture mixture = Accepted({{"H2O", 0.5}, {"CO2", 0.3}, {"CH4", 0.2}});
    const InclusionState state =
        procedures::StateOf(mixture, {"", GivenBy::MolarVolume, 70.0, kelvin});
    using State = procedures::InclusionLine::State;
    const auto sentences = [&](const auto& line, double lowestT) {
        return procedures::LineSentences(mixture, {line}, lowestT, kelvin);
    };
    const auto line = procedures::LineOf(mixture, state, 180.0, 700.0, 10);
    std::vector<State> states;
    for (const auto& piece : line.pieces) {
        states.push_back(piece.state);
        for (const double share : {0.001, 0.5, 0.999}) {
            const double T = std::lerp(piece.points.front().T, piece.points.back().T, share);
            const auto split = fluid::SplitAtVolume(mixture, T, 70.0);
            EXPECT_EQ(!split              ? State::OnePhase
                      : split->metastable ? State::TwoOfThree
                                          : State::TwoPhases,
                      piece.state)
                << T;
        }
    }
    EXPECT_EQ(states, (std::vector{State::TwoOfThree, State::TwoPhases, State::OnePhase}));
    EXPECT_TRUE(sentences(line, 180.0).starts_with("Dotted: two phases where three are more"));
    EXPECT_FALSE(line.isColdEndReached);
    const auto cold = procedures::LineOf(mixture, state, 1.0, 700.0, 10);
    EXPECT_TRUE(cold.isColdEndReached);
    EXPECT_EQ(cold.pieces.front().points.front().T, fluid::ColdestT(mixture));
    EXPECT_NE(sentences(cold, 1.0).find("Kelvin nothing is searched"), std::string::npos);
    auto named = line;
    named.name = "A3";
    const auto series = procedures::LineSeries({named, cold}, celsius, "isochores", 4);
    ASSERT_EQ(series.size(), 4U);
    EXPECT_EQ(series[0].name + series[1].name + series[2].name,
              "isochore A3isochorehomogenization of A3");
    EXPECT_EQ(series[0].parts.size(), states.size());
    const std::size_t last = series[0].parts.back().first;
    EXPECT_EQ(series[0].x[last], series[2].x[0]);
    const auto path = series[0].between(last - 1, 0.5);
    EXPECT_EQ(path.y, *line.pathPressure(path.x + procedures::zeroCelsius));
    const auto isochore = series[0].between(last, 0.5);
    EXPECT_NEAR(isochore.y, 0.5 * (series[0].y[last] + series[0].y[last + 1]), 1e-9);
}

TEST(InclusionListTest, ProposedTemperaturesAreRoundAndHoldWhatHappens) {
    const fluid::Mixture mixture = Accepted(carbonic);
    const InclusionList list = ListOf(mixture, "220 L\n250 L\n");
    for (const auto& scale : {kelvin, celsius}) {
        const auto range =
            procedures::ProposedTemperatures(mixture, {list.state(0), list.state(1)}, scale);
        EXPECT_EQ(range.values.decimals(), 0);
        EXPECT_GE(range.count(), 40U);
        EXPECT_LE(range.count(), 60U);
        EXPECT_LT(range.lowest().kelvin, 200.0);
        EXPECT_GT(range.highest().kelvin, 350.0);
    }
}

}  // namespace
