#pragma once

#include <string>
#include <vector>

#include "toolkit/button.h"
#include "toolkit/label.h"
#include "toolkit/page/page_view.h"
#include "toolkit/screen.h"

namespace app {

// The user guide, as it is installed with the program. One window shows one page after the other.
class GuideWindow : public toolkit::Screen {
  public:
    explicit GuideWindow(toolkit::ScreenHost& host);

    // Shows the page that speaks of the screen, or the first one where none does.
    void showPageOf(const toolkit::Screen& screen);

    toolkit::PageView Page{"Page"};
    toolkit::Button Contents{"Contents", "contents"};
    toolkit::Button Back{"Back", "back"};

  private:
    void Contents_Action();
    void Back_Action();
    // Follows a link: a page, an anchor in it, or both.
    void follow(const std::string& target);
    void open(const std::string& target);

    std::string folder_;             // of the whole documentation
    std::vector<std::string> past_;  // pages, with the one that is shown last
};

}  // namespace app
