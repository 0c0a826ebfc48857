#include "toolkit/entry.h"

#include <gtk/gtk.h>

#include <utility>

#include "toolkit/editable_text.h"
#include "toolkit/event.h"
#include "toolkit/number_text.h"

namespace toolkit {

namespace {

constexpr std::size_t maxUndoSteps = 1000;

GtkEditable* EditableOf(const Control& control) {
    return GTK_EDITABLE(control.widget());
}

// Whether the change from `before` to `after` is one character typed at the end of what stood
// before, other than a blank: such changes are undone together, a word at a time.
bool ContinuesWord(const std::string& before, const std::string& after) {
    return !before.empty() && after.size() == before.size() + 1 && after.starts_with(before) &&
           after.back() != ' ' && before.back() != ' ';
}

}  // namespace

Entry::Entry(std::string name, int widthChars) : Control(std::move(name), gtk_entry_new()) {
    gtk_entry_set_width_chars(GTK_ENTRY(widget()), widthChars);
    LimitCharacters(widget());
    gtk_entry_set_activates_default(GTK_ENTRY(widget()), TRUE);
    Connect(
        widget(), "changed", [](GtkEditable* /*editable*/, Entry* self) { self->changed(); }, this);
}

std::string Entry::text() const {
    return gtk_entry_get_text(GTK_ENTRY(widget()));
}

void Entry::setText(const std::string& text) {
    gtk_entry_set_text(GTK_ENTRY(widget()), text.c_str());
}

void Entry::setPlaceholder(const std::string& text) {
    placeholder_ = text;
    const auto onPress = [](GtkWidget* widget, const GdkEventButton* event,
                            const Entry* self) -> gboolean {
        if (event->button != 1 || self->text() != self->placeholder_) return FALSE;
        gtk_widget_grab_focus(widget);
        gtk_editable_select_region(EditableOf(*self), 0, -1);
        return TRUE;
    };
    Connect(widget(), "button-press-event", onPress, this);
}

void Entry::setDefault(const Control& button) {
    gtk_entry_set_activates_default(GTK_ENTRY(widget()), FALSE);
    default_ = button.widget();
    Connect(
        widget(), "activate",
        [](GtkWidget* /*entry*/, const Entry* self) { gtk_widget_activate(self->default_); }, this);
}

double Entry::number() const {
    return NumberOrZero(text());
}

void Entry::changed() {
    if (!isUndoing_) {
        // A selection that is typed over is deleted and inserted by one and the same event.
        const unsigned time = gtk_get_current_event_time();
        const std::string now = text();
        const bool isSameEvent = time != GDK_CURRENT_TIME && time == present_.time;
        const bool isSameWord =
            !history_.empty() && time != GDK_CURRENT_TIME && ContinuesWord(present_.text, now);
        if (!isSameEvent && !isSameWord) {
            if (history_.size() == maxUndoSteps) {
                history_.erase(history_.begin());
            }
            history_.push_back(present_);
        }
        present_ = {now, gtk_editable_get_position(EditableOf(*this)), time};
    }
    RunHandler(textChange_, name().c_str());
}

void Entry::undo() {
    if (history_.empty()) return;
    present_ = std::move(history_.back());
    history_.pop_back();
    present_.time = GDK_CURRENT_TIME;
    isUndoing_ = true;
    setText(present_.text);
    isUndoing_ = false;
    gtk_editable_set_position(EditableOf(*this), present_.cursor);
}

bool Entry::canPerform(EditCommand command) const {
    return command == EditCommand::Undo ? !history_.empty() : CanEdit(widget(), command);
}

void Entry::perform(EditCommand command) {
    if (command == EditCommand::Undo) {
        undo();
    } else {
        Edit(widget(), command);
    }
}

}  // namespace toolkit
