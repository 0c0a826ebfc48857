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
            // Whether there is a text only its owner knows, who may be slow to say so.
            return true;
    }
    return false;
}

void edit(GtkWidget* widget, EditCommand command) {
    // A handler of the change may take the widget away, as a list does with its cell editor.
    const std::unique_ptr<GtkEditable, decltype(&g_object_unref)> kept(
        GTK_EDITABLE(g_object_ref(widget)), &g_object_unref);
    GtkEditable* const editable = kept.get();
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
