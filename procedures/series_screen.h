#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "procedures/plot_panel.h"
#include "procedures/temperature_unit.h"
#include "procedures/value_range.h"
#include "toolkit/button.h"
#include "toolkit/entry.h"
#include "toolkit/label.h"
#include "toolkit/list.h"
#include "toolkit/screen.h"

namespace procedures {

/// What the screens have in common that run through a range of one quantity: its first and last
/// value and its step, a table that can be exported, and a plot.
class SeriesScreen : public toolkit::Screen {
  public:
    void Event_Activate() override;

  protected:
    struct Names {
        std::string screen;
        std::string title;
        std::string fileName;  // proposed for exports, without extension
        std::string plotDescription;
        std::string firstEntry;
        std::string lastEntry;
    };
    /// What a table is exported with: the lines above its rows, and each row.
    struct Exported {
        std::string heading;
        std::function<toolkit::List::Row(std::size_t)> row;
    };

    /// `heads` of the table and the characters that its columns have room for.
    SeriesScreen(toolkit::ScreenHost& host, const Names& names, const toolkit::List::Row& heads,
                 const std::vector<int>& characters);

    virtual void calculate_Action() = 0;
    virtual void Clear_Action();
    void Export_Action();
    void entry_TextChange();

    /// Empties what was calculated.
    virtual void emptyResults();
    /// Shows what depends on the units, when the window is activated or another unit is chosen.
    virtual void showUnits() = 0;
    /// Puts the parts together: at the left the entries, the table and what stands below it, at the
    /// right the plot.
    void layOut(const toolkit::Block& inputs, const toolkit::Block& below);
    /// The range as typed; nothing where it is no range of numbers.
    std::optional<ValueRange> range() const;
    /// Whether the range is short enough for a table; a sentence says how long it is if not.
    bool canBeListed(const ValueRange& range, const std::string& quantity);
    void refuse(const std::string& sentence);
    void showTable(std::size_t count, std::function<toolkit::List::Row(std::size_t)> row,
                   Exported exported);

    toolkit::Caption firstCaption;
    toolkit::Entry first;
    toolkit::Label firstUnit;
    toolkit::Caption lastCaption;
    toolkit::Entry last;
    toolkit::Label lastUnit;
    toolkit::Caption stepCaption{"Step", ""};
    toolkit::Entry dataEntryStep{"dataEntryStep", 16};
    toolkit::Label stepUnit{"StepUnit"};
    TemperatureUnit temperature{"GroupBox2"};
    toolkit::Button Clear{"Clear", "clear"};
    toolkit::Button Export{"Export", "export"};
    toolkit::Button calculate{"calculate", "calculate"};
    toolkit::Message warning{"warning"};
    toolkit::List ListBox1;
    PlotPanel plotPanel;

  private:
    std::string fileName_;
    Exported exported_;
    std::size_t count_ = 0;
};

}  // namespace procedures
