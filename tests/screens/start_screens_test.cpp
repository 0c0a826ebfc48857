#include <memory>

#include "app/start1_window.h"
#include "model/fluid_model.h"
#include "tests/screens/screen_test.h"
#include "toolkit/application.h"
#include "toolkit/event.h"
#include "toolkit/number_text.h"

namespace {

using Names = std::vector<std::string>;

class StartScreensTest : public tests::ScreenTest {
  protected:
    // The composition that the model has, as "H2O 0.5 CO2 0.5 ".
    static std::string accepted() {
        std::string text;
        for (std::size_t k = 0; k < fluid::AcceptedMixture().count; ++k) {
            text += std::string(fluid::AcceptedMixture().formula(k)) + " " +
                    toolkit::NumberText(fluid::AcceptedMixture().fractions[k]) + " ";
        }
        return text;
    }
    bool opens(const Names& screens) {
        return robot.waitFor([&] { return openScreens() == screens; });
    }
};

TEST_F(StartScreensTest, TitleGivesWayToTheCompositionByKeyAndByClick) {
    for (const bool byKey : {true, false}) {
        owner.open(std::make_unique<app::Start1Window>(owner));
        robot.use("Start1Window");
        byKey ? robot.press("Return") : robot.click("continue");
        EXPECT_TRUE(opens({"Start2Window"}));
        robot.use("Start2Window");
        robot.closeWindow();
        EXPECT_TRUE(opens({}));
    }
}

TEST_F(StartScreensTest, LoopIsLeftWithTheLastScreenOnly) {
    openProcedure({{"H2O", "1"}}, "Pressures", "PressureWindow");
    openProcedure({{"H2O", "1"}}, "Pressures", "PressureWindow");
    robot.closeWindow();
    EXPECT_TRUE(opens({"Start2Window", "PressureWindow"}));
    robot.use("Start2Window");
    toolkit::Later([this] { robot.closeWindow(); });
    toolkit::RunLoop();
    EXPECT_EQ(openScreens(), Names{});
    owner.open(std::make_unique<app::Start1Window>(owner));
    robot.use("Start1Window");
    toolkit::Later([this] { robot.closeWindow(); });
    toolkit::RunLoop();
    EXPECT_EQ(openScreens(), Names{});
}

TEST_F(StartScreensTest, OnlyFractionsThatAddUpToOneReachTheModel) {
    constexpr auto refusal = "adjust fractions!";
    struct Case {
        tests::Composition typed;
        std::string sum;
        std::string composition;  // empty: refused, the previous one stays
    };
    const std::vector<Case> cases = {
        {{{"H2O", "0.5"}, {"CO2", "0.5"}}, "1", "H2O 0.5 CO2 0.5 "},
        {{{"H2O", "0.333"}, {"CO2", "0.333"}, {"Ar", "0.333"}}, "0.999", ""},
        {{{"CH4", ".5"}, {"CO", "25e-2"}, {"N2", " +0.25 "}}, "1", "N2 0.25 CO 0.25 CH4 0.5 "},
        {{{"H2O", "0.5"}, {"H2", "0.500000000001"}}, "1.000000000001", ""},
        {{{"O2", "0.000065"}, {"H2S", "0.999935"}}, "1", "H2S 0.999935 O2 6.5e-05 "},
        {{{"NH3", "0.999999999999"}, {"C2H6", "6e-13"}}, "1", "NH3 0.999999999999 C2H6 1e-12 "},
        {{{"Ar", "1.5"}, {"CO2", "-0.5"}}, "1", "Ar 1.5 "},
        {{}, "0", ""},
        {{{"H2O", "0,5"}, {"CO2", "0,5"}}, "0", ""},
        {{{"H2O", "1"}, {"CO2", "x"}, {"N2", "1 1"}, {"H2", "nan"}}, "1", "H2O 1 "},
        {{{"H2O", "0x1"}, {"CO2", "inf"}, {"N2", "1e"}, {"H2", "1e999"}}, "0", ""},
        {{{"H2O", "1e30"}}, "1e+30", ""},
        {{{"H2O", "9.2e6"}, {"CO2", "9.2e6"}, {"N2", "46745.073709551616"}},
         "18446745.07370955",
         ""},  // 1 and 2^64 counts
        {{{"H2", "0.1"}, {"O2", "0.2"}, {"CO", "0.7"}}, "1", "H2 0.1 O2 0.2 CO 0.7 "}};
    openComposition();
    std::string warning;
    for (const Case& c : cases) {
        const std::string before = accepted();
        compose(c.typed);
        SCOPED_TRACE(c.typed.empty() ? "empty" : c.typed[0].first + c.typed[0].second);
        EXPECT_EQ(text("Sum"), c.sum);
        robot.click("Continue1");
        const bool isAccepted = !c.composition.empty();
        EXPECT_EQ(text("Sum"), isAccepted ? c.sum : refusal);
        EXPECT_EQ(accepted(), isAccepted ? c.composition : before);
        warning = isAccepted ? "Warning: select procedure!" : warning;
        EXPECT_EQ(text("Warning2"), warning);
    }
    EXPECT_EQ(openScreens(), Names{"Start2Window"});
    robot.click("Clear");
    EXPECT_EQ(texts({"H2number", "Sum"}), "|0|");
}

}  // namespace
