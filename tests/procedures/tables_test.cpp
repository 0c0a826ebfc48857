#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "model/composition.h"
#include "model/phase_split.h"
#include "model/van_der_waals.h"
#include "procedures/isochore_table.h"
#include "procedures/isotherm_diagram.h"
#include "procedures/isotherm_table.h"
#include "procedures/spinodal_table.h"
#include "tests/model/golden.h"
#include "tests/procedures/accepted.h"
#include "toolkit/number_text.h"

namespace {

using procedures::Digits;
using procedures::IsochoreInput;
using procedures::IsochoreTable;
using procedures::IsothermInput;
using procedures::IsothermTable;
using procedures::SeriesTable;
using procedures::SpinodalInput;
using procedures::SpinodalTable;
using procedures::TemperatureList;
using procedures::TemperatureRange;
using procedures::TemperatureScale;
using procedures::ValueRange;
using procedures::WrittenTemperature;

const TemperatureScale kelvin = procedures::kelvinScale;
const TemperatureScale celsius = procedures::celsiusScale;

const Fractions carbonic = {{"CO2", 0.7}, {"CH4", 0.3}};
// It has three volumes of the diffusional spinodal.
const Fractions aqueous = {{"H2O", 0.741}, {"O2", 0.011}, {"C2H6", 0.248}};

TemperatureRange Between(double first, double last, double step,
                         const TemperatureScale& scale = kelvin) {
    return {*ValueRange::of(first, last, step), scale};
}

IsochoreInput Isochore(double V, double first, double last, double step) {
    return {V, Between(first, last, step)};
}

IsothermInput Isotherm(double T, double first, double last, double step) {
    return {{{{WrittenTemperature::typed(T, kelvin), toolkit::NumberText(T)}}, ""},
            ValueRange::of(first, last, step),
            false};
}

std::string Line(const SeriesTable& table, std::size_t number,
                 const TemperatureScale& scale = kelvin, Digits digits = Digits::Shown) {
    std::string cells;
    for (const std::string& cell : table.row(number, scale, digits)) {
        cells += cell + "|";
    }
    return cells;
}

std::string ContentsOf(const std::string& file) {
    std::ifstream stream(DROVAN_TEST_DATA "/" + file);
    std::ostringstream contents;
    contents << stream.rdbuf();
    return contents.str();
}

TEST(TablesTest, RangesReachTheirLastValueInDecimalSteps) {
    struct Case {
        double first, last, step, count, value;
        std::size_t at;
        int decimals;
        std::string refusal;
    };
    for (const Case& c : std::vector<Case>{
             {0.0, 1.0, 0.1, 11.0, 0.3, 3, 1, ""},
             {0.0, 1.0, 0.3, 5.0, 1.0, 4, 1, ""},
             {10.0, -10.0, 4.0, 6.0, -10.0, 5, 0, ""},
             {10.0, 0.0, -2.5, 5.0, 7.5, 1, 1, ""},
             {273.15, 293.15, 0.05, 401.0, 283.15, 200, 2, ""},
             {5.0, 5.0, 0.0, 1.0, 5.0, 0, 0, ""},
             {1.0, 2.0, 3.0, 2.0, 2.0, 1, 0, ""},
             {0.0, 1e9, 1e-3, 1e12 + 1.0, 1e-3, 1, 3, "warning: these would be 1000000000001 Ks"},
             {0.0, 1e300, 1e-3, 1e303, 0.0, 0, 6, "warning: these would be 1e+303 Ks"},
             {0.0, 100000.0, 1.0, 100001.0, 1.0, 1, 0, "warning: these would be 100001 Ks"},
             {9007199254740991.0, 9007199254740999.0, 1.0, 10.0, 9007199254740991.0, 0, 6,
              "warning: numbers of this size"}}) {
        const auto range = ValueRange::of(c.first, c.last, c.step);
        ASSERT_TRUE(range);
        EXPECT_EQ(range->count(), c.count) << c.first << ' ' << c.last << ' ' << c.step;
        EXPECT_EQ(range->value(c.at), c.value);
        EXPECT_EQ(range->decimals(), c.decimals) << c.first;
        EXPECT_EQ(range->refusal("Ks").substr(0, c.refusal.size()), c.refusal);
        EXPECT_EQ(range->refusal("Ks").empty(), c.refusal.empty()) << range->refusal("Ks");
    }
    EXPECT_FALSE(ValueRange::of(0.0, 1.0, 0.0));
    EXPECT_FALSE(ValueRange::of(-1e308, 1e308, 1.0));
    EXPECT_EQ(Between(100.0, 200.0, 0.1).at(0).celsius, -173.15);
    EXPECT_EQ(Between(-173.15, 0.0, 0.1, celsius).at(0).kelvin, 100.0);
}

TEST(TablesTest, WhatCannotBeCalculatedIsRefusedByASentence) {
    const fluid::Mixture mixture = Accepted(carbonic);
    const auto isothermOf = [](double T, double first, double last, bool areDensities) {
        IsothermInput input = Isotherm(T, first, last, 1.0);
        input.areDensities = areDensities;
        return input;
    };
    const auto severalOf = [&mixture](const std::string& T, double first, double last) {
        return IsothermInput{TemperatureList::read(T, kelvin, mixture),
                             ValueRange::of(first, last, 1.0), false};
    };
    using Given = SpinodalInput::Given;
    const auto cold = Between(-1.0, -1.0, 0.0);
    for (const auto& [refusal, expected] : std::vector<std::pair<std::string, std::string>>{
             {Isochore(80.0, 200.0, 300.0, 10.0).refusal(mixture), ""},
             {Isochore(0.0, 200.0, 300.0, 10.0).refusal(mixture),
              "put a number for molar volume or"},
             {IsochoreInput{80.0, {}}.refusal(mixture), "put a number for both temperatures and"},
             {Isochore(30.0, 200.0, 300.0, 10.0).refusal(mixture),
              "the molar volume must be larger than the co-volume of this fluid, 42.9303038 cm³"},
             {Isochore(80.0, -1.0, 300.0, 10.0).refusal(mixture), "temperatures must be above"},
             {Isochore(80.0, 200.0, 300.0, 1e-4).refusal(mixture), "these would be 1000001 temp"},
             {Isochore(80.0, 200.0, 1.7e308, 1e307).refusal(mixture), "with numbers of this size"},
             {Isotherm(220.0, 50.0, 90.0, 1.0).refusal(mixture), ""},
             {Isotherm(220.0, -1.0, 90.0, 1.0).refusal(mixture), "put numbers above 0 for vol"},
             {severalOf("200:290:1", 50.0, 1250.0).refusal(mixture), "these would be 109291 rows"},
             {severalOf("215 2O0", 50.0, 90.0).refusal(mixture), "\"2O0\" was not understood; put"},
             {severalOf("", 50.0, 90.0).refusal(mixture), "put a number for temperature, or"},
             {severalOf("200:300", 50.0, 90.0).refusal(mixture), "\"200:300\" was not"},
             {severalOf("215;-1", 50.0, 90.0).refusal(mixture), "temperatures must be above"},
             {severalOf("1:200:1", 50.0, 90.0).refusal(mixture), "at most 100 isotherms are"},
             {Isotherm(220.0, 40.0, 90.0, 1.0).refusal(mixture),
              "molar volumes must be larger than the co-volume of this fluid, 42.9303038 cm³/mol, "
              "and densities smaller than 0.829709"},
             {isothermOf(220.0, 0.1, 0.83, true).refusal(mixture), "molar volumes must be larger"},
             {isothermOf(220.0, 1e-308, 0.8, true).refusal(mixture), "with numbers of this size"},
             {isothermOf(1.7e308, 50.0, 90.0, false).refusal(mixture), "with numbers of this size"},
             {Isotherm(220.0, 50.0, 9e9, 1.0).refusal(mixture), "these would be 8999999951 molar"},
             {SpinodalInput{Given::Volume, 2.0, {}}.refusal(mixture), "the molar volume must be"},
             {SpinodalInput{Given::Volume, 0.0, {}}.refusal(mixture), "put a number for molar vol"},
             {SpinodalInput{Given::Temperature, 0.0, {}}.refusal(mixture), "put a number for temp"},
             {SpinodalInput{Given::Temperature, 0.0, cold}.refusal(mixture),
              "temperatures must be"},
             {SpinodalInput{Given::Range, 0.0, {}}.refusal(mixture),
              "put a number for both temp"}}) {
        const std::string sentence = expected.empty() ? "" : "warning: " + expected;
        EXPECT_EQ(refusal.substr(0, sentence.size()), sentence);
        EXPECT_EQ(refusal.empty(), sentence.empty());
    }
}

TEST(TablesTest, FilesAreThoseMadeByHandWhateverTheUnit) {
    const fluid::Mixture mixture = Accepted(carbonic);
    EXPECT_EQ(IsochoreTable(mixture, {1000.0, Between(-50.0, 45.0, 30.5, celsius)}).fileText(),
              ContentsOf("isochore.txt"));
    EXPECT_EQ(IsochoreTable(mixture, {1000.0, Between(223.15, 318.15, 30.5)}).fileText(),
              ContentsOf("isochore.txt"));
    EXPECT_EQ(IsothermTable(mixture, Isotherm(220.0, 900.0, 500.0, 200.0)).fileText(),
              ContentsOf("isotherm.txt"));
    const fluid::Mixture water = Accepted(aqueous);
    for (const bool isCelsius : {false, true}) {
        const double zero = isCelsius ? 273.15 : 0.0;
        const auto scale = isCelsius ? celsius : kelvin;
        // Three volumes of one kind, two of the other, at six temperatures.
        const SpinodalTable table(water, {SpinodalInput::Given::Range, 0.0,
                                          isCelsius ? Between(176.95, 127.05, 10.0, celsius)
                                                    : Between(450.1, 400.2, 10.0)});
        EXPECT_EQ(table.count(), 30U);
        EXPECT_TRUE(
            table.fileText().starts_with("Temperature, Pressure, Molar Volume, Density, Limit\n"
                                         "(Celsius), (MPa), (cm3/mol), (g/cm3)\n176.95, "))
            << table.fileText();
        const SpinodalTable one(water, {SpinodalInput::Given::Volume, 80.0, {}});
        EXPECT_EQ(one.row(0, scale, Digits::Full)[0],
                  toolkit::NumberText(one.limits()[0].state.T - zero));
    }
}

// The boundary is that of phase_equilibria.csv, in 60 digits.
TEST(TablesTest, IsochoresHomogenizeWhereTheirRowsSay) {
    constexpr double V = 67.95817259849628;
    const fluid::Mixture mixture = Accepted(carbonic);
    const IsochoreTable table(mixture, Isochore(V, 250.0, 205.0, 10.0));
    EXPECT_LT(RelativeError(table.boundary()->T, 220.0), 1e-13);
    EXPECT_LT(RelativeError(table.boundary()->P, 3.386660699009192), 1e-11);
    ASSERT_EQ(table.count(), 6U);
    EXPECT_EQ(Line(table, 2), "230|6.708746||||");
    const auto split = fluid::SplitAtVolume(mixture, 205.0, V);
    const auto row = table.row(5, kelvin, Digits::Full);
    EXPECT_EQ(row[1], toolkit::NumberText(
                          fluid::PressureVdW(mixture.attraction, mixture.covolume, 205.0, V)));
    EXPECT_EQ(row[2], toolkit::NumberText(split->phases.P));
    EXPECT_EQ(row[3], toolkit::NumberText(split->volumeFraction));
    EXPECT_EQ(row[4], "two phases");
    EXPECT_EQ(table.row(5, celsius, Digits::Shown)[0], "-68.15");
    for (const auto& [input, scale, sentence] :
         std::vector<std::tuple<IsochoreInput, TemperatureScale, std::string>>{
             {Isochore(V, 250.0, 205.0, 10.0), kelvin,
              "Homogenization at 220 Kelvin and 3.3866607 MPa, into the liquid"},
             {Isochore(V, 250.0, 230.0, 10.0), celsius,
              "Homogenization at -53.15 ˚Celsius and 3.3866607 MPa, into the liquid; these "
              "temperatures lie above it"},
             {Isochore(600.0, 100.0, 110.0, 10.0), kelvin,
              "Homogenization at 219.175748 Kelvin and 2.37713264 MPa, into the vapour; these "
              "temperatures lie below it"},
             {Isochore(123.28149252, 100.0, 300.0, 10.0), kelvin,
              "Homogenization at 273.287292 Kelvin and 7.09936214 MPa, at the critical point"}}) {
        EXPECT_EQ(IsochoreTable(mixture, input).homogenizationSentence(scale), sentence);
    }
}

TEST(TablesTest, IsothermsNameTheStatesAndTheirEnds) {
    const fluid::Mixture mixture = Accepted(carbonic);
    const IsothermTable table(mixture, Isotherm(220.0, 60.0, 610.0, 50.0));
    std::string states;
    for (std::size_t i = 0; i < table.count(); ++i) {
        states += table.row(i, kelvin, Digits::Shown)[6].substr(0, 2);
    }
    EXPECT_EQ(states, "stunununmememememememest");
    EXPECT_EQ(Line(table, 0), "220.000000|60|0.593661|17.745043|||stable|");
    EXPECT_EQ(table.boundarySentences(),
              "Bubble point at 67.9581726 cm³/mol and 3.3866607 MPa\n"
              "Dew point at 588.850081 cm³/mol and 2.42231705 MPa");
    const fluid::Mixture& watery = Accepted({{"H2O", 0.934}, {"C2H6", 0.066}});
    EXPECT_EQ(
        IsothermTable(watery, Isotherm(331.685, 40.0, 45.0, 1.0)).boundarySentences().substr(0, 22),
        "Liquid-liquid point at");
    IsothermInput dense = Isotherm(220.0, 0.1, 0.4, 0.1);
    dense.areDensities = true;
    EXPECT_EQ(Line(IsothermTable(mixture, dense), 2),
              "220.000000|118.732293|0.3|1.297521|3.207656|0.519989|unstable|");
}

TEST(TablesTest, SeveralIsothermsAreListedAndExportedOneByOne) {
    const fluid::Mixture mixture = Accepted(carbonic);
    const auto list = TemperatureList::read("  220;Tc -63.15:-43.15:10\t1e3 ", celsius, mixture);
    std::string names;
    for (const auto& each : list.temperatures) names += each.name + "|";
    EXPECT_EQ(names, "220|Tc = 0.13729|-63.15|-53.15|-43.15|1000|");
    EXPECT_LT(RelativeError(list.temperatures[1].T.kelvin, 273.2872919730699), 1e-13);
    const IsothermInput input{TemperatureList::read("230 220", kelvin, mixture),
                              ValueRange::of(900.0, 500.0, 200.0), false};
    const IsothermTable table(mixture, input);
    ASSERT_EQ(table.count(), 6U);
    EXPECT_EQ(table.row(3, kelvin, Digits::Shown)[0], "220.000000");
    EXPECT_TRUE(table.fileText().ends_with("\n\n" + ContentsOf("isotherm.txt")));
    const auto split = fluid::SplitAtVolume(mixture, 220.0, 500.0);
    EXPECT_EQ(table.row(5, kelvin, Digits::Full)[4], toolkit::NumberText(split->phases.P));
    EXPECT_EQ(table.boundarySentences(), "2 of 2 isotherms have bubble or dew points");
    const fluid::Mixture& dry = Accepted({{"H2O", 0.5}, {"CH4", 0.5}});
    EXPECT_EQ(TemperatureList::read("Tc", kelvin, dry).refusal,
              "warning: this fluid has no stable critical point, and no Tc");
    // What is not typed is proposed.
    for (const auto& [areDensities, first, last, step, count] :
         std::vector<std::tuple<bool, std::string, std::string, std::string, double>>{
             {false, "", "", "", 123.0},
             {true, "", "", "", 157.0},
             {false, "60", "70", "", 101.0},
             {false, "", "90", "5", 10.0},
             {false, "60", "60", "", 1.0}}) {
        const auto range = procedures::IsothermRange(mixture, areDensities, {first, last, step});
        ASSERT_TRUE(range);
        EXPECT_EQ(range->count(), count) << first << ' ' << last;
        const IsothermInput proposed{list, range, areDensities};
        EXPECT_TRUE(proposed.refusal(mixture).empty()) << proposed.refusal(mixture);
        EXPECT_TRUE(!first.empty() ||
                    std::abs(proposed.smallestV(mixture) / mixture.covolume - 1.05) < 0.005);
        EXPECT_TRUE(!last.empty() ||
                    std::abs(proposed.largestV(mixture) / 123.2814925 - 20.0) < 0.1);
    }
    EXPECT_FALSE(procedures::IsothermRange(mixture, false, {"60", "x", ""}));
    EXPECT_FALSE(procedures::IsothermRange(mixture, false, {"60", "70", "0"}));
}

// Of the drawn series that of a name.
const toolkit::PlotSeries& Drawn(const std::vector<toolkit::PlotSeries>& series,
                                 const std::string& name) {
    const auto found = std::find_if(series.begin(), series.end(),
                                    [&name](const auto& each) { return each.name == name; });
    EXPECT_NE(found, series.end()) << name;
    return *found;
}

TEST(TablesTest, DrawnIsothermsHaveEqualAreasAndTheirDomeEndsAtTheCriticalPoint) {
    AcceptPure(1);
    const fluid::Mixture pure = fluid::AcceptedMixture();
    const double a = pure.attraction;
    const double b = pure.covolume;
    procedures::IsothermFigure figure{
        pure, TemperatureList::read("215 240 270 Tc 320", kelvin, pure).temperatures, "K", 1.05 * b,
        60.0 * b};
    const auto series = procedures::FigureSeries(figure, {});
    std::size_t tieLines = 0;
    for (const auto& [T, name] : figure.temperatures) {
        const toolkit::PlotSeries& curve = Drawn(series, "isotherm " + name + " K");
        EXPECT_FALSE(curve.label.empty());
        if (curve.parts.back().state != "two phases") continue;
        ++tieLines;
        const std::size_t first = curve.parts.back().first + 1;  // behind the gap
        const double liquid = curve.x[first];
        const double vapour = curve.x.back();
        const double loop =
            fluid::R * T.kelvin * std::log((vapour - b) / (liquid - b)) + a / vapour - a / liquid;
        for (std::size_t i = first; i < curve.size(); ++i) {
            EXPECT_LT(RelativeError(curve.y[i] * (vapour - liquid), loop), 1e-9) << name;
        }
        // Between the points that are drawn, too: the loop itself, and the line.
        for (const double share : {0.2, 0.7}) {
            EXPECT_LT(RelativeError(curve.between(first, share).y, curve.y[first]), 1e-9);
            const auto [V, P] = curve.between(40, share);
            EXPECT_LT(RelativeError(P, fluid::PressureVdW(a, b, T.kelvin, V)), 1e-12);
        }
    }
    EXPECT_EQ(tieLines, 3U);
    const toolkit::PlotSeries& bubble = Drawn(series, "bubble points");
    EXPECT_LT(RelativeError(bubble.x.back(), 3.0 * b), 1e-9);
    EXPECT_LT(RelativeError(bubble.y.back(), a / (27.0 * b * b)), 1e-9);
    const double top = *std::max_element(bubble.y.begin(), bubble.y.end());
    EXPECT_LT(RelativeError(top, bubble.y.back()), 1e-12);
    // Of a mixture the line falls, is read as exactly, and is there over densities as well.
    figure.mixture = Accepted(carbonic);
    figure.temperatures = TemperatureList::read("220", kelvin, figure.mixture).temperatures;
    for (const bool areDensities : {false, true}) {
        const auto mixed = procedures::FigureSeries(
            figure, {.hasDome = false, .hasMechanical = true, .areDensities = areDensities}, "old");
        const toolkit::PlotSeries& curve = Drawn(mixed, "isotherm 220 K of old");
        EXPECT_EQ(curve.legend + curve.label, "old");
        EXPECT_EQ(Drawn(mixed, "mechanical spinodal of old").colour, toolkit::PlotSeries::grey);
        const std::size_t first = curve.parts.back().first + 1;
        EXPECT_LT(RelativeError(curve.y[first], 3.386660699009192), 1e-9);
        for (std::size_t i = first; i + 1 < curve.size(); ++i) {
            const auto [x, P] = curve.between(i, 0.5);
            const double V = areDensities ? fluid::MolarVolumeFromDensity(figure.mixture, x) : x;
            const auto split = fluid::SplitAtVolume(figure.mixture, 220.0, V);
            EXPECT_LT(RelativeError(P, split->phases.P), 5e-6) << V;
            EXPECT_LT(curve.y[i + 1], curve.y[i]);
        }
        const toolkit::FirstView view = procedures::FigureView(figure, areDensities, true);
        EXPECT_TRUE(view.y->low < -0.9 && view.y->low > -4.0 && view.y->high > 7.1 &&
                    view.y->high < 9.5);
        EXPECT_EQ(view.x.has_value(), !areDensities);
    }
}

TEST(TablesTest, SpinodalsNameTheirSidesAndTheTemperaturesWithoutAny) {
    const auto limits = [](const fluid::Mixture& mixture, const SpinodalInput& input) {
        const SpinodalTable table(mixture, input);
        std::string names;
        for (const auto& limit : table.limits()) {
            names += std::string(limit.name) + " " + toolkit::FixedText(limit.state.V, 6) + "|";
        }
        return names + table.missingSentence(celsius);
    };
    using Given = SpinodalInput::Given;
    const auto at = [](double T) {
        return SpinodalInput{Given::Temperature, 0.0, Between(T, T, 0.0)};
    };
    const fluid::Mixture mixture = Accepted(carbonic);
    EXPECT_EQ(limits(mixture, at(220.0)),
              "diffusional, liquid side 80.643940|diffusional, vapour side 241.567843|"
              "mechanical, liquid side 83.878231|mechanical, vapour side 235.193807|");
    EXPECT_EQ(limits(mixture, {Given::Volume, 80.64394, {}}),
              "diffusional, liquid side 80.643940|mechanical, liquid side 80.643940|");
    EXPECT_EQ(limits(mixture, at(300.0)),
              "no spinodal nan|There is no spinodal: the fluid withstands small changes at every "
              "molar volume");
    EXPECT_TRUE(limits(mixture, {Given::Range, 0.0, Between(268.15, 288.15, 5.0)})
                    .ends_with("no spinodal nan|There is no spinodal at 5 ˚Celsius and above: 3 "
                               "of 5 temperatures"));
    EXPECT_EQ(Line(SpinodalTable(mixture, at(300.0)), 0), "300.000000||||no spinodal|");
    EXPECT_TRUE(limits(Accepted(aqueous), at(450.1)).starts_with("diffusional, vapour side"));
    AcceptPure(1);
    EXPECT_TRUE(limits(fluid::AcceptedMixture(), at(220.0)).starts_with("liquid side"));
}

}  // namespace
