#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <regex>
#include <sstream>

#include "app/start1_window.h"
#include "tests/screens/screen_test.h"
#include "toolkit/clipboard.h"
#include "toolkit/number_text.h"

namespace {

const std::filesystem::path project = DROVAN_PROJECT;

std::vector<std::string> Words(const std::string& text) {
    std::istringstream stream(std::regex_replace(text, std::regex(","), " , "));
    return {std::istream_iterator<std::string>(stream), {}};
}

std::string Part(const std::string& text, char separator, std::size_t number) {
    std::istringstream stream(text);
    std::string found;
    for (std::size_t i = 0; i <= number; ++i) {
        std::getline(stream, found, separator);  // empty behind the last part
    }
    return found;
}

// Whether the page's word is the screen's, or is its number rounded to the decimals of the page.
bool Agrees(const std::string& page, const std::string& screen) {
    const auto rounded = toolkit::ParseNumber(page);
    const auto shown = toolkit::ParseNumber(screen);
    const std::size_t point = page.find('.');
    if (!rounded || !shown || point == std::string::npos || page.find('e') != std::string::npos) {
        return page == screen;
    }
    const auto decimals = static_cast<double>(page.size() - point - 1);
    return std::abs(*rounded - *shown) <= 0.500001 * std::pow(10.0, -decimals);
}

void Compare(const std::string& page, const std::string& screen) {
    const auto expected = Words(page);
    const auto found = Words(screen);
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), found.begin(), found.end(), Agrees))
        << "the screen shows \"" << screen << "\", and the page says \"" << page << '"';
}

// Plays the pages of the guide: an action in a comment stands behind the words that it is about.
class GuideTest : public tests::ScreenTest, public testing::WithParamInterface<std::string> {
  protected:
    // `action`: "use SCREEN" (the newest, or with a number one of that name), "copy FILE", "click
    // CONTROL" (the words are its caption), "enter ENTRY" (the words are typed; for what readers
    // do not see "enter ENTRY NUMBER"), or "read CONTROL ROW COLUMN".
    void play(const std::string& said, const std::vector<std::string>& action) {
        const std::string& name = action.at(1);
        if (action[0] == "use") {
            std::size_t left = action.size() > 2 ? std::stoul(action[2]) : 0;
            for (toolkit::Screen* const screen : owner.screens()) {
                if (left > 0 && screen->name() == name && --left == 0) {
                    robot.use(*screen);
                    return;
                }
            }
            robot.use(name);
        } else if (action[0] == "copy") {
            std::ifstream file(project / "docs" / "guide" / name);
            toolkit::SetClipboardText({std::istreambuf_iterator<char>(file), {}});
        } else if (action[0] == "click") {
            const auto open = openScreens();
            Compare(said.empty() ? text(name) : said, text(name));
            robot.click(name);
            robot.use(openScreens() == open ? robot.screen() : *owner.screens().back());
        } else if (action[0] == "enter") {
            robot.enter(name, said + (action.size() > 2 ? action[2] : ""));
        } else {
            ASSERT_EQ(action[0], "read");
            const std::string all = text(name);
            const std::string row =
                action.size() > 2 ? Part(all, '\n', std::stoul(action[2])) : all;
            Compare(said, action.size() > 3 ? Part(row, '\t', std::stoul(action[3]) - 1) : row);
        }
    }
};

std::vector<std::string> Pages() {
    std::vector<std::string> found = {"README.md"};
    for (const auto& entry : std::filesystem::recursive_directory_iterator(project / "docs")) {
        if (entry.path().extension() == ".md") {
            found.push_back(entry.path().lexically_relative(project).string());
        }
    }
    return found;
}

TEST_P(GuideTest, NumbersMessagesAndLinksOfThePageAreRight) {
    const std::filesystem::path file = project / GetParam();
    const bool isPlayed = file.parent_path().filename() == "guide";
    if (isPlayed) {
        owner.open(std::make_unique<app::Start1Window>(owner));
        robot.use("Start1Window");
        play("next", {"click", "continue"});
    }
    const std::regex link(R"((?:\]\(|src="|href=")([^")#]+))");
    const std::regex step(R"((?:(?:`([^`]*)`|\*\*([^*]*)\*\*)\s*)?<!-- (.*?) -->)");
    bool isChecked = false;
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);) {
        for (std::sregex_iterator it(line.begin(), line.end(), link), end; it != end; ++it) {
            const std::string to = (*it)[1];
            EXPECT_TRUE(to.starts_with("http") || exists(file.parent_path() / to)) << to;
        }
        for (std::sregex_iterator it(line.begin(), line.end(), step), end; it != end; ++it) {
            SCOPED_TRACE((*it)[0].str());
            const std::vector<std::string> action = Words((*it)[3]);
            play((*it)[1].str() + (*it)[2].str(), action);
            isChecked = isChecked || action[0] == "read";
        }
    }
    EXPECT_EQ(isChecked, isPlayed);
}

INSTANTIATE_TEST_SUITE_P(, GuideTest, testing::ValuesIn(Pages()));

}  // namespace
