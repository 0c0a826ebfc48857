#include <gtk/gtk.h>

#include <array>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tests/screens/screen_test.h"
#include "toolkit/inspection.h"
#include "toolkit/number_text.h"

namespace {

constexpr auto refused = "put a correct number, or select a mode";

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
    // Types over the fraction in the first row of a list, in the editor that one click opens.
    void typeFraction(const std::string& list, const std::string& fraction) {
        const toolkit::Area area = robot.control(list).area();
        const int x = area.x + area.width * 3 / 4;
        const int y = area.y + 36;  // below the heads
        robot.drag(x, y, x, y);
        robot.type(fraction);
    }
};

// The golden bubble point is of 60 digits, as in tests/data/phase_equilibria.csv.
TEST_F(PhaseScreensTest, BubblePointIsTheGoldenOneInBothDirectionsAndUnits) {
    openBubbleDewPoint();
    robot.click("RadioButtonTh");
    EXPECT_EQ(texts({"dataEntryPh", "Homogen2", "Dimension2"}), "---|Homogenization Pressure|MPa|");
    robot.click("LiquidMode");
    EXPECT_EQ(text("GroupBox5"), "First Approach Bubble-Point Curve");
    EXPECT_TRUE(toolkit::IsVisible(robot.control("CanvasLiquid")));
    EXPECT_FALSE(toolkit::IsVisible(robot.control("CanvasVapour")));
    robot.enter("dataEntryTh", "220");
    robot.click("FirstApproach");
    EXPECT_NEAR(number("dataEntry2"), 3.386660699009193 / 0.95, 1e-9);
    robot.click("calculate");
    EXPECT_EQ(texts({"Answer", "PhaseX1", "PhaseY1"}),
              "3.386661|Phase X, solution (liquid)|Phase Y|");
    EXPECT_EQ(cell("ListBoxPhaseY1", 0, 0) + cell("ListBoxPhaseY2", 0, 0), "CO20.47282731");
    EXPECT_EQ(cell("ListBoxVmX", 0, 0) + " " + cell("ListBoxDX", 0, 0), "67.958173 0.524141");
    const auto scrolling = [this](const char* name) {
        return gtk_tree_view_get_vadjustment(GTK_TREE_VIEW(robot.control(name).widget()));
    };
    EXPECT_EQ(scrolling("ListBoxPhaseX1"), scrolling("ListBoxPhaseX2"));  // gases beside fractions
    EXPECT_NE(scrolling("ListBoxPhaseX1"), scrolling("ListBoxPhaseY1"));
    robot.click("ListBoxVmX");
    robot.press("Control_L+c");
    EXPECT_EQ(clipboard(), "67.958173");

    robot.click("Celsius");
    EXPECT_EQ(texts({"dataEntryTh", "StaticText3", "Dimension2"}), "|\u00B0Celsius|MPa|");
    robot.click("RadioButtonPh");
    EXPECT_EQ(texts({"dataEntryTh", "Dimension"}), "---|\u00B0Celsius|");
    robot.click("dataEntryPh");
    robot.type("3.386660699009193");
    robot.click("VapourMode");
    EXPECT_TRUE(toolkit::IsVisible(robot.control("CanvasVapour")));
    robot.click("LiquidMode");
    robot.press("Return");
    EXPECT_EQ(text("Answer"), "-53.150000");
    robot.click("Clear");
    EXPECT_EQ(texts({"dataEntryTh", "dataEntryPh", "Answer", "GroupBox5"}),
              "---|---||First Approach|");
    EXPECT_FALSE(isOn("LiquidMode") || isOn("RadioButtonPh"));
    robot.click("RadioButtonTh");
    robot.click("dataEntryPh");  // not in use
    robot.type("5");
    EXPECT_EQ(text("dataEntryPh"), "5");
}

TEST_F(PhaseScreensTest, WhatIsTypedIntoTheFirstApproachIsKeptAndUsed) {
    openBubbleDewPoint();
    robot.click("RadioButtonTh");
    robot.click("VapourMode");
    for (const char* const button : {"FirstApproach", "calculate"}) {
        robot.click(button);
        EXPECT_EQ(text("warning"), refused);
    }
    robot.enter("dataEntryTh", "220");
    robot.enter("dataEntry2", "2.5");
    robot.press("Return");  // without a first approach of the fractions
    EXPECT_EQ(texts({"dataEntry2", "Answer", "PhaseY1"}),
              "2.5|2.422317|Phase Y, solution (vapour)|");
    robot.enter("dataEntry2", "2.6");
    EXPECT_EQ(texts({"Answer", "Iterations"}), "||");
    EXPECT_EQ(rows("ListBoxPhaseX").size(), 2U);

    struct Leaving {
        std::string typed;
        std::function<void()> how;
        std::string warning, answer;
    };
    for (const Leaving& leaving :
         std::vector<Leaving>{{"0.8", [this] { robot.press("Return"); }, "", ""},
                              {"0.81", [this] { robot.press("Tab"); }, "", ""},
                              {"0.82", [this] { robot.click("dataEntry2"); }, "", ""},
                              {"0.83", [this] { typeFraction("ListBoxPhaseY", "0.7"); }, "", ""},
                              {"0.84", [this] { robot.click("calculate"); }, "", "2.422317"},
                              {"0.85", [this] { robot.press("Alt_L+c"); }, "", "2.422317"},
                              {"much", [this] { robot.press("Alt_L+c"); }, refused, ""},
                              {"1.5", [this] { robot.click("calculate"); }, refused, ""}}) {
        typeFraction("ListBoxPhaseX", leaving.typed);
        leaving.how();
        EXPECT_EQ(cell("ListBoxPhaseX", 0, 1), leaving.typed);
        EXPECT_EQ(texts({"warning", "Answer"}), leaving.warning + "|" + leaving.answer + "|")
            << leaving.typed;
        toolkit::TakeFocus(robot.control("calculate"));
    }
    EXPECT_EQ(cell("ListBoxPhaseY", 0, 1), "0.7");
    typeFraction("ListBoxPhaseX", "0.2");
    robot.press("Escape");
    EXPECT_EQ(cell("ListBoxPhaseX", 0, 1), "1.5");

    robot.enter("dataEntryTh", "900");
    robot.click("calculate");
    EXPECT_EQ(texts({"Iterations", "PhaseX1", "PhaseY1"}),
              "possible trivial solution, optional: adjust First Approach and try again|Phase "
              "X|Phase Y|");
    EXPECT_EQ(rows("ListBoxPhaseX2"), rows("ListBoxPhaseY2"));
    EXPECT_NE(text("Answer"), "");
    // No number that is no answer is set off as one.
    const auto weightOf = [this] {
        PangoAttrIterator* const all = pango_attr_list_get_iterator(
            gtk_label_get_attributes(GTK_LABEL(robot.control("Answer").widget())));
        const bool isBold = pango_attr_iterator_get(all, PANGO_ATTR_WEIGHT) != nullptr;
        pango_attr_iterator_destroy(all);
        return isBold;
    };
    EXPECT_FALSE(weightOf());
    robot.enter("dataEntryTh", "220");
    robot.click("calculate");
    EXPECT_TRUE(weightOf());
    typeFraction("ListBoxPhaseX", "0.9");
    robot.press("Control_L+q");  // with an open editor
}

// Above the critical temperature, 273.287 K, there are two dew points and no bubble point.
TEST_F(PhaseScreensTest, FirstApproachGoesOnFromTheShownPointToTheNext) {
    openBubbleDewPoint();
    robot.click("RadioButtonTh");
    robot.enter("dataEntryTh", "273.5");
    robot.click("VapourMode");
    for (const char* const pressure : {"6.981779", "7.099969", "6.981779"}) {
        robot.click("FirstApproach");
        robot.click("calculate");
        EXPECT_EQ(text("Answer"), pressure) << text("warning");
    }
    robot.click("LiquidMode");
    EXPECT_EQ(texts({"warning", "Answer", "dataEntry2"}), "|||");
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
    robot.press("Return");
    EXPECT_EQ(texts({"iterations", "dataEntryP"}), sentence + std::string("||"));
    robot.click("CalFirstApproach");
    robot.press("Alt_L+c");
    EXPECT_EQ(texts({"Answer", "PhaseX1", "PhaseY1"}),
              "3.111802|Phase X (liquid)|Phase Y (vapour)|");
    const double vapour = toolkit::NumberOrZero(cell("ListBoxFracY", 0, 0));
    EXPECT_NEAR(toolkit::NumberOrZero(cell("ListBoxFracX", 0, 0)) + vapour, 1.0, 1e-8);
    // The bulk is what the phases make: amounts in the volumes that they take.
    const double amountY = vapour * 150.0 / toolkit::NumberOrZero(cell("ListBoxVmY", 0, 0));
    const double bulk = amountY * toolkit::NumberOrZero(cell("ListBoxPhaseY2", 0, 0)) +
                        (1.0 - amountY) * toolkit::NumberOrZero(cell("ListBoxPhaseX2", 0, 0));
    EXPECT_NEAR(bulk, 0.7, 1e-6);
    for (const char* const fraction : {"7", "1.01", "-0.01", "half"}) {
        robot.enter("dataEntryF", fraction);
        robot.click("calculate");
        EXPECT_EQ(texts({"iterations", "Answer"}), sentence + std::string("||")) << fraction;
    }
    robot.enter("dataEntryV", "20000");
    EXPECT_EQ(texts({"Answer", "dataEntryP", "dataEntryF"}), "|||");
    robot.click("CalFirstApproach");
    robot.enter("dataEntryP", "2");
    robot.click("calculate");
    EXPECT_EQ(texts({"warning", "PhaseX1", "dataEntryP"}),
              "the fluid is homogeneous at this temperature and density|Phase X|2|");
    EXPECT_EQ(cell("ListBoxFracX", 0, 0) + cell("ListBoxFracY", 0, 0), "errorerror");
    robot.enter("dataEntryT", "260");
    robot.enter("dataEntryV", "150");
    robot.click("CalFirstApproach");
    robot.click("calculate");
    const std::string pressure = text("Answer");
    // The fractions of the vapour into phase X, and the other way round.
    typeFraction("ListBoxPhaseX", "0.47");
    typeFraction("ListBoxPhaseY", "1");
    robot.enter("dataEntryF", "0.27");
    robot.click("calculate");
    EXPECT_EQ(texts({"Answer", "PhaseX1", "PhaseY1"}),
              pressure + "|Phase X (vapour)|Phase Y (liquid)|");
    robot.click("Celsius");
    EXPECT_EQ(texts({"dataEntryT", "StaticText3", "dataEntryP"}), "|\u00B0Celsius||");
    robot.click("kgm3");
    EXPECT_EQ(texts({"dataEntryV", "StaticText1", "MolarVolume1"}), "|g/cm³|Density|");
}

TEST_F(PhaseScreensTest, ResultsAreThoseOfTheCompositionAndStayBesideTheirExplanation) {
    openLiquidVapour();
    robot.enter("dataEntryT", "220");
    robot.enter("dataEntryV", "150");
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
        EXPECT_EQ(texts({"Answer", "iterations"}), "||");
        EXPECT_EQ(text("dataEntryP").empty(), isOther);
        EXPECT_EQ(rows("ListBoxPhaseX").empty(), isOther);
    }
    openBubbleDewPoint();
    robot.click("RadioButtonTh");
    robot.enter("dataEntryTh", "220");
    robot.click("LiquidMode");
    for (const auto& [screen, button, explanation] : std::vector<std::array<std::string, 3>>{
             {"BubbleDewPoint", "Explanations", "ExplainFirst"},
             {"LiquidVapourEq", "PushButton1", "ExplainSecond"}}) {
        toolkit::Screen& explained = robot.use(screen);
        robot.click(screen == "BubbleDewPoint" ? "FirstApproach" : "CalFirstApproach");
        robot.click("calculate");
        const std::string answer = text("Answer");
        EXPECT_NE(answer, "");
        robot.click(button);
        robot.use(explanation);
        robot.use(explained);
        EXPECT_EQ(text("Answer"), answer);
        robot.use(explanation);
        robot.closeWindow();
        robot.use(explained);
        EXPECT_EQ(text("Answer"), answer);
        robot.use("Start2Window");
        robot.use(explained);
        EXPECT_EQ(text("Answer"), "");
    }
}

}  // namespace
