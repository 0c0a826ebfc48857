#include "procedures/series_table.h"

#include <algorithm>
#include <cmath>

#include "toolkit/number_text.h"

namespace procedures {

namespace {

// A text as a cell of a file whose cells are joined by commas.
std::string Quoted(const std::string& text) {
    if (text.find_first_of(",\"") == std::string::npos) return text;
    std::string quotes = "\"";
    for (const char letter : text) {
        quotes += letter == '"' ? "\"\"" : std::string(1, letter);
    }
    return quotes + '"';
}

}  // namespace

std::string CellText(double value, int decimals, Digits digits) {
    if (digits == Digits::Full) return toolkit::NumberText(value);
    // What was typed needs no more digits than it has.
    constexpr double largest = 1e15;
    const std::string fixed = toolkit::FixedText(value, decimals);
    const bool isWhole = std::abs(value) < largest && toolkit::NumberOrZero(fixed) == value;
    return isWhole ? fixed : toolkit::ResultText(value, decimals);
}

std::string SeriesTable::fileText() const {
    std::string text = fileHeading();
    for (std::size_t i = 0; i < count(); ++i) {
        const Row cells = row(i, celsiusScale, Digits::Full);
        for (std::size_t k = 0; k < std::min(cells.size(), fileColumns()); ++k) {
            text += (k == 0 ? "" : ", ") + Quoted(cells[k]);
        }
        text += '\n';
    }
    return text;
}

}  // namespace procedures
