#include "tour/robot.h"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <thread>
#include <vector>

#include "toolkit/application.h"

namespace tour {

namespace {

using Clock = std::chrono::steady_clock;
constexpr auto quietTime = std::chrono::milliseconds(12);
constexpr auto patience = std::chrono::seconds(10);

std::runtime_error failure(const std::string& what, std::string_view name) {
    return std::runtime_error(what + " " + std::string(name));
}

}  // namespace

/// A connection to the display of the robot's own, so that its events come in from outside.
struct Robot::Connection {
    Connection() : display(XOpenDisplay(nullptr)) {
        if (display == nullptr) {
            throw std::runtime_error("no X display");
        }
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() { XCloseDisplay(display); }

    Display* display;
};

Robot::Robot(app::WindowOwner& owner)
    : owner_(owner), connection_(std::make_unique<Connection>()) {}

Robot::~Robot() = default;

toolkit::Screen& Robot::use(std::string_view screenName) {
    toolkit::Screen* found = nullptr;
    waitFor([this, screenName, &found] {
        for (toolkit::Screen* const open : owner_.screens()) {
            if (open->name() == screenName) {
                found = open;
            }
        }
        return found != nullptr;
    });
    if (found == nullptr) {
        throw failure("no screen", screenName);
    }
    return use(*found);
}

toolkit::Screen& Robot::use(toolkit::Screen& screen) {
    screen_ = &screen;
    settle();
    if (!screen.isActive()) {
        screen.present();
    }
    if (!waitFor([&screen] { return screen.isActive() && screen.isPainted(); })) {
        throw failure("no activation of screen", screen.name());
    }
    return screen;
}

toolkit::Screen& Robot::screen() const {
    if (screen_ == nullptr) {
        throw std::runtime_error("no screen is in use");
    }
    return *screen_;
}

toolkit::Control& Robot::control(std::string_view name) const {
    toolkit::Control* const found = screen().control(name);
    if (found == nullptr) {
        throw failure("no control", name);
    }
    return *found;
}

std::string Robot::text(std::string_view name) const {
    return control(name).text();
}

void Robot::click(std::string_view name) {
    const toolkit::Area area = control(name).area();
    if (area.width == 0) {
        throw failure("nothing to click on in", name);
    }
    const int x = area.x + area.width / 2;
    const int y = area.y + area.height / 2;
    drag(x, y, x, y);
}

void Robot::moveTo(int x, int y) {
    XTestFakeMotionEvent(connection_->display, -1, x, y, CurrentTime);
    settle();
}

void Robot::button(unsigned number, bool down) {
    XTestFakeButtonEvent(connection_->display, number, down ? True : False, CurrentTime);
    settle();
}

void Robot::drag(int fromX, int fromY, int toX, int toY, unsigned mouseButton) {
    moveTo(fromX, fromY);
    button(mouseButton, true);
    if (toX != fromX || toY != fromY) {
        moveTo((fromX + toX) / 2, (fromY + toY) / 2);
        moveTo(toX, toY);
    }
    button(mouseButton, false);
}

void Robot::pressKey(unsigned long keysym, bool down) {
    const KeyCode code = XKeysymToKeycode(connection_->display, keysym);
    if (code == 0) {
        throw std::runtime_error("no key for keysym " + std::to_string(keysym));
    }
    XTestFakeKeyEvent(connection_->display, code, down ? True : False, CurrentTime);
}

void Robot::type(std::string_view characters) {
    for (const char c : characters) {
        const auto keysym = static_cast<KeySym>(static_cast<unsigned char>(c));  // Latin-1
        const KeyCode code = XKeysymToKeycode(connection_->display, keysym);
        if (code == 0) {
            throw std::runtime_error("no key for character " + std::to_string(keysym));
        }
        const bool isShifted = XkbKeycodeToKeysym(connection_->display, code, 0, 0) != keysym;
        if (isShifted) {
            pressKey(XK_Shift_L, true);
        }
        pressKey(keysym, true);
        pressKey(keysym, false);
        if (isShifted) {
            pressKey(XK_Shift_L, false);
        }
    }
    settle();
}

void Robot::press(std::string_view keys) {
    std::vector<KeySym> keysyms;
    while (!keys.empty()) {
        const std::size_t length = std::min(keys.find('+'), keys.size());
        keysyms.push_back(XStringToKeysym(std::string(keys.substr(0, length)).c_str()));
        keys.remove_prefix(std::min(length + 1, keys.size()));
    }
    for (const KeySym keysym : keysyms) {
        pressKey(keysym, true);
    }
    std::reverse(keysyms.begin(), keysyms.end());
    for (const KeySym keysym : keysyms) {
        pressKey(keysym, false);
    }
    settle();
}

void Robot::enter(std::string_view name, std::string_view characters) {
    click(name);
    press("Control_L+a");
    if (characters.empty()) {
        press("Delete");
    }
    type(characters);
}

void Robot::closeWindow() {
    closeWindow(screen());
    screen_ = nullptr;
}

void Robot::closeWindow(const toolkit::Screen& screen) {
    Display* const display = connection_->display;
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = screen.xWindow();
    event.xclient.message_type = XInternAtom(display, "_NET_CLOSE_WINDOW", False);
    event.xclient.format = 32;
    XSendEvent(display, DefaultRootWindow(display), False,
               SubstructureNotifyMask | SubstructureRedirectMask, &event);
    settle();
}

void Robot::settle() {
    if (isHasty_) {
        XFlush(connection_->display);
        return;
    }
    XSync(connection_->display, False);
    const auto end = Clock::now() + patience;
    auto quietUntil = Clock::now() + quietTime;
    while (Clock::now() < quietUntil && Clock::now() < end) {
        if (toolkit::handlePendingEvents()) {
            quietUntil = Clock::now() + quietTime;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

bool Robot::waitFor(const std::function<bool()>& condition) {
    const auto end = Clock::now() + patience;
    while (!condition()) {
        if (Clock::now() > end) {
            return false;
        }
        toolkit::handlePendingEvents();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

}  // namespace tour
