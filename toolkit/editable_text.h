#pragma once

#include "toolkit/control.h"
#include "toolkit/edit_commands.h"

namespace toolkit {

/// Whether `command` would do anything to the text field `widget`, a GTK+ editable; never for
/// other widgets, and never for undo, which a text field does not know by itself.
bool canEdit(GtkWidget* widget, EditCommand command);
/// Performs a command that canEdit allows.
void edit(GtkWidget* widget, EditCommand command);

}  // namespace toolkit
