#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "procedures/series_table.h"
#include "toolkit/button.h"
#include "toolkit/label.h"
#include "toolkit/list.h"
#include "toolkit/screen.h"

namespace procedures {

// The table of a series on its screen, and the button that exports it.
class TablePanel {
  public:
    struct Form {
        toolkit::List::Row heads;
        std::vector<int> characters;     // that each column has room for
        std::vector<std::size_t> words;  // the columns that hold no numbers
        bool isWide = false;             // whether it may scroll sideways
        std::string listName = "ListBox1";
        std::string exportName = "Export";
    };

    // `fileName`: proposed for exports, without extension; `message` says what came of them.
    TablePanel(toolkit::Screen& screen, toolkit::Message& message, const std::string& fileName,
               const Form& form);

    // Shows the table with temperatures in this unit.
    void show(std::shared_ptr<const SeriesTable> table, const TemperatureScale& scale);
    void clear();
    bool isEmpty() const { return ListBox1.isEmpty(); }

    toolkit::List ListBox1;
    toolkit::Button Export;

  private:
    void Export_Action();

    toolkit::Screen& screen_;
    toolkit::Message& message_;
    std::string fileName_;
    std::shared_ptr<const SeriesTable> table_;
};

}  // namespace procedures
