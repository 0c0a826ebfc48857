#pragma once

#include <memory>
#include <string>
#include <vector>

#include "procedures/series_table.h"
#include "toolkit/button.h"
#include "toolkit/label.h"
#include "toolkit/list.h"
#include "toolkit/screen.h"

namespace procedures {

/// The table of a series on its screen, and the button that exports it.
class TablePanel {
  public:
    /// `fileName`: proposed for exports, without extension; `message` says what came of them.
    /// `characters`: what each column has room for; the last one holds words, the others numbers.
    TablePanel(toolkit::Screen& screen, toolkit::Message& message, const std::string& fileName,
               const std::vector<int>& characters);

    /// Shows the table with temperatures in this unit.
    void show(std::shared_ptr<const SeriesTable> table, const TemperatureScale& scale);
    void clear();

    toolkit::List ListBox1;
    toolkit::Button Export{"Export", "export"};

  private:
    void Export_Action();

    toolkit::Screen& screen_;
    toolkit::Message& message_;
    std::string fileName_;
    std::shared_ptr<const SeriesTable> table_;
};

}  // namespace procedures
