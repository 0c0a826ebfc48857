// Uses the program at random: clicks on its controls, presses keys, types numbers good and bad,
// opens menus, dialogs and windows and closes them. Whatever GTK+ complains of goes to stderr,
// where the test looks for it. Ends with 1 when memory grows while no window is open. usage:
// random_walk EVENTS SEED

#include <gtk/gtk.h>
#include <malloc.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "app/start2_window.h"
#include "app/window_owner.h"
#include "toolkit/application.h"
#include "toolkit/entry.h"
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

class Walk {
  public:
    explicit Walk(std::mt19937& random) : random_(random) {}

    void step() {
        leaveDialogs();
        if (owner_.screens().empty()) {
            owner_.open(std::make_unique<app::Start2Window>(owner_));
            robot_.use("Start2Window");
            for (const char* const gas : {"CO2number", one(std::array{"CH4number", "H2Onumber"})}) {
                robot_.enter(gas, "0.5");
            }
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

    void closeAll() {
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

    /// A control of the window in front, as the user meets it.
    void useControl() {
        const std::vector<toolkit::Screen*> screens = owner_.screens();
        const auto active = std::find_if(screens.begin(), screens.end(),
                                         [](const auto* screen) { return screen->isActive(); });
        if (active == screens.end()) {
            robot_.use(*screens.back());
            return;
        }
        toolkit::Screen& screen = robot_.use(**active);
        const toolkit::Control* const control = one(screen.controls());
        if (!isInSight(*control, screen)) {
            return;
        }
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

    /// Saves or gives up, whatever the dialogs ask.
    void leaveDialogs() {
        constexpr int attempts = 20;
        for (int i = 0; i < attempts && hasDialog(); ++i) {
            robot_.press(i < attempts / 2 && chance(0.5) ? "Return" : "Escape");
        }
    }

    std::mt19937& random_;
    app::WindowOwner owner_;
    tour::Robot robot_{owner_};
};

/// Memory in use in kB after each round of events, all windows closed.
std::vector<std::size_t> walk(int events, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<std::size_t> used;
    for (int done = 0; done < events;) {
        {
            constexpr int round = 250;
            Walk walk(random);
            for (const int end = std::min(events, done + round); done < end; ++done) {
                walk.step();
            }
            walk.closeAll();
        }
        used.push_back(mallinfo2().uordblks / 1024);
        std::printf("%d events: %zu kB in use\n", done, used.back());
        std::fflush(stdout);
    }
    return used;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3 || !toolkit::openDisplay()) {
        std::fputs("usage, with a display: random_walk EVENTS SEED\n", stderr);
        return EXIT_FAILURE;
    }
    std::string folder = std::filesystem::temp_directory_path() / "random_walk_XXXXXX";
    if (mkdtemp(folder.data()) == nullptr) {
        return EXIT_FAILURE;
    }
    std::filesystem::current_path(folder);  // for what it exports
    int status = EXIT_SUCCESS;
    try {
        const std::vector<std::size_t> used =
            walk(std::atoi(argv[1]), static_cast<unsigned>(std::atoi(argv[2])));
        // Until the libraries have filled their caches of fonts and glyphs, memory grows.
        constexpr std::size_t warmUp = 2;
        constexpr std::size_t bar = 3000;  // kB; a window takes hundreds
        if (used.size() > warmUp && used.back() > used[warmUp - 1] + bar) {
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
