#include "toolkit/button.h"

#include <gtk/gtk.h>

#include <utility>

#include "toolkit/announcement.h"
#include "toolkit/editable_text.h"
#include "toolkit/event.h"

namespace toolkit {

namespace {

// GTK+ leads Tab to the button of a group that is on, and so past a group in which none is on:
// there Tab goes to the first button that it comes by.
gboolean OnTabFocus(GtkWidget* button, GtkDirectionType direction, GtkWidget* none) {
    const bool isTab = direction == GTK_DIR_TAB_FORWARD || direction == GTK_DIR_TAB_BACKWARD;
    if (!isTab || gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(none)) == FALSE) return FALSE;
    for (const GSList* other = gtk_radio_button_get_group(GTK_RADIO_BUTTON(button));
         other != nullptr; other = other->next) {
        if (gtk_widget_is_focus(GTK_WIDGET(other->data)) != FALSE) {
            return FALSE;  // Tab is leaving the group
        }
    }
    gtk_widget_grab_focus(button);
    return TRUE;
}

}  // namespace

Button::Button(std::string name, std::string caption)
    : Control(std::move(name), gtk_button_new_with_label(caption.c_str())),
      caption_(std::move(caption)) {
    gtk_widget_set_can_default(widget(), TRUE);
    const auto onClicked = [](GtkWidget* button, const Button* self) {
        FinishCellEdit(button);  // by its mnemonic it is pressed from within an editor
        const Announcement announcement(button);
        RunHandler(self->click_, self->name().c_str());
    };
    Connect(widget(), "clicked", onClicked, this);
}

void Button::underline(std::size_t position) {
    gtk_button_set_use_underline(GTK_BUTTON(widget()), TRUE);
    gtk_button_set_label(GTK_BUTTON(widget()), MarkMnemonic(caption_, position).c_str());
}

RadioGroup::RadioGroup() : none_(gtk_radio_button_new(nullptr)) {
    g_object_ref_sink(none_);
}

RadioGroup::~RadioGroup() {
    g_object_unref(none_);
}

void RadioGroup::clear() {
    gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(none_), TRUE);
}

RadioButton::RadioButton(RadioGroup& group, std::string name, std::string caption)
    : Control(std::move(name), gtk_radio_button_new_with_label_from_widget(
                                   GTK_RADIO_BUTTON(group.none_), caption.c_str())),
      caption_(std::move(caption)),
      none_(group.none_) {
    const auto onToggled = [](GtkWidget* button, const RadioButton* self) {
        if (self->isOn()) {
            FinishCellEdit(button);
            const Announcement announcement(button);
            RunHandler(self->choose_, self->name().c_str());
        }
    };
    const auto onFocus = [](GtkWidget* button, GtkDirectionType direction,
                            const RadioButton* self) -> gboolean {
        return OnTabFocus(button, direction, self->none_);
    };
    Connect(widget(), "toggled", onToggled, this);
    Connect(widget(), "focus", onFocus, this);
}

bool RadioButton::isOn() const {
    return gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(widget())) != FALSE;
}

void RadioButton::turnOn() {
    gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(widget()), TRUE);
}

void RadioButton::reserve(int characters) {
    auto* const label = GTK_LABEL(gtk_bin_get_child(GTK_BIN(widget())));
    gtk_label_set_width_chars(label, characters);
    gtk_label_set_ellipsize(label, PANGO_ELLIPSIZE_END);
}

void RadioButton::setCaption(const std::string& caption) {
    if (caption == caption_) return;
    caption_ = caption;
    underline(std::string::npos);
    if (changed_) {
        changed_();
    }
}

void RadioButton::underline(std::size_t position) {
    gtk_button_set_use_underline(GTK_BUTTON(widget()), TRUE);
    gtk_button_set_label(GTK_BUTTON(widget()), MarkMnemonic(caption_, position).c_str());
}

}  // namespace toolkit
