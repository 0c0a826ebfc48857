#include <functional>

#include "model/fluid_model.h"
#include "tests/model/golden.h"
#include "tests/screens/screen_test.h"
#include "toolkit/number_text.h"

namespace {

constexpr double zeroCelsius = 273.15;

class TemperatureWindowTest : public tests::ScreenTest {
  protected:
    void open(const tests::Composition& fractions = {{"H2O", "1"}}) {
        openProcedure(fractions, "Temperatures", "TemperatureWindow");
    }
    void calculate(const std::string& volume, const std::string& pressure) {
        robot.enter("dataEntryV", volume);
        robot.enter("dataEntryP", pressure);
        robot.press("Return");
    }
};

// The last temperature lives as long as the process: this suite runs in one of its own.
using FirstTemperatureTest = TemperatureWindowTest;

TEST_F(FirstTemperatureTest, BeforeAnyCalculationKelvinIsZeroAndCelsiusNothing) {
    open();
    EXPECT_EQ(texts({"ResultT", "Label1"}), "|Kelvin|");
    robot.click("Celsius");
    EXPECT_EQ(texts({"ResultT", "Label1"}), "|˚Celsius|");
    robot.click("Kelvin");
    EXPECT_EQ(texts({"ResultT", "Label1"}), "0|Kelvin|");
}

TEST_F(TemperatureWindowTest, ShowsTheTemperatureInBothUnits) {
    for (const auto& row : ReadGolden("temperatures.csv", 16)) {
        open(tests::fractionsOf(row));
        const bool isCelsius = row[11] > 0.0;
        robot.click(row[12] > 0.0 ? "kgm3" : "cm3mol");
        robot.click(isCelsius ? "Celsius" : "Kelvin");
        calculate(toolkit::numberText(row[14]), toolkit::numberText(row[13]));
        const double kelvin = row[15] + (isCelsius ? zeroCelsius : 0.0);
        EXPECT_LT(Error(number("ResultT"), row[15], kelvin), 1e-13) << row[15];
        EXPECT_EQ(texts({"dataEntryP", "warning"}),
                  row[13] == 0.0  ? "0.000|Negative pressures are not excluded. |"
                  : row[13] < 0.0 ? "-20|Negative pressures are not excluded. |"
                                  : toolkit::numberText(row[13]) + "||");
        robot.click(isCelsius ? "Kelvin" : "Celsius");
        EXPECT_LT(Error(number("ResultT"), isCelsius ? kelvin : kelvin - zeroCelsius, kelvin),
                  1e-13);
        EXPECT_EQ(text("Label1"), isCelsius ? "Kelvin" : "˚Celsius");
        robot.closeWindow();
    }
}

TEST_F(TemperatureWindowTest, WarnsInTheOrderOfTheChecksAndShowsNoTemperatureBelowZero) {
    constexpr auto noVolume = "warning: put a number for molar volume";
    const std::string negative = "Negative pressures are not excluded. ";
    struct Case {
        std::string unit, volume, pressure, warning;
        double typedPressure = 0.0, typedVolume = 0.0;  // where the temperature is not above 0
    };
    const std::vector<Case> cases = {
        {"cm3mol", "", "9", noVolume},          {"cm3mol", "0", "", noVolume},
        {"cm3mol", "-80", "-9", noVolume},      {"cm3mol", "80 000", "9", noVolume},
        {"cm3mol", "1e999", "9", noVolume},     {"kgm3", "0", "9", noVolume},
        {"kgm3", "-1", "9", noVolume},          {"kgm3", "1e-310", "9", noVolume},
        {"cm3mol", "80", "", negative},         {"cm3mol", "80", "none", negative},
        {"cm3mol", "80", "-0.5", negative},     {"cm3mol", "80", "-500", negative, -500.0, 80.0},
        {"cm3mol", "20", "10", "", 10.0, 20.0}, {"cm3mol", "20", "", negative, 0.0, 20.0}};
    open();
    for (const Case& c : cases) {
        robot.click(c.unit);
        calculate(c.volume, c.pressure);
        std::string expected = c.warning;
        if (c.typedVolume > 0.0) {
            const double T =
                fluid::TemperatureVdW(fluid::MixtureA(fluid::LastComponent, fluid::Fractions),
                                      fluid::MixtureB(fluid::LastComponent, fluid::Fractions),
                                      c.typedPressure, c.typedVolume);
            ASSERT_LT(T, 0.0);
            expected += "Warning: temperature = " + toolkit::numberText(T) + " K";
        }
        SCOPED_TRACE(c.volume + " " + c.pressure);
        EXPECT_EQ(text("warning"), expected);
        EXPECT_EQ(text("ResultT").empty(), expected != negative);
        const bool isRewritten = c.warning != noVolume && toolkit::numberOrZero(c.pressure) == 0.0;
        EXPECT_EQ(text("dataEntryP"), isRewritten ? "0.000" : c.pressure);
    }
    robot.click("Celsius");
    robot.click("Kelvin");
    const std::string below = text("ResultT");
    EXPECT_LT(number("ResultT"), 0.0);
    robot.click("calculate");
    EXPECT_EQ(text("ResultT"), below) << "a temperature below 0 has changed the result";
    robot.click("Celsius");
    EXPECT_EQ(text("ResultT"), "");
}

TEST_F(TemperatureWindowTest, ChangesEmptyTheResultAndAUnitShowsTheLastOneAgain) {
    struct Case {
        std::string unitBefore;
        std::function<void()> change;
        std::string after;
    };
    const std::vector<Case> cases = {
        {"cm3mol", [this] { robot.enter("dataEntryV", "9"); }, "9|-5|Molar Volume|cm³/mol|"},
        {"cm3mol", [this] { robot.enter("dataEntryP", ""); }, "80||Molar Volume|cm³/mol|"},
        {"cm3mol", [this] { robot.click("Clear"); }, "||Molar Volume|cm³/mol|"},
        {"cm3mol", [this] { robot.click("kgm3"); }, "|-5|Density|g/cm³|"},
        {"cm3mol",
         [this] {
             toolkit::Screen& left = robot.screen();
             robot.use("Start2Window");
             robot.use(left);
         },
         "80|-5|Molar Volume|cm³/mol|"},
        {"kgm3", [this] { robot.click("cm3mol"); }, "|-5|Molar Volume|cm³/mol|"}};
    open();
    std::string last;
    for (const Case& c : cases) {
        robot.click(c.unitBefore);
        robot.click("Kelvin");
        calculate(c.unitBefore == "kgm3" ? "0.2" : "80", "-5");
        last = text("ResultT");
        ASSERT_NE(last, "");
        ASSERT_NE(text("warning"), "");
        c.change();
        EXPECT_EQ(texts({"dataEntryV", "dataEntryP", "MolarVolume", "StaticText2"}), c.after);
        EXPECT_EQ(texts({"ResultT", "warning"}), "||") << c.after;
    }
    EXPECT_EQ(text("DensityResult"), "corresponding density");
    open({{"CO2", "1"}});
    robot.click("Celsius");
    robot.click("Kelvin");
    EXPECT_EQ(text("ResultT"), last) << "each screen has a last temperature of its own";
}

}  // namespace
