#include "toolkit/editable_text.h"

#include <gtk/gtk.h>

#include <memory>

namespace toolkit {

bool canEdit(GtkWidget* widget, EditCommand command) {
    if (!GTK_IS_EDITABLE(widget)) {
        return false;
    }
    switch (command) {
        case EditCommand::undo:
            return false;
        case EditCommand::cut:
        case EditCommand::copy:
        case EditCommand::erase:
            return gtk_editable_get_selection_bounds(GTK_EDITABLE(widget), nullptr, nullptr) !=
                   FALSE;
        case EditCommand::selectAll: {
            const std::unique_ptr<gchar, decltype(&g_free)> text(
                gtk_editable_get_chars(GTK_EDITABLE(widget), 0, -1), &g_free);
            return *text != '\0';
        }
        case EditCommand::paste:
            return gtk_clipboard_wait_is_text_available(
                       gtk_widget_get_clipboard(widget, GDK_SELECTION_CLIPBOARD)) != FALSE;
    }
    return false;
}

void edit(GtkWidget* widget, EditCommand command) {
    GtkEditable* const editable = GTK_EDITABLE(widget);
    switch (command) {
        case EditCommand::undo:
            break;
        case EditCommand::cut:
            gtk_editable_cut_clipboard(editable);
            break;
        case EditCommand::copy:
            gtk_editable_copy_clipboard(editable);
            break;
        case EditCommand::paste:
            gtk_editable_paste_clipboard(editable);
            break;
        case EditCommand::erase:
            gtk_editable_delete_selection(editable);
            break;
        case EditCommand::selectAll:
            gtk_editable_select_region(editable, 0, -1);
            break;
    }
}

}  // namespace toolkit
