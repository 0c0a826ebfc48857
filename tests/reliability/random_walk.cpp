// Uses the program at random: clicks on its controls, presses keys, types numbers good and bad,
// opens menus, dialogs and windows and closes them. Whatever GTK+ complains of goes to stderr,
// where the test looks for it. Ends with 1 when memory grows while no window is open.
// usage: random_walk EVENTS SEED [hasty]    hasty: waits for nothing between the events, while what
// is pasted comes late or never

#include <gtk/gtk.h>
#include <malloc.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "app/start2_window.h"
#include "app/window_owner.h"
#include "tests/reliability/late_owner.h"
#include "toolkit/application.h"
#include "toolkit/button.h"
#include "toolkit/clipboard.h"
#include "toolkit/entry.h"
#include "toolkit/inspection.h"
#include "toolkit/menu.h"
#include "tour/robot.h"

namespace {

constexpr std::array texts = {"220",  "300", "1",     "0.7",  "0.3",     "80",    "150",
                              "3",    "10",  "0",     "-5",   "1e9",     "1e-9",  "nan",
                              "",     "40",  "1e308", "inf",  "1e-308",  "0,5",   "abc",
                              "0x10", "1 2", "25",    "1000", "-273.15", "42.93", " 0.1 "};
constexpr std::array keys = {"Tab",         "Shift_L+Tab", "Return",  "Escape",     "space",
                             "Up",          "Down",        "Home",    "Delete",     "Control_L+a",
                             "Control_L+c", "Page_Down",   "Alt_L+c", "Alt_L+e",    "Control_L+v",
                             "Control_L+z", "F10",         "Right",   "Control_L+x"};

// Keys that open something which others close again at once.
constexpr std::array hastyKeys = {
    "Alt_L+e",     "Escape",      "F10",         "Right", "Down",  "Return",      "Delete",
    "Control_L+v", "Control_L+x", "Control_L+z", "Tab",   "space", "Shift_L+F10", "Shift_L+Insert"};

class Walk {
  public:
    explicit Walk(std::mt19937& random) : random_(random) {
        constexpr unsigned nowAndThen = 200;  // ms
        answers_ = g_timeout_add(nowAndThen, &answer, this);
    }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;
    ~Walk() { g_source_remove(answers_); }

    void step() {
        leaveDialogs();
        if (owner_.screens().empty()) {
            start();
        }
        if (owner_.screens().empty()) {
            return;  // closed by what was still under way
        }
        constexpr std::size_t mostWindows = 6;
        if (chance(0.1)) {
            robot_.use(*one(owner_.screens()));
        } else if (owner_.screens().size() > mostWindows || chance(0.02)) {
            robot_.use(*owner_.screens().back());
            robot_.closeWindow();
        } else if (chance(0.1)) {
            robot_.press(one(keys));
        } else {
            useControl();
        }
    }

    // Sends something, whatever the program is at, and lets it handle a part of what has come.
    void sendSomething() {
        if (owner_.screens().empty()) {
            start();
        }
        if (owner_.screens().empty()) {
            return;  // closed by what was still under way
        }
        robot_.setHasty(true);
        const std::vector<toolkit::Screen*> screens = owner_.screens();
        constexpr std::size_t mostWindows = 6;
        if (chance(screens.size() > mostWindows ? 0.2 : 0.02)) {
            robot_.closeWindow(chance(0.2) ? *screens.front() : *screens.back());
        } else if (chance(0.003)) {
            robot_.press("Control_L+q");
        } else if (chance(0.3)) {
            robot_.press(chance(0.5) ? one(hastyKeys) : one(keys));
        } else if (chance(0.15)) {
            robot_.type(one(texts));
        } else {
            drag();
        }
        robot_.setHasty(false);
        constexpr int mostAtOnce = 40;
        for (int i = chance(0.5) ? one(std::array{1, 5, mostAtOnce}) : 0; i > 0; --i) {
            gtk_main_iteration_do(FALSE);
        }
    }

    void closeAll() {
        robot_.settle();
        leaveDialogs();
        owner_.quit();
        robot_.settle();
    }

  private:
    bool chance(double probability) { return std::bernoulli_distribution(probability)(random_); }
    template <class Range>
    typename Range::value_type one(const Range& range) {
        return range[std::uniform_int_distribution<std::size_t>(0, range.size() - 1)(random_)];
    }

    // Opens the composition screen, makes a fluid and opens procedures.
    void start() {
        robot_.settle();
        leaveDialogs();
        owner_.open(std::make_unique<app::Start2Window>(owner_));
        robot_.use("Start2Window");
        for (const char* const gas : {"CO2number", one(std::array{"CH4number", "H2Onumber"})}) {
            robot_.enter(gas, "0.5");
        }
        constexpr int procedures = 3;
        for (int i = 0; i < procedures; ++i) {
            const toolkit::Control* button = nullptr;
            while (dynamic_cast<const toolkit::RadioButton*>(button) == nullptr) {
                button = one(robot_.use("Start2Window").controls());
            }
            robot_.click(button->name());
            robot_.click("Continue1");
        }
    }

    // Clicks on a control, turns the wheel over it or drags it to another, with any button.
    void drag() {
        const toolkit::Screen& screen = *one(owner_.screens());
        const toolkit::Area from = one(screen.controls())->area();
        const toolkit::Area to = chance(0.1) ? one(screen.controls())->area() : from;
        const unsigned button = chance(0.7) ? 1 : one(std::array{2U, 3U, 4U, 5U});
        robot_.drag(from.x + from.width / 2, from.y + from.height / 2, to.x + to.width / 2,
                    to.y + to.height / 2, button);
    }

    // A control of the window in front, as the user meets it.
    void useControl() {
        const std::vector<toolkit::Screen*> screens = owner_.screens();
        const auto active = std::find_if(screens.begin(), screens.end(), [](const auto* screen) {
            return toolkit::IsActive(*screen);
        });
        if (active == screens.end()) {
            robot_.use(*screens.back());
            return;
        }
        toolkit::Screen& screen = robot_.use(**active);
        const toolkit::Control* const control = one(screen.controls());
        if (!isInSight(*control, screen)) return;
        if (dynamic_cast<const toolkit::Entry*>(control) != nullptr) {
            robot_.enter(control->name(), one(texts));
        } else {
            robot_.click(control->name());
        }
    }

    static bool isInSight(const toolkit::Control& control, const toolkit::Screen& screen) {
        const toolkit::Area place = control.area();
        const toolkit::Area window = screen.area();
        const int x = place.x + place.width / 2;
        const int y = place.y + place.height / 2;
        return place.width > 0 && control.isSensitive() && x > window.x && y > window.y &&
               x < window.x + window.width && y < window.y + window.height;
    }

    static bool hasDialog() {
        GList* const windows = gtk_window_list_toplevels();
        const bool found =
            g_list_find_custom(windows, nullptr, [](const void* each, const void*) {
                return GTK_IS_DIALOG(each) && gtk_widget_get_visible(GTK_WIDGET(each)) ? 0 : 1;
            }) != nullptr;
        g_list_free(windows);
        return found;
    }

    // The file dialog of GTK+ waits for the answers to its own complaints, and keeps the walk from
    // its next step until then.
    static gboolean answer(gpointer self) {
        if (g_main_depth() > 1) {
            tour::Robot& robot = static_cast<Walk*>(self)->robot_;
            robot.setHasty(true);
            robot.press("Escape");
            robot.setHasty(false);
        }
        return G_SOURCE_CONTINUE;
    }

    // Saves or gives up, whatever the dialogs ask.
    void leaveDialogs() {
        constexpr int attempts = 20;
        for (int i = 0; i < attempts && hasDialog(); ++i) {
            robot_.press(i < attempts / 2 && chance(0.5) ? "Return" : "Escape");
        }
    }

    std::mt19937& random_;
    app::WindowOwner owner_;
    tour::Robot robot_{owner_};
    unsigned answers_;
};

// Memory in use in kB after each round of events, all windows closed.
std::vector<std::size_t> WalkAround(int events, unsigned seed, bool isHasty) {
    std::mt19937 random(seed);
    std::vector<std::size_t> used;
    for (int done = 0; done < events;) {
        {
            constexpr int round = 250;
            std::optional<tests::LateOwner> other;
            if (isHasty) {
                using Habit = tests::LateOwner::Habit;
                other.emplace(random() % 2 == 0 ? Habit::Late : Habit::Silent, random());
            }
            Walk walk(random);
            for (const int end = std::min(events, done + round); done < end; ++done) {
                isHasty ? walk.sendSomething() : walk.step();
            }
            walk.closeAll();
        }
        toolkit::SetClipboardText("1");  // in place of a picture, which outlives its window
        used.push_back(mallinfo2().uordblks / 1024);
        std::printf("%d events: %zu kB in use\n", done, used.back());
        std::fflush(stdout);
    }
    return used;
}

}  // namespace

int main(int argc, char** argv) {
    const bool isHasty = argc == 4 && argv[3] == std::string_view("hasty");
    if ((argc != 3 && !isHasty) || !toolkit::OpenDisplay()) {
        std::fputs("usage, with a display: random_walk EVENTS SEED [hasty]\n", stderr);
        return EXIT_FAILURE;
    }
    std::string folder = std::filesystem::temp_directory_path() / "random_walk_XXXXXX";
    if (mkdtemp(folder.data()) == nullptr) return EXIT_FAILURE;
    std::filesystem::current_path(folder);  // for what it exports
    int status = EXIT_SUCCESS;
    try {
        const std::vector<std::size_t> used =
            WalkAround(std::atoi(argv[1]), static_cast<unsigned>(std::atoi(argv[2])), isHasty);
        // In the first half of the events the libraries fill their caches of fonts, glyphs and
        // icons.
        constexpr std::size_t bar = 3000;  // kB; a window takes hundreds
        if (used.size() > 2 && used.back() > used[(used.size() - 1) / 2] + bar) {
            std::puts("memory grows though no window is open");
            status = EXIT_FAILURE;
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        status = EXIT_FAILURE;
    }
    std::filesystem::current_path("/");
    std::filesystem::remove_all(folder);
    return status;
}
