#include <gtk/gtk.h>

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "model/fluid_model.h"
#include "procedures/fugacity_table.h"
#include "procedures/volume_parts.h"
#include "tests/screens/screen_test.h"
#include "toolkit/inspection.h"
#include "toolkit/number_text.h"
#include "toolkit/plot.h"

namespace {

struct RootScreen {
    std::string button, name, warning, sentence, complexRoot, resultOfComplexRoot;
};

const std::string noInput = "warning: put a number for temperature and pressure";
const std::array<RootScreen, 3> screens = {
    {{"MolarVolumes", "VolumeWindow", "warning",
      "warning: put a valid number for temperature and pressure", "warning", ""},
     {"Fugacities", "FugacityWindow", "warning", noInput, "slope", "---"},
     {"Activities", "ActivityWindow", "warning1", noInput, "slope", "---"}}};
const tests::Composition mixed = {{"CO2", "0.7"}, {"CH4", "0.3"}};

// The screens on which a user chooses among the roots of the equation of state.
class RootScreensTest : public tests::ScreenTest {
  protected:
    void onEveryScreen(const tests::Composition& fractions,
                       const std::function<void(const RootScreen&)>& use) {
        for (const RootScreen& screen : screens) {
            SCOPED_TRACE(screen.name);
            openProcedure(fractions, screen.button, screen.name);
            use(screen);
        }
    }
    // Types a temperature and a pressure and presses Enter.
    void solve(std::string_view temperature, std::string_view pressure) {
        robot.enter("dataEntryT", temperature);
        robot.enter("dataEntryP", pressure);
        robot.press("Return");
    }
    void choose(int root) { robot.click("Choice" + std::to_string(root)); }
    std::string captions() const { return texts({"Choice0", "Choice1", "Choice2"}); }
    void expectNothing() const {
        EXPECT_EQ(captions(), "|||");
        for (const std::string name : {"Choice0", "Choice1", "Choice2"}) {
            EXPECT_FALSE(isOn(name) || robot.control(name).isSensitive()) << name;
        }
        expectNoResults();
    }
    void expectNoResults() const {
        EXPECT_EQ(texts({"slope", "Result", "DensityResult"}), "|||");
        EXPECT_TRUE(rows().empty());
        if (robot.screen().name() == "VolumeWindow") {
            EXPECT_EQ(texts({"ResultIdeal", "ExcessVol"}), "||");
        }
    }
    // Expects these standard states on, and these texts in the two reference entries.
    void expectStandard(const std::string& on, const std::string& references) const {
        std::string chosen;
        for (const std::string index : {"0", "1", "2"}) {
            chosen += isOn("StandardChoice" + index) ? index : "";
        }
        EXPECT_EQ(chosen, on);
        EXPECT_EQ(texts({"dataEntryPref1", "dataEntryPref2"}), references);
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
    onEveryScreen(mixed, [&](const RootScreen& screen) {
        for (const Case& c : refused) {
            robot.click(c.unit);
            solve(c.temperature, c.pressure);
            EXPECT_EQ(texts({"dataEntryT", screen.warning}),
                      c.temperature + "|" + screen.sentence + "|");
            expectNothing();
        }
        solve("-40", "5");
        EXPECT_EQ(text(screen.warning), "");
        EXPECT_NE(captions(), "|||");
        if (screen.name == "VolumeWindow") {  // it calculates with what it shows
            robot.click("Kelvin");
            solve("0.0004", "5");
            EXPECT_EQ(text(screen.warning), screen.sentence);
        }
    });
}

TEST_F(RootScreensTest, CelsiusWithoutANumberIsShownAsZero) {
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
    });
}

TEST_F(RootScreensTest, RootsAreReachedByTheKeyboardAndShowWhatIsTheirs) {
    onEveryScreen(mixed, [&](const RootScreen& screen) {
        robot.type("220");
        robot.press("Tab");
        robot.type("3");
        robot.press("Return");
        for (int i = 0; i < 8 && !toolkit::HasFocus(robot.control("Choice0")); ++i) {
            EXPECT_EQ(texts({"slope", "Result"}), "||");
            robot.press("Tab");
        }
        std::size_t number = 0;
        for (const auto& [key, root] :
             {std::pair("space", "Choice0"), {"Down", "Choice1"}, {"Down", "Choice2"}}) {
            robot.press(key);
            EXPECT_TRUE(isOn(root) && toolkit::HasFocus(robot.control(root))) << root;
            EXPECT_EQ(" " + text("Result"), text(root));
            const auto& mixture = fluid::AcceptedMixture();
            const auto parts = procedures::VolumePartsAt(mixture, {220.0, 3.0}, number);
            EXPECT_EQ(texts({"slope", "Result", "DensityResult"}),
                      procedures::SlopeSentence(parts.root.slope) + "|" +
                          toolkit::NumberText(parts.root.V) + "|" +
                          toolkit::NumberText(parts.root.density) + "|");
            const auto fugacities = procedures::FugacitiesAt(mixture, {220.0, 3.0}, number++);
            if (screen.name == "VolumeWindow") {
                EXPECT_EQ(texts({"ResultIdeal", "ExcessVol", "warning"}),
                          procedures::VolumeText(parts.ideal) + "|" +
                              procedures::VolumeText(parts.excess) +
                              "|warning: multiple solution for Vm(ideal) of pure CO2|");
                EXPECT_EQ(rows().at(1), VolumeRow(parts.gases.at(1)));
            } else if (screen.name == "FugacityWindow") {
                EXPECT_EQ(rows().at(1), FugacityRow(fugacities.gases.at(1)));
            }
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
            EXPECT_TRUE(caption.starts_with(" 91.44")) << caption;
            EXPECT_NE(caption.find(complexRoot == 1 ? " and -0.00043" : " and 0.00043"),
                      std::string::npos);
            EXPECT_TRUE(caption.ends_with("·i"));
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
    onEveryScreen(mixed, [&](const RootScreen& screen) {
        const bool isVolume = screen.name == "VolumeWindow";
        const std::vector<Change> changes = {
            {[this] { robot.enter("dataEntryT", "22"); }, "22|3|Kelvin|"},
            {[this] { robot.enter("dataEntryP", "2"); }, "220.000|2|Kelvin|"},
            {[this] { robot.click("Clear"); }, "||Kelvin|"},
            {[this] { robot.click("Celsius"); }, isVolume ? "220.000|3|˚Celsius|" : "|3|˚Celsius|"},
            {[this] {
                 toolkit::Screen& left = robot.screen();
                 openProcedure({{"CH4", "1"}}, "Pressures", "PressureWindow");
                 robot.closeWindow();
                 robot.use(left);
             },
             "220.000|3|Kelvin|"}};
        for (const Change& change : changes) {
            robot.click("Kelvin");
            solve("220.000", "3");
            choose(2);
            EXPECT_GT(number("Result"), 0.0);
            if (screen.name == "ActivityWindow") {
                robot.click("StandardChoice0");
                robot.click("PushButton1");
            }
            EXPECT_FALSE(rows().empty());
            change.make();
            EXPECT_EQ(texts({"dataEntryT", "dataEntryP", isVolume ? "StaticText3" : "Label1"}),
                      change.entries);
            expectNothing();
            EXPECT_EQ(texts({screen.warning, "warning"}), "||");
            if (screen.name == "ActivityWindow" && &change != &changes.back()) {
                expectStandard("", "||");
            }
        }
    });
}

TEST_F(RootScreensTest, ThreeZeroRootsAreNoVolume) {
    onEveryScreen({{"H2S", "1"}}, [&](const RootScreen& screen) {
        solve("373.539", "8.94");
        EXPECT_EQ(captions(), " 0| 0| 0|");
        choose(0);
        EXPECT_EQ(texts({"slope", "Result", "DensityResult", screen.warning}),
                  "|" + screen.resultOfComplexRoot + "|" + screen.resultOfComplexRoot +
                      "|warning: no molar volume could be calculated here, 0 stands for none|");
        EXPECT_TRUE(rows().empty());
        if (screen.name == "ActivityWindow") {
            robot.click("StandardChoice0");
            robot.click("PushButton1");
            EXPECT_EQ(text("warning"), "warning: choose a real solution");
        } else if (screen.name == "FugacityWindow") {
            solve("373.539", "1e5");
            choose(0);
            EXPECT_EQ(rows().at(0).at(2), "1");
            EXPECT_NE(text("note").find("H2S has no number here"), std::string::npos);
        }
    });
}

TEST_F(RootScreensTest, ActivitiesNeedWhatTheSentencesSayInTheirOrder) {
    const auto expectWarning = [this](const std::string& sentence) {
        robot.click("PushButton1");
        EXPECT_EQ(texts({"warning", "warning1"}), sentence + "||");
        EXPECT_EQ(rows().empty(), !sentence.empty());
    };
    openProcedure({{"H2O", "1"}}, "Activities", "ActivityWindow");
    expectWarning("warning: select standard state conditions");
    robot.click("StandardChoice1");
    EXPECT_EQ(text("warning"), "");
    expectWarning("warning: calculate and select molar volume");
    solve("647.096", "22.064");
    expectStandard("", "||");
    expectWarning("warning: select standard state conditions");
    choose(1);
    expectWarning("warning: select standard state conditions");
    robot.click("StandardChoice2");
    expectWarning("warning: choose a real solution");
    choose(0);
    for (const std::string reference : {"", "0", "-0.0", "---", "1 MPa"}) {
        robot.enter("dataEntryPref2", reference);
        expectWarning("warning: reference pressure is not defined");
    }
    robot.enter("dataEntryPref2", "1");
    EXPECT_EQ(text("warning"), "");
    robot.press("Return");
    EXPECT_FALSE(rows().empty());
    expectWarning("");
    robot.enter("dataEntryPref1", "7");
    EXPECT_TRUE(rows().empty());
    robot.click("StandardChoice0");
    expectWarning("");
    choose(2);
    expectStandard("", "||");
    EXPECT_TRUE(rows().empty());
}

TEST_F(RootScreensTest, StandardStatesDashTheEntriesThatTheyDoNotUse) {
    openProcedure(mixed, "Activities", "ActivityWindow");
    solve("220", "3");
    choose(2);
    struct Case {
        std::string button, typed, references;
    };
    const std::vector<Case> cases = {{"1", "4", "4|---|"},
                                     {"0", "", "---|---|"},
                                     {"2", "5", "---|5|"},
                                     {"1", "6", "6|---|"},
                                     {"2", "0.5", "---|0.5|"}};
    for (const Case& c : cases) {
        robot.click("StandardChoice" + c.button);
        EXPECT_TRUE(rows().empty()) << "activities of another standard state";
        if (!c.typed.empty()) {
            EXPECT_EQ(text("dataEntryPref" + c.button), "");
            robot.enter("dataEntryPref" + c.button, c.typed);
        }
        expectStandard(c.button, c.references);
        robot.click("PushButton1");
        using procedures::StandardState;
        const procedures::TypedState state{220.0, 3.0};
        const auto& mixture = fluid::AcceptedMixture();
        const auto table =
            ActivitiesAt(mixture, state, FugacitiesAt(mixture, state, 2),
                         c.button == "2" ? StandardState::Ideal : StandardState::Real,
                         c.typed.empty() ? 3.0 : toolkit::NumberOrZero(c.typed));
        EXPECT_EQ(rows().at(1), ActivityRow(table.gases.at(1)));
        expectStandard(c.button, c.references);
    }
    choose(1);
    EXPECT_TRUE(rows().empty()) << "activities of another root";
    expectStandard("2", "---|0.5|");
    toolkit::Screen& screen = robot.screen();
    robot.use("Start2Window");
    robot.use(screen);
    expectStandard("2", "---|0.5|");
}

// The screens that show the stable state by themselves.
class StateScreensTest : public RootScreensTest {
  protected:
    void onBoth(const std::function<void()>& use) {
        for (const auto& [button, screen] : {std::pair("Thermodynamics", "ThermodynamicWindow"),
                                             std::pair("ChemicalPotentials", "ChemPotWindow")}) {
            SCOPED_TRACE(screen);
            openProcedure(mixed, button, screen);
            use();
        }
    }
    void expectEmpty(const std::string& warning = "") {
        EXPECT_EQ(texts({"State", "ChoicePhases", "note", "warning"}), "|||" + warning + "|");
        EXPECT_EQ(captions(), "|||");
        EXPECT_TRUE(rows().empty());
    }
};

TEST_F(StateScreensTest, RefuseWhatIsNoNumberInEitherUnit) {
    onBoth([this] {
        for (const auto& [unit, temperature, pressure] : {std::tuple("Kelvin", "", "5"),
                                                          {"Kelvin", "0", "5"},
                                                          {"Kelvin", "300", "1e999"},
                                                          {"Celsius", "25,5", "5"},
                                                          {"Celsius", "", "5"},
                                                          {"Celsius", "-273.15", "5"}}) {
            robot.click(unit);
            solve(temperature, pressure);
            expectEmpty(noInput);
            EXPECT_EQ(text("dataEntryT"), temperature);
        }
        solve("0", "5");
        EXPECT_TRUE(text("State").starts_with("One stable phase")) << text("State");
    });
}

TEST_F(StateScreensTest, ChooseTheStableStateAndKeepItUntilSomethingChanges) {
    onBoth([this] {
        solve("220", "3");
        EXPECT_TRUE(isOn("ChoicePhases"));
        EXPECT_TRUE(text("State").starts_with("Two phases at 3 MPa")) << text("State");
        EXPECT_TRUE(text("Choice0").starts_with(" 68.4202") &&
                    text("Choice0").ends_with(", meta-stable"));
        const auto phases = rows();
        choose(1);
        EXPECT_NE(text("ListBox1").find("(unstable)"), std::string::npos);
        robot.click("ChoicePhases");
        EXPECT_EQ(rows(), phases);
        toolkit::Screen& screen = robot.screen();
        robot.use("Start2Window");
        robot.use(screen);
        EXPECT_EQ(rows(), phases) << "lost by coming back";
        robot.enter("dataEntryP", "10");
        expectEmpty();
        robot.press("Return");
        EXPECT_TRUE(isOn("Choice0"));
        robot.click("Celsius");
        expectEmpty();
        EXPECT_EQ(text("dataEntryT"), "");
        solve("20", "10");
        EXPECT_FALSE(rows().empty());
        openProcedure({{"CH4", "1"}}, "Pressures", "PressureWindow");
        robot.use(screen);
        expectEmpty();
    });
}

TEST_F(StateScreensTest, ListAndDrawWhatIsChosenOverARange) {
    onBoth([this] {
        const bool isThermo = robot.screen().name() == "ThermodynamicWindow";
        auto& plot = dynamic_cast<toolkit::Plot&>(robot.control("Plot"));
        const auto calculate = [this](const std::string& fixed, const std::string& number,
                                      const std::string& first, const std::string& last) {
            robot.enter(fixed, number);
            robot.enter("dataEntry1", first);
            robot.enter("dataEntry2", last);
            robot.enter("dataEntryStep", "5");
            robot.click("calculate");
        };
        robot.click("BetweenT");
        calculate("dataEntryP", "3", "200", "24O");
        EXPECT_TRUE(text("warning").starts_with("warning: put a number for pressure, for both"));
        calculate("dataEntryP", "3", "240", "200");
        ASSERT_EQ(rows("ListBox2").size(), 11U) << text("warning");
        EXPECT_EQ(rows("ListBox2")[3][2], "dew point");
        EXPECT_EQ(plot.series().size(), 1U);
        toolkit::TakeFocus(robot.control("Quantities"));
        robot.press("Home");
        robot.press("Down");
        robot.press("Control_L+a");
        const std::size_t all = rows("Quantities").size();
        EXPECT_EQ(all, isThermo ? 17U : 12U);
        EXPECT_EQ(rows("ListBox2").at(0).size(), 3 + all);
        auto* const view = GTK_TREE_VIEW(robot.control("ListBox2").widget());
        const int columns = static_cast<int>(3 + all);
        EXPECT_TRUE(gtk_tree_view_get_column(view, columns - 1) != nullptr &&
                    gtk_tree_view_get_column(view, columns) == nullptr);
        EXPECT_EQ(plot.series().size(), 2U);  // of one unit
        robot.click("Copy");
        EXPECT_NE(clipboard().find("\tdew point\t"), std::string::npos);
        save("Export", folder / robot.screen().name());
        robot.waitFor([screen = &robot.screen()] { return toolkit::IsActive(*screen); });
        robot.click("Celsius");
        EXPECT_TRUE(rows("ListBox2").empty() && plot.series().empty());
        EXPECT_EQ(texts({"dataEntryP", "dataEntry1", "dataEntryStep"}), "3||5|");
        robot.click("BetweenP");
        calculate("dataEntryT", "26.85", "5", "-10");
        EXPECT_EQ(text("warning"), "warning: pressures must be above 0");
        calculate("dataEntryT", "26.85", "5", "15");
        EXPECT_EQ(rows("ListBox2").at(2).at(0) + rows("ListBox2").at(2).at(1), "26.8515");
        robot.click("OneState");
        solve("26.85", "10");
        EXPECT_EQ(rows("ListBox1").size(), isThermo ? 17U : 2U);
        EXPECT_TRUE(rows("ListBox2").empty());
    });
    robot.use("ThermodynamicWindow");
    robot.click("BetweenP");
    robot.click("PlotInversion");
    EXPECT_EQ(dynamic_cast<toolkit::Plot&>(robot.control("Plot")).series().back().name,
              "Joule-Thomson inversion");
}

TEST_F(StateScreensTest, AmountsAreOfAMoleOrAKilogramAndCopiesHaveAllDigits) {
    openProcedure(mixed, "Thermodynamics", "ThermodynamicWindow");
    robot.click("Kilogram");
    EXPECT_TRUE(rows().empty());
    solve("300", "10");
    EXPECT_EQ(rows().at(4).at(1), "kJ/kg");
    robot.click("Mole");
    EXPECT_EQ(rows().at(4).at(4), "-301738.221");
    toolkit::TakeFocus(robot.control("ListBox1"));
    robot.press("Control_L+c");
    EXPECT_NE(clipboard().find("\t-301738.22"), std::string::npos);
    EXPECT_EQ(clipboard().find("\t-301738.221\n"), std::string::npos);
}

}  // namespace
