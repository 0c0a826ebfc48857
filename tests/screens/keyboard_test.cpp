#include <algorithm>

#include "tests/screens/screen_test.h"
#include "toolkit/button.h"
#include "toolkit/entry.h"

namespace {

using Names = std::vector<std::string>;

class KeyboardTest : public tests::ScreenTest {
  protected:
    std::string focused() const {
        for (const toolkit::Control* const control : robot.screen().controls()) {
            if (control->hasFocus()) {
                return control->name();
            }
        }
        return {};
    }
    /// The controls that Tab goes through, from the one that has the focus until it comes again.
    Names tabOrder() {
        Names order;
        for (std::string name = focused(); std::count(order.begin(), order.end(), name) == 0;
             name = focused()) {
            order.push_back(name);
            robot.press("Tab");
        }
        return order;
    }
};

TEST_F(KeyboardTest, EnterCalculatesAndCtrlQEndsInEveryWindow) {
    for (int i = 0; i < 3; ++i) {
        openProcedure({{"H2O", "1"}}, "Pressures", "PressureWindow");
    }
    const auto open = owner.screens();
    ASSERT_EQ(open.size(), 4U);
    for (std::size_t i = open.size() - 1; i > 0; --i) {
        robot.use(*open[i]);
        robot.enter("dataEntryV", "80");
        robot.press("Tab");
        robot.type("600");
        robot.press("Return");
        EXPECT_EQ(focused(), "dataEntryT");
        EXPECT_NE(text("Result"), "") << i;
    }
    robot.use(*open[2]);
    robot.press("Control_L+q");
    EXPECT_EQ(openScreens(), Names{});
}

TEST_F(KeyboardTest, TabGoesThroughEveryEntryAndButtonInReadingOrder) {
    visitEveryScreen([this] {
        const Names order = tabOrder();
        std::vector<std::size_t> places;
        for (std::size_t i = 0; i < robot.screen().controls().size(); ++i) {
            const toolkit::Control* const control = robot.screen().controls()[i];
            const bool isReached = std::count(order.begin(), order.end(), control->name()) == 1;
            if (isReached) {
                places.push_back(i);
            }
            if (dynamic_cast<const toolkit::Entry*>(control) != nullptr ||
                dynamic_cast<const toolkit::Button*>(control) != nullptr) {
                EXPECT_EQ(isReached, control->isSensitive()) << control->name();
            }
        }
        ASSERT_EQ(places.size(), order.size());
        const auto first = std::find_if(places.begin(), places.end(), [&](std::size_t place) {
            return robot.screen().controls()[place]->name() == order.front();
        });
        std::rotate(places.begin(), first, places.end());
        for (std::size_t i = 0; i < order.size(); ++i) {
            EXPECT_EQ(order[i], robot.screen().controls()[places[i]]->name());
        }
    });
}

}  // namespace
