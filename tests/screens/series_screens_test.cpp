#include <gtk/gtk.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "model/fluid_model.h"
#include "procedures/value_range.h"
#include "tests/model/golden.h"
#include "tests/screens/screen_test.h"
#include "toolkit/number_text.h"
#include "toolkit/plot.h"

namespace {

bool isDiskSlow = false;

}  // namespace

/// In place of the system's, for all that is written.
extern "C" int fsync(int file) {
    std::this_thread::sleep_for(std::chrono::milliseconds(isDiskSlow ? 2500 : 0));
    return static_cast<int>(syscall(SYS_fsync, file));
}

namespace {

namespace files = std::filesystem;
using Entries = std::vector<std::pair<std::string, std::string>>;

std::string contentsOf(const files::path& path) {
    std::ifstream file(path);
    std::ostringstream contents;
    contents << file.rdbuf();
    return contents.str();
}

class SeriesScreensTest : public tests::ScreenTest {
  protected:
    void open(const std::string& procedure) {
        openProcedure({{"CO2", "0.7"}, {"CH4", "0.3"}}, procedure + "s", procedure + "Window");
    }
    void calculate(const Entries& entries) {
        for (const auto& [entry, characters] : entries) {
            robot.enter(entry, characters);
        }
        robot.click("calculate");
    }
    toolkit::Plot& plot() { return dynamic_cast<toolkit::Plot&>(robot.control("Plot")); }
};

TEST_F(SeriesScreensTest, RangesReachTheirLastValueInDecimalSteps) {
    struct Case {
        double first, last, step, count, value;
        std::size_t at;
    };
    for (const Case& c :
         {Case{0.0, 1.0, 0.1, 11.0, 0.3, 3}, Case{0.0, 1.0, 0.3, 5.0, 1.0, 4},
          Case{10.0, -10.0, 4.0, 6.0, -10.0, 5}, Case{10.0, 0.0, -2.5, 5.0, 7.5, 1},
          Case{273.15, 293.15, 0.05, 401.0, 283.15, 200}, Case{5.0, 5.0, 0.0, 1.0, 5.0, 0},
          Case{1.0, 2.0, 3.0, 2.0, 2.0, 1}, Case{0.0, 1e9, 1e-3, 1000000000001.0, 1e-3, 1}}) {
        const auto range = procedures::ValueRange::of(c.first, c.last, c.step);
        ASSERT_TRUE(range);
        EXPECT_EQ(range->count(), c.count) << c.first << ' ' << c.last << ' ' << c.step;
        EXPECT_EQ(range->value(c.at), c.value);
    }
    EXPECT_FALSE(procedures::ValueRange::of(0.0, 1.0, 0.0));
    EXPECT_FALSE(procedures::ValueRange::of(-1e308, 1e308, 1.0));
    EXPECT_EQ(procedures::ValueRange::of(100.0, 200.0, 0.1)->rounded(100.0 - 273.15), -173.15);
}

// The boundary is that of phase_equilibria.csv, in 60 digits.
TEST_F(SeriesScreensTest, IsochoresHomogeniseWhereTheirRowsSay) {
    open("Isochore");
    for (const bool isCelsius : {false, true}) {
        robot.click(isCelsius ? "Celsius" : "Kelvin");
        const double zero = isCelsius ? 273.15 : 0.0;
        calculate({{"dataEntryV", "67.95817259849628"},
                   {"dataEntryT1", toolkit::fixedText(250.0 - zero, 2)},
                   {"dataEntryT2", toolkit::fixedText(205.0 - zero, 2)},
                   {"dataEntryStep", "10"}});
        const auto table = rows();
        ASSERT_EQ(table.size(), 6U);
        EXPECT_EQ(toolkit::numberOrZero(table[5][0]), isCelsius ? -68.15 : 205.0);
        EXPECT_EQ(table[2][2] + table[4][2] + table[5][2], "two phasestwo phases");
        const double a = fluid::AcceptedMixture().attraction;
        const double b = fluid::AcceptedMixture().covolume;
        EXPECT_EQ(toolkit::numberOrZero(table[1][1]),
                  fluid::PressureVdW(a, b, 240.0, 67.95817259849628));
        std::istringstream words(text("Homogenisation"));
        std::string word;
        std::vector<double> numbers;
        while (words >> word) {
            if (toolkit::parseNumber(word)) {
                numbers.push_back(toolkit::numberOrZero(word));
            }
        }
        ASSERT_EQ(numbers.size(), 2U) << text("Homogenisation");
        EXPECT_NEAR(numbers[0] + zero, 220.0, 1e-10);
        EXPECT_LT(RelativeError(numbers[1], 3.386660699009192), 1e-11);
        EXPECT_TRUE(text("Homogenisation").ends_with(", into the liquid"));
    }
    robot.enter("dataEntryT2", "0");
    EXPECT_EQ(text("Homogenisation"), "");
    EXPECT_TRUE(rows().empty() && plot().series().empty());
    robot.click("calculate");
    EXPECT_EQ(
        text("Homogenisation"),
        "The fluid of this density is homogeneous at every temperature above -23.15 ˚Celsius");
}

TEST_F(SeriesScreensTest, RangesThatCannotBeListedAreRefused) {
    constexpr auto missing =
        "warning: put a number for molar volume, for both temperatures and for the step";
    open("Isochore");
    for (const auto& [numbers, sentence] : std::vector<std::pair<Entries, std::string>>{
             {{{"dataEntryV", ""}}, missing},
             {{{"dataEntryV", "80"}, {"dataEntryT1", "200"}, {"dataEntryT2", "300"}}, missing},
             {{{"dataEntryStep", "0.0004"}},
              "warning: these would be 250001 temperatures, and at most 100000 are listed; put a "
              "larger step"},
             {{{"dataEntryStep", "10"}, {"dataEntryT1", "-1"}},
              "warning: temperatures must be above absolute zero"},
             {{{"dataEntryT1", "200"}, {"dataEntryV", "30"}},
              "warning: the molar volume must be larger than the co-volume of this fluid, "
              "42.93030379584355 cm³/mol"},
             {{{"dataEntryT1", "nan"}}, missing}}) {
        calculate(numbers);
        EXPECT_EQ(text("warning"), sentence);
        EXPECT_TRUE(rows().empty());
    }
    robot.click("Export");
    EXPECT_TRUE(text("warning").starts_with("warning: there is no table to export"));
    open("Isotherm");
    calculate({{"dataEntryT", "220"},
               {"dataEntryV1", "40"},
               {"dataEntryV2", "90"},
               {"dataEntryStep", "10"}});
    EXPECT_TRUE(text("warning").starts_with("warning: molar volumes must be larger than"));
    calculate({{"dataEntryT", "x"}});
    EXPECT_TRUE(text("warning").starts_with("warning: put a number for temperature, for both"));
}

TEST_F(SeriesScreensTest, IsothermsNameTheStatesInEitherUnit) {
    open("Isotherm");
    calculate({{"dataEntryT", "220"},
               {"dataEntryV1", "60"},
               {"dataEntryV2", "610"},
               {"dataEntryStep", "50"}});
    std::string states;
    for (const auto& row : rows()) {
        states += row[3].substr(0, 2);
    }
    EXPECT_EQ(states, "stunununmememememememest");
    EXPECT_EQ(text("Boundaries").substr(0, 29), "Bubble point at 67.9581725984");
    EXPECT_EQ(text("Boundaries").substr(text("Boundaries").find('\n') + 1, 26),
              "Dew point at 588.850080740");
    robot.click("Celsius");
    EXPECT_EQ(texts({"dataEntryT", "dataEntryV1"}), "|60|");
    robot.enter("dataEntryT", "-53.15");
    robot.click("kgm3");
    EXPECT_EQ(texts({"dataEntryT", "dataEntryV1", "dataEntryV2", "dataEntryStep"}), "-53.15||||");
    calculate({{"dataEntryV1", "0.1"}, {"dataEntryV2", "0.4"}, {"dataEntryStep", "0.1"}});
    ASSERT_EQ(rows().size(), 4U);
    EXPECT_EQ(rows()[2][1], "0.3");
    EXPECT_NEAR(toolkit::numberOrZero(rows()[2][0]), 35.619688 / 0.3, 1e-9);
}

TEST_F(SeriesScreensTest, ExportsAreThoseMadeByHandAndReplaceOnlyWhenAsked) {
    open("Isochore");
    robot.click("Celsius");
    calculate({{"dataEntryV", "1000"},
               {"dataEntryT1", "-50"},
               {"dataEntryT2", "45"},
               {"dataEntryStep", "30.5"}});
    toolkit::Screen& screen = robot.screen();
    save("Export", folder / "first");
    ASSERT_TRUE(robot.waitFor([&screen] { return screen.isActive(); }));
    EXPECT_EQ(text("warning"), "first.txt was written");
    EXPECT_EQ(contentsOf(folder / "first.txt"), contentsOf(DROVAN_TEST_DATA "/isochore.txt"));
    EXPECT_EQ(rows().size(), 5U);  // the end of the dialog is no activation

    std::ofstream(folder / "old.txt") << "old";
    save("Export", folder / "old");
    waitForDialog("Replace file");
    robot.press("Escape");
    waitForDialog("Export");
    ASSERT_TRUE(robot.waitFor([&] {
        robot.press("Escape");  // closes the list of completions first, if it is there
        return screen.isActive();
    }));
    EXPECT_EQ(contentsOf(folder / "old.txt"), "old");
    save("Export", "old");  // in the folder of the last file
    waitForDialog("Replace file");
    robot.press("Alt_L+r");
    ASSERT_TRUE(robot.waitFor([&screen] { return screen.isActive(); }));
    EXPECT_EQ(contentsOf(folder / "old.txt"), contentsOf(DROVAN_TEST_DATA "/isochore.txt"));
    EXPECT_EQ(std::distance(files::directory_iterator(folder), {}), 2);

    robot.click("Copy");
    EXPECT_EQ(clipboard(), text("ListBox1"));
    EXPECT_TRUE(clipboard().starts_with("Temperature (˚Celsius)\tPressure (MPa)\tState\n-50\t"));

    open("Isotherm");
    toolkit::Screen& isotherm = robot.screen();
    for (const auto& [unit, T] : {std::pair("Kelvin", "220"), std::pair("Celsius", "-53.15")}) {
        robot.click(unit);
        calculate({{"dataEntryT", T},
                   {"dataEntryV1", "900"},
                   {"dataEntryV2", "500"},
                   {"dataEntryStep", "200"}});
        save("Export", folder / unit);
        ASSERT_TRUE(robot.waitFor([&isotherm] { return isotherm.isActive(); }));
        const std::string exported = contentsOf(folder / (std::string(unit) + ".txt"));
        const std::string expected = contentsOf(DROVAN_TEST_DATA "/isotherm.txt");
        // In degrees T has its rounding, so that the last digits of the pressures differ.
        const std::size_t same = unit == std::string("Kelvin") ? expected.size() : 125;
        EXPECT_EQ(exported.substr(0, same), expected.substr(0, same));
    }
    save("Export", "/proc/isotherm");
    ASSERT_TRUE(robot.waitFor([&isotherm] { return isotherm.isActive(); }));
    EXPECT_TRUE(text("warning").starts_with("warning: isotherm.txt was not written: "))
        << text("warning");
}

TEST_F(SeriesScreensTest, SaveToAPoorDiskKeepsTheTableAndTheWordOnIt) {
    open("Isochore");
    calculate({{"dataEntryV", "80"},
               {"dataEntryT1", "200"},
               {"dataEntryT2", "400"},
               {"dataEntryStep", "0.1"}});
    toolkit::Screen& screen = robot.screen();
    rlimit unlimited{};
    getrlimit(RLIMIT_FSIZE, &unlimited);
    for (const std::string file : {"slow.txt", "full.txt"}) {
        const bool isFull = file == "full.txt";
        isDiskSlow = !isFull;
        const rlimit limit{isFull ? 9999 : unlimited.rlim_cur, unlimited.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
        save("Export", folder / file);
        ASSERT_TRUE(robot.waitFor([&screen] { return screen.isActive(); }));
        robot.settle();
        EXPECT_EQ(text("warning"),
                  isFull ? std::string("warning: full.txt was not written: ") + std::strerror(EFBIG)
                         : "slow.txt was written");
        EXPECT_EQ(rows().size(), 2001U);
    }
    setrlimit(RLIMIT_FSIZE, &unlimited);
    robot.use("Start2Window");
    robot.use(screen);
    EXPECT_TRUE(rows().empty());
}

TEST_F(SeriesScreensTest, PlotsReadOutTheNearestPointAndAreSavedAsPictures) {
    open("Isochore");
    calculate({{"dataEntryV", "80"},
               {"dataEntryT1", "200"},
               {"dataEntryT2", "400"},
               {"dataEntryStep", "25"}});
    robot.settle();
    ASSERT_EQ(plot().series().size(), 3U);  // the lines meet at the boundary
    EXPECT_EQ(plot().series()[1].x.back(), plot().series()[0].x.front());
    const auto place = plot().place({0, 3});
    ASSERT_TRUE(place);
    robot.moveTo(plot().area().x + place->x + 2, plot().area().y + place->y - 2);
    EXPECT_EQ(text("ReadOut").substr(0, 14), "one phase: 300") << text("ReadOut");
    robot.moveTo(plot().area().x - 20, plot().area().y + 5);
    EXPECT_EQ(text("ReadOut"), "");
    toolkit::Screen& screen = robot.screen();
    for (const auto& [name, start] : std::vector<std::pair<std::string, std::string>>{
             {"plot.svg", "<?xml"}, {"plot.pdf", "%PDF"}, {"plot.png", "\x89PNG"}}) {
        save("SavePicture", folder / name);
        ASSERT_TRUE(robot.waitFor([&screen] { return screen.isActive(); }));
        const std::string picture = contentsOf(folder / name);
        EXPECT_TRUE(picture.starts_with(start)) << name;
        EXPECT_GT(picture.size(), 2000U) << name;
    }
}

TEST_F(SeriesScreensTest, CoarseIsothermsBendSmoothlyAndAreReadOut) {
    open("Isotherm");
    calculate({{"dataEntryT", "220"},
               {"dataEntryV1", "60"},
               {"dataEntryV2", "760"},
               {"dataEntryStep", "100"}});
    robot.settle();
    const double a = fluid::AcceptedMixture().attraction;
    const double b = fluid::AcceptedMixture().covolume;
    constexpr double range = 19.0;  // MPa
    for (const toolkit::PlotSeries& line : plot().series()) {
        for (std::size_t i = 1; i < line.x.size(); ++i) {
            const double V = 0.5 * (line.x[i - 1] + line.x[i]);
            const double P = 0.5 * (line.y[i - 1] + line.y[i]);
            if (!line.isMarks() && V > 0.0) {
                EXPECT_NEAR(fluid::PressureVdW(a, b, 220.0, V), P, 1e-3 * range) << V;
            }
        }
    }
    const toolkit::PlotSeries& stable = plot().series().front();
    const auto between = plot().place({0, stable.x.size() - 2});
    ASSERT_TRUE(between && stable.x[stable.x.size() - 2] != 760.0);
    robot.moveTo(plot().area().x + between->x, plot().area().y + between->y);
    EXPECT_TRUE(text("ReadOut").starts_with("stable: ")) << text("ReadOut");
}

}  // namespace
