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

// A table of texts with a head over each column, of any length: a text is made when it is looked
// at. Copying gives the selected rows, or all where none is selected, tab-separated under their
// heads.
class List : public Control, public Editable {
  public:
    using Row = std::vector<std::string>;
    using RowFunction = std::function<Row(std::size_t)>;

    // `heads`: one for each column. `characters`: what each column has room for, at least its
    // head; by default the digits of a number.
    List(std::string name, const Row& heads, std::vector<int> characters = {});
    ~List() override;

    // The list with a scroll bar, asking for so many rows at once, and for fewer where the display
    // is small. It scrolls together with `partner`, which stands beside it and is in a block
    // already.
    Block scrolling(int visibleRows = 4, const List* partner = nullptr);
    // The list in a frame, high enough for so many rows.
    Block framed(int visibleRows);
    // There are as many columns as heads, at most as many as there were at first.
    void setHeads(const Row& heads);
    // Says in the empty list what will appear there.
    void setEmptyText(const std::string& sentence);
    // Shows `count` rows in place of what stood before. `row` gives their texts as long as they
    // are shown, and `copied` those that are copied, if they are not the same.
    void setTable(std::size_t count, RowFunction row, RowFunction copied = nullptr);
    void setRows(std::vector<Row> rows);
    void clear() { setRows({}); }
    // Aligns a column, of numbers, at the right.
    void alignRight(std::size_t column) { alignAtPoint(column, -1); }
    // Lets the list be narrower than its columns, and scroll sideways then. To be called before it
    // is put into a block.
    void scrollSideways() { scrollsSideways_ = true; }
    // Aligns the numbers of a column at their points, with room for so many decimals behind them.
    void alignAtPoint(std::size_t column, int decimals);
    // `row` gives what Copy takes of a row instead of what is shown of it, until other rows are
    // shown.
    void setCopied(RowFunction row) { copied_ = std::move(row); }
    bool isEmpty() const { return count_ == 0; }
    std::vector<Row> rows() const;
    // Lets the user edit the cells of a column in place, by Enter on a chosen row; for rows that
    // were set as such. A cell keeps what was typed when it loses the focus; only Escape gives it
    // up.
    void setEditable(std::size_t column);
    // Opens the editor of the cell of that column in this row.
    void editCell(std::size_t row);
    struct Cell {
        std::size_t row = 0;
        std::size_t column = 0;
    };
    // `function` runs when the user clicks a cell, which is clickedCell() then.
    template <class Object, class Base>
    void onCellClick(Object* object, void (Base::*function)()) {
        cellClick_ = Member(object, function);
    }
    const Cell& clickedCell() const { return clickedCell_; }
    // `function` runs after the user has changed a cell.
    template <class Object, class Base>
    void onCellTextChange(Object* object, void (Base::*function)()) {
        cellTextChange_ = Member(object, function);
    }

    // The selected rows, ascending.
    std::vector<std::size_t> selected() const;
    void select(const std::vector<std::size_t>& rows);
    // Brings the row in sight.
    void scrollTo(std::size_t row);
    // `function` runs after the user has selected other rows.
    template <class Object, class Base>
    void onSelect(Object* object, void (Base::*function)()) {
        select_ = Member(object, function);
    }
    // Lets the user paste: `function` is given the text of the clipboard as soon as its owner has
    // handed it over.
    template <class Object, class Base>
    void onPaste(Object* object, void (Base::*function)(const std::string&)) {
        paste_ = [object, function](const std::string& text) { (object->*function)(text); };
    }

    // The heads and all rows as tab-separated lines, as they are shown.
    std::string text() const override;
    // The same as they are copied.
    std::string copiedText() const;
    bool canPerform(EditCommand command) const override;
    void perform(EditCommand command) override;

  private:
    struct Callbacks;
    Block within(GtkWidget* container, int visibleRows, int fewestRows);
    void addColumn(std::size_t number);
    std::string tableText(const std::vector<Row>& rows) const;
    // The selected rows as they are copied, or all where none is selected.
    std::vector<Row> copiedRows(bool onlySelected) const;

    Row heads_;
    std::vector<int> characters_;
    std::vector<int> decimals_;  // of columns that are aligned at the point, else -1
    std::vector<bool> isRight_;  // aligned columns
    std::string emptyText_;
    std::size_t count_ = 0;
    RowFunction row_;
    RowFunction copied_;
    std::vector<Row> rows_;
    GtkListStore* store_;
    Handler cellTextChange_;
    Handler cellClick_;
    Cell clickedCell_;
    Handler select_;
    std::function<void(const std::string&)> paste_;
    std::shared_ptr<bool> isAlive_;  // whether a text that is asked for still has a receiver
    bool isFilling_ = false;
    bool scrollsSideways_ = false;
    std::size_t editableColumn_ = 0;
    GtkCellRenderer* editableCell_ = nullptr;
};

}  // namespace toolkit
