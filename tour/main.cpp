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

void Play(const std::string& folder) {
    std::filesystem::create_directories(folder);
    app::WindowOwner owner;
    owner.open(std::make_unique<app::Start1Window>(owner));
    tour::Robot robot(owner);
    tour::Guide guide(robot, folder);
    tour::PlayStart(guide);
    tour::PlayPressures(guide);
    tour::PlayTemperatures(guide);
    tour::PlayMolarVolumes(guide);
    tour::PlayFugacities(guide);
    tour::PlayActivities(guide);
    tour::PlayHomogenisation(guide);
    tour::PlayLiquidVapour(guide);
    tour::PlayIsochores(guide);
    tour::PlayIsotherms(guide);
    tour::PlayCriticalPoint(guide);
    tour::PlaySpinodal(guide);
    tour::PlayThermodynamics(guide);
    tour::PlayChemicalPotentials(guide);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: drovan-w-tour FOLDER\n", stderr);
        return EX_USAGE;
    }
    if (!toolkit::OpenDisplay()) {
        std::fputs("The tour needs an X11 display, and none could be opened.\n", stderr);
        return EX_UNAVAILABLE;
    }
    try {
        Play(argv[1]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "The tour stopped: %s\n", error.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
