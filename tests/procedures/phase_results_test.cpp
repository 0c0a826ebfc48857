#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "model/fluid_model.h"
#include "procedures/homogenisation_conditions.h"
#include "procedures/phase_sentences.h"
#include "procedures/two_phases.h"
#include "tests/procedures/accepted.h"

namespace {

using fluid::Given;
using fluid::Homogenisation;

const std::string notExamined =
    "not examined below 9.04 Kelvin or above 10000 MPa, the first approach is an estimate only";
const std::string nowhere =
    "no homogenization point exists here, the first approach is an estimate only";
const std::string trivial =
    "possible trivial solution, optional: adjust First Approach and try again";
const std::string noSolution = "no solution, adjust First Approach and try again";
const std::string unstable =
    "this equilibrium is unstable: the fluid would rather split in another way";
const std::string homogeneous = "the fluid is homogeneous at this temperature and density";
const std::string solution = "solution";  // and how it was reached

// Answer and volume fractions, the report, and the warning, as the screen shows them, with the
// headings; of numbers that are no answer only whether there are any.
std::string Shown(const procedures::PhaseResults& results) {
    const auto phase = [](const auto& texts) {
        return texts ? texts->role + " " + texts->volumeFraction : "none";
    };
    const bool isReached = results.report.find("solution after") != std::string::npos;
    return (results.isSolution       ? results.answer
            : results.answer.empty() ? "none"
                                     : "some") +
           "|" + (isReached ? solution : results.report) + "|" + results.warning + "|" +
           phase(results.x) + "|" + phase(results.y);
}

// The temperatures and pressures are of 34 to 60 digits.
TEST(HomogenisationConditionsTest, AnswersAreTrueAndNoSentenceDeniesThem) {
    const Fractions carbonic = {{"CO2", 0.7}, {"CH4", 0.3}};
    const Fractions withAmmonia = {{"CO2", 0.8}, {"NH3", 0.1}, {"CH4", 0.1}};
    const procedures::TemperatureScale kelvin = {"Kelvin"};
    const procedures::TemperatureScale celsius = {"Celsius", procedures::zeroCelsius};
    const std::string two = "2 homogenization points: ";
    const std::string dew = two + "6.98177931, 7.09996855 MPa; this is number ";
    const std::string cold = two + "301.66059, 22.6682582 Kelvin; this is number ";
    const std::string bubble = two + "-53.15, -250.928129 Celsius; this is number 1";
    const std::string next = ", press first approach again for the next";
    const std::string liquid = ", solution (liquid) | ";
    const std::string vapour = " |, solution (vapour) ";
    struct Case {
        Fractions fractions;
        procedures::HomogenisationInput input;
        std::size_t point;
        std::string said;  // with the first approach
        std::string shown;
    };
    constexpr auto T = Given::Temperature;
    constexpr auto P = Given::Pressure;
    constexpr auto intoLiquid = Homogenisation::IntoLiquid;
    constexpr auto intoVapour = Homogenisation::IntoVapour;
    for (const Case& c : std::vector<Case>{
             {carbonic, {T, 220.0, intoLiquid, kelvin}, 0, "", "3.386661|solution||" + liquid},
             {carbonic, {T, 220.0, intoVapour, kelvin}, 0, "", "2.422317|solution||" + vapour},
             {carbonic,
              {P, 3.386660699009193, intoLiquid, celsius},
              0,
              bubble + next,
              "-53.150000|solution|" + bubble + "|" + liquid},
             {carbonic,
              {T, 273.5, intoVapour, kelvin},
              0,
              dew + "1" + next,
              "6.981779|solution|" + dew + "1|" + vapour},
             {carbonic,
              {T, 273.5, intoVapour, kelvin},
              1,
              dew + "2" + next,
              "7.099969|solution|" + dew + "2|" + vapour},
             {carbonic,
              {T, 273.5, intoVapour, kelvin},
              2,
              dew + "1" + next,
              "6.981779|solution|" + dew + "1|" + vapour},
             {carbonic,
              {T, 273.5, intoLiquid, kelvin},
              0,
              nowhere,
              "some|" + trivial + "|" + nowhere + "| | "},
             {carbonic,
              {P, 1500.0, intoLiquid, kelvin},
              0,
              "both phases are liquids",
              "21.632057|solution|both phases are liquids|" + liquid},
             {carbonic,
              {T, 1.0, intoLiquid, kelvin},
              0,
              notExamined,
              "none|" + noSolution + "|" + notExamined + "|none|none"},
             {carbonic,
              {T, 1e-5, intoVapour, kelvin},
              0,
              notExamined,
              "none|" + noSolution + "|" + notExamined + "|none|none"},
             {carbonic,
              {P, 1e250, intoVapour, kelvin},
              0,
              nowhere,
              "none|" + noSolution + "|" + nowhere + "|none|none"},
             {withAmmonia, {P, 7.4, intoLiquid, kelvin}, 0, "", "298.941421|solution||" + liquid},
             {withAmmonia,
              {P, 7.4, intoVapour, kelvin},
              0,
              cold + "1" + next,
              "301.660590|solution|" + cold + "1|" + vapour},
             {withAmmonia,
              {P, 7.4, intoVapour, kelvin},
              1,
              cold + "2; both phases are liquids" + next,
              "22.668258|solution|" + cold + "2; both phases are liquids|" + vapour},
             {{{"H2O", 0.5}, {"CO2", 0.5}},
              {T, 100.0, intoLiquid, kelvin},
              0,
              nowhere,
              "0.007980|solution|" + unstable + "|" + liquid}}) {
        const fluid::Mixture& mixture = Accepted(c.fractions);
        const auto start = procedures::HomogenisationStartOf(mixture, c.input, c.point);
        SCOPED_TRACE(c.input.value);
        EXPECT_EQ(start.warning, c.said);
        // What is shown of the first approach is taken again.
        EXPECT_GT(c.input.taken(c.input.shown(start.guess.unknown)), 0.0);
        const auto answer = procedures::HomogenisationFrom(mixture, c.input, start.guess);
        EXPECT_EQ(Shown(answer.results), c.shown);
    }
}

TEST(TwoPhasesTest, AnswersAreTrueAndNoSentenceDeniesThem) {
    const std::string hidden =
        "two liquids are stable here, at 3.6016395 MPa; the roots of a liquid and a vapour cannot "
        "hold them";
    const std::string notFound =
        "not homogeneous, but no two phases were found; the first approach is an estimate only";
    const std::string outside =
        "Comment to result: warning: the fractions must have a number between 0 and 1";
    const std::string same = "Comments to result: " + trivial;
    const Fractions carbonic = {{"CO2", 0.7}, {"CH4", 0.3}};
    struct Case {
        Fractions fractions;
        procedures::EquilibriumInput input;
        std::string said;  // with the first approach
        std::string shown;
    };
    for (const Case& c : std::vector<Case>{
             {carbonic,
              {220.0, 150.0},
              "",
              "3.111802|solution|| (liquid) 0.34169398| (vapour) 0.65830602"},
             {carbonic,
              {220.0, 60.0},
              homogeneous,
              "some|" + outside + "|" + homogeneous + "| error| error"},
             {carbonic,
              {220.0, 1e250},
              homogeneous,
              "some|" + outside + "|" + homogeneous + "| error| error"},
             {carbonic,
              {1e-5, 100.0},
              notFound,
              "none|" + noSolution + "|" + notFound + "|none|none"},
             {{{"H2O", 1.0}},
              {700.0, 90.0},
              homogeneous,
              "some|" + same + "|" + homogeneous + "| ---| ---"},
             {{{"H2O", 0.934}, {"C2H6", 0.066}},
              {295.0, 40.4},
              hidden,
              "some|" + same + "|" + hidden + "| ---| ---"},
             {{{"NH3", 0.08}, {"C2H6", 0.92}},
              {54.0, 64.5328},
              "both phases are liquids",
              "146.260887|solution|both phases are liquids| (liquid) 0.00031768| (vapour) "
              "0.99968232"},
             {{{"H2O", 0.5}, {"CO2", 0.5}},
              {100.0, 44.0},
              unstable,
              "0.007981|solution|" + unstable + "| (liquid) 0.89810530| (vapour) 0.10189470"}}) {
        const fluid::Mixture& mixture = Accepted(c.fractions);
        const auto start = procedures::EquilibriumStartOf(mixture, c.input);
        SCOPED_TRACE(c.input.V);
        EXPECT_EQ(start.warning, c.said);
        EXPECT_GT(start.guess.unknown, 0.0);
        EXPECT_EQ(
            Shown(procedures::EquilibriumFrom(mixture, c.input, start.volumeFraction, start.guess)),
            c.shown);
    }
}

TEST(PhaseSentencesTest, PointsAreNamedByWhatBothPhasesAre) {
    const auto nameAt = [](double V) {
        const auto point = fluid::FindBoundary(fluid::AcceptedMixture(), V);
        return point ? procedures::PointName(*point) : "none";
    };
    Accepted({{"H2O", 0.934}, {"C2H6", 0.066}});
    EXPECT_EQ(nameAt(40.4) + nameAt(50.0), "liquid-liquid pointbubble point");
    Accepted({{"CO2", 0.7}, {"CH4", 0.3}});  // critical at 123.28
    EXPECT_EQ(nameAt(123.2) + nameAt(123.4), "bubble pointdew point");
}

}  // namespace
