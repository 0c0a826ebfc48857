#include <cmath>
#include <functional>

#include "model/fluid_model.h"
#include "tests/model/golden.h"
#include "tests/screens/screen_test.h"
#include "toolkit/number_text.h"

namespace {

constexpr double zeroCelsius = 273.15;
const std::string noState = "warning: put a number for temperature and molar volume";

/// The screens that start from a molar volume or a density.
class VolumeScreensTest : public tests::ScreenTest {
  protected:
    void open(const std::string& wanted, const tests::Composition& fractions = {{"H2O", "1"}}) {
        openProcedure(fractions, wanted + "s", wanted + "Window");
    }
    void calculate(const std::string& volume, const std::string& temperatureOrPressure) {
        const bool isPressureWanted = robot.screen().name() == "PressureWindow";
        robot.enter("dataEntryV", volume);
        robot.enter(isPressureWanted ? "dataEntryT" : "dataEntryP", temperatureOrPressure);
        robot.press("Return");
    }
};
using PressureWindowTest = VolumeScreensTest;
using TemperatureWindowTest = VolumeScreensTest;

// The last temperature lives as long as the process: this suite runs in one of its own.
using FirstTemperatureTest = VolumeScreensTest;

TEST_F(FirstTemperatureTest, BeforeAnyCalculationKelvinIsZeroAndCelsiusNothing) {
    open("Temperature");
    EXPECT_EQ(texts({"ResultT", "Label1"}), "|Kelvin|");
    robot.click("Celsius");
    EXPECT_EQ(texts({"ResultT", "Label1"}), "|˚Celsius|");
    robot.click("Kelvin");
    EXPECT_EQ(texts({"ResultT", "Label1"}), "0|Kelvin|");
}

TEST_F(PressureWindowTest, ShowsThePressureAndTheEchoOfTheTypedState) {
    for (const auto& row : ReadGolden("pressures.csv", 17)) {
        open("Pressure", tests::fractionsOf(row));
        const bool isDensity = row[12] > 0.0;
        robot.click(row[11] > 0.0 ? "Celsius" : "Kelvin");
        robot.click(isDensity ? "kgm3" : "cm3mol");
        calculate(toolkit::numberText(row[14]), toolkit::numberText(row[13]));
        EXPECT_LT(RelativeError(number("Result"), row[15]), 1e-13) << row[15];
        const std::string head =
            std::string("corresponding ") + (isDensity ? "molar volume" : "density") + " = ";
        const std::string unit = isDensity ? " cm³/mol" : " g/cm³";
        const std::string echo = text("DensityResult");
        ASSERT_TRUE(echo.starts_with(head) && echo.ends_with(unit)) << echo;
        const auto other =
            toolkit::parseNumber(echo.substr(head.size(), echo.size() - head.size() - unit.size()));
        EXPECT_LT(RelativeError(other.value_or(0.0), row[16]), 1e-15) << echo;
        robot.closeWindow();
    }
}

TEST_F(TemperatureWindowTest, ShowsTheTemperatureInBothUnits) {
    for (const auto& row : ReadGolden("temperatures.csv", 16)) {
        open("Temperature", tests::fractionsOf(row));
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

TEST_F(PressureWindowTest, WarnsOfWhatIsNoStateAndNeverShowsAnInfinity) {
    struct Case {
        std::string temperatureUnit, volumeUnit, volume, temperature;
    };
    const std::vector<Case> refused = {
        {"Kelvin", "cm3mol", "80", ""},        {"Kelvin", "cm3mol", "", "300"},
        {"Kelvin", "cm3mol", "-80", "300"},    {"Kelvin", "cm3mol", "80", "-1"},
        {"Kelvin", "cm3mol", "8o", "300"},     {"Kelvin", "cm3mol", "80", "300,5"},
        {"Kelvin", "cm3mol", "1e-200", "300"}, {"Kelvin", "cm3mol", "30.5", "1e308"},
        {"Kelvin", "cm3mol", "1e999", "300"},  {"Celsius", "cm3mol", "80", "-273.15"},
        {"Celsius", "cm3mol", "80", "-273.2"}, {"Celsius", "kgm3", "0", "20"},
        {"Celsius", "kgm3", "-0.5", "20"},     {"Celsius", "kgm3", "1e-310", "20"},
        {"Celsius", "cm3mol", "", "ice"}};
    open("Pressure");
    for (const Case& c : refused) {
        robot.click(c.temperatureUnit);
        robot.click(c.volumeUnit);
        calculate(c.volume, c.temperature);
        EXPECT_EQ(texts({"Result", "warning", "dataEntryT"}),
                  "|" + noState + "|" + c.temperature + "|")
            << c.volume << ' ' << c.temperature;
        EXPECT_EQ(text("DensityResult").find("inf"), std::string::npos);
    }
    for (const std::string typed : {"", "0", "-0.0", "ice", "0.000"}) {
        calculate("80", typed);
        EXPECT_EQ(texts({"dataEntryT", "warning"}), "0.000||") << typed;
        EXPECT_LT(RelativeError(number("Result"), -40.618963639617691), 1e-13);
    }
    calculate("30.480996041696883", "20");  // the co-volume
    EXPECT_EQ(text("Result"), "0");
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
        {"cm3mol", "1e999", "9", noVolume},     {"kgm3", "1e-310", "9", noVolume},
        {"cm3mol", "80", "", negative},         {"cm3mol", "80", "none", negative},
        {"cm3mol", "80", "-0.5", negative},     {"cm3mol", "80", "-500", negative, -500.0, 80.0},
        {"cm3mol", "20", "10", "", 10.0, 20.0}, {"cm3mol", "20", "", negative, 0.0, 20.0}};
    open("Temperature");
    calculate("30.480996041696883", "-1e6");  // the co-volume
    EXPECT_EQ(text("warning"), negative + "Warning: temperature = 0 K");
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
    EXPECT_EQ(text("ResultT"), "");
    robot.click("Kelvin");
    EXPECT_LT(number("ResultT"), 0.0);
    calculate("80", "5");
    const std::string last = text("ResultT");
    open("Temperature", {{"CO2", "1"}});
    robot.click("Celsius");
    robot.click("Kelvin");
    EXPECT_EQ(text("ResultT"), last) << "each screen has a last temperature of its own";
}

TEST_F(PressureWindowTest, ChangesEmptyTheResultTheWarningAndTheirOwnEntryOnly) {
    struct Screen {
        std::string button, name, entry, unit, result;
    };
    for (const Screen& s :
         {Screen{"Pressures", "PressureWindow", "dataEntryT", "StaticText1", "Result"},
          Screen{"Temperatures", "TemperatureWindow", "dataEntryP", "StaticText2", "ResultT"}}) {
        openProcedure({{"H2O", "1"}}, s.button, s.name);
        struct Case {
            std::function<void()> change;
            std::string after;  // the entries, and what the first of them is
        };
        const std::vector<Case> cases = {
            {[&] { robot.enter("dataEntryV", "9"); }, "9|-5|Molar Volume|cm³/mol|"},
            {[&] { robot.enter(s.entry, ""); }, "80||Molar Volume|cm³/mol|"},
            {[&] { robot.click("Clear"); }, "||Molar Volume|cm³/mol|"},
            {[&] { robot.use("Start2Window"), robot.use(s.name); }, "80|-5|Molar Volume|cm³/mol|"},
            {[&] { robot.click("kgm3"); }, "|-5|Density|g/cm³|"},
            {[&] { robot.click("cm3mol"); }, "|-5|Molar Volume|cm³/mol|"}};
        for (const Case& c : cases) {
            // A result, and a warning.
            for (const std::string second : {"300", "-5"}) {
                robot.enter("dataEntryV", text("MolarVolume") == "Density" ? "0.2" : "80");
                robot.enter(s.entry, second);
                robot.press("Return");
                ASSERT_FALSE((second == "300" ? text(s.result) : text("warning")).empty());
            }
            c.change();
            EXPECT_EQ(texts({"dataEntryV", s.entry, "MolarVolume", s.unit}), c.after);
            EXPECT_EQ(texts({s.result, "warning"}), "||") << c.after;
        }
    }
    robot.use("PressureWindow");
    for (const std::string unit : {"Celsius", "Kelvin"}) {
        calculate("80", "300");
        robot.click(unit);
        EXPECT_EQ(texts({"dataEntryV", "dataEntryT", "Result"}), "80|||");
        EXPECT_TRUE(text("StaticText3").ends_with(unit));
    }
}

TEST_F(PressureWindowTest, OpenScreensCalculateWithTheLatestComposition) {
    open("Pressure", {{"CO2", "1"}});
    toolkit::Screen& first = robot.screen();
    calculate("80", "300");
    const std::string ofCarbonDioxide = text("Result");
    open("Pressure", {{"CH4", "1"}});
    calculate("80", "300");
    const std::string ofMethane = text("Result");
    ASSERT_NE(ofMethane, ofCarbonDioxide);
    robot.use(first);
    EXPECT_EQ(texts({"dataEntryV", "dataEntryT", "Result"}), "80|300||");
    EXPECT_EQ(text("DensityResult").substr(0, 26), "corresponding density = 0.");
    robot.press("Return");
    EXPECT_EQ(text("Result"), ofMethane);
    robot.use("Start2Window");
    compose({{"CO2", "0.5"}});
    robot.press("Return");
    robot.use(first);
    robot.click("calculate");
    EXPECT_EQ(text("Result"), ofMethane) << "a refused composition has reached the screen";
}

}  // namespace
