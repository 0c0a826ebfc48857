#include <gtk/gtk.h>

#include <algorithm>
#include <array>
#include <functional>
#include <span>

#include "app/start1_window.h"
#include "tests/screens/screen_test.h"
#include "toolkit/button.h"

namespace {

// A control to click, or an entry and what to type into it.
struct Step {
    const char* control;
    const char* text = nullptr;
};

// What one does on a screen, and where its answer is.
struct Use {
    const char* procedure;
    const char* screen;
    std::vector<Step> steps;
    const char* answer;
};

const std::vector<Use> uses = {
    {"Pressures", "PressureWindow", {{"dataEntryV", "80"}, {"dataEntryT", "300"}}, "Result"},
    {"Temperatures", "TemperatureWindow", {{"dataEntryV", "80"}, {"dataEntryP", "10"}}, "ResultT"},
    {"MolarVolumes",
     "VolumeWindow",
     {{"dataEntryT", "220"}, {"dataEntryP", "3"}, {"calculate"}, {"Choice2"}},
     "Result"},
    {"Fugacities",
     "FugacityWindow",
     {{"dataEntryT", "220"}, {"dataEntryP", "3"}, {"calculate"}, {"Choice2"}},
     "ListBox1"},
    {"Activities",
     "ActivityWindow",
     {{"dataEntryT", "220"}, {"dataEntryP", "3"}, {"calculate"}, {"Choice2"}},
     "Result"},
    {"Thermodynamics",
     "ThermodynamicWindow",
     {{"dataEntryT", "220"}, {"dataEntryP", "3"}, {"calculate"}, {"Choice2"}},
     "State"},
    {"ChemicalPotentials",
     "ChemPotWindow",
     {{"dataEntryT", "220"}, {"dataEntryP", "3"}, {"calculate"}, {"Choice2"}},
     "State"},
    {"Homogenisation",
     "BubbleDewPoint",
     {{"RadioButtonTh"}, {"dataEntryTh", "220"}, {"LiquidMode"}, {"FirstApproach"}},
     "Answer"},
    {"LiquidVapour",
     "LiquidVapourEq",
     {{"dataEntryT", "220"}, {"dataEntryV", "150"}, {"CalFirstApproach"}},
     "Answer"},
    {"Isochores",
     "IsochoreWindow",
     {{"dataEntryV", "80"}, {"dataEntryT1", "200"}, {"dataEntryT2", "400"}, {"dataEntryStep", "1"}},
     "Homogenisation"},
    {"Isotherms",
     "IsothermWindow",
     {{"dataEntryT", "220"}, {"dataEntryV1", "60"}, {"dataEntryV2", "800"}, {"dataEntryStep", "5"}},
     "ListBox1"},
    {"Spinodal", "SpinodalWindow", {{"dataEntryT", "220"}}, "ListBox1"},
    {"CriticalPoint", "CriticalPointWindow", {}, "ListBox1"}};

// Windows on displays of other sizes and with other fonts.
class FitTest : public tests::ScreenTest {
  protected:
    static void forAllWidgets(GtkWidget* widget, const std::function<void(GtkWidget*)>& look) {
        look(widget);
        if (GTK_IS_CONTAINER(widget)) {
            const auto visit = +[](GtkWidget* child, gpointer data) {
                forAllWidgets(child, *static_cast<const std::function<void(GtkWidget*)>*>(data));
            };
            auto copy = look;
            gtk_container_forall(GTK_CONTAINER(widget), visit, &copy);
        }
    }

    static bool isShown(GtkWidget* scrollBar) {
        return scrollBar != nullptr && gtk_widget_get_mapped(scrollBar) != FALSE;
    }

    GtkWidget* viewport() const {
        return gtk_widget_get_ancestor(robot.screen().controls().front()->widget(),
                                       GTK_TYPE_VIEWPORT);
    }

    // Whether the control is in the part of the window that is not scrolled away.
    void expectInSight(const toolkit::Control& control) const {
        const toolkit::Area area = control.area();
        GtkAllocation room;
        gtk_widget_get_allocation(viewport(), &room);
        int x = 0;
        int y = 0;
        gdk_window_get_origin(gtk_widget_get_window(gtk_widget_get_parent(viewport())), &x, &y);
        const int top = y + room.y;
        const int left = x + room.x;
        EXPECT_TRUE(area.width > 0 && area.x >= left && area.x + area.width <= left + room.width &&
                    area.y >= top && area.y + area.height <= top + room.height)
            << control.name() << " at " << area.x - left << ", " << area.y - top << ", "
            << area.width << " x " << area.height << " in " << room.width << " x " << room.height;
    }

    void expectFits(const char* answer) const {
        const toolkit::Area area = robot.screen().area();
        EXPECT_LE(area.width, gdk_screen_width());
        EXPECT_LE(area.height, gdk_screen_height());
        for (const toolkit::Control* const control : robot.screen().controls()) {
            const std::string name = control->name();
            const bool isOnOtherPage = control->area().width == 0;
            if ((name.starts_with("dataEntry") && !isOnOtherPage) || name == "calculate" ||
                name == answer) {
                expectInSight(*control);
            }
        }
        EXPECT_EQ(scrollBars().horizontal, 0);
        EXPECT_EQ(scrollBars().vertical, 0);
    }

    struct Bars {
        int horizontal = 0;
        int vertical = 0;  // of the window, not of its lists
    };
    Bars scrollBars() const {
        Bars bars;
        forAllWidgets(robot.screen().window(), [&](GtkWidget* widget) {
            if (GTK_IS_SCROLLED_WINDOW(widget)) {
                auto* const scroller = GTK_SCROLLED_WINDOW(widget);
                const bool isOuter = widget == gtk_widget_get_parent(viewport());
                bars.horizontal += isShown(gtk_scrolled_window_get_hscrollbar(scroller)) ? 1 : 0;
                bars.vertical +=
                    isOuter && isShown(gtk_scrolled_window_get_vscrollbar(scroller)) ? 1 : 0;
            }
        });
        return bars;
    }

    // The size of the window, again whenever it has had time to become another.
    std::pair<int, int> size() {
        robot.settle();
        const toolkit::Area area = robot.screen().area();
        return {area.width, area.height};
    }
};

TEST_F(FitTest, EveryScreenIsInSightAndKeepsItsSizeWithTwoAndWithElevenGases) {
    const tests::Composition two = {{"CO2", "0.7"}, {"CH4", "0.3"}};
    const tests::Composition eleven = {{"H2O", "0.04"}, {"CO2", "0.5"},  {"CH4", "0.1"},
                                       {"N2", "0.1"},   {"C2H6", "0.1"}, {"H2S", "0.05"},
                                       {"NH3", "0.01"}, {"H2", "0.01"},  {"O2", "0.04"},
                                       {"CO", "0.04"},  {"Ar", "0.01"}};
    for (const tests::Composition& gases : {two, eleven}) {
        for (const Use& use : uses) {
            SCOPED_TRACE(std::string(use.screen) + " with " + std::to_string(gases.size()) +
                         " gases");
            openProcedure(gases, use.procedure, use.screen);
            const auto before = size();
            expectFits(use.answer);
            robot.press("Return");  // what is missing is said
            EXPECT_EQ(size(), before);
            for (const Step& step : use.steps) {
                toolkit::Control* const control = robot.screen().control(step.control);
                if (step.text != nullptr) {
                    robot.enter(step.control, step.text);
                } else if (control != nullptr && control->isSensitive()) {
                    robot.click(step.control);
                }
                EXPECT_EQ(size(), before) << step.control;
            }
            if (std::string_view(use.steps.empty() ? "" : use.steps.back().control) != "Choice2") {
                robot.press("Alt_L+c");
            }
            EXPECT_EQ(size(), before);
            if (const toolkit::Control* const plot = robot.screen().control("Plot")) {
                const toolkit::Area area = plot->area();
                robot.moveTo(area.x + area.width / 2, area.y + area.height / 2);
                EXPECT_EQ(size(), before) << "under the pointer";
            }
            expectFits(use.answer);
            EXPECT_NE(text(use.answer), "");
            EXPECT_EQ(robot.control(use.answer).tooltip(), "");  // it is there as a whole
            robot.closeWindow();
        }
    }
}

// Pages to read may scroll down, but what is below them stays in sight.
TEST_F(FitTest, TheFirstWindowsAndTheExplanationsAreAsWideAsTheirTexts) {
    const auto expectReadable = [this](const std::string& shown) {
        SCOPED_TRACE(robot.screen().name());
        const toolkit::Area area = robot.control(shown).area();
        EXPECT_GT(area.width, 0);
        EXPECT_LE(area.y + area.height, gdk_screen_height());
        EXPECT_EQ(scrollBars().horizontal, 0);
    };
    owner.open(std::make_unique<app::Start1Window>(owner));
    robot.use("Start1Window");
    expectReadable("continue");
    robot.click("continue");
    robot.use("Start2Window");
    expectReadable("Sum");
    expectReadable("Continue1");
    for (const auto& [procedure, screen, button, explanation] :
         std::vector<std::array<const char*, 4>>{
             {"Homogenisation", "BubbleDewPoint", "Explanations", "ExplainFirst"},
             {"LiquidVapour", "LiquidVapourEq", "PushButton1", "ExplainSecond"}}) {
        openProcedure({{"CO2", "0.7"}, {"CH4", "0.3"}}, procedure, screen);
        robot.click(button);
        robot.use(explanation);
        expectReadable("Heading");
        auto* const paragraph = GTK_LABEL(robot.control("Paragraph1").widget());
        EXPECT_GT(pango_layout_get_line_count(gtk_label_get_layout(paragraph)), 2);
        EXPECT_EQ(gtk_label_get_ellipsize(paragraph), PANGO_ELLIPSIZE_NONE);
    }
}

}  // namespace
