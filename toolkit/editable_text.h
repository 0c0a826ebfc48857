#pragma once

#include "toolkit/control.h"
#include "toolkit/edit_commands.h"

namespace toolkit {

// Whether `command` would do anything to the text field `widget`, a GTK+ editable; never for
// other widgets, and never for undo, which a text field does not know by itself.
bool CanEdit(GtkWidget* widget, EditCommand command);
// Performs a command that CanEdit allows.
void Edit(GtkWidget* widget, EditCommand command);

// The most characters of a text field: many more, and each key is slow to be shown.
constexpr int mostCharacters = 1000;
// Keeps the entry `widget` to them. Of a longer text only the start is inserted, with "…" behind
// it, so that what is left is never another number; of a text that is no UTF-8 nothing.
void LimitCharacters(GtkWidget* widget);

// Whether a cell of a list is being edited in the window of `widget`.
bool IsCellEdited(GtkWidget* widget);
// Ends that, as Enter does: the cell keeps what was typed.
void FinishCellEdit(GtkWidget* widget);
// The same of the editor itself.
void EndCellEdit(GtkWidget* editor);

}  // namespace toolkit
