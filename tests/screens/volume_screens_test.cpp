#include <functional>

#include "tests/model/golden.h"
#include "tests/screens/screen_test.h"

namespace {

// The screens that start from a molar volume or a density.
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

// The numbers are of 40 digits.
TEST_F(PressureWindowTest, ShowsThePressureAndTheEchoOfTheTypedState) {
    open("Pressure");
    calculate("80", "26.85");
    EXPECT_LT(RelativeError(number("Result"), -81.973883769359622), 1e-13);
    robot.click("Celsius");
    for (const std::string typed : {"", "ice", "0.000"}) {
        calculate("80", typed);
        EXPECT_LT(RelativeError(number("Result"), -40.618963639617691), 1e-13);
        EXPECT_EQ(texts({"dataEntryT", "warning"}), "0.000||");
    }
    calculate("80", "-273.15");
    EXPECT_EQ(texts({"Result", "dataEntryT", "warning"}),
              "|-273.15|warning: put a number for temperature and molar volume|");
    EXPECT_EQ(text("DensityResult"), "corresponding density = 0.225191 g/cm³");
    robot.click("kgm3");
    EXPECT_EQ(text("DensityResult"), "corresponding molar volume");
    calculate("0.225191", "26.85");
    EXPECT_EQ(texts({"Result", "DensityResult"}),
              "-36.11072326006604|corresponding molar volume = 80 cm³/mol|");
    calculate("1e-310", "20");
    EXPECT_EQ(texts({"Result", "DensityResult"}), "|corresponding molar volume|");
}

TEST_F(TemperatureWindowTest, ShowsTheTemperatureInBothUnitsAndTheLastOneAgain) {
    open("Temperature");
    calculate("80", "");
    EXPECT_EQ(texts({"ResultT", "dataEntryP", "warning"}),
              "515.0668194026509|0.000|Negative pressures are not excluded. |");
    robot.click("Celsius");
    EXPECT_LT(RelativeError(number("ResultT"), 241.91681940265105), 1e-13);
    EXPECT_EQ(text("Label1"), "˚Celsius");
    calculate("", "9");
    EXPECT_EQ(texts({"ResultT", "warning"}), "|warning: put a number for molar volume|");
    calculate("20", "10");
    EXPECT_EQ(texts({"ResultT", "warning"}), "|Warning: temperature = -1756.8777397450378 K|");
    open("Temperature", {{"CO2", "1"}});  // each screen has the last temperature of them all
    robot.click("Celsius");
    EXPECT_EQ(text("ResultT"), "");
    robot.click("Kelvin");
    EXPECT_EQ(text("ResultT"), "-1756.8777397450378");
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
