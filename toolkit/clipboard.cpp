#include "toolkit/clipboard.h"

#include <gtk/gtk.h>

namespace toolkit {

void SetClipboardText(const std::string& text) {
    gtk_clipboard_set_text(gtk_clipboard_get(GDK_SELECTION_CLIPBOARD), text.c_str(),
                           static_cast<gint>(text.size()));
}

}  // namespace toolkit
