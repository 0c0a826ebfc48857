#include "toolkit/plot.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <memory>

#include "tests/screens/screen_test.h"
#include "toolkit/check_button.h"
#include "toolkit/clipboard.h"
#include "toolkit/inspection.h"
#include "toolkit/number_text.h"

namespace {

using Entries = tests::Composition;
using toolkit::PlotLimits;

// A plot as it is used by hand.
class PlotTest : public tests::ScreenTest {
  protected:
    void open(const std::string& button, const std::string& screen, const Entries& entries) {
        openProcedure({{"CO2", "0.7"}, {"CH4", "0.3"}}, button, screen);
        calculate(entries);
    }
    void calculate(const Entries& entries) {
        for (const auto& [entry, characters] : entries) {
            robot.enter(entry, characters);
        }
        robot.click("calculate");
        robot.settle();
    }
    void openIsotherm() { open("Isotherms", "IsothermWindow", isotherm); }

    toolkit::Plot& plot() { return dynamic_cast<toolkit::Plot&>(robot.control("Plot")); }
    PlotLimits limits() { return plot().view().limits(); }
    static double width(const PlotLimits& limits) { return limits.x.high - limits.x.low; }
    static double height(const PlotLimits& limits) { return limits.y.high - limits.y.low; }
    // Drags from one place to another, both in shares of the plot's width and height.
    void drag(double fromX, double fromY, double toX, double toY, unsigned button = 1) {
        const toolkit::Area area = plot().area();
        const auto x = [&area](double share) { return area.x + std::lround(share * area.width); };
        const auto y = [&area](double share) { return area.y + std::lround(share * area.height); };
        robot.drag(static_cast<int>(x(fromX)), static_cast<int>(y(fromY)), static_cast<int>(x(toX)),
                   static_cast<int>(y(toY)), button);
    }
    // The middle of the plot, or a point that is drawn, as a place on the display.
    std::pair<int, int> placeOf(const toolkit::PlotPosition& position) {
        const auto place = plot().place(position);
        EXPECT_TRUE(place);
        return {plot().area().x + place.value_or(toolkit::Area{}).x,
                plot().area().y + place.value_or(toolkit::Area{}).y};
    }
    // A point of the first curve at a molar volume.
    toolkit::PlotPosition at(double V) {
        const std::vector<double>& x = plot().series().at(0).x;
        const auto isBelow = [V](double each) { return each < V; };
        return {0,
                static_cast<std::size_t>(std::find_if_not(x.begin(), x.end(), isBelow) - x.begin()),
                0.0};
    }
    void click(const toolkit::PlotPosition& position) {
        const auto [x, y] = placeOf(position);
        robot.drag(x, y, x, y);
    }
    std::string contentsOf(const std::filesystem::path& path) const {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    const Entries isotherm = {{"dataEntryT", "220"},
                              {"dataEntryV1", "60"},
                              {"dataEntryV2", "810"},
                              {"dataEntryStep", "50"}};
};

TEST_F(PlotTest, PointerZoomsMovesPinsAndGoesBack) {
    openIsotherm();
    toolkit::TakeFocus(plot());
    const PlotLimits first = limits();
    drag(0.4, 0.3, 0.6, 0.5);
    EXPECT_NEAR(width(limits()) / width(first), 0.24, 0.05);
    EXPECT_NEAR(height(limits()) / height(first), 0.26, 0.06);
    EXPECT_TRUE(first.x.includes(limits().x.low) && first.y.includes(limits().y.high));
    robot.press("BackSpace");
    EXPECT_EQ(limits(), first);
    drag(0.5, 0.5, 0.5, 0.5, 4);  // the wheel
    drag(0.5, 0.5, 0.5, 0.5, 4);
    EXPECT_NEAR(width(limits()) / width(first), 0.64, 1e-9);
    drag(0.5, 0.5, 0.5, 0.5, 5);
    EXPECT_NEAR(height(limits()) / height(first), 0.8, 1e-9);
    robot.press("BackSpace");  // takes back the turns of the wheel as one
    EXPECT_EQ(limits(), first);
    for (const bool isShifted : {false, true}) {
        robot.hold("Shift_L", isShifted);
        drag(0.5, 0.5, 0.3, 0.4, isShifted ? 1 : 2);
        robot.hold("Shift_L", false);
        EXPECT_NEAR(width(limits()), width(first), 1e-9 * width(first));
        EXPECT_NEAR((limits().x.low - first.x.low) / width(first), 0.24, 0.05);
        EXPECT_NEAR((limits().y.low - first.y.low) / height(first), -0.13, 0.04);
        robot.press("BackSpace");
        EXPECT_EQ(limits(), first);
    }
    const toolkit::PlotPosition point = at(330.0);
    click(point);
    ASSERT_EQ(plot().content().pins.size(), 1U);
    EXPECT_TRUE(plot().content().pins[0].text.ends_with(" MPa\nmeta-stable"));
    const auto [x, y] = placeOf(point);
    robot.drag(x + 30, y - 25, x + 30, y - 25);  // its text
    EXPECT_TRUE(plot().content().pins.empty());
    robot.doubleClick(x, y);
    EXPECT_TRUE(plot().content().pins.empty());
    EXPECT_GT(limits().y.high, first.y.high + 5.0);  // the steep branch of the liquid
    robot.press("BackSpace");
    EXPECT_EQ(limits(), first);
    drag(0.5, 0.5, 0.2, 0.8, 3);  // no button of the plot
    EXPECT_EQ(limits(), first);
}

TEST_F(PlotTest, KeysWalkAlongTheCurveAndToAnotherAndWhatIsReadStandsBelow) {
    openIsotherm();
    toolkit::TakeFocus(plot());
    const PlotLimits first = limits();
    const auto volume = [this] {
        const std::string reading = text("ReadOut");
        return toolkit::NumberOrZero(reading.substr(reading.find(": ") + 2, 5));
    };
    robot.press("Right");
    EXPECT_TRUE(text("ReadOut").starts_with("isotherm 220 K: ")) << text("ReadOut");
    const double start = volume();
    robot.press("Right");
    const double next = volume();
    EXPECT_GT(next, start);
    robot.press("Left");
    EXPECT_NEAR(volume(), start, 0.2);
    robot.press("Down");
    EXPECT_TRUE(text("ReadOut").starts_with("bubble points: ")) << text("ReadOut");
    robot.press("space");
    EXPECT_EQ(plot().content().pins.size(), 1U);
    robot.press("space");
    EXPECT_TRUE(plot().content().pins.empty());
    robot.press("Up");
    EXPECT_TRUE(text("ReadOut").ends_with("stable")) << text("ReadOut");
    robot.press("plus");
    EXPECT_NEAR(height(limits()) / height(first), 0.8, 1e-9);
    robot.press("minus");
    const PlotLimits before = limits();
    robot.press("Shift_L+Up");
    EXPECT_NEAR((limits().y.low - before.y.low) / height(before), 0.1, 1e-9);
    robot.press("Home");
    EXPECT_GT(limits().y.high, first.y.high + 5.0);  // the steep branch of the liquid
    for (int i = 0; i < 3; ++i) {
        robot.press("BackSpace");
    }
    EXPECT_EQ(limits(), first);
    robot.press("Escape");
    EXPECT_EQ(text("ReadOut"), "");
    const auto [x, y] = placeOf(at(400.0));
    robot.moveTo(x + 3, y - 3);
    EXPECT_NEAR(volume(), 400.0, 15.0);
    robot.moveTo(plot().area().x - 20, y);
    EXPECT_EQ(text("ReadOut"), "");
    robot.click("Keep");
    calculate({{"dataEntryT", "230"}});
    EXPECT_EQ(plot().series().at(0).colour, toolkit::PlotSeries::grey);
    robot.click("Clear");
    EXPECT_TRUE(plot().isEmpty());
}

TEST_F(PlotTest, LimitsAreTypedFollowTheViewAndAreRefusedWithASentence) {
    openIsotherm();
    const auto type = [this](const std::string& entry, const std::string& characters) {
        robot.enter(entry, characters);
        robot.press("Return");
    };
    type("XFrom", "100");
    type("YTo", "6");
    EXPECT_NEAR(limits().x.low, 100.0, 1e-9);
    EXPECT_EQ(limits().y.high, 6.0);
    EXPECT_EQ(rows().size(), 16U);  // Enter has not calculated anew
    toolkit::TakeFocus(plot());
    robot.press("plus");
    EXPECT_GT(toolkit::NumberOrZero(text("XFrom")), 101.0);
    const PlotLimits before = limits();
    for (const auto& [entry, characters, sentence] : std::vector<std::array<std::string, 3>>{
             {"XFrom", "x", "put two numbers for the limits of an axis, the lower one first"},
             {"XFrom", "900", "put two numbers for the limits of an axis, the lower one first"},
             {"YTo", "1e308", "put two numbers for the limits of an axis, the lower one first"}}) {
        type(entry, characters);
        EXPECT_EQ(text("warning"), "warning: " + sentence);
        EXPECT_EQ(limits(), before);
        EXPECT_NE(text(entry), characters);
    }
    robot.click("XLog");
    type("XFrom", "-1");
    EXPECT_EQ(text("warning"), "warning: the limits of a logarithmic axis must be above 0");
    robot.click("Grid");
    EXPECT_FALSE(plot().content().hasGrid);
    // Only negative pressures.
    calculate({{"dataEntryT", "150"},
               {"dataEntryV1", "80"},
               {"dataEntryV2", "85"},
               {"dataEntryStep", "1"}});
    for (const char* const choice : {"Dome", "TwoPhases", "CriticalPoints", "YLog"}) {
        robot.click(choice);
    }
    EXPECT_EQ(text("warning"), "warning: a logarithmic axis needs numbers above 0");
    EXPECT_FALSE(dynamic_cast<toolkit::CheckButton&>(robot.control("YLog")).isOn());
}

TEST_F(PlotTest, EnlargedPlotFollowsItsScreenAndClosesWithIt) {
    openIsotherm();
    toolkit::Screen& screen = robot.screen();
    robot.press("F11");
    robot.use("PlotWindow");
    EXPECT_GT(plot().area().width, 900);
    robot.press("Right");
    EXPECT_NE(text("ReadOut"), "");
    robot.press("plus");
    const PlotLimits zoomed = limits();
    robot.use(screen);
    EXPECT_EQ(rows().size(), 16U);  // to come back is no activation
    EXPECT_EQ(limits(), zoomed);
    robot.click("Enlarge");
    EXPECT_EQ(openScreens().size(), 3U);  // brought to the front
    robot.use(screen);
    calculate({{"dataEntryT", "230"}});
    robot.use("PlotWindow");
    EXPECT_EQ(plot().series().at(0).name, "isotherm 230 K");
    robot.press("F11");
    EXPECT_TRUE(robot.waitFor(
        [this, &screen] { return openScreens().size() == 2U && toolkit::IsActive(screen); }));
    robot.use(screen);
    EXPECT_EQ(rows().size(), 16U);
    robot.press("F11");
    robot.use("PlotWindow");
    robot.use(screen);
    robot.closeWindow();
    EXPECT_TRUE(robot.waitFor([this] { return openScreens().size() == 1U; }));
}

TEST_F(PlotTest, PicturesAreSavedAndCopiedInTheirKindsAndSizesUnderNamesOfTheirOwn) {
    openIsotherm();
    toolkit::Screen& screen = robot.screen();
    const auto isBack = [&screen] { return toolkit::IsActive(screen); };
    std::filesystem::current_path(folder);
    const std::string name = "isotherm-0.7CO2-0.3CH4-220K";
    for (const auto& [keys, extension, start] : std::vector<std::array<std::string, 3>>{
             {"", ".svg", "<?xml"}, {"Down", ".pdf", "%PDF"}, {"End", ".png", "\x89PNG"}}) {
        robot.click("SavePicture");
        waitForDialog();
        if (!keys.empty()) {
            robot.press("Alt_L+k");
            robot.press(keys);
            robot.press("Alt_L+z");
            robot.press("Up");  // the column of a journal
        }
        robot.press("Alt_L+s");
        ASSERT_TRUE(robot.waitFor(isBack));
        EXPECT_EQ(text("warning"), name + extension + " was written");
        EXPECT_TRUE(contentsOf(folder / (name + extension)).starts_with(start)) << extension;
    }
    using Pixels = std::unique_ptr<GdkPixbuf, decltype(&g_object_unref)>;
    const Pixels png(gdk_pixbuf_new_from_file((folder / (name + ".png")).c_str(), nullptr),
                     &g_object_unref);
    EXPECT_EQ(gdk_pixbuf_get_width(png.get()), 1004);  // 85 mm
    EXPECT_EQ(gdk_pixbuf_get_option(png.get(), "x-dpi"), std::string("300"));
    for (const bool isByKeys : {false, true}) {
        toolkit::SetClipboardText("");
        if (isByKeys) {
            toolkit::TakeFocus(plot());
            robot.press("Control_L+c");
        } else {
            robot.click("CopyPicture");
        }
        const Pixels copied(
            gtk_clipboard_wait_for_image(gtk_clipboard_get(GDK_SELECTION_CLIPBOARD)),
            &g_object_unref);
        ASSERT_TRUE(copied);
        EXPECT_EQ(gdk_pixbuf_get_width(copied.get()), 2067);  // 175 mm
    }
    calculate({{"dataEntryV1", "70"}});  // another curve of the same temperature
    robot.click("ExportCurves");
    waitForDialog();
    robot.press("Alt_L+s");
    ASSERT_TRUE(robot.waitFor(isBack));
    EXPECT_EQ(text("warning"), name + "-2.txt was written");
    EXPECT_TRUE(contentsOf(folder / (name + "-2.txt"))
                    .starts_with("Curve, Molar Volume (cm³/mol), Pressure (MPa), State\n"
                                 "isotherm 220 K, 70, "));
    robot.click("Clear");
    for (const char* const button : {"SavePicture", "CopyPicture", "ExportCurves"}) {
        robot.click(button);
        EXPECT_EQ(text("warning"), "warning: there is no plot to save yet");
    }
}

TEST_F(PlotTest, EveryPlotHasTheVerbsAndShowsAtFirstWhatMatters) {
    struct Case {
        std::string button, screen, reading;
        Entries entries;
        double lowest, highest;  // MPa, that the first view may reach
    };
    for (const Case& c : std::vector<Case>{
             {"Isochores",
              "IsochoreWindow",
              "bubble points: ",
              {{"dataEntryV", "80"}},
              -50.0,
              60.0},
             {"Isotherms",
              "IsothermWindow",
              "isotherm 220 K: ",
              {{"dataEntryT", "220"},
               {"dataEntryV1", "44"},
               {"dataEntryV2", "5000"},
               {"dataEntryStep", "20"}},
              -3.0,
              12.0},
             {"Spinodal",
              "SpinodalWindow",
              "diffusional spinodal: ",
              {{"dataEntryT", "220"}},
              -10.0,
              10.0},
             {"CriticalPoint", "CriticalPointWindow", "bubble points: ", {}, -4.0, 9.0}}) {
        SCOPED_TRACE(c.screen);
        open(c.button, c.screen, c.entries);
        const PlotLimits first = limits();
        EXPECT_GE(first.y.low, c.lowest);
        EXPECT_LE(first.y.high, c.highest);
        EXPECT_EQ(plot().content().title, "0.7 CO₂ + 0.3 CH₄, van der Waals");
        toolkit::TakeFocus(plot());
        robot.press("Right");
        EXPECT_TRUE(text("ReadOut").starts_with(c.reading)) << text("ReadOut");
        EXPECT_NE(text("ReadOut").find(" MPa"), std::string::npos);
        robot.press("plus");
        EXPECT_LT(width(limits()), width(first));
        drag(0.5, 0.5, 0.5, 0.5, 5);
        robot.press("BackSpace");
        EXPECT_EQ(limits(), first);
        robot.press("Home");
        EXPECT_GE(height(limits()), height(first));
        for (const char* const control : {"XFrom", "XTo", "XLog", "YFrom", "YTo", "YLog", "Grid",
                                          "SavePicture", "CopyPicture", "ExportCurves", "Copy"}) {
            EXPECT_TRUE(robot.control(control).isSensitive()) << control;
        }
        robot.press("F11");
        robot.use("PlotWindow");
        robot.press("Escape");  // forgets what is read
        robot.press("Escape");
    }
}

}  // namespace
