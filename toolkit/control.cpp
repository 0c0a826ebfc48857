#include "toolkit/control.h"

#include <gtk/gtk.h>

#include <utility>

namespace toolkit {

Control::Control(std::string name, GtkWidget* widget) : name_(std::move(name)), widget_(widget) {
    g_object_ref_sink(widget_);
    g_object_set_data(G_OBJECT(widget_), "toolkit-control", this);
    gtk_widget_set_name(widget_, name_.c_str());
    atk_object_set_accessible_id(gtk_widget_get_accessible(widget_), name_.c_str());
    gtk_widget_show(widget_);
}

Control::~Control() {
    g_object_set_data(G_OBJECT(widget_), "toolkit-control", nullptr);
    g_signal_handlers_disconnect_matched(widget_, G_SIGNAL_MATCH_DATA, 0, 0, nullptr, nullptr,
                                         this);
    g_object_unref(widget_);
}

std::string Control::text() const {
    return {};
}

Area Control::area() const {
    GdkWindow* const window = gtk_widget_get_window(widget_);
    if (window == nullptr || gtk_widget_get_mapped(widget_) == FALSE) {
        return {};
    }
    Area area;
    gdk_window_get_origin(window, &area.x, &area.y);
    GtkAllocation allocation;
    gtk_widget_get_allocation(widget_, &allocation);
    if (gtk_widget_get_has_window(widget_) == FALSE) {
        area.x += allocation.x;
        area.y += allocation.y;
    }
    area.width = allocation.width;
    area.height = allocation.height;
    return area;
}

bool Control::isSensitive() const {
    return gtk_widget_is_sensitive(widget_) != FALSE;
}

void Control::setSensitive(bool sensitive) {
    gtk_widget_set_sensitive(widget_, static_cast<gboolean>(sensitive));
}

void Control::setVisible(bool visible) {
    gtk_widget_set_visible(widget_, static_cast<gboolean>(visible));
}

void Control::setTooltip(const std::string& text) {
    gtk_widget_set_tooltip_text(widget_, text.empty() ? nullptr : text.c_str());
}

std::string Control::tooltip() const {
    gchar* const text = gtk_widget_get_tooltip_text(widget_);
    std::string result = text == nullptr ? "" : text;
    g_free(text);
    return result;
}

void Control::setLabelledBy(const Control& caption) {
    AtkObject* const self = gtk_widget_get_accessible(widget_);
    AtkObject* const label = gtk_widget_get_accessible(caption.widget());
    atk_object_add_relationship(self, ATK_RELATION_LABELLED_BY, label);
    atk_object_add_relationship(label, ATK_RELATION_LABEL_FOR, self);
}

void Control::setDescribedBy(const Control& unit) {
    AtkObject* const self = gtk_widget_get_accessible(widget_);
    AtkObject* const description = gtk_widget_get_accessible(unit.widget());
    atk_object_add_relationship(self, ATK_RELATION_DESCRIBED_BY, description);
    atk_object_add_relationship(description, ATK_RELATION_DESCRIPTION_FOR, self);
}

void Control::setAccessibleName(const std::string& name) {
    atk_object_set_name(gtk_widget_get_accessible(widget_), name.c_str());
}

std::string MarkMnemonic(std::string_view caption, std::size_t position) {
    std::string marked;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (i == position || caption[i] == '_') {
            marked += '_';
        }
        marked += caption[i];
    }
    return marked;
}

}  // namespace toolkit
