#include "toolkit/list.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <numeric>
#include <utility>

#include "toolkit/announcement.h"
#include "toolkit/clipboard.h"
#include "toolkit/editable_text.h"
#include "toolkit/event.h"
#include "toolkit/exposure.h"
#include "toolkit/text_size.h"

namespace toolkit {

namespace {

constexpr int cellPadding = 6;
constexpr int numberWidth = 19;  // characters of a number in full
constexpr const char* columnKey = "toolkit-column";

GtkTreeView* ViewOf(const Control& control) {
    return GTK_TREE_VIEW(control.widget());
}

// The values of a single column, to be pasted where a number is wanted.
std::string ValuesText(const std::vector<List::Row>& rows) {
    std::string values;
    for (const List::Row& cells : rows) {
        values += (values.empty() ? "" : "\n") + cells.front();
    }
    return values;
}

// A number with so much room behind it that it ends where one with these decimals would.
std::string PaddedText(const std::string& number, int decimals) {
    constexpr const char* widthOfPoint = "\u2008";
    constexpr const char* widthOfDigit = "\u2007";
    if (number.find_first_of("0123456789") == std::string::npos ||
        number.find('e') != std::string::npos) {
        return number;
    }
    const std::size_t point = number.find('.');
    const bool hasPoint = point != std::string::npos;
    std::string text = number + (hasPoint || decimals <= 0 ? "" : widthOfPoint);
    const int present = hasPoint ? static_cast<int>(number.size() - point) - 1 : 0;
    for (int i = present; i < decimals; ++i) {
        text += widthOfDigit;
    }
    return text;
}

GtkTreeViewColumn* ColumnOf(const List& list, std::size_t number) {
    return gtk_tree_view_get_column(ViewOf(list), static_cast<gint>(number));
}

std::size_t ColumnsOf(const List& list) {
    GList* const columns = gtk_tree_view_get_columns(ViewOf(list));
    const std::size_t count = g_list_length(columns);
    g_list_free(columns);
    return count;
}

GtkCellRenderer* RendererOf(GtkTreeViewColumn* column) {
    GList* const cells = gtk_cell_layout_get_cells(GTK_CELL_LAYOUT(column));
    auto* const renderer = GTK_CELL_RENDERER(cells->data);
    g_list_free(cells);
    return renderer;
}

void AppendLine(std::string& text, const List::Row& cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        text += (i == 0 ? "" : "\t") + cells[i];
    }
    text += '\n';
}

}  // namespace

struct List::Callbacks {
    // The columns have their widths by the font, whatever is in them.
    static void onStyleSet(GtkWidget* widget, GtkStyle* /*previous*/, const List* self) {
        const int digit = SizeOfText(widget, "0").width;
        for (std::size_t i = 0; i < self->heads_.size(); ++i) {
            GtkTreeViewColumn* const column =
                gtk_tree_view_get_column(GTK_TREE_VIEW(widget), static_cast<gint>(i));
            GtkRequisition head;
            gtk_widget_size_request(column->button, &head);
            const int width = self->characters_[i] * digit + 2 * cellPadding;
            gtk_tree_view_column_set_fixed_width(column, std::max(width, head.width));
            gtk_tree_view_column_set_min_width(column, std::max(width, head.width));
        }
    }

    static void showCell(GtkTreeViewColumn* column, GtkCellRenderer* cell, GtkTreeModel* model,
                         GtkTreeIter* row, gpointer data) {
        const auto* const self = static_cast<const List*>(data);
        g_object_set(cell, "text", "", nullptr);  // should the row fail
        const std::unique_ptr<GtkTreePath, decltype(&gtk_tree_path_free)> path(
            gtk_tree_model_get_path(model, row), &gtk_tree_path_free);
        const auto index = static_cast<std::size_t>(gtk_tree_path_get_indices(path.get())[0]);
        const Row cells = self->row_(index);
        const auto position = GPOINTER_TO_SIZE(g_object_get_data(G_OBJECT(column), columnKey));
        if (position < cells.size()) {
            const std::string text = PaddedText(cells[position], self->decimals_[position]);
            g_object_set(cell, "text", text.c_str(), nullptr);
        }
    }

    static gboolean onExposed(GtkWidget* widget, GdkEventExpose* event, const List* self) {
        GdkWindow* const rows = gtk_tree_view_get_bin_window(GTK_TREE_VIEW(widget));
        if (self->count_ > 0 || self->emptyText_.empty() || event->window != rows) return FALSE;
        constexpr int margin = 12;
        const std::unique_ptr<PangoLayout, decltype(&g_object_unref)> layout(
            gtk_widget_create_pango_layout(widget, self->emptyText_.c_str()), &g_object_unref);
        int width = 0;
        int height = 0;
        gdk_drawable_get_size(rows, &width, &height);
        pango_layout_set_width(layout.get(), std::max(width - 2 * margin, 1) * PANGO_SCALE);
        pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
        const std::unique_ptr<cairo_t, CairoDestroyer> cairo(gdk_cairo_create(rows));
        gdk_cairo_set_source_color(cairo.get(),
                                   &gtk_widget_get_style(widget)->text[GTK_STATE_INSENSITIVE]);
        cairo_move_to(cairo.get(), margin, margin);
        pango_cairo_show_layout(cairo.get(), layout.get());
        return FALSE;
    }

    static void onEditingStarted(GtkCellRenderer* cell, GtkWidget* editor) {
        LimitCharacters(editor);
        // GTK+'s own handler gives up what was typed when the editor loses the focus.
        constexpr auto match =
            static_cast<GSignalMatchType>(G_SIGNAL_MATCH_ID | G_SIGNAL_MATCH_DATA);
        g_signal_handlers_block_matched(editor, match,
                                        g_signal_lookup("focus-out-event", GTK_TYPE_WIDGET), 0,
                                        nullptr, nullptr, cell);
        const auto onLeft = [](GtkWidget* left, GdkEvent* /*event*/,
                               gpointer /*data*/) -> gboolean {
            if (gtk_grab_get_current() == nullptr) {  // a menu only borrows the focus
                EndCellEdit(left);
            }
            return FALSE;
        };
        Connect(editor, "focus-out-event", onLeft);
    }

    static void onEdited(List& self, std::size_t row, const std::string& text) {
        if (row < self.rows_.size() && self.rows_[row][self.editableColumn_] != text) {
            self.rows_[row][self.editableColumn_] = text;
            gtk_widget_queue_draw(self.widget());
            RunHandler(self.cellTextChange_, self.name().c_str());
        }
    }

    static bool onButtonPress(GtkWidget* widget, const GdkEventButton& event, List& self) {
        GtkTreeView* const view = GTK_TREE_VIEW(widget);
        if (event.type != GDK_BUTTON_PRESS) {  // the rest of a double click
            return IsCellEdited(widget);
        }
        GtkTreePath* path = nullptr;
        GtkTreeViewColumn* column = nullptr;
        const bool isClick = event.button == 1 &&
                             (event.state & (GDK_SHIFT_MASK | GDK_CONTROL_MASK)) == 0 &&
                             event.window == gtk_tree_view_get_bin_window(view);
        if (!isClick || gtk_tree_view_get_path_at_pos(view, static_cast<gint>(event.x),
                                                      static_cast<gint>(event.y), &path, &column,
                                                      nullptr, nullptr) == FALSE) {
            return false;
        }
        const auto row = static_cast<std::size_t>(gtk_tree_path_get_indices(path)[0]);
        gtk_tree_path_free(path);
        self.clickedCell_ = {row, GPOINTER_TO_SIZE(g_object_get_data(G_OBJECT(column), columnKey))};
        FinishCellEdit(widget);
        RunHandler(self.cellClick_, self.name().c_str());
        return IsCellEdited(widget);
    }
};

List::List(std::string name, const Row& heads, std::vector<int> characters)
    : Control(std::move(name), gtk_tree_view_new()),
      heads_(heads),
      characters_(std::move(characters)),
      decimals_(heads.size(), -1),
      isRight_(heads.size(), false),
      store_(gtk_list_store_new(1, G_TYPE_BOOLEAN)),
      isAlive_(std::make_shared<bool>(true)) {
    characters_.resize(heads.size(), numberWidth);
    Connect(
        gtk_tree_view_get_selection(ViewOf(*this)), "changed",
        [](GtkTreeSelection* /*selection*/, const List* self) {
            if (!self->isFilling_) {
                const Announcement announcement(self->widget());
                RunHandler(self->select_, self->name().c_str());
            }
        },
        this);
    gtk_tree_view_set_enable_search(ViewOf(*this), FALSE);
    gtk_tree_selection_set_mode(gtk_tree_view_get_selection(ViewOf(*this)), GTK_SELECTION_MULTIPLE);
    for (std::size_t i = 0; i < heads.size(); ++i) addColumn(i);
    gtk_tree_view_set_fixed_height_mode(ViewOf(*this), TRUE);
    gtk_tree_view_set_model(ViewOf(*this), GTK_TREE_MODEL(store_));
    Connect(
        widget(), "style-set",
        [](GtkWidget* widget, GtkStyle* previous, const List* self) {
            Callbacks::onStyleSet(widget, previous, self);
        },
        this);
    Connect(
        widget(), "expose-event",
        [](GtkWidget* widget, GdkEventExpose* event, const List* self) {
            return Callbacks::onExposed(widget, event, self);
        },
        this);
}

void List::addColumn(std::size_t number) {
    const auto showCell = [](GtkTreeViewColumn* column, GtkCellRenderer* cell, GtkTreeModel* model,
                             GtkTreeIter* row, gpointer self) {
        Callbacks::showCell(column, cell, model, row, self);
    };
    GtkCellRenderer* const cell = gtk_cell_renderer_text_new();
    gtk_cell_renderer_set_padding(cell, cellPadding, 1);
    GtkTreeViewColumn* const column =
        gtk_tree_view_column_new_with_attributes(heads_[number].c_str(), cell, nullptr);
    gtk_tree_view_column_set_resizable(column, TRUE);
    gtk_tree_view_column_set_sizing(column, GTK_TREE_VIEW_COLUMN_FIXED);
    g_object_set_data(G_OBJECT(column), columnKey, GSIZE_TO_POINTER(number));
    gtk_tree_view_column_set_cell_data_func(column, cell, Guarded(showCell), this, nullptr);
    gtk_tree_view_append_column(ViewOf(*this), column);
    if (isRight_[number]) alignAtPoint(number, decimals_[number]);
}

List::~List() {
    *isAlive_ = false;
    g_signal_handlers_disconnect_matched(gtk_tree_view_get_selection(ViewOf(*this)),
                                         G_SIGNAL_MATCH_DATA, 0, 0, nullptr, nullptr, this);
    if (editableCell_ != nullptr) {
        g_signal_handlers_disconnect_matched(editableCell_, G_SIGNAL_MATCH_DATA, 0, 0, nullptr,
                                             nullptr, this);
        g_object_unref(editableCell_);
    }
    gtk_tree_view_set_model(ViewOf(*this), nullptr);  // its cells ask this object for their texts
    g_object_unref(store_);
}

Block List::scrolling(int visibleRows, const List* partner) {
    GtkAdjustment* const vertical =
        partner == nullptr ? nullptr
                           : gtk_scrolled_window_get_vadjustment(
                                 GTK_SCROLLED_WINDOW(gtk_widget_get_parent(partner->widget())));
    GtkWidget* const scroller = gtk_scrolled_window_new(nullptr, vertical);
    gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(scroller),
                                   scrollsSideways_ ? GTK_POLICY_AUTOMATIC : GTK_POLICY_NEVER,
                                   GTK_POLICY_AUTOMATIC);
    gtk_scrolled_window_set_shadow_type(GTK_SCROLLED_WINDOW(scroller), GTK_SHADOW_IN);
    constexpr int fewestRows = 1;
    return within(scroller, visibleRows, fewestRows);
}

Block List::framed(int visibleRows) {
    GtkWidget* const frame = gtk_frame_new(nullptr);
    gtk_frame_set_shadow_type(GTK_FRAME(frame), GTK_SHADOW_IN);
    return within(frame, visibleRows, visibleRows);
}

Block List::within(GtkWidget* container, int visibleRows, int fewestRows) {
    gtk_container_add(GTK_CONTAINER(container), widget());
    gtk_widget_show(container);
    // A row is somewhat higher than its text, and the heads more so.
    constexpr double rowHeight = 1.3;
    std::ptrdiff_t lines = 1;
    for (const std::string& head : heads_) {
        lines = std::max(lines, 1 + std::count(head.begin(), head.end(), '\n'));
    }
    const double headHeight = 1.0 + static_cast<double>(lines);
    const Block block(container, {this});
    return block.asking({0.0, headHeight + rowHeight * visibleRows},
                        {0.0, headHeight + rowHeight * fewestRows});
}

void List::setHeads(const Row& heads) {
    heads_ = heads;
    const std::size_t before = ColumnsOf(*this);
    for (std::size_t i = before; i > heads.size(); --i) {
        gtk_tree_view_remove_column(ViewOf(*this), ColumnOf(*this, i - 1));
    }
    for (std::size_t i = before; i < heads.size(); ++i) addColumn(i);
    for (std::size_t i = 0; i < heads.size(); ++i) {
        gtk_tree_view_column_set_title(ColumnOf(*this, i), heads[i].c_str());
    }
    if (heads.size() != before) Callbacks::onStyleSet(widget(), nullptr, this);
}

void List::setEmptyText(const std::string& sentence) {
    emptyText_ = sentence;
    atk_object_set_description(gtk_widget_get_accessible(widget()), sentence.c_str());
}

void List::setTable(std::size_t count, RowFunction row, RowFunction copied) {
    isFilling_ = true;
    FinishCellEdit(widget());
    // A view that watches has much to do at every row, and to take rows out one by one is slow.
    gtk_tree_view_set_model(ViewOf(*this), nullptr);
    g_object_unref(store_);
    store_ = gtk_list_store_new(1, G_TYPE_BOOLEAN);
    count_ = count;
    copied_ = copied ? std::move(copied) : row;
    row_ = std::move(row);
    for (std::size_t i = 0; i < count; ++i) {
        GtkTreeIter position;
        gtk_list_store_append(store_, &position);
    }
    gtk_tree_view_set_model(ViewOf(*this), GTK_TREE_MODEL(store_));
    isFilling_ = false;
}

void List::setRows(std::vector<Row> rows) {
    rows_ = std::move(rows);
    setTable(rows_.size(), [this](std::size_t i) { return rows_[i]; });
}

void List::alignAtPoint(std::size_t column, int decimals) {
    decimals_[column] = decimals;
    isRight_[column] = true;
    GtkTreeViewColumn* const aligned = ColumnOf(*this, column);
    g_object_set(RendererOf(aligned), "xalign", 1.0, nullptr);
    gtk_tree_view_column_set_alignment(aligned, 1.0F);
}

void List::setEditable(std::size_t column) {
    editableColumn_ = column;
    editableCell_ = RendererOf(gtk_tree_view_get_column(ViewOf(*this), static_cast<gint>(column)));
    g_object_ref(editableCell_);
    g_object_set(editableCell_, "editable", TRUE, nullptr);
    Connect(
        editableCell_, "editing-started",
        [](GtkCellRenderer* cell, GtkWidget* editor, const gchar* /*path*/, gpointer /*self*/) {
            Callbacks::onEditingStarted(cell, editor);
        },
        this);
    Connect(
        editableCell_, "edited",
        [](GtkCellRenderer* /*cell*/, const gchar* path, const gchar* text, List* self) {
            Callbacks::onEdited(*self, std::strtoul(path, nullptr, 10), text);
        },
        this);
    // Enter or a double click anywhere in a row edits its cell.
    Connect(
        widget(), "row-activated",
        [](GtkTreeView* /*view*/, GtkTreePath* path, GtkTreeViewColumn* /*column*/, List* self) {
            self->editCell(static_cast<std::size_t>(gtk_tree_path_get_indices(path)[0]));
        },
        this);
    Connect(
        widget(), "button-press-event",
        [](GtkWidget* view, const GdkEventButton* event, List* self) -> gboolean {
            return static_cast<gboolean>(Callbacks::onButtonPress(view, *event, *self));
        },
        this);
}

void List::editCell(std::size_t row) {
    const std::unique_ptr<GtkTreePath, decltype(&gtk_tree_path_free)> path(
        gtk_tree_path_new_from_indices(static_cast<gint>(row), -1), &gtk_tree_path_free);
    gtk_tree_view_set_cursor(
        ViewOf(*this), path.get(),
        gtk_tree_view_get_column(ViewOf(*this), static_cast<gint>(editableColumn_)), TRUE);
}

std::vector<List::Row> List::rows() const {
    std::vector<Row> rows;
    rows.reserve(count_);
    for (std::size_t i = 0; i < count_; ++i) {
        rows.push_back(row_(i));
    }
    return rows;
}

std::vector<List::Row> List::copiedRows(bool onlySelected) const {
    std::vector<std::size_t> positions;
    if (onlySelected) {
        positions = selected();
    }
    if (positions.empty()) {
        positions.resize(count_);
        std::iota(positions.begin(), positions.end(), std::size_t{0});
    }
    std::vector<Row> rows;
    rows.reserve(positions.size());
    for (const std::size_t position : positions) {
        rows.push_back(copied_(position));
    }
    return rows;
}

std::vector<std::size_t> List::selected() const {
    std::vector<std::size_t> positions;
    const auto collect = [](GtkTreeModel* /*model*/, GtkTreePath* path, GtkTreeIter* /*row*/,
                            gpointer rows) {
        static_cast<std::vector<std::size_t>*>(rows)->push_back(
            static_cast<std::size_t>(gtk_tree_path_get_indices(path)[0]));
    };
    gtk_tree_selection_selected_foreach(gtk_tree_view_get_selection(ViewOf(*this)),
                                        Guarded(collect), &positions);
    return positions;
}

void List::select(const std::vector<std::size_t>& rows) {
    GtkTreeSelection* const selection = gtk_tree_view_get_selection(ViewOf(*this));
    isFilling_ = true;
    gtk_tree_selection_unselect_all(selection);
    for (const std::size_t row : rows) {
        GtkTreePath* const path = gtk_tree_path_new_from_indices(static_cast<gint>(row), -1);
        gtk_tree_selection_select_path(selection, path);
        gtk_tree_path_free(path);
    }
    isFilling_ = false;
}

void List::scrollTo(std::size_t row) {
    if (row >= count_) return;
    GtkTreePath* const path = gtk_tree_path_new_from_indices(static_cast<gint>(row), -1);
    gtk_tree_view_scroll_to_cell(ViewOf(*this), path, nullptr, FALSE, 0.0F, 0.0F);
    gtk_tree_path_free(path);
}

std::string List::tableText(const std::vector<Row>& rows) const {
    std::string table;
    Row heads = heads_;
    for (std::string& head : heads) {  // of several lines in the window
        std::replace(head.begin(), head.end(), '\n', ' ');
    }
    AppendLine(table, heads);
    for (const Row& cells : rows) {
        AppendLine(table, cells);
    }
    return table;
}

std::string List::text() const {
    return tableText(rows());
}

std::string List::copiedText() const {
    return tableText(copiedRows(false));
}

bool List::canPerform(EditCommand command) const {
    if (command == EditCommand::Paste) return paste_ != nullptr;
    return count_ > 0 && (command == EditCommand::Copy || command == EditCommand::SelectAll);
}

void List::perform(EditCommand command) {
    if (!canPerform(command)) return;
    if (command == EditCommand::Paste) {
        // The text may come when this list is gone.
        RequestText(Selection::Clipboard,
                    [this, isAlive = isAlive_](const std::optional<std::string>& text) {
                        if (*isAlive) {
                            const Announcement announcement(widget());
                            RunHandler([&] { paste_(text.value_or("")); }, name().c_str());
                        }
                    });
        return;
    }
    if (command == EditCommand::SelectAll) {
        gtk_tree_selection_select_all(gtk_tree_view_get_selection(ViewOf(*this)));
        return;
    }
    const std::vector<Row> copied = copiedRows(true);
    SetClipboardText(heads_.size() > 1 ? tableText(copied) : ValuesText(copied));
}

}  // namespace toolkit
