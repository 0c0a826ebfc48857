#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "toolkit/page/markdown.h"
#include "toolkit/page/tex.h"

namespace {

using toolkit::PageBlock;
using toolkit::TextRun;
using toolkit::TextRuns;

// The runs with the marks of their looks: *italic*, _index_, ^exponent^, <link>.
std::string Marked(const TextRuns& runs) {
    std::string text;
    for (const TextRun& run : runs) {
        const std::string mark = run.style.script < 0   ? "_"
                                 : run.style.script > 0 ? "^"
                                 : run.style.isBold     ? "**"
                                 : run.style.isItalic   ? "*"
                                 : run.style.isCode     ? "`"
                                                        : "";
        text += mark + run.text + mark + (run.style.link.empty() ? "" : "<" + run.style.link + ">");
    }
    return text;
}

std::string Marked(const PageBlock& block) {
    std::string text = std::to_string(static_cast<int>(block.kind)) + std::to_string(block.level) +
                       block.mark + " " + Marked(block.runs);
    for (const auto& row : block.rows) {
        for (const TextRuns& cell : row) {
            text += "[" + Marked(cell) + "]";
        }
    }
    return text;
}

TEST(PageTest, MarkdownIsReadWithListsTablesFormulasAndWithoutComments) {
    const std::string source =
        "# A *page*\n\nSee [the next](next.md#end) one, `0.7` <!-- read Sum -->, with\n$x_i$.\n\n"
        "2. two\n\n   inside\n3. three\n\n- a\n  - b\n\n| h | |\n|---|---|\n| **c** | $-e^2$ |\n";
    std::string read;
    for (const PageBlock& block : toolkit::ReadMarkdown(source)) {
        read += Marked(block) + "\n";
    }
    EXPECT_EQ(read,
              "11 A *page*\n"
              "00 See the next<next.md#end> one, `0.7`, with *x*_i_.\n"
              "212. two\n01 inside\n213. three\n21• a\n22• b\n"
              "40 [**h**][][**c**][−*e*^2^]\n");
}

TEST(PageTest, TexIsTurnedIntoFormulasAndIntoLines) {
    const std::vector<std::pair<const char*, const char*>> cases = {
        {R"(\frac{RT}{V-b} - \frac{a}{V^2})", "RT/(V − b) − a/V2"},
        {R"(\varphi^\circ_i P_\mathrm{ref}, \qquad \tau = -V\sqrt{a_i a_j})",
         "φi° Pref,  τ = −V√(ai aj)"},
        {R"(\sum_i x_i\left(\mu^\circ_i - R\ln x_i\right))", "∑i xi(μi° − Rln xi)"},
        {R"(\varphi^X_i \cdot T_{c,i}^2)", "φiX·Tc,i2"},
        {R"(\frac{)", "/"},
        {R"(_{)", ""},
    };
    for (const auto& [tex, line] : cases) {
        std::string text;
        for (const TextRun& run : toolkit::LineOfFormula(toolkit::FormulaOfTex(tex))) {
            text += run.text;
        }
        EXPECT_EQ(text, line) << tex;
    }
}

// Every page of the documentation, so that none uses what is not read.
TEST(PageTest, GuideHasNoMarksLeftAndEveryLinkLeadsToAHeading) {
    namespace files = std::filesystem;
    std::set<std::string> places;
    std::set<std::string> targets;
    for (const auto& entry : files::recursive_directory_iterator(DROVAN_PROJECT "/docs")) {
        if (entry.path().extension() != ".md" || entry.path().parent_path().filename() != "guide") {
            continue;
        }
        std::ifstream file(entry.path());
        const std::string source{std::istreambuf_iterator<char>(file), {}};
        for (const PageBlock& block : toolkit::ReadMarkdown(source)) {
            TextRuns runs = block.runs;
            for (const auto& row : block.rows) {
                for (const TextRuns& cell : row) {
                    runs.insert(runs.end(), cell.begin(), cell.end());
                }
            }
            if (block.kind == PageBlock::Kind::Heading) {
                places.insert(entry.path().filename().string() + "#" +
                              toolkit::AnchorOf(block.runs));
            }
            for (const TextRun& run : runs) {
                EXPECT_EQ(run.text.find_first_of(run.style.isCode ? "$" : "$\\{}~"),
                          std::string::npos)
                    << run.text;
                const std::string& link = run.style.link;
                if (link.find('#') != std::string::npos && !link.starts_with("..")) {
                    targets.insert((link.front() == '#' ? entry.path().filename().string() : "") +
                                   link);
                }
            }
        }
    }
    EXPECT_GT(targets.size(), 3U);
    for (const std::string& target : targets) {
        EXPECT_TRUE(places.contains(target)) << target;
    }
}

}  // namespace
