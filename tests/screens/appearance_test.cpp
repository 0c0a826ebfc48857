#include <gdk/gdkkeysyms.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <set>

#include "tests/screens/screen_test.h"
#include "toolkit/inspection.h"

namespace {

// What can be seen only in the widgets themselves.
class AppearanceTest : public tests::ScreenTest {
  protected:
    static void forAllLabels(GtkWidget* widget, const std::function<void(GtkLabel*)>& look) {
        if (GTK_IS_LABEL(widget)) {
            look(GTK_LABEL(widget));
        } else if (GTK_IS_CONTAINER(widget)) {
            const auto visit = +[](GtkWidget* child, gpointer data) {
                forAllLabels(child, *static_cast<const std::function<void(GtkLabel*)>*>(data));
            };
            auto copy = look;
            gtk_container_forall(GTK_CONTAINER(widget), visit, &copy);
        }
    }
    // How much higher and wider the content is than its place in the window, in pixels.
    std::pair<double, double> hiddenPart() const {
        GtkWidget* const viewport =
            gtk_widget_get_ancestor(robot.screen().controls().front()->widget(), GTK_TYPE_VIEWPORT);
        const auto hidden = [](GtkAdjustment* adjustment) {
            return gtk_adjustment_get_upper(adjustment) - gtk_adjustment_get_page_size(adjustment);
        };
        return {hidden(gtk_viewport_get_vadjustment(GTK_VIEWPORT(viewport))),
                hidden(gtk_viewport_get_hadjustment(GTK_VIEWPORT(viewport)))};
    }
    void expectNoClippedLabel() const {
        forAllLabels(robot.screen().window(), [this](GtkLabel* label) {
            GtkAllocation place;
            GtkRequisition wanted;
            gtk_widget_get_allocation(GTK_WIDGET(label), &place);
            gtk_widget_get_child_requisition(GTK_WIDGET(label), &wanted);
            const bool isWhole = place.width >= wanted.width && place.height >= wanted.height;
            EXPECT_TRUE(isWhole) << robot.screen().name() << ": " << gtk_label_get_text(label);
        });
    }
};

TEST_F(AppearanceTest, ControlsHaveTheirIdsOnce) {
    const auto expectId = [](GtkWidget* widget, const std::string& name) {
        EXPECT_EQ(gtk_widget_get_name(widget), name);
        EXPECT_EQ(atk_object_get_accessible_id(gtk_widget_get_accessible(widget)), name);
    };
    visitEveryScreen([&] {
        const toolkit::Screen& screen = robot.screen();
        expectId(screen.window(), screen.name());
        std::set<std::string> names;
        for (const toolkit::Control* const control : screen.controls()) {
            expectId(control->widget(), control->name());
            EXPECT_TRUE(names.insert(control->name()).second) << control->name() << " twice";
        }
    });
}

// The contrast that the guidelines for accessible pages ask for: 4.5.
TEST_F(AppearanceTest, WarningsStandOutFromLightAndDarkBackgrounds) {
    const auto luminance = [](double red, double green, double blue) {
        const auto linear = [](double value) {
            const double share = value / 65535.0;
            return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(red) + 0.7152 * linear(green) + 0.0722 * linear(blue);
    };
    openProcedure({{"H2O", "1"}}, "Pressures", "PressureWindow");
    GtkWidget* const label = robot.control("warning").widget();
    for (const guint16 shade : std::initializer_list<guint16>{0xffff, 0xdcdc, 0x3030, 0}) {
        const GdkColor background = {0, shade, shade, shade};
        gtk_widget_modify_bg(label, GTK_STATE_NORMAL, &background);
        PangoAttrIterator* const iterator =
            pango_attr_list_get_iterator(gtk_label_get_attributes(GTK_LABEL(label)));
        const PangoAttribute* const foreground =
            pango_attr_iterator_get(iterator, PANGO_ATTR_FOREGROUND);
        pango_attr_iterator_destroy(iterator);
        ASSERT_NE(foreground, nullptr);
        const auto& color = reinterpret_cast<const PangoAttrColor*>(foreground)->color;
        const double text = luminance(color.red, color.green, color.blue);
        const double behind = luminance(shade, shade, shade);
        const auto [darker, lighter] = std::minmax(text, behind);
        EXPECT_GE((lighter + 0.05) / (darker + 0.05), 4.5) << shade;
    }
}

TEST_F(AppearanceTest, EveryMnemonicStandsOnce) {
    const auto expectUniqueMnemonics = [this] {
        std::set<guint> keys;
        forAllLabels(robot.screen().window(), [&](GtkLabel* label) {
            const guint key = gtk_label_get_mnemonic_keyval(label);
            EXPECT_TRUE(key == GDK_KEY_VoidSymbol || keys.insert(key).second)
                << robot.screen().name() << ": " << gtk_label_get_label(label);
        });
        const auto& controls = robot.screen().controls();
        const auto captions = std::count_if(controls.begin(), controls.end(), [](auto* control) {
            const auto* const captioned = dynamic_cast<const toolkit::Captioned*>(control);
            return captioned != nullptr && captioned->canCarryMnemonic() &&
                   !captioned->caption().empty();
        });
        // With the two menus; there are no more letters than these.
        constexpr std::ptrdiff_t letters = 25;
        EXPECT_GE(keys.size(), std::min(captions + 2, letters)) << robot.screen().name();
    };
    visitEveryScreen(expectUniqueMnemonics);
    openProcedure({{"H2O", "1"}}, "Pressures", "PressureWindow");
    robot.click("kgm3");
    expectUniqueMnemonics();
    robot.press("Alt_L+d");
    EXPECT_TRUE(toolkit::HasFocus(robot.control("dataEntryV")));
}

TEST_F(AppearanceTest, ExplanationsAreClosedByEscapeAndScreensAreNot) {
    openProcedure({{"H2O", "1"}}, "Spinodal", "SpinodalWindow");
    robot.press("Escape");
    robot.click("Explanations");
    robot.use("ExplainSpinodal");
    robot.press("Escape");
    EXPECT_EQ(openScreens(), (std::vector<std::string>{"Start2Window", "SpinodalWindow"}));
}

TEST_F(AppearanceTest, NothingIsClippedAtTheDefaultSizeAndAtTwiceTheFont) {
    for (const char* const font : {"Sans 10", "Sans 20", "Sans 10"}) {
        g_object_set(gtk_settings_get_default(), "gtk-font-name", font, nullptr);
        SCOPED_TRACE(font);
        visitEveryScreen([&] {
            if (robot.screen().name() == "PressureWindow") {
                robot.click("kgm3");
                robot.enter("dataEntryV", "0.37");
                robot.press("Return");
            }
            expectNoClippedLabel();
            if (font == std::string("Sans 10")) {
                EXPECT_LE(hiddenPart().first, 0.0) << robot.screen().name();
            }
            // Screens with results or a plot beside the inputs, or with many columns, scroll at
            // twice the font.
            const bool isWide = robot.screen().name() == "ChemPotWindow" ||
                                robot.screen().control("ListBoxVmX") != nullptr ||
                                robot.screen().control("Plot") != nullptr;
            if (font == std::string("Sans 10") || !isWide) {
                EXPECT_LE(hiddenPart().second, 0.0) << robot.screen().name();
            }
        });
        owner.quit();
    }
}

}  // namespace
