#include <sysexits.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "app/start1_window.h"
#include "app/window_owner.h"
#include "toolkit/application.h"

int main() {
    if (!toolkit::openDisplay()) {
        std::fputs("Drovan W needs an X11 display, and none could be opened.\n", stderr);
        return EX_UNAVAILABLE;
    }
    toolkit::setWindowIcon("drovan-w");
    app::WindowOwner owner;
    owner.open(std::make_unique<app::Start1Window>(owner));
    toolkit::runLoop();
    return EXIT_SUCCESS;
}
