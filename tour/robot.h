#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "app/window_owner.h"
#include "toolkit/control.h"
#include "toolkit/screen.h"

namespace tour {

// Uses the program as a person does: moves the pointer, clicks and types on the X display, and
// reads what the screens show. All names are control names. A step that cannot be done, such as
// a click on a control that is not there, throws std::runtime_error.
class Robot {
  public:
    explicit Robot(app::WindowOwner& owner);
    Robot(const Robot&) = delete;
    Robot& operator=(const Robot&) = delete;
    ~Robot();

    // The newest open screen of that class, brought to the front if it is not the active one.
    toolkit::Screen& use(std::string_view screenName);
    // Brings this screen to the front.
    toolkit::Screen& use(toolkit::Screen& screen);
    toolkit::Screen& screen() const;
    toolkit::Control& control(std::string_view name) const;
    std::string text(std::string_view name) const;

    void click(std::string_view name);
    // Presses a button of the mouse at one place of the display and releases it at another.
    void drag(int fromX, int fromY, int toX, int toY, unsigned mouseButton = 1);
    void moveTo(int x, int y);
    void doubleClick(int x, int y);
    // Holds a key down, as "Shift_L", or lets it go.
    void hold(std::string_view key, bool down);
    // Types the characters into whatever has the focus.
    void type(std::string_view characters);
    // Presses keys together, as in "Return" or "Control_L+q".
    void press(std::string_view keys);
    // Clicks an entry and types over what is in it.
    void enter(std::string_view name, std::string_view characters);
    // Has the window manager close the window in use, as the button in its title bar does.
    void closeWindow();
    void closeWindow(const toolkit::Screen& screen);

    // While this holds, what the robot does is only sent: nothing waits for the program.
    void setHasty(bool isHasty) { isHasty_ = isHasty; }
    // Runs the events until display, window manager and program have nothing more to do.
    void settle();
    // As settle, until `condition` holds; returns whether it did in the end.
    bool waitFor(const std::function<bool()>& condition);

  private:
    struct Connection;
    void pressKey(unsigned long keysym, bool down);
    void button(unsigned number, bool down);

    app::WindowOwner& owner_;
    toolkit::Screen* screen_ = nullptr;
    bool isHasty_ = false;
    std::unique_ptr<Connection> connection_;
};

}  // namespace tour
