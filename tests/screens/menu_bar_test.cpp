#include <functional>
#include <sstream>

#include "tests/reliability/late_owner.h"
#include "tests/screens/screen_test.h"
#include "toolkit/clipboard.h"
#include "toolkit/entry.h"
#include "toolkit/inspection.h"

namespace {

class MenuBarTest : public tests::ScreenTest {
  protected:
    void SetUp() override { openProcedure({{"H2O", "1"}}, "Pressures", "PressureWindow"); }
    void choose(const std::string& item) {
        robot.click("EditMenu");
        robot.click(item);
    }
};

TEST_F(MenuBarTest, EditItemsAndTheirKeysActOnTheFocusedEntry) {
    const std::vector<std::function<void(const char*, const char*, const char*)>> ways = {
        [this](const char* item, const char* /*letter*/, const char* /*keys*/) { choose(item); },
        [this](const char* /*item*/, const char* letter, const char* /*keys*/) {
            robot.press("Alt_L+e");
            robot.press(letter);
        },
        [this](const char* /*item*/, const char* /*letter*/, const char* keys) {
            robot.press(keys);
        }};
    for (const auto& perform : ways) {
        toolkit::SetClipboardText("");
        robot.enter("dataEntryT", "300");
        perform("EditSelectAll", "a", "Control_L+a");
        perform("EditCopy", "c", "Control_L+c");
        EXPECT_EQ(clipboard(), "300");
        robot.type("4");
        EXPECT_EQ(text("dataEntryT"), "4");
        perform("EditPaste", "p", "Control_L+v");
        EXPECT_EQ(text("dataEntryT"), "4300");
        perform("EditSelectAll", "a", "Control_L+a");
        perform("EditCut", "t", "Control_L+x");
        EXPECT_EQ(text("dataEntryT") + clipboard(), "4300");
        perform("EditUndo", "u", "Control_L+z");
        EXPECT_EQ(text("dataEntryT"), "4300");
        perform("EditSelectAll", "a", "Control_L+a");
        perform("EditClear", "d", "Delete");
        EXPECT_EQ(texts({"dataEntryT", "dataEntryV"}), "||");
    }
    robot.press("Alt_L+f");
    robot.press("q");
    EXPECT_TRUE(owner.screens().empty());
}

TEST_F(MenuBarTest, LongPasteEndsAfterAThousandCharactersAndIsNoNumber) {
    const std::string longest = std::string(999, '0') + "7";
    for (const std::string& pasted : {longest, longest + "5", std::string(65'535, '8')}) {
        toolkit::SetClipboardText(pasted);
        robot.enter("dataEntryT", "");
        robot.press("Control_L+v");
        const auto& entry = dynamic_cast<const toolkit::Entry&>(robot.control("dataEntryT"));
        EXPECT_EQ(entry.number(), pasted == longest ? 7.0 : 0.0);
        EXPECT_LE(entry.text().size(), 1002U);
        EXPECT_EQ(entry.text().ends_with("…"), pasted != longest);
        robot.type("3");
        EXPECT_FALSE(entry.text().ends_with("3"));
    }
}

TEST_F(MenuBarTest, MiddleButtonPastesWhatIsSelectedWhereItIsPressed) {
    robot.enter("dataEntryV", "12");
    robot.enter("dataEntryT", "300");
    robot.press("Control_L+a");
    const toolkit::Area area = robot.control("dataEntryV").area();
    robot.drag(area.x + 5, area.y + 10, area.x + 5, area.y + 10, 2);
    EXPECT_EQ(text("dataEntryV"), "30012");
    robot.drag(area.x + area.width - 5, area.y + 10, area.x + area.width - 5, area.y + 10, 2);
    EXPECT_EQ(text("dataEntryV"), "30012300");
}

TEST_F(MenuBarTest, UndoGoesBackThroughEveryKindOfChange) {
    robot.enter("dataEntryV", "80");
    robot.click("Celsius");
    robot.enter("dataEntryT", "12");
    robot.enter("dataEntryT", "34");
    robot.enter("dataEntryT", "");
    robot.press("Return");
    ASSERT_EQ(text("dataEntryT"), "0.000");
    robot.click("Clear");
    robot.click("dataEntryT");
    for (const std::string before : {"0.000", "", "34", "12", "", ""}) {
        robot.press("Control_L+z");
        EXPECT_EQ(text("dataEntryT"), before);
    }
    robot.click("dataEntryV");
    robot.press("Control_L+z");
    EXPECT_EQ(text("DensityResult").substr(0, 24), "corresponding density = ");
    robot.press("Control_L+q");
    EXPECT_TRUE(owner.screens().empty());
}

TEST_F(MenuBarTest, ItemsAreSensitiveWhereTheyWouldDoSomething) {
    const auto sensitive = [this] {
        robot.click("EditMenu");
        std::string letters;
        for (const std::string item :
             {"EditUndo", "EditCut", "EditCopy", "EditPaste", "EditClear", "EditSelectAll"}) {
            letters += robot.control(item).isSensitive() ? item[4] : '-';
        }
        robot.press("Escape");
        robot.press("Escape");
        return letters;
    };
    toolkit::SetClipboardText("1");
    EXPECT_EQ(sensitive(), "---P--");
    robot.type("80");
    EXPECT_EQ(sensitive(), "U--P-S");
    robot.press("Control_L+a");
    EXPECT_EQ(sensitive(), "UCCPCS");
    robot.press("Control_L+c");
    robot.enter("dataEntryT", "300");
    EXPECT_EQ(sensitive(), "U--P-S");
    robot.press("Return");
    robot.click("Result");
    EXPECT_EQ(sensitive(), "--C--S");
    robot.click("Clear");
    EXPECT_EQ(sensitive(), "------");
}

TEST_F(MenuBarTest, ResultsCanBeCopiedWholeOrInPart) {
    robot.enter("dataEntryV", "80");
    robot.enter("dataEntryT", "700");
    robot.press("Return");
    robot.click("Result");
    choose("EditCopy");
    EXPECT_EQ(clipboard(), text("Result"));
    robot.press("Home");
    robot.press("Shift_L+Right");
    robot.press("Control_L+c");
    EXPECT_EQ(clipboard(), text("Result").substr(0, 1));
    robot.click("DensityResult");
    robot.press("Control_L+c");
    EXPECT_EQ(clipboard(), text("DensityResult"));
}

TEST_F(MenuBarTest, WhatOnlyBorrowsTheKeyboardLeavesTheResult) {
    robot.enter("dataEntryV", "80");
    robot.enter("dataEntryT", "700");
    robot.press("Return");
    const std::string result = text("Result");
    ASSERT_NE(result, "");
    const toolkit::Area place = robot.control("Result").area();
    const std::vector<std::function<void()>> borrowings = {
        [this] { robot.click("FileMenu"), robot.click("FileMenu"); },
        [this] { robot.press("Alt_L+e"), robot.press("Escape"), robot.press("Escape"); },
        [this] { choose("EditUndo"); },  // with the focus on a button: nothing to undo
        [this] { robot.press("F10"), robot.press("Escape"), robot.press("Escape"); },
        [this, place] {
            const int middle = place.y + place.height / 2;
            robot.drag(place.x + 1, middle, place.x + place.width - 1, middle);
        },
        [this] { choose("EditCopy"); }};
    toolkit::TakeFocus(robot.control("calculate"));
    for (std::size_t i = 0; i < borrowings.size(); ++i) {
        borrowings[i]();
        EXPECT_EQ(text("Result"), result) << i;
    }
    EXPECT_EQ(clipboard().substr(0, 8), result.substr(0, 8));
    robot.use("Start2Window");
    robot.use("PressureWindow");
    EXPECT_EQ(texts({"dataEntryV", "dataEntryT", "Result"}), "80|700||");
}

TEST_F(MenuBarTest, MenuWaitsForNoOwnerOfTheClipboardAndEndsWithItsWindow) {
    const tests::LateOwner silent(tests::LateOwner::Habit::Silent, 1);
    for (const std::string keys :
         {"Alt_L+e", "Alt_L+e Escape", "F10 Right Escape", "Control_L+v", "Alt_L+e p"}) {
        openProcedure({{"H2O", "1"}}, "Pressures", "PressureWindow");
        robot.click("dataEntryT");
        robot.setHasty(true);
        std::istringstream each(keys);
        for (std::string key; each >> key;) {
            robot.press(key);
        }
        robot.closeWindow(*owner.screens().back());
        robot.setHasty(false);
        robot.settle();
        if (keys == "Alt_L+e") {
            EXPECT_GT(robot.control("EditPaste").area().width, 0);
        }
        while (owner.screens().size() > 1) {  // an open menu keeps its window
            owner.close(*owner.screens().back());
        }
    }
}

}  // namespace
