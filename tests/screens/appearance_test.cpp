#include <gdk/gdkkeysyms.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <map>
#include <set>

#include "tests/screens/screen_test.h"

namespace {

/// What can be seen only in the widgets themselves.
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
    std::string shownText(const std::string& name) const {
        const toolkit::Control& control = robot.control(name);
        if (GTK_IS_ENTRY(control.widget()) || GTK_IS_DRAWING_AREA(control.widget())) {
            return control.text();
        }
        std::string shown;
        GtkWidget* const widget = control.widget();
        forAllLabels(GTK_IS_FRAME(widget) ? gtk_frame_get_label_widget(GTK_FRAME(widget)) : widget,
                     [&shown](GtkLabel* label) {
                         if (!GTK_IS_ACCEL_LABEL(label) || shown.empty()) {
                             shown += gtk_label_get_text(label);
                         }
                     });
        return shown;
    }
    /// How much higher and wider the content is than its place in the window, in pixels.
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

TEST_F(AppearanceTest, TextsAreToTheLetterAndControlsHaveTheirIds) {
    std::multimap<std::string, std::pair<std::string, std::string>> rows;
    std::ifstream file(DROVAN_TEST_DATA "/texts.tsv");
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with('#')) {
            const std::size_t second = line.find('\t') + 1;
            const std::size_t third = line.find('\t', second) + 1;
            rows.emplace(line.substr(0, second - 1),
                         std::pair(line.substr(second, third - second - 1), line.substr(third)));
        }
    }
    ASSERT_GT(rows.size(), 80U);
    const auto expectId = [](GtkWidget* widget, const std::string& name) {
        EXPECT_EQ(gtk_widget_get_name(widget), name);
        EXPECT_EQ(atk_object_get_accessible_id(gtk_widget_get_accessible(widget)), name);
    };
    std::size_t compared = 0;
    visitEveryScreen([&] {
        const toolkit::Screen& screen = robot.screen();
        const auto [first, last] = rows.equal_range(screen.name());
        for (auto row = first; row != last; ++row, ++compared) {
            const auto& [name, text] = row->second;
            EXPECT_EQ(name == screen.name() ? screen.title() : shownText(name), text) << name;
        }
        expectId(screen.window(), screen.name());
        std::set<std::string> names;
        for (const toolkit::Control* const control : screen.controls()) {
            expectId(control->widget(), control->name());
            EXPECT_TRUE(names.insert(control->name()).second) << control->name() << " twice";
        }
    });
    EXPECT_EQ(compared, rows.size());
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
        EXPECT_EQ(keys.size(), captions + 2) << robot.screen().name();  // and the two menus
    };
    visitEveryScreen(expectUniqueMnemonics);
    openProcedure({{"H2O", "1"}}, "Pressures", "PressureWindow");
    robot.click("kgm3");
    expectUniqueMnemonics();
    robot.press("Alt_L+d");
    EXPECT_TRUE(robot.control("dataEntryV").hasFocus());
}

TEST_F(AppearanceTest, NothingIsClippedAtTheDefaultSizeAndAtTwiceTheFont) {
    for (const char* const font : {"Sans 10", "Sans 20"}) {
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
