#include "tests/screens/screen_test.h"

#include <algorithm>
#include <memory>

#include "app/start2_window.h"
#include "toolkit/button.h"
#include "toolkit/clipboard.h"
#include "toolkit/number_text.h"

namespace tests {

void ScreenTest::openComposition() {
    owner.open(std::make_unique<app::Start2Window>(owner));
    robot.use("Start2Window");
}

void ScreenTest::compose(const Composition& fractions) {
    robot.click("Clear");
    for (const auto& [formula, fraction] : fractions) {
        robot.enter(formula + "number", fraction);
    }
}

void ScreenTest::openProcedure(const Composition& fractions, const std::string& button,
                               const std::string& screenName) {
    const auto open = owner.screens();
    const bool isThere = std::any_of(open.begin(), open.end(), [](const toolkit::Screen* screen) {
        return screen->name() == "Start2Window";
    });
    if (isThere) {
        robot.use("Start2Window");
    } else {
        openComposition();
    }
    compose(fractions);
    robot.click(button);
    robot.click("Continue1");
    robot.use(screenName);
}

double ScreenTest::number(const std::string& control) const {
    const auto value = toolkit::parseNumber(text(control));
    EXPECT_TRUE(value.has_value()) << control << " shows \"" << text(control) << '"';
    return value.value_or(0.0);
}

bool ScreenTest::isOn(const std::string& radioButton) const {
    return dynamic_cast<const toolkit::RadioButton&>(robot.control(radioButton)).isOn();
}

std::string ScreenTest::clipboard() const {
    return toolkit::clipboardText();
}

}  // namespace tests
