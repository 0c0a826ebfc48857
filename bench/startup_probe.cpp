// The program as it starts, ended as soon as its title screen is painted.
#include <cstdlib>
#include <memory>
#include <utility>

#include "app/start1_window.h"
#include "app/window_owner.h"
#include "toolkit/application.h"
#include "toolkit/inspection.h"

int main() {
    if (!toolkit::OpenDisplay()) return EXIT_FAILURE;
    toolkit::SetWindowIcon("drovan-w");
    app::WindowOwner owner;
    auto title = std::make_unique<app::Start1Window>(owner);
    const toolkit::Screen& opened = *title;
    owner.open(std::move(title));
    while (!toolkit::IsPainted(opened)) {
        toolkit::HandlePendingEvents();
    }
    return EXIT_SUCCESS;
}
