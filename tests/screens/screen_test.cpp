#include "tests/screens/screen_test.h"

#include <gtk/gtk.h>
#include <unistd.h>

#include <algorithm>
#include <memory>

#include "app/start1_window.h"
#include "app/start2_window.h"
#include "model/fluid_model.h"
#include "toolkit/button.h"
#include "toolkit/number_text.h"

namespace tests {

Composition FractionsOf(std::span<const double> counts) {
    Composition fractions;
    for (std::size_t i = 0; i < fluid::componentCount; ++i) {
        if (counts[i] > 0.0) {
            const double fraction = counts[i] / static_cast<double>(fluid::fractionScale);
            fractions.emplace_back(fluid::componentFormulas[i], toolkit::NumberText(fraction));
        }
    }
    return fractions;
}

ScreenTest::ScreenTest()
    : folder(std::filesystem::temp_directory_path() / ("drovan" + std::to_string(getpid()))) {
    std::filesystem::create_directories(folder);
}

ScreenTest::~ScreenTest() {
    std::filesystem::remove_all(folder);
}

void ScreenTest::openComposition() {
    owner.open(std::make_unique<app::Start2Window>(owner));
    robot.use("Start2Window");
}

void ScreenTest::compose(const Composition& fractions) {
    robot.click("Clear");
    for (const auto& [formula, fraction] : fractions) {
        robot.enter(formula + "number", fraction);
    }
}

void ScreenTest::openProcedure(const Composition& fractions, const std::string& button,
                               const std::string& screenName) {
    const auto open = openScreens();
    if (std::find(open.begin(), open.end(), "Start2Window") != open.end()) {
        robot.use("Start2Window");
    } else {
        openComposition();
    }
    compose(fractions);
    robot.click(button);
    robot.click("Continue1");
    robot.use(screenName);
}

void ScreenTest::visitEveryScreen(const std::function<void()>& look) {
    owner.open(std::make_unique<app::Start1Window>(owner));
    robot.use("Start1Window");
    look();
    openComposition();
    look();
    compose({{"H2O", "1"}});
    ASSERT_EQ(procedures().size(), 13U);
    for (const std::string& button : procedures()) {
        const std::size_t before = owner.screens().size();
        robot.use("Start2Window");
        robot.click(button);
        robot.click("Continue1");
        ASSERT_EQ(owner.screens().size(), before + 1) << button;
        toolkit::Screen& screen = robot.use(*owner.screens().back());
        SCOPED_TRACE(screen.name());
        look();
        owner.close(screen);
    }
}

std::vector<std::string> ScreenTest::procedures() const {
    std::vector<std::string> names;
    for (const toolkit::Control* const control : robot.screen().controls()) {
        if (dynamic_cast<const toolkit::RadioButton*>(control) != nullptr) {
            names.push_back(control->name());
        }
    }
    return names;
}

void ScreenTest::save(const std::string& button, const std::filesystem::path& path) {
    robot.click(button);
    waitForDialog();
    robot.press("Control_L+a");
    robot.type(path.string());
    robot.press("Alt_L+s");
}

void ScreenTest::waitForDialog(const std::string& title) {
    EXPECT_TRUE(robot.waitFor([&title] {
        GList* const windows = gtk_window_list_toplevels();
        bool found = false;
        for (const GList* each = windows; each != nullptr; each = each->next) {
            const auto* const shown = gtk_window_get_title(GTK_WINDOW(each->data));
            found = found || (GTK_IS_DIALOG(each->data) && (title.empty() || title == shown) &&
                              gtk_window_has_toplevel_focus(GTK_WINDOW(each->data)) != FALSE);
        }
        g_list_free(windows);
        return found;
    }));
    robot.settle();
}

std::vector<std::string> ScreenTest::openScreens() const {
    std::vector<std::string> names;
    for (const toolkit::Screen* const screen : owner.screens()) {
        names.push_back(screen->name());
    }
    return names;
}

std::string ScreenTest::texts(const std::vector<std::string>& controls) const {
    std::string joined;
    for (const std::string& control : controls) {
        joined += text(control) + "|";
    }
    return joined;
}

std::vector<toolkit::List::Row> ScreenTest::rows(const std::string& list) const {
    return dynamic_cast<const toolkit::List&>(robot.control(list)).rows();
}

double ScreenTest::number(const std::string& control) const {
    const auto value = toolkit::ParseNumber(text(control));
    EXPECT_TRUE(value.has_value()) << control << " shows \"" << text(control) << '"';
    return value.value_or(0.0);
}

bool ScreenTest::isOn(const std::string& radioButton) const {
    return dynamic_cast<const toolkit::RadioButton&>(robot.control(radioButton)).isOn();
}

std::string ScreenTest::clipboard() const {
    gchar* const text = gtk_clipboard_wait_for_text(gtk_clipboard_get(GDK_SELECTION_CLIPBOARD));
    std::string result = text == nullptr ? "" : text;
    g_free(text);
    return result;
}

}  // namespace tests
