#include <cmath>
#include <functional>

#include "model/fluid_model.h"
#include "tests/model/golden.h"
#include "tests/screens/screen_test.h"
#include "toolkit/number_text.h"

namespace {

class PressureWindowTest : public tests::ScreenTest {
  protected:
    void open(const tests::Composition& fractions = {{"H2O", "1"}}) {
        openProcedure(fractions, "Pressures", "PressureWindow");
    }
    void calculate(const std::string& volume, const std::string& temperature) {
        robot.enter("dataEntryV", volume);
        robot.enter("dataEntryT", temperature);
        robot.press("Return");
    }
};

constexpr auto sentence = "warning: put a number for temperature and molar volume";

TEST_F(PressureWindowTest, ShowsThePressureAndTheEchoOfTheTypedState) {
    for (const auto& row : ReadGolden("pressures.csv", 17)) {
        tests::Composition fractions;
        for (std::size_t i = 0; i < fluid::ComponentCount; ++i) {
            if (row[i] > 0.0) {
                fractions.emplace_back(fluid::ComponentFormulas[i],
                                       toolkit::numberText(row[i] / 1e12));
            }
        }
        open(fractions);
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
        {"Celsius", "cm3mol", "80", "-273.2"}, {"Celsius", "cm3mol", "", "20"},
        {"Celsius", "kgm3", "0", "20"},        {"Celsius", "kgm3", "-0.5", "20"},
        {"Celsius", "kgm3", "1e-310", "20"}};
    open();
    for (const Case& c : refused) {
        robot.click(c.temperatureUnit);
        robot.click(c.volumeUnit);
        calculate(c.volume, c.temperature);
        EXPECT_EQ(texts({"Result", "warning"}), std::string("|") + sentence + "|")
            << c.volume << ' ' << c.temperature;
        EXPECT_EQ(text("DensityResult").find("inf"), std::string::npos);
    }
    calculate("0.1", "-273.149");
    EXPECT_TRUE(std::isfinite(number("Result")));
    EXPECT_EQ(text("warning"), "");
}

TEST_F(PressureWindowTest, CelsiusWithoutANumberIsShownAsZero) {
    open();
    robot.click("Celsius");
    for (const std::string typed : {"", "0", "-0.0", "ice", "0.000"}) {
        calculate("80", typed);
        EXPECT_EQ(text("dataEntryT"), "0.000") << typed;
        EXPECT_LT(RelativeError(number("Result"), -40.618963639617691), 1e-13);
    }
    calculate("", "ice");
    EXPECT_EQ(texts({"dataEntryT", "warning"}), std::string("ice|") + sentence + "|");
}

TEST_F(PressureWindowTest, VolumeEqualToTheCovolumeGivesZero) {
    open({{"CO2", "0.3"}, {"Ar", "0.7"}});
    calculate(toolkit::numberText(fluid::MixtureB(fluid::LastComponent, fluid::Fractions)), "300");
    EXPECT_EQ(text("Result"), "0");
}

TEST_F(PressureWindowTest, ChangesEmptyTheResultTheWarningAndTheirOwnEntryOnly) {
    struct Case {
        std::string unitBefore, temperatureBefore;
        std::function<void()> change;
        std::string after;  // entries, caption and units
    };
    const std::vector<Case> cases = {
        {"", "300", [this] { robot.enter("dataEntryV", "9"); },
         "9|300|Molar Volume|cm³/mol|Kelvin|"},
        {"", "300", [this] { robot.enter("dataEntryT", ""); }, "80||Molar Volume|cm³/mol|Kelvin|"},
        {"", "-9", [this] { robot.enter("dataEntryT", "8"); }, "80|8|Molar Volume|cm³/mol|Kelvin|"},
        {"", "300", [this] { robot.click("Clear"); }, "||Molar Volume|cm³/mol|Kelvin|"},
        {"", "-9", [this] { robot.click("Celsius"); }, "80||Molar Volume|cm³/mol|˚Celsius|"},
        {"Celsius", "30", [this] { robot.click("Kelvin"); }, "80||Molar Volume|cm³/mol|Kelvin|"},
        {"", "300", [this] { robot.click("kgm3"); }, "|300|Density|g/cm³|Kelvin|"},
        {"kgm3", "-9", [this] { robot.click("cm3mol"); }, "|-9|Molar Volume|cm³/mol|Kelvin|"}};
    open();
    for (const Case& c : cases) {
        robot.click("Kelvin");
        robot.click("cm3mol");
        if (!c.unitBefore.empty()) {
            robot.click(c.unitBefore);
        }
        calculate("80", c.temperatureBefore);
        ASSERT_NE(text("Result").empty(), text("warning").empty());
        c.change();
        EXPECT_EQ(texts({"dataEntryV", "dataEntryT", "MolarVolume", "StaticText1", "StaticText3"}),
                  c.after);
        EXPECT_EQ(texts({"Result", "warning"}), "||") << c.after;
    }
    EXPECT_EQ(text("DensityResult"), "corresponding density");
}

TEST_F(PressureWindowTest, OpenScreensCalculateWithTheLatestComposition) {
    open({{"CO2", "1"}});
    toolkit::Screen& first = robot.screen();
    calculate("80", "300");
    const std::string ofCarbonDioxide = text("Result");
    open({{"CH4", "1"}});
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
