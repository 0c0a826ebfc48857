#include "app/window_owner.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "app/guide_window.h"
#include "app/start2_window.h"
#include "toolkit/application.h"
#include "toolkit/event.h"

namespace app {

WindowOwner::WindowOwner() : isAlive_(std::make_shared<bool>(true)) {}

WindowOwner::~WindowOwner() {
    *isAlive_ = false;
}

void WindowOwner::open(std::unique_ptr<toolkit::Screen> screen) {
    auto menuBar = std::make_unique<MenuBar1>(*this, *screen);
    screen->setMenuBar(*menuBar);
    screen->onKeys("F1", [this, opened = screen.get()] { showGuide(*opened); });
    screen->show();
    windows_.push_back({std::move(screen), std::move(menuBar)});
}

void WindowOwner::close(toolkit::Screen& screen) {
    const auto found = std::find_if(windows_.begin(), windows_.end(), [&screen](const Window& w) {
        return w.screen.get() == &screen;
    });
    if (found == windows_.end()) return;
    const bool endsProcess = dynamic_cast<Start2Window*>(&screen) != nullptr;
    screen.hide();
    closed_.push_back(std::move(*found));
    windows_.erase(found);
    for (toolkit::Screen* const other : screens()) {
        if (other->closesWith(screen)) {
            close(*other);
        }
    }
    if (endsProcess || windows_.empty()) {
        quit();
        return;
    }
    // A handler of the window may be running: it is destroyed when that has returned.
    toolkit::Later([this, isAlive = isAlive_] {
        if (*isAlive) {
            closed_.clear();
        }
    });
}

void WindowOwner::refresh() {
    for (const Window& window : windows_) {
        window.screen->Event_Activate();
    }
}

void WindowOwner::showGuide(toolkit::Screen& screen) {
    for (toolkit::Screen* const other : screens()) {
        if (auto* const guide = dynamic_cast<GuideWindow*>(other)) {
            if (guide != &screen) {
                guide->showPageOf(screen);
                screen.presentBeside(*guide);
            }
            return;
        }
    }
    auto guide = std::make_unique<GuideWindow>(*this);
    guide->showPageOf(screen);
    screen.openBeside(std::move(guide));
}

void WindowOwner::quit() {
    for (const Window& window : windows_) {
        window.screen->hide();
    }
    std::move(windows_.begin(), windows_.end(), std::back_inserter(closed_));
    windows_.clear();
    toolkit::LeaveLoop();
}

std::vector<toolkit::Screen*> WindowOwner::screens() const {
    std::vector<toolkit::Screen*> screens;
    for (const Window& window : windows_) {
        screens.push_back(window.screen.get());
    }
    return screens;
}

}  // namespace app
