#include <sysexits.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <memory>
#include <string>

#include "app/start1_window.h"
#include "app/window_owner.h"
#include "toolkit/application.h"
#include "tour/guide.h"
#include "tour/robot.h"

namespace {

void play(const std::string& folder) {
    std::filesystem::create_directories(folder);
    app::WindowOwner owner;
    owner.open(std::make_unique<app::Start1Window>(owner));
    tour::Robot robot(owner);
    tour::Guide guide(robot, folder);
    tour::playStart(guide);
    tour::playPressures(guide);
    tour::playTemperatures(guide);
    tour::playMolarVolumes(guide);
    tour::playFugacities(guide);
    tour::playActivities(guide);
    tour::playHomogenisation(guide);
    tour::playLiquidVapour(guide);
    tour::playIsochores(guide);
    tour::playIsotherms(guide);
    tour::playCriticalPoint(guide);
    tour::playSpinodal(guide);
    tour::playThermodynamics(guide);
    tour::playChemicalPotentials(guide);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: drovan-w-tour FOLDER\n", stderr);
        return EX_USAGE;
    }
    if (!toolkit::openDisplay()) {
        std::fputs("The tour needs an X11 display, and none could be opened.\n", stderr);
        return EX_UNAVAILABLE;
    }
    try {
        play(argv[1]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "The tour stopped: %s\n", error.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
