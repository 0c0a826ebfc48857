#include <array>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/screens/screen_test.h"
#include "toolkit/number_text.h"
#include "toolkit/plot.h"

namespace {

class CriticalScreensTest : public tests::ScreenTest {
  protected:
    void openCriticalPoint(const tests::Composition& composition) {
        openProcedure(composition, "CriticalPoint", "CriticalPointWindow");
    }
    void openSpinodal(const tests::Composition& composition) {
        openProcedure(composition, "Spinodal", "SpinodalWindow");
    }
    /// One column of the table, each cell with a "|" behind it.
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
            if (each.name == name) {
                return each;
            }
        }
        return none;
    }
    bool passes(const std::string& curve, double x, double y) const {
        const toolkit::PlotSeries& each = series(curve);
        for (std::size_t i = 0; i < each.x.size(); ++i) {
            if (std::abs(each.x[i] - x) < 1e-6 && std::abs(each.y[i] - y) < 1e-6) {
                return true;
            }
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
    toolkit::Screen& screen = robot.screen();
    openCriticalPoint({{"H2O", "0.5"}, {"CO2", "0.5"}});
    robot.closeWindow();
    robot.use(screen);
    EXPECT_EQ(column(5), "meta-stable, at negative pressure|stable|");
    robot.click("Celsius");
    EXPECT_EQ(column(0), "-12.899524|190.445424|");
    EXPECT_TRUE(text("ListBox1").starts_with("Temperature (˚Celsius)")) << text("ListBox1");
    EXPECT_EQ(text("Label1"), "˚Celsius");
    EXPECT_TRUE(passes("meta-stable critical point", -12.8995239023532, -14.84603207632093));
    robot.click("PlotLow");
    EXPECT_EQ(series("critical point").x.size(), 1U);
    EXPECT_EQ(text("Count"),
              "This fluid has 2 critical points; that at -14.846032 MPa lies outside of the plot");
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

TEST_F(CriticalScreensTest, LimitsAreTheGoldenOnesOnTheirSides) {
    openSpinodal({{"CO2", "0.7"}, {"CH4", "0.3"}});
    calculate("GivenT", {{"dataEntryT", "220"}});
    EXPECT_EQ(column(2), "80.643940|241.567843|83.878231|235.193807|");
    EXPECT_EQ(column(4),
              "diffusional, liquid side|diffusional, vapour side|mechanical, liquid side|"
              "mechanical, vapour side|");
    EXPECT_TRUE(passes("in the table", 220.0, toolkit::numberOrZero(rows()[0][1])));
    robot.click("kgm3");
    calculate("GivenV", {{"dataEntryV", toolkit::numberText(35.619688 / 80.64394)}});
    EXPECT_NEAR(toolkit::numberOrZero(rows().at(0)[0]), 220.0, 1e-5);
    EXPECT_EQ(rows()[1][4], "mechanical, liquid side");
    robot.click("PlotV");
    EXPECT_NEAR(series("in the table").x.at(0), 80.64394, 1e-5);
    for (const auto& [choice, entry, number, sentence] : std::vector<std::array<std::string, 4>>{
             {"GivenV", "dataEntryV", "2", "the molar volume must be larger than the co-volume"},
             {"GivenV", "dataEntryV", "x", "put a number for molar volume"},
             {"GivenT", "dataEntryT", "", "put a number for temperature"},
             {"GivenT", "dataEntryT", "-1", "temperatures must be above absolute zero"},
             {"GivenRange", "dataEntryT1", "1", "put a number for both temperatures"}}) {
        calculate(choice, {{entry, number}});
        EXPECT_EQ(text("warning").find(sentence), 9U) << text("warning");
        EXPECT_TRUE(rows().empty());
    }
    calculate("GivenT", {{"dataEntryT", "300"}});
    EXPECT_TRUE(text("warning").starts_with("There is no spinodal")) << text("warning");
    openSpinodal({{"CO2", "1"}});
    calculate("GivenT", {{"dataEntryT", "220"}});
    EXPECT_EQ(column(4), "liquid side|vapour side|");
    robot.click("Explanations");
    robot.use("ExplainSpinodal");
}

TEST_F(CriticalScreensTest, ExportedTableIsTheShownOneInCelsius) {
    struct Case {
        std::string unit, choice;
        std::vector<std::pair<std::string, std::string>> entries;
        std::size_t count;
        std::string celsius;  // of the first line
    };
    openSpinodal({{"H2O", "0.741"}, {"O2", "0.011"}, {"C2H6", "0.248"}});
    toolkit::Screen& screen = robot.screen();
    for (const Case& c : std::vector<Case>{
             {"Kelvin", "GivenT", {{"dataEntryT", "450.1"}}, 5, "176.95"},
             {"Kelvin", "GivenV", {{"dataEntryV", "80"}}, 2, ""},
             {"Celsius", "GivenT", {{"dataEntryT", "176.95"}}, 5, "176.95"},
             {"Celsius", "GivenV", {{"dataEntryV", "80"}}, 2, ""},
             {"Kelvin",  // three volumes of one kind, two of the other, at six temperatures
              "GivenRange",
              {{"dataEntryT1", "450.1"}, {"dataEntryT2", "400.2"}, {"dataEntryStep", "10"}},
              30,
              "176.95"}}) {
        robot.click(c.unit);
        calculate(c.choice, c.entries);
        ASSERT_EQ(rows().size(), c.count);
        const bool isMarked = passes("in the table", toolkit::numberOrZero(rows()[0][0]),
                                     toolkit::numberOrZero(rows()[0][1]));
        EXPECT_EQ(isMarked, c.count < 12);  // of many the curves are enough
        const auto path = folder / (c.unit + c.choice + ".txt");
        save("Export", path);
        ASSERT_TRUE(robot.waitFor([&screen] { return screen.isActive(); }));
        std::ifstream file(path);
        std::string line;
        std::getline(file, line);
        EXPECT_EQ(line, "Temperature, Pressure, Molar Volume, Density, Limit");
        std::getline(file, line);
        EXPECT_EQ(line, "(Celsius), (MPa), (cm3/mol), (g/cm3)");
        std::getline(file, line);
        const std::string first = line.substr(0, line.find(','));
        const double zero = c.unit == "Kelvin" ? 273.15 : 0.0;
        EXPECT_TRUE(c.celsius.empty() || first == c.celsius) << first;
        EXPECT_NEAR(toolkit::numberOrZero(first), toolkit::numberOrZero(rows()[0][0]) - zero, 1e-6);
        EXPECT_NE(line.find(rows()[0][1].substr(0, 8)), std::string::npos) << line;
        EXPECT_TRUE(line.ends_with(", " + rows()[0][4])) << line;
    }
    EXPECT_EQ(column(4).substr(0, 75),
              "diffusional, vapour side|diffusional, liquid side|diffusional, vapour side|");
    robot.click("Celsius");
    robot.click("kgm3");
    EXPECT_EQ(texts({"dataEntryT", "dataEntryV", "dataEntryT1", "dataEntryT2", "warning"}),
              "|||||");
    EXPECT_TRUE(rows().empty());
}

}  // namespace
