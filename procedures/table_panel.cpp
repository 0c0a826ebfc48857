#include "procedures/table_panel.h"

#include <cstddef>
#include <utility>

#include "procedures/plot_panel.h"
#include "toolkit/announcement.h"
#include "toolkit/file_writing.h"

namespace procedures {

TablePanel::TablePanel(toolkit::Screen& screen, toolkit::Message& message,
                       const std::string& fileName, const std::vector<int>& characters)
    : ListBox1("ListBox1", toolkit::List::Row(characters.size())),
      screen_(screen),
      message_(message),
      fileName_(fileName) {
    ListBox1.setLong(characters);
    ListBox1.alignNumbers(characters.size() - 1);
    ListBox1.setAccessibleName("table of the " + fileName);
    Export.onClick(this, &TablePanel::Export_Action);
    Export.setTooltip("Writes the table to a text file");
}

void TablePanel::show(std::shared_ptr<const SeriesTable> table, const TemperatureScale& scale) {
    table_ = std::move(table);
    const auto rows = [table = table_, scale](Digits digits) {
        return [table, scale, digits](std::size_t i) { return table->row(i, scale, digits); };
    };
    ListBox1.setTable(table_->count(), rows(Digits::Shown), rows(Digits::Full));
    const std::size_t count = table_->count();
    toolkit::announce(ListBox1, "table of the " + fileName_ + ": " + std::to_string(count) +
                                    (count == 1 ? " row" : " rows"));
}

void TablePanel::clear() {
    ListBox1.clear();
    table_.reset();
}

void TablePanel::Export_Action() {
    if (ListBox1.isEmpty()) {
        message_.setText("warning: there is no table to export; calculate one first");
        return;
    }
    saveToFile(screen_, message_, "Export", fileName_, {".txt"},
               [table = table_](const std::string& path) {
                   return toolkit::writeFile(path, table->fileText());
               });
}

}  // namespace procedures
