#include <functional>

#include "model/fluid_model.h"
#include "tests/model/golden.h"
#include "tests/screens/root_screen_test.h"
#include "toolkit/number_text.h"

namespace {

class ActivityWindowTest : public tests::RootScreenTest {
  protected:
    void open(const tests::Composition& fractions = {{"CO2", "0.7"}, {"CH4", "0.3"}}) {
        openProcedure(fractions, "Activities", "ActivityWindow");
    }
    /// Expects these standard states on, and these texts in the two reference entries.
    void expectStandard(const std::string& on, const std::string& references) const {
        std::string chosen;
        for (const std::string index : {"0", "1", "2"}) {
            chosen += isOn("StandardChoice" + index) ? index : "";
        }
        EXPECT_EQ(chosen, on);
        EXPECT_EQ(texts({"dataEntryPref1", "dataEntryPref2"}), references);
    }
};

TEST_F(ActivityWindowTest, ListsTheActivitiesAgainstPureRealGases) {
    for (const auto& row : ReadGolden("activities.csv", 37)) {
        open(tests::fractionsOf(row));
        solve(row[11], row[12]);
        choose(static_cast<int>(row[13]));
        const bool isAtSamePressure = row[14] == row[12];
        for (const std::string state : {"0", "1"}) {
            if (state == "0" && !isAtSamePressure) {
                continue;
            }
            robot.click("StandardChoice" + state);
            if (state == "1") {
                robot.enter("dataEntryPref1", toolkit::numberText(row[14]));
            }
            robot.click("PushButton1");
            expectGases(row, [&](std::size_t line, std::size_t i) {
                EXPECT_LT(RelativeError(cell(line, 1), row[15 + i]), 1e-13);
                EXPECT_LT(RelativeError(cell(line, 2), row[26 + i]), 1e-11);
                EXPECT_LT(RelativeError(cell(line, 3), row[26 + i] / (row[i] / 1e12)), 1e-11);
            });
            EXPECT_EQ(text("warning"), "");
        }
        robot.closeWindow();
    }
}

TEST_F(ActivityWindowTest, ActivitiesAgainstIdealGasesAreTheFugacitiesOverTheReferencePressure) {
    for (const int root : {0, 1, 2}) {
        openProcedure({{"CO2", "0.7"}, {"CH4", "0.3"}}, "Fugacities", "FugacityWindow");
        solve("220", "3");
        choose(root);
        const auto fugacities = rows();
        ASSERT_EQ(fugacities.size(), 2U);
        open();
        solve("220", "3");
        choose(root);
        robot.click("StandardChoice2");
        for (const double reference : {0.1, -2.0}) {
            robot.enter("dataEntryPref2", toolkit::numberText(reference));
            robot.click("PushButton1");
            for (std::size_t k = 0; k < 2; ++k) {
                const double f = toolkit::numberOrZero(fugacities[k][1]);
                const double phi = toolkit::numberOrZero(fugacities[k][2]);
                EXPECT_LT(RelativeError(cell(k, 1), fluid::R * 220.0 / reference), 1e-15);
                EXPECT_LT(RelativeError(cell(k, 2), f / reference), 1e-15);
                EXPECT_LT(RelativeError(cell(k, 3), phi * 3.0 / reference), 1e-15);
            }
        }
    }
}

TEST_F(ActivityWindowTest, PureGasHasActivityOneAndANegativePressureACoefficientOfOne) {
    open({{"H2O", "1"}});
    solve("647.096", "0.5");
    choose(0);
    robot.click("StandardChoice0");
    robot.click("PushButton1");
    EXPECT_EQ(text("ListBox1"),
              "gas\tVm (pure gas)\tactivity\tcoefficient\nH2O\t" + text("Result") + "\t1\t1\n");
    double activity = 0.0;
    for (const std::string state : {"1", "2"}) {
        robot.click("StandardChoice" + state);
        robot.enter("dataEntryPref" + state, "-0.25");
        robot.click("PushButton1");
        EXPECT_EQ(text("warning"), "");
        EXPECT_EQ(state == "1" ? activity = cell(0, 2) : cell(0, 2), activity);
    }
    EXPECT_LT(activity, -1.0);
}

TEST_F(ActivityWindowTest, WarnsOfWhatIsMissingInTheOrderOfTheChecks) {
    const auto expectWarning = [this](const std::string& sentence) {
        robot.click("PushButton1");
        EXPECT_EQ(texts({"warning", "warning1"}), sentence + "||");
        EXPECT_EQ(rows().empty(), !sentence.empty());
    };
    open({{"H2O", "1"}});
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
    open({{"CH4", "0.5"}, {"H2", "0.5"}});
    solve("190.564", "4.5922");
    choose(0);
    robot.click("StandardChoice0");
    expectWarning("");
    EXPECT_EQ(rows().at(1), (toolkit::List::Row{"CH4", "---", "---", "---"}));
}

TEST_F(ActivityWindowTest, StandardStatesDashTheEntriesThatTheyDoNotUse) {
    open();
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
        EXPECT_EQ(rows().size(), 2U) << c.button;
        expectStandard(c.button, c.references);
    }
    choose(1);
    EXPECT_TRUE(rows().empty()) << "activities of another root";
    expectStandard("2", "---|0.5|");
    toolkit::Screen& screen = robot.screen();
    robot.use("Start2Window");
    robot.use(screen);
    expectStandard("2", "---|0.5|");
    solve("220", "3");
    choose(1);
    const std::vector<std::function<void()>> changes = {
        [this] { robot.enter("dataEntryT", "221"); }, [this] { robot.enter("dataEntryP", "2"); },
        [this] { robot.click("Clear"); }, [this] { robot.click("Celsius"); },
        [this] { robot.click("Kelvin"); }};
    for (const auto& change : changes) {
        robot.click("StandardChoice0");
        robot.click("PushButton1");
        change();
        expectStandard("", "||");
        EXPECT_EQ(text("warning"), "");
    }
}

}  // namespace
