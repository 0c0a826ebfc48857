#include "toolkit/clipboard.h"

#include <gtk/gtk.h>

#include <memory>
#include <utility>

#include "toolkit/event.h"

namespace toolkit {

namespace {

using Take = std::function<void(const std::optional<std::string>& text)>;

void HandOver(const Take& take, const std::optional<std::string>& text) {
    RunHandler([&] { take(text); }, "clipboard");
}

}  // namespace

void RequestText(Selection selection, Take take) {
    static constexpr auto onText = [](GtkClipboard* /*clipboard*/, const gchar* text,
                                      gpointer data) {
        const std::unique_ptr<Take> request(static_cast<Take*>(data));
        HandOver(*request, text == nullptr ? std::nullopt : std::optional<std::string>(text));
    };
    // GTK+ warns of a text that is no UTF-8 though it is offered as that: it is looked at first.
    const auto onContents = [](GtkClipboard* clipboard, GtkSelectionData* contents, gpointer data) {
        const gint length = gtk_selection_data_get_length(contents);
        if (length < 0) {
            gtk_clipboard_request_text(clipboard, Guarded(onText), data);
            return;
        }
        const std::unique_ptr<Take> request(static_cast<Take*>(data));
        const auto* const bytes =
            reinterpret_cast<const gchar*>(gtk_selection_data_get_data(contents));
        const bool isText = g_utf8_validate(bytes, length, nullptr) != FALSE;
        HandOver(*request,
                 isText ? std::optional<std::string>({bytes, bytes + length}) : std::nullopt);
    };
    GdkAtom atom =
        selection == Selection::Primary ? GDK_SELECTION_PRIMARY : GDK_SELECTION_CLIPBOARD;
    gtk_clipboard_request_contents(gtk_clipboard_get(atom), gdk_atom_intern("UTF8_STRING", FALSE),
                                   Guarded(onContents),
                                   std::make_unique<Take>(std::move(take)).release());
}

void SetClipboardText(const std::string& text) {
    gtk_clipboard_set_text(gtk_clipboard_get(GDK_SELECTION_CLIPBOARD), text.c_str(),
                           static_cast<gint>(text.size()));
}

}  // namespace toolkit
