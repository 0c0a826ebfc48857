#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "app/window_owner.h"
#include "toolkit/list.h"
#include "tour/robot.h"

namespace tests {

// Fractions by the formulas of the composition screen.
using Composition = std::vector<std::pair<std::string, std::string>>;

// The fractions of eleven counts of 10^-12, as a row of a table of cases begins with them.
Composition FractionsOf(std::span<const double> counts);

// A test in real windows: an owner of them, and a robot that uses them.
class ScreenTest : public testing::Test {
  protected:
    ScreenTest();
    ~ScreenTest() override;

    // Opens the composition screen, as the title screen does, and makes it the one in use.
    void openComposition();
    // Types these fractions, and nothing into the other fields.
    void compose(const Composition& fractions);
    // Composes, chooses the procedure by its button and presses "next"; the new screen is the one
    // in use afterwards.
    void openProcedure(const Composition& fractions, const std::string& button,
                       const std::string& screenName);
    // Opens the title, the composition and each procedure that can be chosen, and runs `look`
    // with each in use.
    void visitEveryScreen(const std::function<void()>& look);
    // The procedure buttons of the composition screen, which has to be in use.
    std::vector<std::string> procedures() const;
    // Presses the button and types a path into the dialog that it opens.
    void save(const std::string& button, const std::filesystem::path& path);
    // Waits until a dialog of that title, or of any, has the keyboard.
    void waitForDialog(const std::string& title = {});
    // The names of the open screens, in the order in which they were opened.
    std::vector<std::string> openScreens() const;

    std::string text(const std::string& control) const { return robot.text(control); }
    // The texts of these controls, each with a "|" behind it.
    std::string texts(const std::vector<std::string>& controls) const;
    std::vector<toolkit::List::Row> rows(const std::string& list = "ListBox1") const;
    // The number that the control shows; fails the test where it shows none.
    double number(const std::string& control) const;
    bool isOn(const std::string& radioButton) const;
    std::string clipboard() const;

    // For files, removed in the end. The dialogs complete what is typed by what is in the folder:
    // in one that holds others, they leak.
    const std::filesystem::path folder;
    app::WindowOwner owner;
    tour::Robot robot{owner};
};

}  // namespace tests
