#include "toolkit/menu.h"

#include <gtk/gtk.h>

#include <string_view>
#include <utility>

#include "toolkit/event.h"

namespace toolkit {

namespace {

// `caption` with the mark of its mnemonic as GTK+ has it, or without any when `mark` is false.
std::string ConvertMnemonic(std::string_view caption, bool mark) {
    std::string converted;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == '&' && i + 1 < caption.size()) {
            ++i;
            if (mark && caption[i] != '&') {
                converted += '_';
            }
        }
        converted += caption[i];
        if (mark && caption[i] == '_') {
            converted += '_';
        }
    }
    return converted;
}

GtkWidget* NewItem(const std::string& caption) {
    if (caption == "-") return gtk_separator_menu_item_new();
    return gtk_menu_item_new_with_mnemonic(ConvertMnemonic(caption, true).c_str());
}

}  // namespace

MenuItem::MenuItem(std::string name, const std::string& caption)
    : Control(std::move(name), NewItem(caption)), text_(ConvertMnemonic(caption, false)) {
    const auto onActivate = [](GtkMenuItem* /*item*/, const MenuItem* self) {
        RunHandler(self->choose_, self->name().c_str());
    };
    Connect(widget(), "activate", onActivate, this);
}

void MenuItem::setAccelerator(GtkAccelGroup* group, const std::string& keys) {
    guint key = 0;
    GdkModifierType modifiers{};
    gtk_accelerator_parse(keys.c_str(), &key, &modifiers);
    gtk_widget_add_accelerator(widget(), "activate", group, key, modifiers, GTK_ACCEL_VISIBLE);
}

Menu::Menu(std::string name, const std::string& caption)
    : MenuItem(std::move(name), caption), menu_(gtk_menu_new()) {
    g_object_ref_sink(menu_);
    gtk_menu_item_set_submenu(GTK_MENU_ITEM(widget()), menu_);
    const auto onShow = [](GtkWidget* /*menu*/, const Menu* self) {
        RunHandler(self->open_, self->name().c_str());
    };
    const auto onHide = [](GtkWidget* /*menu*/, const Menu* self) {
        RunHandler(self->close_, self->name().c_str());
    };
    Connect(menu_, "show", onShow, this);
    Connect(menu_, "hide", onHide, this);
}

Menu::~Menu() {
    g_signal_handlers_disconnect_matched(menu_, G_SIGNAL_MATCH_DATA, 0, 0, nullptr, nullptr, this);
    g_object_unref(menu_);
}

void Menu::append(MenuItem& item) {
    gtk_menu_shell_append(GTK_MENU_SHELL(menu_), item.widget());
    items_.push_back(&item);
}

MenuBar::MenuBar(std::string name)
    : Control(std::move(name), gtk_menu_bar_new()), accelerators_(gtk_accel_group_new()) {}

MenuBar::~MenuBar() {
    g_object_unref(accelerators_);
}

void MenuBar::append(Menu& menu) {
    gtk_menu_shell_append(GTK_MENU_SHELL(widget()), menu.widget());
    controls_.push_back(&menu);
    controls_.insert(controls_.end(), menu.items().begin(), menu.items().end());
}

}  // namespace toolkit
