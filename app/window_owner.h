#pragma once

#include <memory>
#include <vector>

#include "app/menu_bar.h"
#include "toolkit/screen.h"

namespace app {

// Owns all windows of the process and ends it when the composition screen or the last window is
// closed.
class WindowOwner : public toolkit::ScreenHost {
  public:
    WindowOwner();
    ~WindowOwner() override;

    void open(std::unique_ptr<toolkit::Screen> screen) override;
    // Closes also the windows that go with the screen.
    void close(toolkit::Screen& screen) override;
    void refresh() override;
    // Shows what the guide says of the screen.
    void showGuide(toolkit::Screen& screen);
    // Closes all windows and leaves the main loop.
    void quit();

    // The windows that are open, in the order in which they were opened.
    std::vector<toolkit::Screen*> screens() const;

  private:
    struct Window {
        std::unique_ptr<toolkit::Screen> screen;
        std::unique_ptr<MenuBar1> menuBar;
    };

    std::vector<Window> windows_;
    std::vector<Window> closed_;
    std::shared_ptr<bool> isAlive_;
};

}  // namespace app
