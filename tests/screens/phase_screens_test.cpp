#include <gtk/gtk.h>

#include <cmath>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tests/screens/screen_test.h"
#include "toolkit/clipboard.h"
#include "toolkit/number_text.h"

namespace {

class PhaseScreensTest : public tests::ScreenTest {
  protected:
    void openBubbleDewPoint() {
        openProcedure({{"CO2", "0.7"}, {"CH4", "0.3"}}, "Homogenisation", "BubbleDewPoint");
    }
    void openLiquidVapour() {
        openProcedure({{"CO2", "0.7"}, {"CH4", "0.3"}}, "LiquidVapour", "LiquidVapourEq");
    }
    std::string cell(const std::string& list, std::size_t row, std::size_t column) const {
        const auto all = rows(list);
        return row < all.size() ? all[row][column] : "";
    }
    /// Pastes a fraction into the first row of a list by keyboard alone.
    void editFirstFraction(const std::string& list, const std::string& fraction) {
        robot.control(list).takeFocus();
        robot.press("Home");
        robot.press("Return");
        toolkit::setClipboardText(fraction);
        robot.press("Control_L+a");
        robot.press("Control_L+v");
        robot.press("Return");
    }
};

// The golden bubble point is of 60 digits, as in tests/data/phase_equilibria.csv.
TEST_F(PhaseScreensTest, BubblePointIsTheGoldenOneInBothDirectionsAndUnits) {
    openBubbleDewPoint();
    robot.click("RadioButtonTh");
    EXPECT_EQ(text("dataEntryPh"), "---");
    EXPECT_EQ(text("Homogen2"), "Homogenization Pressure");
    robot.click("LiquidMode");
    EXPECT_EQ(text("GroupBox5"), "First Approach Bubble-Point Curve");
    EXPECT_TRUE(robot.control("CanvasLiquid").isVisible());
    EXPECT_FALSE(robot.control("CanvasVapour").isVisible());
    robot.enter("dataEntryTh", "220");
    robot.click("FirstApproach");
    EXPECT_NEAR(number("dataEntry2"), 3.386660699009193 / 0.95, 1e-9);
    robot.click("calculate");
    EXPECT_EQ(text("Answer"), "3.386661");
    EXPECT_EQ(text("PhaseX1"), "Phase X, solution (liquid)");
    EXPECT_EQ(text("PhaseY1"), "Phase Y");
    EXPECT_EQ(cell("ListBoxPhaseY2", 0, 0), "0.47282731");
    EXPECT_EQ(cell("ListBoxVmX", 0, 0), "67.958173");
    robot.click("ListBoxVmX");
    robot.press("Control_L+c");
    EXPECT_EQ(clipboard(), "67.958173");

    robot.click("Celsius");
    EXPECT_EQ(texts({"dataEntryTh", "StaticText3", "Dimension2"}), "|\u00B0Celsius|MPa|");
    robot.click("RadioButtonPh");
    EXPECT_EQ(text("dataEntryTh"), "---");
    for (const std::string unit : {"Kelvin", "Celsius"}) {
        robot.click(unit);
        for (const char* const label : {"StaticText3", "Dimension", "Dimension2"}) {
            EXPECT_TRUE(text(label).ends_with(unit)) << label;
        }
    }
    robot.enter("dataEntryPh", "3.386660699009193");
    robot.click("FirstApproach");
    robot.click("calculate");
    EXPECT_EQ(text("Answer"), "-53.150000");
}

TEST_F(PhaseScreensTest, FirstApproachSurvivesItsEditingAndGarbageIsRefused) {
    openBubbleDewPoint();
    robot.click("RadioButtonTh");
    robot.click("FirstApproach");
    EXPECT_EQ(text("warning"), "put a correct number, or select a mode");
    robot.click("VapourMode");
    robot.enter("dataEntryTh", "220");
    robot.click("FirstApproach");
    robot.click("calculate");
    EXPECT_EQ(text("PhaseY1"), "Phase Y, solution (vapour)");
    robot.enter("dataEntry2", "2.5");
    EXPECT_EQ(text("Answer") + text("Iterations"), "");
    EXPECT_EQ(rows("ListBoxPhaseX").size(), 2U);
    robot.click("calculate");
    EXPECT_EQ(text("Answer"), "2.422317");
    editFirstFraction("ListBoxPhaseX", "0.8");
    EXPECT_EQ(text("Answer"), "");
    EXPECT_EQ(cell("ListBoxPhaseX", 0, 1), "0.8");
    EXPECT_EQ(text("dataEntry2"), "2.5");
    robot.click("calculate");
    EXPECT_EQ(text("Answer"), "2.422317");
    const std::string tooLong = std::string(1000, '0') + "0.8";
    for (const std::string& garbage : {std::string("much"), std::string("1.5"), tooLong}) {
        editFirstFraction("ListBoxPhaseX", garbage);
        robot.click("calculate");
        EXPECT_EQ(text("warning"), "put a correct number, or select a mode") << garbage;
        EXPECT_EQ(text("Answer"), "");
    }
    robot.enter("dataEntryTh", "900");
    robot.click("FirstApproach");
    EXPECT_NE(text("warning"), "");
    robot.click("calculate");
    EXPECT_EQ(text("Iterations"),
              "possible trivial solution, optional: adjust First Approach and try again");
    EXPECT_EQ(text("PhaseX1") + text("PhaseY1"), "Phase XPhase Y");
    EXPECT_EQ(rows("ListBoxPhaseX2"), rows("ListBoxPhaseY2"));
    EXPECT_EQ(rows("ListBoxVmX"), rows("ListBoxVmY"));
    EXPECT_NE(text("Answer"), "");
    robot.click("Clear");
    EXPECT_EQ(text("dataEntryTh") + text("dataEntryPh"), "------");
    EXPECT_FALSE(isOn("VapourMode"));
}

TEST_F(PhaseScreensTest, LiquidAndVapourMakeTheBulk) {
    openLiquidVapour();
    robot.click("CalFirstApproach");
    EXPECT_EQ(text("warning"), "put a correct number for temperature and density");
    robot.click("calculate");
    constexpr auto sentence =
        "put a correct number for temperature, pressure, density and volume fraction";
    EXPECT_EQ(text("iterations"), sentence);
    robot.enter("dataEntryT", "220");
    robot.enter("dataEntryV", "150");
    robot.click("CalFirstApproach");
    robot.click("calculate");
    EXPECT_EQ(text("PhaseX1"), "Phase X (liquid)");
    EXPECT_EQ(text("PhaseY1"), "Phase Y (vapour)");
    const double vapour = toolkit::numberOrZero(cell("ListBoxFracY", 0, 0));
    EXPECT_NEAR(toolkit::numberOrZero(cell("ListBoxFracX", 0, 0)) + vapour, 1.0, 1e-8);
    // The bulk is what the phases make: amounts in the volumes that they take.
    const double amountY = vapour * 150.0 / toolkit::numberOrZero(cell("ListBoxVmY", 0, 0));
    const double bulk = amountY * toolkit::numberOrZero(cell("ListBoxPhaseY2", 0, 0)) +
                        (1.0 - amountY) * toolkit::numberOrZero(cell("ListBoxPhaseX2", 0, 0));
    EXPECT_NEAR(bulk, 0.7, 1e-6);
    for (const char* const fraction : {"7", "1.01", "-0.01", "half"}) {
        robot.enter("dataEntryF", fraction);
        robot.click("calculate");
        EXPECT_EQ(text("iterations"), sentence);
        EXPECT_EQ(text("Answer"), "") << fraction;
    }
    robot.enter("dataEntryV", "20000");
    EXPECT_EQ(text("Answer") + text("dataEntryP"), "");
    for (const char* const button : {"CalFirstApproach", "calculate"}) {
        robot.click(button);
        EXPECT_EQ(text("warning"), "the fluid is homogeneous at this temperature and density");
    }
    EXPECT_EQ(cell("ListBoxFracX", 0, 0) + cell("ListBoxFracY", 0, 0), "errorerror");
    EXPECT_EQ(text("PhaseX1"), "Phase X");
    robot.enter("dataEntryT", "260");
    robot.enter("dataEntryV", "150");
    robot.click("CalFirstApproach");
    robot.click("calculate");
    const std::string pressure = text("Answer");
    // The fractions of the vapour into phase X, and the other way round.
    editFirstFraction("ListBoxPhaseX", "0.47");
    editFirstFraction("ListBoxPhaseY", "1");
    robot.enter("dataEntryF", "0.27");
    robot.click("calculate");
    EXPECT_EQ(texts({"Answer", "PhaseX1", "PhaseY1"}),
              pressure + "|Phase X (vapour)|Phase Y (liquid)|");
}

TEST_F(PhaseScreensTest, ResultsOfAnOlderCompositionAreEmptied) {
    openLiquidVapour();
    robot.enter("dataEntryT", "220");
    robot.enter("dataEntryV", "150");
    robot.click("CalFirstApproach");
    toolkit::Screen& first = robot.screen();
    for (const auto& [composition, isOther] : std::vector<std::pair<tests::Composition, bool>>{
             {{{"CO2", "0.7"}, {"CH4", "0.3"}}, false},
             {{{"CO2", "0.6"}, {"CH4", "0.4"}}, true},
             {{{"CO2", "0.6"}, {"CH4", "0.2"}, {"N2", "0.2"}}, true},
             {{{"H2O", "1"}}, true}}) {
        robot.use(first);
        robot.click("CalFirstApproach");
        robot.click("calculate");
        openProcedure(composition, "Pressures", "PressureWindow");
        // Before the screen is looked at again.
        EXPECT_EQ(first.control("iterations")->text().empty(), isOther);
        robot.use(first);
        EXPECT_EQ(text("Answer") + text("iterations"), "");
        EXPECT_EQ(text("dataEntryP").empty(), isOther);
        EXPECT_EQ(rows("ListBoxPhaseX").empty(), isOther);
        robot.click("calculate");
    }
    robot.click("PushButton1");
    robot.use("ExplainSecond");
    robot.closeWindow();
    robot.use(first);
}

// Above the critical temperature, 273.287 K, there are two dew points and no bubble point.
TEST_F(PhaseScreensTest, BothDewPointsOfARetrogradeFluidAreReached) {
    openBubbleDewPoint();
    robot.click("RadioButtonTh");
    robot.enter("dataEntryTh", "273.5");
    robot.click("VapourMode");
    constexpr auto begin = "2 homogenization points: 6.981779, 7.099969 MPa; this is number ";
    constexpr auto end = ", press first approach again for the next";
    for (const auto& [number, pressure] : std::vector<std::pair<std::string, std::string>>{
             {"1", "6.981779"}, {"2", "7.099969"}, {"1", "6.981779"}}) {
        robot.click("FirstApproach");
        EXPECT_EQ(text("warning"), begin + number + end);
        robot.click("calculate");
        EXPECT_EQ(text("Answer"), pressure) << text("Iterations");
        EXPECT_EQ(text("warning"), begin + number);
    }
    robot.click("LiquidMode");
    EXPECT_EQ(text("warning") + text("Answer"), "");
    for (const char* const button : {"FirstApproach", "calculate"}) {
        robot.click(button);
        EXPECT_EQ(text("warning"),
                  "no homogenization point exists here, the first approach is an estimate only");
        EXPECT_FALSE(text("dataEntry2").empty());
    }
    EXPECT_EQ(text("PhaseX1") + text("PhaseY1"), "Phase XPhase Y");
}

TEST_F(PhaseScreensTest, FourGasesHaveTheirBubblePointAndFractionsAreEditedByMouse) {
    openProcedure({{"CO2", "0.5"}, {"CH4", "0.2"}, {"N2", "0.1"}, {"H2S", "0.2"}}, "Homogenisation",
                  "BubbleDewPoint");
    robot.click("RadioButtonTh");
    robot.enter("dataEntryTh", "220");
    robot.click("LiquidMode");
    robot.click("FirstApproach");
    robot.click("calculate");
    EXPECT_EQ(text("Answer"), "4.238904");
    const auto before = rows("ListBoxPhaseY");
    ASSERT_EQ(before.size(), 4U);
    const auto scrolling = [this](const char* name) {
        return gtk_tree_view_get_vadjustment(GTK_TREE_VIEW(robot.control(name).widget()));
    };
    EXPECT_EQ(scrolling("ListBoxPhaseX1"), scrolling("ListBoxPhaseX2"));  // gases beside fractions
    EXPECT_NE(scrolling("ListBoxPhaseX1"), scrolling("ListBoxPhaseY1"));
    EXPECT_EQ(before[0][0] + before[1][0] + before[2][0] + before[3][0], "CO2N2H2SCH4");
    // A click on a row chooses it, one on its fraction opens the cell.
    const toolkit::Area list = robot.control("ListBoxPhaseY").area();
    const int y = list.y + 36;  // below the heads
    for (const int x : {list.x + list.width / 8, list.x + list.width * 3 / 4}) {
        robot.drag(x, y, x, y);
    }
    robot.press("Control_L+a");
    robot.type("0.25");
    robot.press("Return");
    std::size_t changed = 0;
    for (std::size_t i = 0; i < before.size(); ++i) {
        changed += rows("ListBoxPhaseY")[i][1] == "0.25" ? 1U : 0U;
    }
    EXPECT_EQ(changed, 1U);
    EXPECT_EQ(text("Answer"), "");  // of other fractions
    EXPECT_FALSE(text("dataEntry2").empty());
    robot.click("calculate");
    EXPECT_EQ(text("Answer"), "4.238904") << text("Iterations");
}

}  // namespace
