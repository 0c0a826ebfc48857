#include <gtk/gtk.h>

#include "tests/screens/screen_test.h"
#include "toolkit/inspection.h"

namespace {

class GuideWindowTest : public tests::ScreenTest {
  protected:
    bool shows(const std::string& page) {
        return robot.waitFor([&] {
            const toolkit::Screen& newest = *owner.screens().back();
            return newest.title() == page + "User guide - Drovan W" && toolkit::IsPainted(newest) &&
                   toolkit::IsActive(newest);
        });
    }
};

TEST_F(GuideWindowTest, PageOfTheScreenIsReadByKeysAndByMouseAndNothingIsLost) {
    openProcedure({{"H2O", "1"}}, "Pressures", "PressureWindow");
    robot.enter("dataEntryV", "80");
    robot.enter("dataEntryT", "300");
    robot.press("Return");
    const std::string answer = text("Result");
    ASSERT_NE(answer, "");
    robot.press("F1");
    ASSERT_TRUE(shows("Pressures - "));
    robot.use("GuideWindow");
    EXPECT_FALSE(robot.control("Back").isSensitive());
    EXPECT_NE(text("Page").find("P = RT/(V − b) − a/V2"), std::string::npos);  // what is spoken
    robot.press("Tab");
    robot.press("Tab");
    robot.press("Return");
    ASSERT_TRUE(shows("Isochores - "));
    robot.press("F1");  // the guide has no page of its own
    robot.click("Back");
    ASSERT_TRUE(shows("Pressures - "));
    // The link to the contents, in the second line.
    const toolkit::Control& page = robot.control("Page");
    auto* const view = GTK_TEXT_VIEW(page.widget());
    GtkTextIter place;
    gtk_text_buffer_get_iter_at_line_offset(gtk_text_view_get_buffer(view), &place, 1, 2);
    GdkRectangle letter;
    gtk_text_view_get_iter_location(view, &place, &letter);
    const int x = page.area().x + letter.x + 2;
    const int y = page.area().y + letter.y + letter.height / 2;
    robot.drag(x, y, x, y);
    ASSERT_TRUE(shows(""));
    GdkRectangle visible;
    gtk_text_view_get_visible_rect(view, &visible);
    EXPECT_GT(visible.y, 0);  // the contents are not at the top of their page
    robot.press("Escape");
    robot.use("PressureWindow");
    EXPECT_EQ(text("Result"), answer);  // to come back from the guide is no activation

    robot.use("Start2Window");
    robot.press("F1");
    ASSERT_TRUE(shows("The title and composition screens - "));
    robot.use("PressureWindow");
    robot.press("F1");
    ASSERT_TRUE(shows("Pressures - "));
    EXPECT_EQ(openScreens().size(), 3U);  // one window for all pages
}

}  // namespace
