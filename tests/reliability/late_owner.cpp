#include "tests/reliability/late_owner.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>

namespace tests {

namespace {

// What is handed over: numbers, and what nobody should paste into an entry.
std::string AnyText(std::mt19937& random) {
    const std::array<std::string, 7> texts = {
        "0.5", "300", "80\n90\n", "", "-1e-3", std::string(70'000, '1'), "12\xFF\xFE"};
    return texts[random() % texts.size()];
}

[[noreturn]] void Serve(LateOwner::Habit habit, unsigned seed, int ready) {
    std::mt19937 random(seed);
    Display* const display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        _exit(EXIT_FAILURE);
    }
    const Window window =
        XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 1, 1, 0, 0, 0);
    const Atom text = XInternAtom(display, "UTF8_STRING", False);
    const Atom targets = XInternAtom(display, "TARGETS", False);
    const Atom clipboard = XInternAtom(display, "CLIPBOARD", False);
    XSetSelectionOwner(display, clipboard, window, CurrentTime);
    XSetSelectionOwner(display, XA_PRIMARY, window, CurrentTime);
    XSync(display, False);
    if (write(ready, "", 1) != 1) {
        _exit(EXIT_FAILURE);
    }
    for (;;) {
        XEvent event;
        XNextEvent(display, &event);
        std::this_thread::sleep_for(std::chrono::milliseconds(random() % 300));
        if (event.type == SelectionClear) {
            XSetSelectionOwner(display, event.xselectionclear.selection, window, CurrentTime);
        }
        if (event.type != SelectionRequest || habit == LateOwner::Habit::Silent) continue;
        const XSelectionRequestEvent& asked = event.xselectionrequest;
        XEvent answer{};
        answer.xselection = {SelectionNotify,
                             0,
                             True,
                             display,
                             asked.requestor,
                             asked.selection,
                             asked.target,
                             asked.property,
                             asked.time};
        if (asked.target == targets) {
            XChangeProperty(display, asked.requestor, asked.property, XA_ATOM, 32, PropModeReplace,
                            reinterpret_cast<const unsigned char*>(&text), 1);
        } else {
            const std::string copied = AnyText(random);
            XChangeProperty(display, asked.requestor, asked.property, text, 8, PropModeReplace,
                            reinterpret_cast<const unsigned char*>(copied.data()),
                            static_cast<int>(copied.size()));
        }
        XSendEvent(display, asked.requestor, False, 0, &answer);
        XFlush(display);
    }
}

}  // namespace

LateOwner::LateOwner(Habit habit, unsigned seed) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0 || (process_ = fork()) < 0) {
        throw std::runtime_error("no process for another owner of the clipboard");
    }
    if (process_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        XSetErrorHandler([](Display* /*display*/, XErrorEvent* /*asker has gone*/) { return 0; });
        Serve(habit, seed, ends[1]);
    }
    close(ends[1]);
    char none = 0;
    const bool isReady = read(ends[0], &none, 1) == 1;
    close(ends[0]);
    if (!isReady) {
        throw std::runtime_error("no other owner of the clipboard");
    }
}

LateOwner::~LateOwner() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
}

}  // namespace tests
