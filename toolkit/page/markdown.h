#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace toolkit {

// How a piece of text looks.
struct TextStyle {
    bool isBold = false;
    bool isItalic = false;
    bool isCode = false;  // a name or a number as it is typed or read
    int script = 0;       // above 0 an exponent, below 0 an index
    std::string link;     // where it leads; empty for most
};

// A piece of text of one look, or a picture or a formula with the text that stands for it.
struct TextRun {
    std::string text{};
    TextStyle style{};
    std::string picture{};  // a file
    std::string formula{};  // for `typeset`
};

using TextRuns = std::vector<TextRun>;

// One paragraph, heading, item of a list or table of a page.
struct PageBlock {
    enum class Kind { Paragraph, Heading, Item, Verbatim, Table };
    Kind kind = Kind::Paragraph;
    int level = 0;                              // of a heading from 1, of an item from 1
    std::string mark{};                         // of an item: a bullet or a number
    TextRuns runs{};                            // of all but tables
    std::vector<std::vector<TextRuns>> rows{};  // of a table, its head first
};

// The blocks of a page written in Markdown, with tables, and with formulas as TeX has them between
// dollars. Comments of HTML are left out.
std::vector<PageBlock> ReadMarkdown(std::string_view source);

// What leads to a heading within its page: small letters, digits, and hyphens for blanks.
std::string AnchorOf(const TextRuns& heading);

}  // namespace toolkit
