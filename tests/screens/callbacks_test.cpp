#include <gtk/gtk.h>

#include <algorithm>
#include <stdexcept>

#include "tests/screens/screen_test.h"
#include "toolkit/drawing.h"
#include "toolkit/entry.h"
#include "toolkit/event.h"
#include "toolkit/plot.h"

namespace {

// A screen in which everything that GTK+ calls throws.
class ThrowingScreen : public toolkit::Screen {
  public:
    explicit ThrowingScreen(toolkit::ScreenHost& host)
        : Screen(host, "ThrowingScreen", "Throwing - Drovan W") {
        list.setTable(1,
                      [](std::size_t) -> toolkit::List::Row { throw std::runtime_error("row"); });
        button.onClick(this, &ThrowingScreen::button_Action);
        entry.onTextChange(this, &ThrowingScreen::entry_TextChange);
        toolkit::PlotSeries curve("curve");
        curve.add(1.0, 1.0);
        curve.add(2.0, 2.0);
        curve.between = [this](std::size_t, double share) -> toolkit::PlotPoint {
            if (isThrowing_) {
                throw std::runtime_error("curve");
            }
            return {1.0 + share, 1.0 + share};
        };
        plot.show({curve});
        plot.onChange([] { throw std::runtime_error("change"); });
        setContent(
            toolkit::Column({button, entry, drawing, plot.sized(20.0, 10.0), list.scrolling()}));
    }
    void Event_Activate() override { throw std::runtime_error("activation"); }

  private:
    void button_Action() {
        isThrowing_ = true;
        throw std::runtime_error("click");
    }
    void entry_TextChange() { throw 1; }

    toolkit::Button button{"button", "press"};
    toolkit::Entry entry{"entry"};
    toolkit::List list{"list", {"head"}};
    toolkit::Drawing drawing{"drawing", 2.0, 2.0, "",
                             [](const toolkit::Painter&) { throw std::runtime_error("painting"); }};
    toolkit::Plot plot{"plot", "a curve"};
    bool isThrowing_ = false;
};

// An owner that cannot close.
class ThrowingHost : public toolkit::ScreenHost {
  public:
    void open(std::unique_ptr<toolkit::Screen> /*screen*/) override {}
    void close(toolkit::Screen& /*screen*/) override { throw std::runtime_error("close"); }
    void refresh() override {}
};

class CallbacksTest : public tests::ScreenTest {};

TEST_F(CallbacksTest, AnExceptionInAnyOfThemEndsInOneLine) {
    testing::internal::CaptureStderr();
    ThrowingHost host;
    owner.open(std::make_unique<ThrowingScreen>(host));
    robot.use("ThrowingScreen");
    robot.click("button");
    robot.enter("entry", "1");
    robot.press("Tab");
    robot.press("Right");
    robot.press("plus");
    toolkit::Later([] { throw std::runtime_error("idle"); });
    robot.settle();
    robot.closeWindow(*owner.screens().front());
    const std::string written = testing::internal::GetCapturedStderr();
    for (const char* const line :
         {"drovan-w: ThrowingScreen: activation\n", "drovan-w: button: click\n",
          "drovan-w: entry: unknown exception\n", "drovan-w: idle task: idle\n",
          "GTK+ has called: row\n", "GTK+ has called: curve\n", "drovan-w: plot: change\n",
          "GTK+ has called: painting\n", "drovan-w: ThrowingScreen: close\n"}) {
        EXPECT_NE(written.find(line), std::string::npos) << line << "in\n" << written;
    }
    EXPECT_EQ(written.find("terminate"), std::string::npos);
}

}  // namespace
