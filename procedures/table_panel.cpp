#include "procedures/table_panel.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "procedures/plot_panel.h"
#include "toolkit/announcement.h"
#include "toolkit/file_writing.h"

namespace procedures {

TablePanel::TablePanel(toolkit::Screen& screen, toolkit::Message& message,
                       const std::string& fileName, const Form& form)
    : ListBox1(form.listName, form.heads, form.characters),
      Export(form.exportName, "export"),
      screen_(screen),
      message_(message),
      fileName_(fileName) {
    if (form.isWide) {
        ListBox1.scrollSideways();
    }
    for (std::size_t i = 0; i < form.characters.size(); ++i) {
        if (std::find(form.words.begin(), form.words.end(), i) == form.words.end()) {
            ListBox1.alignRight(i);
        }
    }
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
    toolkit::Announce(ListBox1, "table of the " + fileName_ + ": " + std::to_string(count) +
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
    SaveToFile(screen_, message_, "Export", fileName_, {".txt"},
               [table = table_](const std::string& path) {
                   return toolkit::WriteFile(path, table->fileText());
               });
}

}  // namespace procedures
