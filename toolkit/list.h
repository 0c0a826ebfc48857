#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "toolkit/control.h"
#include "toolkit/edit_commands.h"
#include "toolkit/layout.h"

using GtkCellRenderer = struct _GtkCellRenderer;
using GtkListStore = struct _GtkListStore;

namespace toolkit {

/// A table of texts with a head over each column. Copying gives the selected rows, or all where
/// none is selected, tab-separated under their heads.
class List : public Control, public Editable {
  public:
    using Row = std::vector<std::string>;

    /// `heads`: one for each column.
    List(std::string name, const Row& heads);
    ~List() override;

    /// The list with its scroll bars, high enough for `visibleRows` rows at once. It scrolls up and
    /// down together with `partner`, which stands beside it and is in a block already.
    Block scrolling(int visibleRows, const List* partner = nullptr);
    /// The list in a frame, always as large as what is in it, and never lower than `visibleRows`.
    Block framed(int visibleRows);
    void setHeads(const Row& heads);
    /// Shows these rows, each with a text for every column, in place of what stood before.
    void setRows(const std::vector<Row>& rows);
    void clear();
    /// Shows a table of `count` rows, however many, whose texts `row` gives when they are looked
    /// at, and `copied` when they are copied, if they are not the same; what these refer to has to
    /// live until other rows are shown. Needs setLong.
    void setTable(std::size_t count, std::function<Row(std::size_t)> row,
                  std::function<Row(std::size_t)> copied = nullptr);
    /// Has the window make room for all columns, where they would scroll sideways otherwise. To be
    /// called before the list is put into a block.
    void showAllColumns() { isWhole_ = true; }
    /// Makes the list one for long tables: its columns have room for so many characters each,
    /// whatever is in them; the window makes room for all of them, unless they may scroll. To be
    /// called before it is put into a block.
    void setLong(const std::vector<int>& characters, bool scrollsSideways = false);
    /// Aligns a column, of numbers, at the right.
    void alignRight(std::size_t column);
    bool isEmpty() const;
    /// `row` gives what Copy takes of a row instead of what is shown of it, until other rows are
    /// shown.
    void setCopied(std::function<Row(std::size_t)> row) { copied_ = std::move(row); }
    /// Aligns the numbers of a column at their points, with room for so many decimals behind them.
    /// To be called before the list is put into a block, and after setLong.
    void alignAtPoint(std::size_t column, int decimals);
    std::vector<Row> rows() const;
    /// Lets the user edit the cells of a column in place, by Enter on a chosen row. A cell keeps
    /// what was typed when it loses the focus; only Escape gives it up.
    void setEditable(std::size_t column);
    /// Opens the editor of the cell of that column in this row.
    void editCell(std::size_t row);
    struct Cell {
        std::size_t row = 0;
        std::size_t column = 0;
    };
    /// `function` runs when the user clicks a cell, which is clickedCell() then.
    template <class Object, class Base>
    void onCellClick(Object* object, void (Base::*function)()) {
        cellClick_ = member(object, function);
    }
    const Cell& clickedCell() const { return clickedCell_; }
    /// `function` runs after the user has changed a cell.
    template <class Object, class Base>
    void onCellTextChange(Object* object, void (Base::*function)()) {
        cellTextChange_ = member(object, function);
    }

    /// The selected rows, ascending.
    std::vector<std::size_t> selected() const;
    void select(const std::vector<std::size_t>& rows);
    /// `function` runs after the user has selected other rows.
    template <class Object, class Base>
    void onSelect(Object* object, void (Base::*function)()) {
        select_ = member(object, function);
    }
    /// Lets the user paste: `function` is given the text of the clipboard as soon as its owner has
    /// handed it over.
    template <class Object, class Base>
    void onPaste(Object* object, void (Base::*function)(const std::string&)) {
        paste_ = [object, function](const std::string& text) { (object->*function)(text); };
    }

    /// The heads and all rows as tab-separated lines, as they are shown.
    std::string text() const override;
    /// The same as they are copied.
    std::string copiedText() const;
    bool canPerform(EditCommand command) const override;
    void perform(EditCommand command) override;

  private:
    struct Callbacks;
    Block within(GtkWidget* container, int visibleRows);
    /// Leaves the view with no rows to show, and an empty store to fill for it.
    void takeStore();
    void showCellsWhenLookedAt(std::size_t column);
    Row rowAt(int position) const;
    /// The row as it is copied.
    Row copiedRowAt(int position) const;
    int count() const;
    std::string tableText(const std::vector<Row>& rows) const;
    /// The selected rows as they are copied, or all where none is selected.
    std::vector<Row> copiedRows() const;

    Row heads_;
    std::vector<int> decimals_;  // of columns that are aligned at the point, else -1
    std::function<Row(std::size_t)> table_;
    std::function<Row(std::size_t)> copied_;
    Handler cellTextChange_;
    Handler cellClick_;
    Cell clickedCell_;
    Handler select_;
    std::function<void(const std::string&)> paste_;
    std::shared_ptr<bool> isAlive_;  // whether a text that is asked for still has a receiver
    bool isFilling_ = false;
    bool isLong_ = false;
    bool isWhole_ = false;
    int editableColumn_ = -1;
    GtkCellRenderer* editableCell_ = nullptr;
    GtkListStore* store_;
};

}  // namespace toolkit
