#include <sysexits.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "app/start1_window.h"
#include "app/window_owner.h"
#include "toolkit/application.h"

namespace {

constexpr const char* help =
    "Usage: drovan-w [--help | --version]\n"
    "\n"
    "Opens Drovan W, a calculator for the thermodynamics of gas mixtures, on the X11\n"
    "display. Everything else is typed and chosen in its windows.\n"
    "\n"
    "  --help      shows this text and ends\n"
    "  --version   shows the version and ends\n";
constexpr const char* version = "Drovan W " DROVAN_VERSION "\n";

// Does what an argument asks for; returns the status to end with.
int Answer(std::string_view argument) {
    if (argument != "--help" && argument != "--version") {
        std::fprintf(stderr,
                     "drovan-w: there is no argument \"%s\"; --help tells which there are\n",
                     argument.data());
        return EX_USAGE;
    }
    std::fputs(argument == "--help" ? help : version, stdout);
    return std::fflush(stdout) == 0 ? EXIT_SUCCESS : EX_IOERR;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1) return Answer(argv[1]);
    if (!toolkit::OpenDisplay()) {
        std::fputs("Drovan W needs an X11 display, and none could be opened.\n", stderr);
        return EX_UNAVAILABLE;
    }
    toolkit::SetWindowIcon("drovan-w");
    app::WindowOwner owner;
    owner.open(std::make_unique<app::Start1Window>(owner));
    toolkit::RunLoop();
    return EXIT_SUCCESS;
}
