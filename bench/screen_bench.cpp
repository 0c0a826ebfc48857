// How long the screens take to open, beside a GTK+ 2 window with a line of text in the same
// process, how long a long table takes from the click until it and its plot are painted, beside
// a plain loop that computes the same pressures, and how long the plot takes to be drawn again.
#include <gtk/gtk.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/start1_window.h"
#include "app/start2_window.h"
#include "app/window_owner.h"
#include "model/fluid_model.h"
#include "procedures/activity_window.h"
#include "procedures/bubble_dew_point.h"
#include "procedures/chem_pot_window.h"
#include "procedures/critical_point_window.h"
#include "procedures/fugacity_window.h"
#include "procedures/isochore_window.h"
#include "procedures/isotherm_window.h"
#include "procedures/liquid_vapour_eq.h"
#include "procedures/pressure_window.h"
#include "procedures/spinodal_window.h"
#include "procedures/temperature_window.h"
#include "procedures/thermodynamic_window.h"
#include "procedures/volume_window.h"
#include "toolkit/application.h"
#include "toolkit/button.h"
#include "toolkit/check_button.h"
#include "toolkit/clipboard.h"
#include "toolkit/entry.h"
#include "toolkit/inspection.h"
#include "toolkit/list.h"
#include "toolkit/plot.h"

namespace {

// The time that the processor has worked for this process, in ms.
double WorkedTime() {
    return 1e3 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// Medians in ms.
struct Times {
    double opened = 0.0;   // until the call that opens the window returns
    double worked = 0.0;   // of our own work until it is painted
    double painted = 0.0;  // until it is painted, in which the window manager has its part
};

// `open` opens a window, `isPainted` says whether it is painted, `close` closes it.
Times TimesOf(const std::function<void()>& open, const std::function<bool()>& isPainted,
              const std::function<void()>& close) {
    constexpr int repetitions = 21;
    using Clock = std::chrono::steady_clock;
    std::array<std::vector<double>, 3> times;
    for (int i = 0; i < repetitions; ++i) {
        const double workedBefore = WorkedTime();
        const auto start = Clock::now();
        const auto elapsed = [start] {
            return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
        };
        open();
        times[0].push_back(elapsed());
        while (!isPainted()) {
            toolkit::HandlePendingEvents();
        }
        times[2].push_back(elapsed());
        times[1].push_back(WorkedTime() - workedBefore);
        close();
        toolkit::HandlePendingEvents();
    }
    return {Median(times[0]), Median(times[1]), Median(times[2])};
}

void Tell(const std::string& name, const Times& times, const Times& bare) {
    std::printf("%-22s %8.1f %8.1f %8.1f %8.2fx\n", name.c_str(), times.opened, times.worked,
                times.painted, times.painted / bare.painted);
}

Times TimeBareWindow() {
    GtkWidget* window = nullptr;
    bool isPainted = false;
    const auto onExposed = +[](GtkWidget* /*widget*/, GdkEvent* /*event*/, gpointer data) {
        *static_cast<bool*>(data) = true;
        return FALSE;
    };
    return TimesOf(
        [&] {
            window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
            gtk_window_set_default_size(GTK_WINDOW(window), 600, 600);
            gtk_container_add(GTK_CONTAINER(window), gtk_label_new("Drovan W"));
            isPainted = false;
            g_signal_connect(window, "expose-event", G_CALLBACK(onExposed), &isPainted);
            gtk_widget_show_all(window);
        },
        [&] { return isPainted; }, [&] { gtk_widget_destroy(window); });
}

template <class Window>
void TimeScreen(app::WindowOwner& owner, const Times& bare) {
    toolkit::Screen* screen = nullptr;
    std::string name;
    const Times times = TimesOf(
        [&] {
            auto owned = std::make_unique<Window>(owner);
            screen = owned.get();
            name = screen->name();
            owner.open(std::move(owned));
        },
        [&] { return toolkit::IsPainted(*screen); }, [&] { owner.close(*screen); });
    Tell(name, times, bare);
}

template <class... Windows>
void TimeScreens(app::WindowOwner& owner) {
    std::puts("medians in ms            opened   worked  painted  to a bare window");
    const Times bare = TimeBareWindow();
    Tell("bare window", bare, bare);
    (TimeScreen<Windows>(owner, bare), ...);
}

void Type(const toolkit::Screen& screen, std::string_view entry, const std::string& text) {
    dynamic_cast<toolkit::Entry&>(*screen.control(entry)).setText(text);
}

// ms of a plain loop over the temperatures of an isochore or the volumes of an isotherm.
double PlainLoop(std::size_t count, bool isIsochore) {
    const double a = fluid::AcceptedMixture().attraction;
    const double b = fluid::AcceptedMixture().covolume;
    const auto start = std::chrono::steady_clock::now();
    std::vector<double> numbers;
    std::vector<double> pressures;
    for (std::size_t i = 0; i < count; ++i) {
        const double number = 100.0 + 0.01 * static_cast<double>(i);
        const double T = isIsochore ? number : 220.0;
        const double V = isIsochore ? 80.0 : number;
        numbers.push_back(number);
        pressures.push_back(fluid::R * T / (V - b) - a / (V * V));
    }
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

// The processor time until a plot is on the display again after its view was zoomed or moved.
void TimeRedraw(toolkit::Plot& plot, const std::string& what, std::size_t count) {
    constexpr int repetitions = 41;
    std::vector<double> times;
    const toolkit::PlotLimits first = plot.view().limits();
    for (int i = 0; i < repetitions; ++i) {
        toolkit::PlotLimits limits = first;
        const double share = i / (2.0 * repetitions);  // zoomed in to half, and moved on the way
        limits.x.high -= share * (first.x.high - first.x.low);
        limits.y.low += 0.5 * share * (first.y.high - first.y.low);
        const double start = WorkedTime();
        plot.setLimits(limits);
        gdk_window_process_updates(gtk_widget_get_window(plot.widget()), FALSE);
        gdk_display_sync(gdk_display_get_default());
        times.push_back(WorkedTime() - start);
    }
    std::printf("%-16s %8zu points: %7.1f ms to zoom or move its plot, %.1f ms at most\n",
                what.c_str(), count, Median(times), *std::max_element(times.begin(), times.end()));
}

// Fills the screen's `fixed` entry, its range of `count` points, and clicks; `range` begins the
// names of the entries of the range, which the button `kind` may have to choose first.
template <class Window>
void TimeTable(app::WindowOwner& owner, const char* fixed, const char* fixedText,
               const std::string& range, std::size_t count, const char* kind = nullptr) {
    auto owned = std::make_unique<Window>(owner);
    toolkit::Screen& screen = *owned;
    owner.open(std::move(owned));
    while (!toolkit::IsPainted(screen)) toolkit::HandlePendingEvents();
    const std::string entry = "dataEntry" + range;
    if (kind != nullptr) dynamic_cast<toolkit::RadioButton&>(*screen.control(kind)).turnOn();
    Type(screen, fixed, fixedText);
    Type(screen, entry + "1", "100");
    Type(screen, entry + "2", std::to_string(100.0 + 0.01 * static_cast<double>(count - 1)));
    Type(screen, "dataEntryStep", "0.01");
    const auto paint = [&screen] {
        gtk_button_clicked(GTK_BUTTON(screen.control("calculate")->widget()));
        while (toolkit::HandlePendingEvents()) {
            gdk_display_sync(gdk_display_get_default());
        }
    };
    paint();
    constexpr int repetitions = 5;
    std::vector<double> times;
    std::vector<double> plain;
    for (int i = 0; i < repetitions; ++i) {
        const auto start = std::chrono::steady_clock::now();
        paint();
        const std::chrono::duration<double, std::milli> time =
            std::chrono::steady_clock::now() - start;
        times.push_back(time.count());
        plain.push_back(PlainLoop(count, range != "V"));
    }
    std::printf("%-16s %8zu points: %7.1f ms, plain loop %6.3f ms\n", screen.name().c_str(), count,
                Median(times), Median(plain));
    auto& plot = dynamic_cast<toolkit::Plot&>(*screen.control("Plot"));
    TimeRedraw(plot, screen.name(), count);
    using Style = toolkit::PlotSeries::Style;
    for (const auto& [name, style] :
         {std::pair("noise, line", Style::Line), std::pair("noise, dashed", Style::Dashed),
          std::pair("noise, marks", Style::Markers)}) {
        toolkit::PlotSeries noise(name, style);
        for (std::size_t i = 0; i < count; ++i) {
            noise.add(static_cast<double>(i), std::sin(static_cast<double>(i * i)));
        }
        plot.show({noise});
        TimeRedraw(plot, name, count);
    }
    owner.close(screen);
    toolkit::HandlePendingEvents();
}

// Pastes a thousand inclusions into the list of Isochores.
void TimePastedInclusions(app::WindowOwner& owner) {
    constexpr std::size_t count = 1000;
    constexpr int repetitions = 5;
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        const double T = 150.0 + 0.05 * static_cast<double>(i);
        text += "Q" + std::to_string(i) + "\t" + std::to_string(T) + "\tL\n";
    }
    toolkit::SetClipboardText(text);
    std::vector<double> times;
    for (int i = 0; i < repetitions; ++i) {
        auto owned = std::make_unique<procedures::IsochoreWindow>(owner);
        toolkit::Screen& screen = *owned;
        owner.open(std::move(owned));
        while (!toolkit::IsPainted(screen)) {
            toolkit::HandlePendingEvents();
        }
        const auto& list = dynamic_cast<toolkit::List&>(*screen.control("ListBox2"));
        const auto start = std::chrono::steady_clock::now();
        gtk_button_clicked(GTK_BUTTON(screen.control("Paste")->widget()));
        while (toolkit::HandlePendingEvents() || list.isEmpty()) {
            gdk_display_sync(gdk_display_get_default());
        }
        const std::chrono::duration<double, std::milli> time =
            std::chrono::steady_clock::now() - start;
        times.push_back(time.count());
        if (i + 1 == repetitions) {
            TimeRedraw(dynamic_cast<toolkit::Plot&>(*screen.control("Plot")), "inclusions", count);
        }
        owner.close(screen);
        toolkit::HandlePendingEvents();
    }
    std::printf("%zu inclusions pasted, calculated and drawn: %.1f ms\n", count, Median(times));
}

// Ten isotherms with all that can stand over them, from the click until they are painted, and
// their plot drawn again.
void TimeFigure(app::WindowOwner& owner) {
    auto owned = std::make_unique<procedures::IsothermWindow>(owner);
    toolkit::Screen& screen = *owned;
    owner.open(std::move(owned));
    while (!toolkit::IsPainted(screen)) toolkit::HandlePendingEvents();
    Type(screen, "dataEntryT", "200:290:10");
    for (const char* const choice : {"Spinodal", "Mechanical"}) {
        dynamic_cast<toolkit::CheckButton&>(*screen.control(choice)).turn(true);
    }
    constexpr int repetitions = 21;
    std::vector<double> times;
    for (int i = 0; i < repetitions; ++i) {
        const double start = WorkedTime();
        gtk_button_clicked(GTK_BUTTON(screen.control("calculate")->widget()));
        while (toolkit::HandlePendingEvents()) gdk_display_sync(gdk_display_get_default());
        times.push_back(WorkedTime() - start);
    }
    auto& plot = dynamic_cast<toolkit::Plot&>(*screen.control("Plot"));
    std::printf("ten isotherms with dome, spinodals and two phases, %zu series: %.1f ms\n",
                plot.series().size(), Median(times));
    TimeRedraw(plot, "ten isotherms", plot.series().front().size());
    owner.close(screen);
    toolkit::HandlePendingEvents();
}

}  // namespace

int main() {
    if (!toolkit::OpenDisplay()) return EXIT_FAILURE;
    app::WindowOwner owner;
    owner.open(std::make_unique<app::Start1Window>(owner));
    owner.open(std::make_unique<app::Start2Window>(owner));
    constexpr double halves = 0.5;
    fluid::SetFractionCount(1, halves);  // CO2
    fluid::SetFractionCount(2, halves);  // CH4
    fluid::AcceptComposition();
    TimeScreens<procedures::PressureWindow, procedures::TemperatureWindow, procedures::VolumeWindow,
                procedures::FugacityWindow, procedures::ActivityWindow, procedures::BubbleDewPoint,
                procedures::LiquidVapourEq, procedures::IsochoreWindow, procedures::IsothermWindow,
                procedures::CriticalPointWindow, procedures::SpinodalWindow,
                procedures::ThermodynamicWindow, procedures::ChemPotWindow>(owner);
    TimeFigure(owner);
    for (const std::size_t count : {100, 10000, 100000}) {
        TimeTable<procedures::IsochoreWindow>(owner, "dataEntryV", "80", "T", count);
        TimeTable<procedures::IsothermWindow>(owner, "dataEntryT", "220", "V", count);
    }
    for (const std::size_t count : {100, 10000, 100000}) {
        TimeTable<procedures::ThermodynamicWindow>(owner, "dataEntryP", "1", "", count, "BetweenT");
    }
    TimePastedInclusions(owner);
    return EXIT_SUCCESS;
}
