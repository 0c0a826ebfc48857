// The program as it starts, ended as soon as its title screen is painted. With the argument
// "screens" it goes on to open every procedure screen, and prints how long each took until painted.
#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <ctime>
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
#include "procedures/chem_pot_window.h"
#include "procedures/fugacity_window.h"
#include "procedures/pressure_window.h"
#include "procedures/temperature_window.h"
#include "procedures/thermodynamic_window.h"
#include "procedures/volume_window.h"
#include "toolkit/application.h"

namespace {

void runUntilPainted(const toolkit::Screen& screen) {
    while (!screen.isPainted()) {
        toolkit::handlePendingEvents();
    }
}

/// The time that the processor has worked for this process, in ms.
double workedTime() {
    return 1e3 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

template <class ProcedureWindow>
void timeScreen(app::WindowOwner& owner) {
    constexpr int repetitions = 21;
    using Clock = std::chrono::steady_clock;
    std::vector<double> opened;   // ms until the handler that opens the screen returns
    std::vector<double> painted;  // ms until it is painted: the window manager has its part in it
    std::vector<double> worked;   // ms of our own work in that
    std::string name;
    for (int i = 0; i < repetitions; ++i) {
        const double workedBefore = workedTime();
        const auto start = Clock::now();
        const auto elapsed = [start] {
            return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
        };
        auto owned = std::make_unique<ProcedureWindow>(owner);
        toolkit::Screen& screen = *owned;
        owner.open(std::move(owned));
        opened.push_back(elapsed());
        runUntilPainted(screen);
        painted.push_back(elapsed());
        worked.push_back(workedTime() - workedBefore);
        name = screen.name();
        owner.close(screen);
        toolkit::handlePendingEvents();
    }
    std::printf("%-20s %10.1f %10.1f %10.1f\n", name.c_str(), median(opened), median(worked),
                median(painted));
}

void timeScreens(app::WindowOwner& owner) {
    fluid::SetFractionCount(1, 1.0);
    fluid::AcceptComposition();
    std::puts("medians in ms            opened   own work    painted");
    timeScreen<procedures::PressureWindow>(owner);
    timeScreen<procedures::TemperatureWindow>(owner);
    timeScreen<procedures::VolumeWindow>(owner);
    timeScreen<procedures::FugacityWindow>(owner);
    timeScreen<procedures::ActivityWindow>(owner);
    timeScreen<procedures::ThermodynamicWindow>(owner);
    timeScreen<procedures::ChemPotWindow>(owner);
}

}  // namespace

int main(int argc, char** argv) {
    if (!toolkit::openDisplay()) {
        return EXIT_FAILURE;
    }
    app::WindowOwner owner;
    auto title = std::make_unique<app::Start1Window>(owner);
    const toolkit::Screen& opened = *title;
    owner.open(std::move(title));
    runUntilPainted(opened);
    if (argc > 1 && std::string_view(argv[1]) == "screens") {
        auto composition = std::make_unique<app::Start2Window>(owner);
        const toolkit::Screen& second = *composition;
        owner.open(std::move(composition));
        runUntilPainted(second);
        timeScreens(owner);
    }
    return EXIT_SUCCESS;
}
