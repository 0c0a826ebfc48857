#include "toolkit/editable_text.h"

#include <gtk/gtk.h>

#include <cstring>
#include <memory>
#include <optional>
#include <string>

#include "toolkit/clipboard.h"
#include "toolkit/event.h"

namespace toolkit {

namespace {

void OnInsert(GtkEditable* editable, const gchar* text, gint bytes, gint* position) {
    const auto length = static_cast<std::size_t>(bytes < 0 ? std::strlen(text) : bytes);
    if (g_utf8_validate(text, static_cast<gssize>(length), nullptr) == FALSE) {
        g_signal_stop_emission_by_name(editable, "insert-text");
        gtk_widget_error_bell(GTK_WIDGET(editable));
        return;
    }
    const glong inserted = g_utf8_strlen(text, static_cast<gssize>(length));
    const glong room = mostCharacters - gtk_entry_get_text_length(GTK_ENTRY(editable));
    if (inserted <= room) return;
    g_signal_stop_emission_by_name(editable, "insert-text");
    gtk_widget_error_bell(GTK_WIDGET(editable));
    if (room > 0) {
        const gchar* const end = g_utf8_offset_to_pointer(text, room - 1);
        const std::string start(text, end);
        gtk_editable_insert_text(editable, (start + "…").c_str(), -1, position);
    }
}

// Puts the text in place of what is selected, when it comes.
void Paste(GtkEditable* editable, Selection selection) {
    const std::shared_ptr<GtkEditable> kept(GTK_EDITABLE(g_object_ref(editable)), &g_object_unref);
    RequestText(selection, [kept](const std::optional<std::string>& text) {
        const bool isThere = gtk_widget_get_realized(GTK_WIDGET(kept.get())) != FALSE;
        if (!isThere || !text) return;
        gtk_editable_delete_selection(kept.get());
        gint position = gtk_editable_get_position(kept.get());
        gtk_editable_insert_text(kept.get(), text->data(), static_cast<gint>(text->size()),
                                 &position);
        gtk_editable_set_position(kept.get(), position);
    });
}

// The character at that place of the window that shows the text.
gint PositionAt(GtkEntry* entry, GdkWindow* window, double x) {
    gint windowX = 0;
    gint layoutX = 0;
    gdk_window_get_position(window, &windowX, nullptr);
    gtk_entry_get_layout_offsets(entry, &layoutX, nullptr);
    int index = 0;
    int trailing = 0;
    const double inLayout = x - (layoutX - windowX);
    pango_layout_xy_to_index(gtk_entry_get_layout(entry), static_cast<int>(inLayout * PANGO_SCALE),
                             0, &index, &trailing);
    const gchar* const text = gtk_entry_get_text(entry);
    const gint byte = gtk_entry_layout_index_to_text_index(entry, index);
    return static_cast<gint>(g_utf8_pointer_to_offset(text, text + byte)) + trailing;
}

gboolean OnMiddleButton(GtkEntry* entry, const GdkEventButton* event) {
    constexpr guint middle = 2;
    if (event->button != middle || event->type != GDK_BUTTON_PRESS) return FALSE;
    // To select the whole text, as other ways to the entry do, would take the place of what is to
    // be pasted.
    GtkSettings* const settings = gtk_widget_get_settings(GTK_WIDGET(entry));
    gboolean isSelecting = FALSE;
    g_object_get(settings, "gtk-entry-select-on-focus", &isSelecting, nullptr);
    g_object_set(settings, "gtk-entry-select-on-focus", FALSE, nullptr);
    gtk_widget_grab_focus(GTK_WIDGET(entry));
    g_object_set(settings, "gtk-entry-select-on-focus", isSelecting, nullptr);
    gtk_editable_set_position(GTK_EDITABLE(entry), PositionAt(entry, event->window, event->x));
    Paste(GTK_EDITABLE(entry), Selection::Primary);
    return TRUE;
}

// The editor of a cell in the window of `widget`; null where none is open.
GtkWidget* CellEditorBeside(GtkWidget* widget) {
    GtkWidget* const window = gtk_widget_get_toplevel(widget);
    GtkWidget* const focus =
        GTK_IS_WINDOW(window) ? gtk_window_get_focus(GTK_WINDOW(window)) : nullptr;
    const bool isEditor = focus != nullptr && GTK_IS_CELL_EDITABLE(focus) &&
                          GTK_IS_TREE_VIEW(gtk_widget_get_parent(focus));
    return isEditor ? focus : nullptr;
}

}  // namespace

bool CanEdit(GtkWidget* widget, EditCommand command) {
    if (!GTK_IS_EDITABLE(widget)) return false;
    switch (command) {
        case EditCommand::Undo:
            return false;
        case EditCommand::Cut:
        case EditCommand::Copy:
        case EditCommand::Erase:
            return gtk_editable_get_selection_bounds(GTK_EDITABLE(widget), nullptr, nullptr) !=
                   FALSE;
        case EditCommand::SelectAll: {
            const std::unique_ptr<gchar, decltype(&g_free)> text(
                gtk_editable_get_chars(GTK_EDITABLE(widget), 0, -1), &g_free);
            return *text != '\0';
        }
        case EditCommand::Paste:
            // Whether there is a text only its owner knows, who may be slow to say so.
            return true;
    }
    return false;
}

void Edit(GtkWidget* widget, EditCommand command) {
    // A handler of the change may take the widget away, as a list does with its cell editor.
    const std::unique_ptr<GtkEditable, decltype(&g_object_unref)> kept(
        GTK_EDITABLE(g_object_ref(widget)), &g_object_unref);
    GtkEditable* const editable = kept.get();
    switch (command) {
        case EditCommand::Undo:
            break;
        case EditCommand::Cut:
            gtk_editable_cut_clipboard(editable);
            break;
        case EditCommand::Copy:
            gtk_editable_copy_clipboard(editable);
            break;
        case EditCommand::Paste:
            gtk_editable_paste_clipboard(editable);
            break;
        case EditCommand::Erase:
            gtk_editable_delete_selection(editable);
            break;
        case EditCommand::SelectAll:
            gtk_editable_select_region(editable, 0, -1);
            break;
    }
}

void LimitCharacters(GtkWidget* widget) {
    Connect(widget, "insert-text",
            [](GtkEditable* editable, const gchar* text, gint bytes, gint* position,
               gpointer /*data*/) { OnInsert(editable, text, bytes, position); });
    Connect(widget, "button-press-event",
            [](GtkEntry* entry, GdkEventButton* event, gpointer /*data*/) -> gboolean {
                return OnMiddleButton(entry, event);
            });
    Connect(widget, "paste-clipboard", [](GtkEditable* editable, gpointer /*data*/) {
        g_signal_stop_emission_by_name(editable, "paste-clipboard");
        Paste(editable, Selection::Clipboard);
    });
}

bool IsCellEdited(GtkWidget* widget) {
    return CellEditorBeside(widget) != nullptr;
}

void FinishCellEdit(GtkWidget* widget) {
    GtkWidget* const editor = CellEditorBeside(widget);
    if (editor != nullptr) {
        EndCellEdit(editor);
    }
}

void EndCellEdit(GtkWidget* editor) {
    g_object_ref(editor);
    gtk_cell_editable_editing_done(GTK_CELL_EDITABLE(editor));
    gtk_cell_editable_remove_widget(GTK_CELL_EDITABLE(editor));
    g_object_unref(editor);
}

}  // namespace toolkit
