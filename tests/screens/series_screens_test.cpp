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
#include <tuple>
#include <utility>
#include <vector>

#include "model/fluid_model.h"
#include "tests/screens/screen_test.h"
#include "toolkit/clipboard.h"
#include "toolkit/inspection.h"
#include "toolkit/number_text.h"
#include "toolkit/plot.h"

namespace {

bool isDiskSlow = false;

}  // namespace

// In place of the system's, for all that is written.
extern "C" int fsync(int file) {
    std::this_thread::sleep_for(std::chrono::milliseconds(isDiskSlow ? 2500 : 0));
    return static_cast<int>(syscall(SYS_fsync, file));
}

namespace {

namespace files = std::filesystem;
using Entries = std::vector<std::pair<std::string, std::string>>;

std::string ContentsOf(const files::path& path) {
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

TEST_F(SeriesScreensTest, WhatIsTypedIsShownInItsUnitUntilItChanges) {
    open("Isochore");
    for (const auto& [unit, first, row] :
         {std::tuple("Kelvin", "205", "205"), std::tuple("Celsius", "-68.15", "-68.15")}) {
        robot.click(unit);
        calculate({{"dataEntryV", "67.95817259849628"},
                   {"dataEntryT1", first},
                   {"dataEntryT2", first},
                   {"dataEntryStep", ""}});
        ASSERT_EQ(rows().size(), 1U) << text("warning");
        EXPECT_EQ(rows()[0][0], row);
        EXPECT_EQ(rows()[0][4], "two phases");
    }
    EXPECT_TRUE(text("Homogenisation").starts_with("Homogenization at -53.15 ˚Celsius and 3.38"));
    toolkit::Screen& screen = robot.screen();
    robot.use("Start2Window");
    robot.use(screen);
    EXPECT_EQ(rows().size(), 1U);
    open("Isotherm");  // the same composition
    calculate({{"dataEntryT", "220"},
               {"dataEntryV1", "60"},
               {"dataEntryV2", "60"},
               {"dataEntryStep", "1"}});
    EXPECT_EQ(rows().at(0),
              (toolkit::List::Row{"220.000000", "60", "0.593661", "17.745043", "", "", "stable"}));
    robot.click("kgm3");
    EXPECT_EQ(texts({"dataEntryT", "dataEntryV1", "dataEntryV2", "dataEntryStep", "Boundaries"}),
              "220|||||");
    calculate({{"dataEntryV1", "0.3"}, {"dataEntryV2", "0.4"}, {"dataEntryStep", "0.1"}});
    ASSERT_EQ(rows().size(), 2U);
    EXPECT_EQ(rows()[0][1], "118.732293");
    robot.click("Celsius");
    EXPECT_EQ(texts({"dataEntryT", "dataEntryV1"}), "|0.3|");
    EXPECT_TRUE(rows().empty() && plot().series().empty());
    robot.use("Start2Window");
    compose({{"CO2", "1"}});
    robot.click("Continue1");
    robot.use(screen);
    EXPECT_TRUE(rows().empty() && plot().series().empty());
    EXPECT_EQ(texts({"dataEntryV", "dataEntryT1", "Homogenisation", "warning"}),
              "67.95817259849628|-68.15|||");
}

TEST_F(SeriesScreensTest, AnInclusionIsGivenInThreeWays) {
    open("Isochore");
    const std::string at = "Homogenization at 220 Kelvin and 3.38666";
    struct Case {
        std::string unit, into, entry, number, sentence;
    };
    for (const Case& c : std::vector<Case>{
             {"cm3mol", "", "dataEntryV", "67.95817259849628", at},
             {"cm3mol", "", "dataEntryTh", "220", "warning: choose whether it homogenizes"},
             {"cm3mol", "LiquidMode", "dataEntryTh", "220", at},
             {"cm3mol", "VapourMode", "dataEntryTh", "220", "Homogenization at 220 Kelvin and 2.4"},
             {"kgm3", "", "dataEntryV", "0.5241413", "Homogenization at 220.0000"},
             {"cm3mol", "", "dataEntryTh", "300", "warning: nothing homogenizes into the vapour"},
             {"cm3mol", "", "dataEntryTh", "22,0", "warning: put a homogenization temperature"},
             {"cm3mol", "", "dataEntryTh", "273.5",
              "warning: 2 points of homogenization; choose"}}) {
        robot.click(c.unit);
        if (!c.into.empty()) {
            robot.click(c.into);
        }
        calculate({{c.entry, c.number}});
        const std::string said = text("Homogenisation") + text("warning");
        EXPECT_TRUE(said.starts_with(c.sentence)) << said;
        EXPECT_EQ(rows().empty(), c.sentence.starts_with("warning"));
        EXPECT_EQ(text(c.entry == "dataEntryV" ? "dataEntryTh" : "dataEntryV"), "");
    }
    for (const std::string pressure : {"7.09996", "6.98177", "7.09996"}) {
        robot.click("NextPoint");
        EXPECT_TRUE(
            text("Homogenisation").starts_with("Homogenization at 273.5 Kelvin and " + pressure))
            << text("Homogenisation");
    }
    EXPECT_GT(rows().size(), 30U);  // proposed temperatures
    EXPECT_EQ(text("dataEntryT1"), "");
}

TEST_F(SeriesScreensTest, ListsOfInclusionsArePastedChangedKeptAndExported) {
    open("Isochore");
    toolkit::Screen& screen = robot.screen();
    const auto names = [this] {
        std::string joined;
        for (const auto& row : rows("ListBox2")) {
            joined += row[0] + (row[4].empty() ? "-|" : "|");
        }
        return joined;
    };
    robot.click("ShowList");
    toolkit::SetClipboardText("Name\tTh\nA\t220\tL\n\nB, C\t220\tV\nD\t22,5\nE 0.5 g/cm3\n");
    robot.click("Paste");
    EXPECT_EQ(text("warning"),
              "3 inclusions were added; the first row was taken for heads; 1 row was not "
              "understood: see the remarks in the list");
    EXPECT_EQ(names(), "A|B, C|D 22,5-|E|");
    EXPECT_EQ(rows("ListBox2")[2][10], "put a decimal point instead of the comma in “22,5”");
    EXPECT_FALSE(plot().series().empty());
    toolkit::TakeFocus(robot.control("ListBox2"));
    robot.press("Down");
    robot.press("Home");
    EXPECT_TRUE(text("Homogenisation").starts_with("A: Homogenization at 220 Kelvin and 3.386"))
        << text("Homogenisation");
    EXPECT_FALSE(rows().empty());
    robot.click("Down");
    robot.enter("dataEntryName", "new");
    robot.click("Rename");
    EXPECT_EQ(names(), "B, C|new|D 22,5-|E|");
    robot.click("Remove");
    EXPECT_EQ(text("Homogenisation"), "");
    robot.enter("dataEntryPt", "20,5");
    EXPECT_EQ(text("warning"), "warning: put a trapping pressure above 0");
    robot.enter("dataEntryPt", "20.5");
    toolkit::TakeFocus(robot.control("ListBox2"));
    robot.press("End");
    robot.click("SetTrapping");
    robot.enter("dataEntryTt", "300");
    EXPECT_EQ(rows("ListBox2")[0][8] + rows("ListBox2")[2][9], "300.00000020.500000");
    EXPECT_EQ(plot().series().back().name, "trapping of E");
    EXPECT_EQ(rows("ListBox2")[0][9].substr(0, 4), "3.64") << rows("ListBox2")[0][9];
    robot.click("Keep");
    robot.use("Start2Window");
    compose({{"CO2", "1"}});
    robot.click("Continue1");
    robot.use(screen);
    robot.click("Paste");
    EXPECT_EQ(names(), "B, C|D 22,5-|E|A|B, C|D 22,5-|E|");
    EXPECT_EQ(rows("ListBox2")[0][11] + rows("ListBox2")[3][11], "CO2 0.7, CH4 0.3");
    robot.use("Start2Window");
    compose({{"CO2", "0.5"}, {"CH4", "0.5"}});
    robot.click("Continue1");
    robot.use(screen);
    EXPECT_EQ(names(), "B, C|D 22,5-|E|A-|B, C-|D 22,5-|E-|");
    robot.click("calculate");
    EXPECT_EQ(names(), "B, C|D 22,5-|E|A|B, C|D 22,5-|E|");
    save("ExportList", folder / "list");
    ASSERT_TRUE(robot.waitFor([&screen] { return toolkit::IsActive(screen); }));
    const std::string list = ContentsOf(folder / "list.txt");
    EXPECT_TRUE(list.starts_with("Composition = CO2 0.5, CH4 0.5\nName, Given, ")) << list;
    EXPECT_NE(list.find("\n\"B, C\", Th, -53.15, vapour, 2.42"), std::string::npos) << list;
    save("ExportIsochores", folder / "all");
    ASSERT_TRUE(robot.waitFor([&screen] { return toolkit::IsActive(screen); }));
    const std::string blocks = ContentsOf(folder / "all.txt");
    EXPECT_TRUE(blocks.starts_with("Name = B, C\nComposition = CO2 0.7, CH4 0.3\nMolar Vol"));
    std::size_t count = 0;
    for (std::size_t at = 0; (at = blocks.find("Molar Volume = ", at)) != std::string::npos; ++at) {
        ++count;
    }
    EXPECT_EQ(count, 5U);
    std::string thousand;
    for (int i = 0; i < 1000; ++i) {
        thousand += "X" + std::to_string(i) + "\t" + std::to_string(200 + i % 30) + "\tL\n";
    }
    toolkit::SetClipboardText(thousand);
    robot.click("Paste");
    EXPECT_EQ(text("warning"), "1000 inclusions were added");
    ASSERT_EQ(rows("ListBox2").size(), 1007U);
    EXPECT_EQ(rows("ListBox2")[1006][0], "X999");
    EXPECT_GT(plot().series().size(), 1000U);
}

TEST_F(SeriesScreensTest, WhatIsNoNumberIsRefusedAndNothingIsNotSaved) {
    open("Isochore");
    robot.click("Celsius");
    const std::string missing = "warning: put a number for both temperatures and for the step, or";
    for (const auto& [numbers, sentence] : std::vector<std::pair<Entries, std::string>>{
             {{{"dataEntryT1", "200"}, {"dataEntryT2", "300"}},
              "warning: put a number for molar volume or for"},
             {{{"dataEntryV", "80"}, {"dataEntryStep", "x"}}, missing},
             {{{"dataEntryStep", "10"}, {"dataEntryT1", "25,5"}}, missing},
             {{{"dataEntryT1", "25.5"}, {"dataEntryV", "30"}}, "warning: the molar volume must be"},
             {{{"dataEntryV", "80"}, {"dataEntryStep", "0.0004"}}, "warning: these would be"}}) {
        calculate(numbers);
        EXPECT_TRUE(text("warning").starts_with(sentence)) << text("warning");
        EXPECT_TRUE(rows().empty());
    }
    calculate({{"dataEntryStep", "100"}});
    robot.click("Copy");
    const std::string copied = clipboard();
    EXPECT_TRUE(copied.starts_with("Temperature (˚Celsius)\tPressure (MPa)\t")) << copied;
    EXPECT_NE(copied.find("\n25.5\t16.689338"), std::string::npos) << copied;
    EXPECT_GT(copied.find("\t\t\t\n") - copied.find("25.5\t"), 18U) << copied;  // all digits
    robot.click("Clear");
    for (const auto& [button, sentence] :
         {std::pair("Export", "warning: there is no table to export; calculate one first"),
          std::pair("Copy", "warning: there is no table to copy yet"),
          std::pair("SavePicture", "warning: there is no plot to save yet")}) {
        robot.click(button);
        EXPECT_EQ(text("warning"), sentence);
    }
    EXPECT_EQ(clipboard(), copied);
    open("Isotherm");
    robot.click("Celsius");
    calculate({{"dataEntryT", "25,5"},
               {"dataEntryV1", "60"},
               {"dataEntryV2", "90"},
               {"dataEntryStep", "10"}});
    EXPECT_TRUE(text("warning").starts_with("warning: \"25,5\" was not understood"));
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
    ASSERT_TRUE(robot.waitFor([&screen] { return toolkit::IsActive(screen); }));
    EXPECT_EQ(text("warning"), "first.txt was written");
    EXPECT_EQ(ContentsOf(folder / "first.txt"), ContentsOf(DROVAN_TEST_DATA "/isochore.txt"));
    EXPECT_EQ(rows().size(), 5U);  // the end of the dialog is no activation

    std::ofstream(folder / "old.txt") << "old";
    save("Export", folder / "old");
    waitForDialog("Replace file");
    robot.press("Escape");
    waitForDialog("Export");
    ASSERT_TRUE(robot.waitFor([&] {
        robot.press("Escape");  // closes the list of completions first, if it is there
        return toolkit::IsActive(screen);
    }));
    EXPECT_EQ(ContentsOf(folder / "old.txt"), "old");
    save("Export", "old");  // in the folder of the last file
    waitForDialog("Replace file");
    robot.press("Alt_L+r");
    ASSERT_TRUE(robot.waitFor([&screen] { return toolkit::IsActive(screen); }));
    EXPECT_EQ(ContentsOf(folder / "old.txt"), ContentsOf(DROVAN_TEST_DATA "/isochore.txt"));
    EXPECT_EQ(std::distance(files::directory_iterator(folder), {}), 2);

    open("Isotherm");
    toolkit::Screen& isotherm = robot.screen();
    calculate({{"dataEntryT", "220"},
               {"dataEntryV1", "900"},
               {"dataEntryV2", "500"},
               {"dataEntryStep", "200"}});
    save("Export", folder / "isotherm");
    ASSERT_TRUE(robot.waitFor([&isotherm] { return toolkit::IsActive(isotherm); }));
    EXPECT_EQ(ContentsOf(folder / "isotherm.txt"), ContentsOf(DROVAN_TEST_DATA "/isotherm.txt"));
    save("Export", "/proc/isotherm");
    ASSERT_TRUE(robot.waitFor([&isotherm] { return toolkit::IsActive(isotherm); }));
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
        ASSERT_TRUE(robot.waitFor([&screen] { return toolkit::IsActive(screen); }));
        robot.settle();
        EXPECT_EQ(text("warning"),
                  isFull ? std::string("warning: full.txt was not written: ") + std::strerror(EFBIG)
                         : "slow.txt was written");
        EXPECT_EQ(rows().size(), 2001U);
    }
    setrlimit(RLIMIT_FSIZE, &unlimited);
}

TEST_F(SeriesScreensTest, PlotsReadOutTheNearestPointAndAreSavedAsPictures) {
    open("Isochore");
    calculate({{"dataEntryName", "A3"},
               {"dataEntryV", "80"},
               {"dataEntryT1", "5"},
               {"dataEntryT2", "400"},
               {"dataEntryStep", "25"}});
    robot.settle();
    EXPECT_TRUE(text("DiagramNote").starts_with("Dotted: two phases")) << text("DiagramNote");
    ASSERT_EQ(plot().series().size(), 5U);
    const toolkit::PlotSeries& isochore = plot().series()[3];
    ASSERT_EQ(isochore.parts.size(), 3U);
    EXPECT_EQ(isochore.x[isochore.parts[2].first], plot().series()[4].x[0]);
    const auto place = plot().place({3, isochore.size() - 2, 0.1});
    ASSERT_TRUE(place);
    robot.moveTo(plot().area().x + place->x + 2, plot().area().y + place->y - 2);
    EXPECT_TRUE(text("ReadOut").starts_with("isochore A3: 2")) << text("ReadOut");
    EXPECT_TRUE(text("ReadOut").ends_with("one phase")) << text("ReadOut");
    robot.moveTo(plot().area().x - 20, plot().area().y + 5);
    EXPECT_EQ(text("ReadOut"), "");
    toolkit::Screen& screen = robot.screen();
    for (const auto& [name, start] : std::vector<std::pair<std::string, std::string>>{
             {"plot.svg", "<?xml"}, {"plot.pdf", "%PDF"}, {"plot.png", "\x89PNG"}}) {
        save("SavePicture", folder / name);
        ASSERT_TRUE(robot.waitFor([&screen] { return toolkit::IsActive(screen); }));
        const std::string picture = ContentsOf(folder / name);
        EXPECT_TRUE(picture.starts_with(start)) << name;
        EXPECT_GT(picture.size(), 2000U) << name;
    }
}

}  // namespace
