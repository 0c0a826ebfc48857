#include "toolkit/button.h"

#include <gtk/gtk.h>

#include <utility>

#include "toolkit/announcement.h"
#include "toolkit/editable_text.h"
#include "toolkit/event.h"

namespace toolkit {

namespace {

/// GTK+ leads Tab to the button of a group that is on, and so past a group in which none is on:
/// there Tab goes to the first button that it comes by.
gboolean onTabFocus(GtkWidget* button, GtkDirectionType direction, gpointer none) {
    const bool isTab = direction == GTK_DIR_TAB_FORWARD || direction == GTK_DIR_TAB_BACKWARD;
    if (!isTab || gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(none)) == FALSE) {
        return FALSE;
    }
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
    const auto onClicked = +[](GtkButton* button, gpointer data) {
        const auto* const self = static_cast<Button*>(data);
        finishCellEdit(GTK_WIDGET(button));  // by its mnemonic it is pressed from within an editor
        const Announcement announcement(GTK_WIDGET(button));
        runHandler(self->click_, self->name().c_str());
    };
    g_signal_connect(widget(), "clicked", G_CALLBACK(onClicked), this);
}

void Button::underline(std::size_t position) {
    gtk_button_set_use_underline(GTK_BUTTON(widget()), TRUE);
    gtk_button_set_label(GTK_BUTTON(widget()), markMnemonic(caption_, position).c_str());
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
      caption_(std::move(caption)) {
    const auto onToggled = +[](GtkToggleButton* button, gpointer data) {
        const auto* const self = static_cast<RadioButton*>(data);
        if (gtk_toggle_button_get_active(button) != FALSE) {
            const Announcement announcement(GTK_WIDGET(button));
            runHandler(self->choose_, self->name().c_str());
        }
    };
    g_signal_connect(widget(), "toggled", G_CALLBACK(onToggled), this);
    g_signal_connect_object(widget(), "focus", G_CALLBACK(onTabFocus), group.none_,
                            static_cast<GConnectFlags>(0));
}

bool RadioButton::isOn() const {
    return gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(widget())) != FALSE;
}

void RadioButton::turnOn() {
    gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(widget()), TRUE);
}

void RadioButton::setCaption(const std::string& caption) {
    if (caption == caption_) {
        return;
    }
    caption_ = caption;
    underline(std::string::npos);
    if (changed_) {
        changed_();
    }
}

void RadioButton::underline(std::size_t position) {
    gtk_button_set_use_underline(GTK_BUTTON(widget()), TRUE);
    gtk_button_set_label(GTK_BUTTON(widget()), markMnemonic(caption_, position).c_str());
}

}  // namespace toolkit
