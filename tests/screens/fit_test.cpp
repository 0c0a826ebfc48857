#include <gtk/gtk.h>

#include <algorithm>
#include <functional>
#include <span>

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
        int vertical = 0;
        int horizontal = 0;
        forAllWidgets(robot.screen().window(), [&](GtkWidget* widget) {
            if (GTK_IS_SCROLLED_WINDOW(widget)) {
                auto* const scroller = GTK_SCROLLED_WINDOW(widget);
                const bool isOuter = widget == gtk_widget_get_parent(viewport());
                horizontal += isShown(gtk_scrolled_window_get_hscrollbar(scroller)) ? 1 : 0;
                vertical +=
                    isOuter && isShown(gtk_scrolled_window_get_vscrollbar(scroller)) ? 1 : 0;
            }
        });
        EXPECT_EQ(horizontal, 0) << "horizontal";
        EXPECT_EQ(vertical, 0) << "vertical";
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
            expectFits(use.answer);
            EXPECT_NE(text(use.answer), "");
            robot.closeWindow();
        }
    }
}

}  // namespace
