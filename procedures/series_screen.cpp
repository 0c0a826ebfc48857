#include "procedures/series_screen.h"

#include <utility>

#include "toolkit/announcement.h"
#include "toolkit/file_writing.h"
#include "toolkit/layout.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr double mostRows = 100000.0;
constexpr int messageWidth = 56;  // characters of a line
constexpr int visibleRows = 12;

}  // namespace

SeriesScreen::SeriesScreen(toolkit::ScreenHost& host, const Names& names,
                           const toolkit::List::Row& heads, const std::vector<int>& characters)
    : Screen(host, names.screen, names.title),
      firstCaption("First", ""),
      first(names.firstEntry, 16),
      firstUnit("FirstUnit"),
      lastCaption("Last", ""),
      last(names.lastEntry, 16),
      lastUnit("LastUnit"),
      ListBox1("ListBox1", heads),
      plotPanel(*this, warning, ListBox1, names.fileName, names.plotDescription),
      fileName_(names.fileName) {
    firstCaption.setTarget(first, firstUnit);
    lastCaption.setTarget(last, lastUnit);
    stepCaption.setTarget(dataEntryStep, stepUnit);
    first.onTextChange(this, &SeriesScreen::entry_TextChange);
    last.onTextChange(this, &SeriesScreen::entry_TextChange);
    dataEntryStep.onTextChange(this, &SeriesScreen::entry_TextChange);
    Clear.onClick(this, &SeriesScreen::Clear_Action);
    Export.onClick(this, &SeriesScreen::Export_Action);
    calculate.onClick(this, &SeriesScreen::calculate_Action);
    warning.wrapAt(messageWidth);
    ListBox1.setLong(characters);
    ListBox1.setAccessibleName("table of the " + fileName_);
    Export.setTooltip("Writes the table to a text file");
}

void SeriesScreen::layOut(const toolkit::Block& inputs, const toolkit::Block& below) {
    using toolkit::Block;
    using toolkit::Spacing;
    const Block left =
        toolkit::column({inputs, toolkit::buttonRow({Clear, Export, calculate}), warning,
                         ListBox1.scrolling(visibleRows).expanding(), below},
                        Spacing::group);
    setContent(toolkit::row({left, plotPanel.block().expanding()}, Spacing::section));
    setDefault(calculate);
}

void SeriesScreen::emptyResults() {
    warning.setText("");
    ListBox1.clear();
    plotPanel.clear();
    exported_ = {};
    count_ = 0;
}

void SeriesScreen::Event_Activate() {
    showUnits();
    emptyResults();
}

void SeriesScreen::entry_TextChange() {
    emptyResults();
}

void SeriesScreen::Clear_Action() {
    first.setText("");
    last.setText("");
    dataEntryStep.setText("");
    emptyResults();
}

std::optional<ValueRange> SeriesScreen::range() const {
    const auto from = toolkit::parseNumber(first.text());
    const auto to = toolkit::parseNumber(last.text());
    if (!from || !to) {
        return std::nullopt;
    }
    return ValueRange::of(*from, *to, dataEntryStep.number());
}

bool SeriesScreen::canBeListed(const ValueRange& range, const std::string& quantity) {
    if (range.count() <= mostRows) {
        return true;
    }
    constexpr double mostDigits = 1e15;
    const std::string count = range.count() < mostDigits ? toolkit::fixedText(range.count(), 0)
                                                         : toolkit::numberText(range.count());
    refuse("warning: these would be " + count + " " + quantity +
           ", and at most 100000 are listed; put a larger step");
    return false;
}

void SeriesScreen::refuse(const std::string& sentence) {
    emptyResults();
    warning.setText(sentence);
}

void SeriesScreen::showTable(std::size_t count, std::function<toolkit::List::Row(std::size_t)> row,
                             Exported exported) {
    ListBox1.setTable(count, std::move(row));
    toolkit::announce(ListBox1, "table of the " + fileName_ + ": " + std::to_string(count) +
                                    (count == 1 ? " row" : " rows"));
    exported_ = std::move(exported);
    count_ = count;
}

void SeriesScreen::Export_Action() {
    if (count_ == 0) {
        warning.setText("warning: there is no table to export; calculate one first");
        return;
    }
    std::string text = exported_.heading;
    for (std::size_t i = 0; i < count_; ++i) {
        const toolkit::List::Row cells = exported_.row(i);
        for (std::size_t k = 0; k < cells.size(); ++k) {
            text += (k == 0 ? "" : ", ") + cells[k];
        }
        text += '\n';
    }
    saveToFile(*this, warning, "Export", fileName_, {".txt"},
               [text](const std::string& path) { return toolkit::writeFile(path, text); });
}

}  // namespace procedures
