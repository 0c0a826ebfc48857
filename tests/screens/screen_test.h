#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "app/window_owner.h"
#include "tour/robot.h"

namespace tests {

/// Fractions by the formulas of the composition screen.
using Composition = std::vector<std::pair<std::string, std::string>>;

/// A test in real windows: an owner of them, and a robot that uses them.
class ScreenTest : public testing::Test {
  protected:
    /// Opens the composition screen, as the title screen does, and makes it the one in use.
    void openComposition();
    /// Types these fractions, and nothing into the other fields.
    void compose(const Composition& fractions);
    /// Composes, chooses the procedure by its button and presses "next"; the new screen is the one
    /// in use afterwards.
    void openProcedure(const Composition& fractions, const std::string& button,
                       const std::string& screenName);
    std::string text(const std::string& control) const { return robot.text(control); }
    /// The number that the control shows; fails the test where it shows none.
    double number(const std::string& control) const;
    bool isOn(const std::string& radioButton) const;
    std::string clipboard() const;

    app::WindowOwner owner;
    tour::Robot robot{owner};
};

}  // namespace tests
