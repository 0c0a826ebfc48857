#include "tour/robot.h"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <poll.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <thread>
#include <vector>

#include "toolkit/inspection.h"

namespace tour {

namespace {

using Clock = std::chrono::steady_clock;
constexpr auto patience = std::chrono::seconds(60);  // for a machine under load

std::runtime_error Failure(const std::string& what, std::string_view name) {
    return std::runtime_error(what + " " + std::string(name));
}

}  // namespace

// A connection to the display of the robot's own, so that its events come in from outside.
struct Robot::Connection {
    Connection() : display(XOpenDisplay(nullptr)) {
        if (display == nullptr) {
            throw std::runtime_error("no X display");
        }
        probe = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 1, 1, 0, 0, 0);
        XSelectInput(display, probe, PropertyChangeMask);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() { XCloseDisplay(display); }

    void sendToWindowManager(Window window, const char* message) const {
        XEvent event{};
        event.xclient.type = ClientMessage;
        event.xclient.window = window;
        event.xclient.message_type = XInternAtom(display, message, False);
        event.xclient.format = 32;
        XSendEvent(display, DefaultRootWindow(display), False,
                   SubstructureNotifyMask | SubstructureRedirectMask, &event);
    }

    // Comes back when server and window manager have done all that they were asked for before. One
    // that has just started may sleep on a request until the next one wakes it: it is asked again,
    // and has to answer each time.
    void waitForOthers() const {
        const Atom answer = XInternAtom(display, "_NET_FRAME_EXTENTS", False);
        const auto end = Clock::now() + patience;
        const auto ask = [this] { sendToWindowManager(probe, "_NET_REQUEST_FRAME_EXTENTS"); };
        ask();
        for (int asked = 1; asked > 0;) {
            constexpr int aSecond = 1000;
            pollfd socket{ConnectionNumber(display), POLLIN, 0};
            if (XPending(display) > 0) {
                XEvent event;
                XNextEvent(display, &event);
                const bool isAnswer =
                    event.type == PropertyNotify && event.xproperty.atom == answer;
                asked -= isAnswer ? 1 : 0;
            } else if (poll(&socket, 1, aSecond) == 0) {
                if (Clock::now() > end) {
                    throw std::runtime_error("no answer of the window manager");
                }
                ask();
                ++asked;
            }
        }
    }

    Display* display;
    Window probe = None;  // never shown
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
        throw Failure("no screen", screenName);
    }
    return use(*found);
}

toolkit::Screen& Robot::use(toolkit::Screen& screen) {
    screen_ = &screen;
    settle();
    if (!toolkit::IsActive(screen)) {
        screen.present();
    }
    if (!waitFor([&screen] { return toolkit::IsActive(screen) && toolkit::IsPainted(screen); })) {
        throw Failure("no activation of screen", screen.name());
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
        throw Failure("no control", name);
    }
    return *found;
}

std::string Robot::text(std::string_view name) const {
    return control(name).text();
}

void Robot::click(std::string_view name) {
    const toolkit::Area area = control(name).area();
    if (area.width == 0) {
        throw Failure("nothing to click on in", name);
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

void Robot::doubleClick(int x, int y) {
    moveTo(x, y);
    for (const bool down : {true, false, true, false}) {
        XTestFakeButtonEvent(connection_->display, 1, down ? True : False, CurrentTime);
    }
    settle();
}

void Robot::hold(std::string_view key, bool down) {
    pressKey(XStringToKeysym(std::string(key).c_str()), down);
    settle();
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
    connection_->sendToWindowManager(toolkit::XWindow(screen), "_NET_CLOSE_WINDOW");
    settle();
}

void Robot::settle() {
    if (isHasty_) {
        XFlush(connection_->display);
        return;
    }
    // What the window manager asks of the server comes back to it, and to the program, as events.
    constexpr int enough = 2;
    const auto end = Clock::now() + patience;
    for (int quietRounds = 0; quietRounds < enough && Clock::now() < end;) {
        connection_->waitForOthers();
        quietRounds = toolkit::HandlePendingEvents() ? 0 : quietRounds + 1;
    }
}

bool Robot::waitFor(const std::function<bool()>& condition) {
    const auto end = Clock::now() + patience;
    while (!condition()) {
        if (Clock::now() > end) return false;
        toolkit::HandlePendingEvents();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

}  // namespace tour
