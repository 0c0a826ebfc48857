#include "toolkit/check_button.h"

#include <gtk/gtk.h>

#include <utility>

#include "toolkit/announcement.h"
#include "toolkit/event.h"

namespace toolkit {

CheckButton::CheckButton(std::string name, std::string caption)
    : Control(std::move(name), gtk_check_button_new_with_label(caption.c_str())),
      caption_(std::move(caption)) {
    const auto onToggled = [](GtkToggleButton* button, const CheckButton* self) {
        const Announcement announcement(GTK_WIDGET(button));
        RunHandler(self->toggled_, self->name().c_str());
    };
    Connect(widget(), "toggled", onToggled, this);
}

bool CheckButton::isOn() const {
    return gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(widget())) != FALSE;
}

void CheckButton::turn(bool isOn) {
    gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(widget()), static_cast<gboolean>(isOn));
}

}  // namespace toolkit
