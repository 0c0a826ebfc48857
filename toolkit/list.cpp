#include "toolkit/list.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <utility>

#include "toolkit/announcement.h"
#include "toolkit/clipboard.h"
#include "toolkit/editable_text.h"
#include "toolkit/event.h"
#include "toolkit/text_size.h"

namespace toolkit {

namespace {

constexpr int cellPadding = 6;
constexpr const char* columnKey = "toolkit-column";

GtkTreeView* viewOf(const Control& control) {
    return GTK_TREE_VIEW(control.widget());
}

/// The values of a single column, to be pasted where a number is wanted.
std::string valuesText(const std::vector<List::Row>& rows) {
    std::string values;
    for (const List::Row& cells : rows) {
        values += (values.empty() ? "" : "\n") + cells.front();
    }
    return values;
}

/// A number with so much room behind it that it ends where one with these decimals would.
std::string paddedText(const std::string& number, int decimals) {
    constexpr const char* widthOfPoint = "\u2008";
    constexpr const char* widthOfDigit = "\u2007";
    if (number.find_first_of("0123456789") == std::string::npos ||
        number.find('e') != std::string::npos) {
        return number;
    }
    const std::size_t point = number.find('.');
    const bool hasPoint = point != std::string::npos;
    std::string text = number + (hasPoint || decimals == 0 ? "" : widthOfPoint);
    const int present = hasPoint ? static_cast<int>(number.size() - point) - 1 : 0;
    for (int i = present; i < decimals; ++i) {
        text += widthOfDigit;
    }
    return text;
}

/// A column of fixed width takes no notice of its head.
void makeRoomForHead(GtkTreeViewColumn* column) {
    GtkRequisition head;
    gtk_widget_size_request(column->button, &head);
    gtk_tree_view_column_set_min_width(column, head.width);
}

GtkCellRenderer* rendererOf(GtkTreeViewColumn* column) {
    GList* const cells = gtk_cell_layout_get_cells(GTK_CELL_LAYOUT(column));
    auto* const renderer = GTK_CELL_RENDERER(cells->data);
    g_list_free(cells);
    return renderer;
}

GtkListStore* newStore(std::size_t columns) {
    std::vector<GType> types(columns, G_TYPE_STRING);
    return gtk_list_store_newv(static_cast<gint>(columns), types.data());
}

void appendLine(std::string& text, const List::Row& cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        text += (i == 0 ? "" : "\t") + cells[i];
    }
    text += '\n';
}

}  // namespace

struct List::Callbacks {
    static void onEditingStarted(GtkCellRenderer* cell, GtkCellEditable* editor,
                                 const gchar* /*path*/, gpointer /*data*/) {
        limitCharacters(GTK_WIDGET(editor));
        // GTK+'s own handler gives up what was typed when the editor loses the focus.
        constexpr auto match =
            static_cast<GSignalMatchType>(G_SIGNAL_MATCH_ID | G_SIGNAL_MATCH_DATA);
        g_signal_handlers_block_matched(editor, match,
                                        g_signal_lookup("focus-out-event", GTK_TYPE_WIDGET), 0,
                                        nullptr, nullptr, cell);
        g_signal_connect(editor, "focus-out-event", G_CALLBACK(&onEditorLeft), nullptr);
    }

    static gboolean onEditorLeft(GtkWidget* editor, GdkEvent* /*event*/, gpointer /*data*/) {
        if (gtk_grab_get_current() == nullptr) {  // a menu only borrows the focus
            endCellEdit(editor);
        }
        return FALSE;
    }

    static void onEdited(GtkCellRendererText* /*cell*/, const gchar* path, const gchar* text,
                         gpointer data) {
        auto* const self = static_cast<List*>(data);
        GtkTreeIter row;
        if (gtk_tree_model_get_iter_from_string(GTK_TREE_MODEL(self->store_), &row, path) ==
            FALSE) {
            return;
        }
        gchar* before = nullptr;
        gtk_tree_model_get(GTK_TREE_MODEL(self->store_), &row, self->editableColumn_, &before, -1);
        const bool isSame = g_strcmp0(before, text) == 0;
        g_free(before);
        if (isSame) {
            return;
        }
        gtk_list_store_set(self->store_, &row, self->editableColumn_, text, -1);
        runHandler(self->cellTextChange_, self->name().c_str());
    }

    /// Enter or a double click anywhere in a row edits its cell.
    static void onRowActivated(GtkTreeView* /*view*/, GtkTreePath* path,
                               GtkTreeViewColumn* /*column*/, gpointer data) {
        static_cast<List*>(data)->editCell(
            static_cast<std::size_t>(gtk_tree_path_get_indices(path)[0]));
    }

    static gboolean onButtonPress(GtkWidget* widget, GdkEventButton* event, gpointer data) {
        auto* const self = static_cast<List*>(data);
        GtkTreeView* const view = GTK_TREE_VIEW(widget);
        if (event->type != GDK_BUTTON_PRESS) {  // the rest of a double click
            return static_cast<gboolean>(isCellEdited(widget));
        }
        GtkTreePath* path = nullptr;
        GtkTreeViewColumn* column = nullptr;
        const bool isClick = event->button == 1 &&
                             (event->state & (GDK_SHIFT_MASK | GDK_CONTROL_MASK)) == 0 &&
                             event->window == gtk_tree_view_get_bin_window(view);
        if (!isClick || gtk_tree_view_get_path_at_pos(view, static_cast<gint>(event->x),
                                                      static_cast<gint>(event->y), &path, &column,
                                                      nullptr, nullptr) == FALSE) {
            return FALSE;
        }
        const auto row = static_cast<std::size_t>(gtk_tree_path_get_indices(path)[0]);
        gtk_tree_path_free(path);
        GList* const columns = gtk_tree_view_get_columns(view);
        self->clickedCell_ = {row, static_cast<std::size_t>(g_list_index(columns, column))};
        g_list_free(columns);
        finishCellEdit(widget);
        runHandler(self->cellClick_, self->name().c_str());
        return static_cast<gboolean>(isCellEdited(widget));
    }

    /// The text of a cell, made when it is looked at.
    static void onCellShown(GtkTreeViewColumn* column, GtkCellRenderer* cell, GtkTreeModel* model,
                            GtkTreeIter* row, gpointer data) {
        const auto* const self = static_cast<const List*>(data);
        const std::unique_ptr<GtkTreePath, decltype(&gtk_tree_path_free)> path(
            gtk_tree_model_get_path(model, row), &gtk_tree_path_free);
        const Row cells = self->rowAt(gtk_tree_path_get_indices(path.get())[0]);
        const auto position = GPOINTER_TO_SIZE(g_object_get_data(G_OBJECT(column), columnKey));
        const int decimals = self->decimals_[position];
        const std::string text =
            decimals < 0 ? cells[position] : paddedText(cells[position], decimals);
        g_object_set(cell, "text", text.c_str(), nullptr);
    }

    static void onSelectionChanged(GtkTreeSelection* /*selection*/, gpointer data) {
        const auto* const self = static_cast<const List*>(data);
        if (!self->isFilling_) {
            const Announcement announcement(self->widget());
            runHandler(self->select_, self->name().c_str());
        }
    }

    /// A list and whether it still lives when the text comes.
    struct Request {
        std::shared_ptr<bool> isAlive;
        List* list;
    };

    static void onTextReceived(GtkClipboard* /*clipboard*/, const gchar* text, gpointer data) {
        const std::unique_ptr<Request> request(static_cast<Request*>(data));
        if (text == nullptr || !*request->isAlive) {
            return;
        }
        const Announcement announcement(request->list->widget());
        runHandler([&] { request->list->paste_(text); }, request->list->name().c_str());
    }

    static void collectRow(GtkTreeModel* /*model*/, GtkTreePath* path, GtkTreeIter* /*row*/,
                           gpointer data) {
        const gint position = gtk_tree_path_get_indices(path)[0];
        static_cast<std::vector<std::size_t>*>(data)->push_back(static_cast<std::size_t>(position));
    }
};

List::List(std::string name, const Row& heads)
    : Control(std::move(name), gtk_tree_view_new()),
      heads_(heads),
      decimals_(heads.size(), -1),
      isAlive_(std::make_shared<bool>(true)),
      store_(newStore(heads.size())) {
    gtk_tree_view_set_model(viewOf(*this), GTK_TREE_MODEL(store_));
    gtk_tree_view_set_enable_search(viewOf(*this), FALSE);
    GtkTreeSelection* const selection = gtk_tree_view_get_selection(viewOf(*this));
    gtk_tree_selection_set_mode(selection, GTK_SELECTION_MULTIPLE);
    g_signal_connect(selection, "changed", G_CALLBACK(&Callbacks::onSelectionChanged), this);
    for (std::size_t i = 0; i < heads.size(); ++i) {
        GtkCellRenderer* const cell = gtk_cell_renderer_text_new();
        gtk_cell_renderer_set_padding(cell, cellPadding, 1);
        GtkTreeViewColumn* const column = gtk_tree_view_column_new_with_attributes(
            heads[i].c_str(), cell, "text", static_cast<gint>(i), nullptr);
        gtk_tree_view_column_set_resizable(column, TRUE);
        gtk_tree_view_append_column(viewOf(*this), column);
    }
}

List::~List() {
    *isAlive_ = false;
    g_signal_handlers_disconnect_matched(gtk_tree_view_get_selection(viewOf(*this)),
                                         G_SIGNAL_MATCH_DATA, 0, 0, nullptr, nullptr, this);
    if (editableColumn_ >= 0) {
        g_signal_handlers_disconnect_matched(editableCell_, G_SIGNAL_MATCH_DATA, 0, 0, nullptr,
                                             nullptr, this);
        g_object_unref(editableCell_);
    }
    gtk_tree_view_set_model(viewOf(*this), nullptr);  // cells may ask this object for their texts
    g_object_unref(store_);
}

Block List::scrolling(int visibleRows, const List* partner) {
    GtkAdjustment* const vertical =
        partner == nullptr ? nullptr
                           : gtk_scrolled_window_get_vadjustment(
                                 GTK_SCROLLED_WINDOW(gtk_widget_get_parent(partner->widget())));
    GtkWidget* const scroller = gtk_scrolled_window_new(nullptr, vertical);
    gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(scroller),
                                   isWhole_ ? GTK_POLICY_NEVER : GTK_POLICY_AUTOMATIC,
                                   GTK_POLICY_AUTOMATIC);
    gtk_scrolled_window_set_shadow_type(GTK_SCROLLED_WINDOW(scroller), GTK_SHADOW_IN);
    return within(scroller, visibleRows);
}

Block List::framed(int visibleRows) {
    GtkWidget* const frame = gtk_frame_new(nullptr);
    gtk_frame_set_shadow_type(GTK_FRAME(frame), GTK_SHADOW_IN);
    return within(frame, visibleRows);
}

Block List::within(GtkWidget* container, int visibleRows) {
    gtk_container_add(GTK_CONTAINER(container), widget());
    gtk_widget_show(container);
    // The heads are about half as high again as a row.
    const auto setHeight = +[](GtkWidget* box, GtkStyle* /*previous*/, gpointer rows) {
        const int height = lineHeight(box);
        g_object_set(box, "height-request", (height + 6) * GPOINTER_TO_INT(rows) + 2 * height,
                     nullptr);
    };
    g_signal_connect(container, "style-set", G_CALLBACK(setHeight), GINT_TO_POINTER(visibleRows));
    return {container, {this}};
}

void List::setHeads(const Row& heads) {
    heads_ = heads;
    for (std::size_t i = 0; i < heads.size(); ++i) {
        GtkTreeViewColumn* const column =
            gtk_tree_view_get_column(viewOf(*this), static_cast<gint>(i));
        gtk_tree_view_column_set_title(column, heads[i].c_str());
        if (isLong_) {
            makeRoomForHead(column);
        }
    }
}

void List::takeStore() {
    finishCellEdit(widget());
    // A view that watches has much to do at every row, and to take rows out one by one is slow.
    gtk_tree_view_set_model(viewOf(*this), nullptr);
    g_object_unref(store_);
    store_ = newStore(heads_.size());
    table_ = nullptr;
    copied_ = nullptr;
}

void List::setRows(const std::vector<Row>& rows) {
    takeStore();
    for (const Row& cells : rows) {
        GtkTreeIter row;
        gtk_list_store_append(store_, &row);
        for (std::size_t i = 0; i < cells.size(); ++i) {
            gtk_list_store_set(store_, &row, static_cast<gint>(i), cells[i].c_str(), -1);
        }
    }
    gtk_tree_view_set_model(viewOf(*this), GTK_TREE_MODEL(store_));
}

void List::setTable(std::size_t count, std::function<Row(std::size_t)> row,
                    std::function<Row(std::size_t)> copied) {
    isFilling_ = true;
    takeStore();
    table_ = std::move(row);
    copied_ = std::move(copied);
    for (std::size_t i = 0; i < count; ++i) {
        GtkTreeIter position;
        gtk_list_store_append(store_, &position);
    }
    gtk_tree_view_set_model(viewOf(*this), GTK_TREE_MODEL(store_));
    isFilling_ = false;
}

void List::setLong(const std::vector<int>& characters, bool scrollsSideways) {
    isLong_ = true;
    isWhole_ = !scrollsSideways;
    const int digit = sizeOfText(widget(), "0").width;
    for (std::size_t i = 0; i < heads_.size(); ++i) {
        GtkTreeViewColumn* const column =
            gtk_tree_view_get_column(viewOf(*this), static_cast<gint>(i));
        gtk_tree_view_column_set_sizing(column, GTK_TREE_VIEW_COLUMN_FIXED);
        gtk_tree_view_column_set_fixed_width(column, characters[i] * digit + 2 * cellPadding);
        makeRoomForHead(column);
        showCellsWhenLookedAt(i);
    }
    gtk_tree_view_set_fixed_height_mode(viewOf(*this), TRUE);
}

void List::alignRight(std::size_t column) {
    GtkTreeViewColumn* const aligned =
        gtk_tree_view_get_column(viewOf(*this), static_cast<gint>(column));
    g_object_set(rendererOf(aligned), "xalign", 1.0, nullptr);
    gtk_tree_view_column_set_alignment(aligned, 1.0F);
}

void List::showCellsWhenLookedAt(std::size_t column) {
    GtkTreeViewColumn* const shown =
        gtk_tree_view_get_column(viewOf(*this), static_cast<gint>(column));
    g_object_set_data(G_OBJECT(shown), columnKey, GSIZE_TO_POINTER(column));
    gtk_tree_view_column_set_cell_data_func(shown, rendererOf(shown), &Callbacks::onCellShown, this,
                                            nullptr);
}

void List::alignAtPoint(std::size_t column, int decimals) {
    decimals_[column] = decimals;
    alignRight(column);
    showCellsWhenLookedAt(column);
}

void List::clear() {
    takeStore();
    gtk_tree_view_set_model(viewOf(*this), GTK_TREE_MODEL(store_));
}

void List::setEditable(std::size_t column) {
    editableColumn_ = static_cast<int>(column);
    editableCell_ = rendererOf(gtk_tree_view_get_column(viewOf(*this), editableColumn_));
    g_object_ref(editableCell_);
    g_object_set(editableCell_, "editable", TRUE, nullptr);
    g_signal_connect(editableCell_, "editing-started", G_CALLBACK(&Callbacks::onEditingStarted),
                     this);
    g_signal_connect(editableCell_, "edited", G_CALLBACK(&Callbacks::onEdited), this);
    g_signal_connect(widget(), "row-activated", G_CALLBACK(&Callbacks::onRowActivated), this);
    g_signal_connect(widget(), "button-press-event", G_CALLBACK(&Callbacks::onButtonPress), this);
}

void List::editCell(std::size_t row) {
    const std::unique_ptr<GtkTreePath, decltype(&gtk_tree_path_free)> path(
        gtk_tree_path_new_from_indices(static_cast<gint>(row), -1), &gtk_tree_path_free);
    gtk_tree_view_set_cursor(viewOf(*this), path.get(),
                             gtk_tree_view_get_column(viewOf(*this), editableColumn_), TRUE);
}

List::Row List::rowAt(int position) const {
    if (table_) {
        return table_(static_cast<std::size_t>(position));
    }
    Row cells;
    GtkTreeIter row;
    if (gtk_tree_model_iter_nth_child(GTK_TREE_MODEL(store_), &row, nullptr, position) == FALSE) {
        return cells;
    }
    for (std::size_t i = 0; i < heads_.size(); ++i) {
        gchar* cell = nullptr;
        gtk_tree_model_get(GTK_TREE_MODEL(store_), &row, static_cast<gint>(i), &cell, -1);
        cells.emplace_back(cell == nullptr ? "" : cell);
        g_free(cell);
    }
    return cells;
}

List::Row List::copiedRowAt(int position) const {
    return copied_ ? copied_(static_cast<std::size_t>(position)) : rowAt(position);
}

int List::count() const {
    return gtk_tree_model_iter_n_children(GTK_TREE_MODEL(store_), nullptr);
}

bool List::isEmpty() const {
    return count() == 0;
}

std::vector<List::Row> List::rows() const {
    std::vector<Row> rows;
    rows.reserve(static_cast<std::size_t>(count()));
    for (int i = 0; i < count(); ++i) {
        rows.push_back(rowAt(i));
    }
    return rows;
}

std::vector<List::Row> List::copiedRows() const {
    std::vector<std::size_t> positions = selected();
    if (positions.empty()) {
        positions.resize(static_cast<std::size_t>(count()));
        std::iota(positions.begin(), positions.end(), 0U);
    }
    std::vector<Row> rows;
    rows.reserve(positions.size());
    for (const std::size_t position : positions) {
        rows.push_back(copiedRowAt(static_cast<int>(position)));
    }
    return rows;
}

std::vector<std::size_t> List::selected() const {
    std::vector<std::size_t> positions;
    gtk_tree_selection_selected_foreach(gtk_tree_view_get_selection(viewOf(*this)),
                                        &Callbacks::collectRow, &positions);
    return positions;
}

void List::select(const std::vector<std::size_t>& rows) {
    GtkTreeSelection* const selection = gtk_tree_view_get_selection(viewOf(*this));
    isFilling_ = true;
    gtk_tree_selection_unselect_all(selection);
    for (const std::size_t row : rows) {
        GtkTreePath* const path = gtk_tree_path_new_from_indices(static_cast<gint>(row), -1);
        gtk_tree_selection_select_path(selection, path);
        gtk_tree_path_free(path);
    }
    isFilling_ = false;
}

std::string List::tableText(const std::vector<Row>& rows) const {
    std::string table;
    Row heads = heads_;
    for (std::string& head : heads) {  // of several lines in the window
        std::replace(head.begin(), head.end(), '\n', ' ');
    }
    appendLine(table, heads);
    for (const Row& cells : rows) {
        appendLine(table, cells);
    }
    return table;
}

std::string List::text() const {
    return tableText(rows());
}

std::string List::copiedText() const {
    std::vector<Row> copied;
    copied.reserve(static_cast<std::size_t>(count()));
    for (int i = 0; i < count(); ++i) {
        copied.push_back(copiedRowAt(i));
    }
    return tableText(copied);
}

bool List::canPerform(EditCommand command) const {
    if (command == EditCommand::paste) {
        return paste_ != nullptr;
    }
    const bool applies = command == EditCommand::copy || command == EditCommand::selectAll;
    return applies && !isEmpty();
}

void List::perform(EditCommand command) {
    if (!canPerform(command)) {
        return;
    }
    if (command == EditCommand::paste) {
        auto request = std::make_unique<Callbacks::Request>(Callbacks::Request{isAlive_, this});
        gtk_clipboard_request_text(gtk_clipboard_get(GDK_SELECTION_CLIPBOARD),
                                   &Callbacks::onTextReceived, request.release());
        return;
    }
    if (command == EditCommand::selectAll) {
        gtk_tree_selection_select_all(gtk_tree_view_get_selection(viewOf(*this)));
        return;
    }
    const std::vector<Row> copied = copiedRows();
    setClipboardText(heads_.size() > 1 ? tableText(copied) : valuesText(copied));
}

}  // namespace toolkit
