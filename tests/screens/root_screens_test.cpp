#include <array>
#include <cmath>
#include <functional>

#include "tests/screens/root_screen_test.h"
#include "toolkit/number_text.h"

namespace {

struct RootScreen {
    std::string button, name, warning, sentence, complexRoot, resultOfComplexRoot;
};

const std::string noInput = "warning: put a number for temperature and pressure";
const std::array<RootScreen, 5> screens = {
    {{"MolarVolumes", "VolumeWindow", "warning",
      "warning: put a valid number for temperature and pressure", "warning", ""},
     {"Fugacities", "FugacityWindow", "warning", noInput, "slope", "---"},
     {"Activities", "ActivityWindow", "warning1", noInput, "slope", "---"},
     {"Thermodynamics", "ThermodynamicWindow", "warning", noInput, "slope", "---"},
     {"ChemicalPotentials", "ChemPotWindow", "warning", noInput, "slope", "---"}}};

/// What the screens with three roots have in common.
class RootScreensTest : public tests::RootScreenTest {
  protected:
    void onEveryScreen(const tests::Composition& fractions,
                       const std::function<void(const RootScreen&)>& use) {
        for (const RootScreen& screen : screens) {
            SCOPED_TRACE(screen.name);
            openProcedure(fractions, screen.button, screen.name);
            use(screen);
        }
    }
    void expectNothingToChoose() const {
        EXPECT_EQ(captions(), "|||");
        for (const std::string name : {"Choice0", "Choice1", "Choice2"}) {
            EXPECT_FALSE(isOn(name) || robot.control(name).isSensitive()) << name;
        }
    }
    void expectNoResults() const {
        EXPECT_EQ(texts({"slope", "Result", "DensityResult"}), "|||");
        EXPECT_TRUE(rows().empty());
        if (robot.screen().name() == "VolumeWindow") {
            EXPECT_EQ(texts({"ResultIdeal", "ExcessVol"}), "||");
        }
    }
};

TEST_F(RootScreensTest, WarnOfWhatIsNoStateAndCalculateNothing) {
    struct Case {
        std::string unit, temperature, pressure;
    };
    const std::vector<Case> refused = {
        {"Kelvin", "", "5"},     {"Kelvin", "300", ""},      {"Kelvin", "0", "5"},
        {"Kelvin", "3oo", "5"},  {"Kelvin", "1e999", "5"},   {"Kelvin", "300", "-2"},
        {"Kelvin", "-300", "5"}, {"Celsius", "20", "0,5"},   {"Celsius", "-273.15", "5"},
        {"Celsius", "", "0"},    {"Celsius", "-274.1", "5"}, {"Celsius", "20", "inf"}};
    onEveryScreen({{"CO2", "0.7"}, {"CH4", "0.3"}}, [&](const RootScreen& screen) {
        for (const Case& c : refused) {
            robot.click(c.unit);
            solve(c.temperature, c.pressure);
            EXPECT_EQ(texts({"dataEntryT", screen.warning}),
                      c.temperature + "|" + screen.sentence + "|");
            expectNothingToChoose();
            expectNoResults();
        }
        solve("-40", "5");
        EXPECT_EQ(text(screen.warning), "");
        EXPECT_NE(captions(), "|||");
    });
}

TEST_F(RootScreensTest, CelsiusWithoutANumberIsShownAsZero) {
    std::vector<std::string> shown;
    onEveryScreen({{"H2O", "1"}}, [&](const RootScreen& screen) {
        solve("273.15", "5");
        EXPECT_EQ(text("dataEntryT"), screen.name == "VolumeWindow" ? "273.150" : "273.15");
        const std::string expected = captions();
        robot.click("Celsius");
        for (const std::string typed : {"", "0", "-0.0", "ice"}) {
            solve(typed, "5");
            EXPECT_EQ(texts({"dataEntryT", screen.warning}), "0.000||") << typed;
            EXPECT_EQ(captions(), expected);
        }
        choose(1);
        EXPECT_EQ(text("Result").find_first_not_of("0123456789.-"), std::string::npos);
    });
}

TEST_F(RootScreensTest, RootsAreReachedAndChosenByTheKeyboardAlone) {
    onEveryScreen({{"CO2", "0.7"}, {"CH4", "0.3"}}, [&](const RootScreen&) {
        robot.type("220");
        robot.press("Tab");
        robot.type("3");
        robot.press("Return");
        for (int i = 0; i < 8 && !robot.control("Choice0").hasFocus(); ++i) {
            EXPECT_EQ(texts({"slope", "Result"}), "||");
            robot.press("Tab");
        }
        for (const auto& [key, root] :
             {std::pair("space", "Choice0"), {"Down", "Choice1"}, {"Down", "Choice2"}}) {
            robot.press(key);
            EXPECT_TRUE(isOn(root) && robot.control(root).hasFocus()) << root;
            EXPECT_EQ(" " + text("Result"), text(root));
        }
    });
}

TEST_F(RootScreensTest, ComplexRootLeavesNoResultOfAnEarlierOne) {
    onEveryScreen({{"H2O", "1"}}, [&](const RootScreen& screen) {
        solve("647.096", "22.064");
        choose(0);
        ASSERT_NE(texts({"slope", "Result", "DensityResult"}), "|||");
        for (const int complexRoot : {1, 2}) {
            const std::string caption = text("Choice" + std::to_string(complexRoot));
            const std::size_t joint = caption.find(" and ");
            ASSERT_TRUE(caption.starts_with(' ') && caption.ends_with("·i")) << caption;
            ASSERT_LT(joint, caption.size());
            EXPECT_NEAR(toolkit::numberOrZero(caption.substr(1, joint - 1)), 91.4427, 1e-4);
            const double imaginary = toolkit::numberOrZero(
                caption.substr(joint + 5, caption.size() - joint - 5 - std::string("·i").size()));
            EXPECT_NEAR(imaginary, complexRoot == 1 ? -0.000436 : 0.000436, 1e-6);
            choose(complexRoot);
            EXPECT_EQ(text(screen.complexRoot),
                      "complex number (with imaginary part). Choose a real solution");
            EXPECT_EQ(texts({"Result", "DensityResult"}),
                      screen.resultOfComplexRoot + "|" + screen.resultOfComplexRoot + "|");
            EXPECT_TRUE(rows().empty());
        }
        choose(0);
        EXPECT_EQ(text(screen.warning), "");
        EXPECT_GT(number("Result"), 90.0);
    });
}

TEST_F(RootScreensTest, ChangesEmptyEverythingAndLeaveNothingToChoose) {
    struct Change {
        std::function<void()> make;
        std::string entries;
    };
    const std::vector<Change> changes = {
        {[this] { robot.enter("dataEntryT", "22"); }, "22|3|Kelvin|"},
        {[this] { robot.enter("dataEntryP", "2"); }, "220.000|2|Kelvin|"},
        {[this] { robot.click("Clear"); }, "||Kelvin|"},
        {[this] { robot.click("Celsius"); }, "|3|˚Celsius|"},
        {[this] {
             toolkit::Screen& left = robot.screen();
             openProcedure({{"CH4", "1"}}, "Pressures", "PressureWindow");
             robot.closeWindow();
             robot.use(left);
         },
         "220.000|3|Kelvin|"}};
    for (const int root : {1, 2}) {
        onEveryScreen({{"CO2", "0.7"}, {"CH4", "0.3"}}, [&](const RootScreen& screen) {
            const std::string unit = screen.name == "VolumeWindow" ? "StaticText3" : "Label1";
            for (const Change& change : changes) {
                robot.click("Kelvin");
                solve("220.000", "3");
                choose(root);
                EXPECT_GT(number("Result"), 0.0);
                EXPECT_EQ(rows().empty(), screen.name == "ActivityWindow");
                change.make();
                EXPECT_EQ(texts({"dataEntryT", "dataEntryP", unit}), change.entries);
                expectNothingToChoose();
                expectNoResults();
                EXPECT_EQ(text(screen.warning), "");
            }
        });
    }
}

TEST_F(RootScreensTest, ThreeZeroRootsAreNoVolumeAndNothingIsInfinite) {
    struct Case {
        std::string formula, temperature, pressure, slope;
    };
    const std::vector<Case> cases = {
        {"H2S", "373.539", "8.94", ""},   {"CH4", "190.564", "4.5922", ""},
        {"C2H6", "305.33", "4.8718", ""}, {"CO2", "1e300", "1e-300", ""},
        {"CO2", "300", "1e200", "---"},   {"CO2", "1e250", "4e251", "-1.924"}};
    for (const Case& c : cases) {
        onEveryScreen({{c.formula, "1"}}, [&](const RootScreen& screen) {
            solve(c.temperature, c.pressure);
            EXPECT_EQ(captions() == " 0| 0| 0|", c.slope.empty()) << c.formula;
            choose(0);
            const bool isActivity = screen.name == "ActivityWindow";
            if (isActivity) {
                robot.click("StandardChoice0");
                robot.click("PushButton1");
            }
            if (c.slope.empty()) {
                EXPECT_EQ(texts({"Result", "DensityResult"}),
                          screen.resultOfComplexRoot + ("|" + screen.resultOfComplexRoot) + "|");
                EXPECT_EQ(texts({"slope", screen.warning}),
                          "|warning: no molar volume could be calculated here, 0 stands for none|");
                EXPECT_TRUE(rows().empty());
                EXPECT_TRUE(!isActivity || text("warning") == "warning: choose a real solution");
            }
            EXPECT_TRUE(text("slope").starts_with(
                c.slope.empty() ? "" : "Negative slope dP/dV = " + c.slope));
            for (const toolkit::Control* const control : robot.screen().controls()) {
                const std::string shown = control->text();
                for (const std::string odd : {"inf", "nan", "e-324"}) {
                    EXPECT_EQ(shown.find(odd), std::string::npos) << control->name() << shown;
                }
            }
        });
    }
}

}  // namespace
