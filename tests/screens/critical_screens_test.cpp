#include <array>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/screens/screen_test.h"
#include "toolkit/inspection.h"
#include "toolkit/number_text.h"
#include "toolkit/plot.h"

namespace {

class CriticalScreensTest : public tests::ScreenTest {
  protected:
    void openCriticalPoint(const tests::Composition& composition) {
        openProcedure(composition, "CriticalPoint", "CriticalPointWindow");
    }
    // One column of the table, each cell with a "|" behind it.
    std::string column(std::size_t number) const {
        std::string cells;
        for (const auto& row : rows()) {
            cells += row[number] + "|";
        }
        return cells;
    }
    const toolkit::PlotSeries& series(const std::string& name) const {
        static const toolkit::PlotSeries none;
        for (const auto& each : dynamic_cast<toolkit::Plot&>(robot.control("Plot")).series()) {
            if (each.name == name) return each;
        }
        return none;
    }
    bool passes(const std::string& curve, double x, double y) const {
        const toolkit::PlotSeries& each = series(curve);
        for (std::size_t i = 0; i < each.x.size(); ++i) {
            if (std::abs(each.x[i] - x) < 1e-6 && std::abs(each.y[i] - y) < 1e-6) return true;
        }
        return false;
    }
    void calculate(const std::string& choice,
                   const std::vector<std::pair<std::string, std::string>>& entries) {
        robot.click(choice);
        for (const auto& [entry, characters] : entries) {
            robot.enter(entry, characters);
        }
        robot.click("calculate");
    }
};

// The numbers are those of critical_points.csv, in 60 digits.
TEST_F(CriticalScreensTest, PointsAndTheirNamesAreTheGoldenOnesAndTheBoundaryPassesThere) {
    openCriticalPoint({{"CO2", "0.7"}, {"CH4", "0.3"}});
    EXPECT_EQ(text("Count"), "This fluid has one critical point");
    EXPECT_EQ(rows().at(0), (toolkit::List::Row{"273.287292", "7.099362", "123.281493", "0.288930",
                                                "0.385179", "stable"}));
    for (const std::string curve : {"bubble points", "dew points", "critical point"}) {
        EXPECT_TRUE(passes(curve, 273.2872919730699, 7.099362141553388)) << curve;
    }
    EXPECT_TRUE(passes("pseudo-critical point", number("ResultT"), number("ResultP")));
    robot.click("AxesVP");
    EXPECT_TRUE(passes("critical point", 123.2814925, 7.099362141553388));
    robot.click("AxesDT");
    EXPECT_TRUE(passes("bubble points", 35.619688 / 123.2814925, 273.2872919730699));
    toolkit::Screen& screen = robot.screen();
    save("Export", folder / "curves");
    ASSERT_TRUE(robot.waitFor([&screen] { return toolkit::IsActive(screen); }));
    std::ifstream file(folder / "curves.txt");
    std::string kinds;
    for (std::string line; std::getline(file, line);) {
        const std::string kind = line.substr(0, line.find(','));
        const bool isKnown = kinds.ends_with(kind + "|") || toolkit::ParseNumber(kind);
        kinds += isKnown ? "" : kind + "|";
    }
    EXPECT_EQ(kinds,
              "Critical points|Temperature|(Celsius)|Curves|Kind|bubble point|dew point|spinodal|");
    robot.click("CopyCurves");
    const std::string copied = clipboard();
    EXPECT_TRUE(copied.starts_with("Kind\tTemperature (Kelvin)\tPressure (MPa)\tMolar Volume "));
    EXPECT_NE(copied.find("\nspinodal\t"), std::string::npos);
    robot.click("AxesTP");
    openCriticalPoint({{"H2O", "0.5"}, {"CO2", "0.5"}});
    robot.closeWindow();
    robot.use(screen);
    EXPECT_EQ(column(5), "meta-stable, at negative pressure|stable|");
    robot.click("Celsius");
    EXPECT_EQ(column(0), "-12.899524|190.445424|");
    EXPECT_TRUE(text("ListBox1").starts_with("Temperature (˚Celsius)")) << text("ListBox1");
    EXPECT_EQ(text("Label1"), "˚Celsius");
    EXPECT_TRUE(passes("meta-stable critical point", -12.8995239023532, -14.84603207632093));
    EXPECT_EQ(
        text("Count"),
        "This fluid has 2 critical points; for that at -14.8460321 MPa press Home in the plot");
    toolkit::TakeFocus(robot.control("Plot"));
    for (const bool isAll : {false, true}) {
        const toolkit::PlotLimits limits =
            dynamic_cast<toolkit::Plot&>(robot.control("Plot")).view().limits();
        EXPECT_EQ(limits.x.includes(-12.9) && limits.y.includes(-14.8), isAll);
        EXPECT_TRUE(limits.x.includes(190.4));
        robot.press("Home");
    }
    openCriticalPoint({{"H2O", "0.1"}, {"CH4", "0.9"}});
    EXPECT_EQ(column(5), "unstable|unstable|");
    EXPECT_EQ(series("unstable critical point").x.size(), 2U);
    openCriticalPoint({{"H2O", "0.5"}, {"CH4", "0.5"}});
    EXPECT_EQ(text("Count"), "This fluid has no critical point");
    EXPECT_TRUE(rows().empty());
    EXPECT_GT(series("dew points").x.size(), 50U);
    robot.click("Explanations");
    robot.use("ExplainCritical");
}

TEST_F(CriticalScreensTest, LimitsAreListedMarkedAndExportedInEitherUnit) {
    using Entries = std::vector<std::pair<std::string, std::string>>;
    openProcedure({{"H2O", "0.741"}, {"O2", "0.011"}, {"C2H6", "0.248"}}, "Spinodal",
                  "SpinodalWindow");
    toolkit::Screen& screen = robot.screen();
    const std::string stripes = "diffusional, vapour side|diffusional, liquid side|";
    const std::string mixed = "diffusional, liquid side|mechanical, liquid side|";
    const Entries range = {
        {"dataEntryT1", "450.1"}, {"dataEntryT2", "400.2"}, {"dataEntryStep", "10"}};
    for (const auto& [unit, choice, entries, first, names, count] :
         std::vector<std::tuple<std::string, std::string, Entries, std::string, std::string, int>>{
             {"Kelvin", "GivenT", {{"dataEntryT", "450.1"}}, "450.100000", stripes, 5},
             {"Celsius", "GivenT", {{"dataEntryT", "176.95"}}, "176.950000", stripes, 5},
             {"cm3mol", "GivenV", {{"dataEntryV", "80"}}, "", mixed, 2},
             {"Kelvin", "GivenRange", range, "450.100000", stripes, 30}}) {
        robot.click(unit);
        calculate(choice, entries);
        ASSERT_EQ(rows().size(), static_cast<std::size_t>(count)) << text("warning");
        EXPECT_TRUE(column(0).starts_with(first)) << column(0);
        EXPECT_TRUE(column(4).starts_with(names)) << column(4);
        using Axes = std::tuple<const char*, std::size_t, std::size_t>;
        for (const auto& [button, x, y] :
             {Axes("PlotV", 2, 1), Axes("PlotTV", 2, 0), Axes("PlotT", 0, 1)}) {
            robot.click(button);
            const auto row = rows()[0];
            EXPECT_EQ(passes("in the table", toolkit::NumberOrZero(row[x]),
                             toolkit::NumberOrZero(row[y])),
                      count < 12);  // of many the curves are enough
            EXPECT_GT(series("dew points").size(), 20U);
            EXPECT_EQ(series("diffusional spinodal").below == "unstable",
                      button[5] == 'V' && button[4] == 'T');
        }
    }
    save("Export", folder / "limits");
    ASSERT_TRUE(robot.waitFor([&screen] { return toolkit::IsActive(screen); }));
    std::ifstream file(folder / "limits.txt");
    std::string line;
    for (int i = 0; i < 3; ++i) {
        std::getline(file, line);
    }
    EXPECT_TRUE(line.starts_with("176.95, ")) << line;
    for (const auto& [choice, entry, number, sentence] : std::vector<std::array<std::string, 4>>{
             {"GivenV", "dataEntryV", "x", "warning: put a number for molar volume"},
             {"GivenT", "dataEntryT", "25,5", "warning: put a number for temperature"},
             {"GivenT", "dataEntryT", "-1", "warning: temperatures must be above absolute zero"},
             {"GivenRange", "dataEntryT1", "", "warning: put a number for both temperatures"},
             {"GivenT", "dataEntryT", "900", "There is no spinodal: the fluid withstands"}}) {
        calculate(choice, {{entry, number}});
        EXPECT_TRUE(text("warning").starts_with(sentence)) << text("warning");
        EXPECT_EQ(column(4), sentence.starts_with("There") ? "no spinodal|" : "");
    }
    robot.click("Celsius");
    robot.click("kgm3");
    EXPECT_EQ(texts({"dataEntryT", "dataEntryV", "dataEntryT1", "dataEntryT2", "warning"}),
              "|||||");
    robot.click("Explanations");
    robot.use("ExplainSpinodal");
}

}  // namespace
