#pragma once

#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/button.h"
#include "toolkit/control.h"
#include "toolkit/edit_commands.h"
#include "toolkit/layout.h"
#include "toolkit/scrolled_page.h"

namespace toolkit {

class MenuBar;
class Screen;

// Whoever owns the windows. Screens ask it to open further windows, and to be closed themselves.
class ScreenHost {
  public:
    virtual ~ScreenHost() = default;
    // Takes the screen over, gives it its menu bar and shows it.
    virtual void open(std::unique_ptr<Screen> screen) = 0;
    // Closes the screen and destroys it after the handler that runs now has returned.
    virtual void close(Screen& screen) = 0;
    // Has every open screen do what it does when it is activated: what they show no longer holds.
    virtual void refresh() = 0;

  protected:
    ScreenHost() = default;
    ScreenHost(const ScreenHost&) = default;
    ScreenHost& operator=(const ScreenHost&) = default;
};

// One top-level window. Its content scrolls where the window is too small for it.
class Screen {
  public:
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;
    virtual ~Screen();

    const std::string& name() const { return name_; }
    std::string title() const;
    void setTitle(const std::string& title);
    void setMenuBar(MenuBar& menuBar);
    // Shows the window, as large as its content asks for and the display allows. It keeps this
    // size until the user gives it another one.
    void show();
    // Hides the window from the user; it is not painted or active any more.
    void hide();
    // Brings the window to the front.
    void present();
    void resize(int width, int height);
    Area area() const;

    // The control of that name, a menu item included; null when there is none.
    Control* control(std::string_view name) const;
    const std::vector<Control*>& controls() const { return controls_; }
    GtkWidget* window() const { return window_; }
    ScreenHost& host() const { return host_; }
    // Opens a window that only says more about this one: to come back from it is no activation.
    void openBeside(std::unique_ptr<Screen> screen);
    // Brings such a window, which is open already, to the front.
    void presentBeside(Screen& screen);
    // Has these keys, as "F11", press a button of the window from anywhere in it.
    void setKeys(const Button& button, const std::string& keys);
    // Has these keys do something wherever the focus is in the window.
    void onKeys(const std::string& keys, Handler handler);
    // Whether this window is closed with the other one.
    virtual bool closesWith(const Screen& /*other*/) const { return false; }

    // What the Edit menu acts on: the focused entry, result or list.
    bool canPerform(EditCommand command) const;
    void perform(EditCommand command);

    // Between these two a dialog of this screen is open. That it closes is no activation.
    void dialogOpens();
    void dialogCloses();

    // The window has become the active one. Menus, dialogs, tooltips, cell editors and drags of a
    // selection, which only borrow the keyboard, are no activation.
    virtual void Event_Activate() {}

  protected:
    // `name` is the name of the screen's class, `title` that of its window.
    Screen(ScreenHost& host, std::string name, const std::string& title);

    // Fills the window; to be called once, at the end of a screen's constructor. `footer` stays in
    // sight where the content has to scroll.
    void setContent(const Block& content, const Block& footer = {});
    // The button that Enter presses.
    void setDefault(Button& button);
    void setFocus(Control& control);

  private:
    friend bool IsActive(const Screen& screen);
    friend bool IsPainted(const Screen& screen);

    struct Callbacks;
    void assignMnemonics();

    ScreenHost& host_;
    std::string name_;
    unsigned number_;      // of all screens of the process
    unsigned opener_ = 0;  // the number of the screen that this one says more about
    GtkWidget* window_;
    GtkWidget* box_;
    GtkWidget* viewport_ = nullptr;
    GtkWidget* content_ = nullptr;
    GtkWidget* footer_ = nullptr;
    MenuBar* menuBar_ = nullptr;
    std::unique_ptr<ScrolledPage> page_;
    std::vector<Control*> controls_;
    std::list<Handler> keyHandlers_;
    bool isActive_ = false;
    bool isPainted_ = false;
    bool hasDialog_ = false;
    bool awaitsReturn_ = false;  // the focus comes back from a dialog, whenever it does
};

}  // namespace toolkit
