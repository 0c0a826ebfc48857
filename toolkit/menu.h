#pragma once

#include <memory>
#include <string>
#include <vector>

#include "toolkit/control.h"

using GtkAccelGroup = struct _GtkAccelGroup;

namespace toolkit {

// An item of a menu. In its caption "&" stands before the mnemonic, "&&" for an ampersand;
// the caption "-" makes a separator.
class MenuItem : public Control {
  public:
    MenuItem(std::string name, const std::string& caption);

    std::string text() const override { return text_; }
    // The keys that choose the item from anywhere in the window, as in "<Control>q".
    void setAccelerator(GtkAccelGroup* group, const std::string& keys);
    template <class Object, class Base>
    void onChoose(Object* object, void (Base::*function)()) {
        choose_ = Member(object, function);
    }
    // As above, for handlers that are no members.
    void onChoose(Handler choose) { choose_ = std::move(choose); }

  private:
    std::string text_;
    Handler choose_;
};

// A menu of the bar, opened by its title.
class Menu : public MenuItem {
  public:
    Menu(std::string name, const std::string& caption);
    ~Menu() override;
    void append(MenuItem& item);
    const std::vector<MenuItem*>& items() const { return items_; }
    // `function` runs before the menu is shown.
    template <class Object, class Base>
    void onOpen(Object* object, void (Base::*function)()) {
        open_ = Member(object, function);
    }
    // `function` runs after the menu has gone.
    template <class Object, class Base>
    void onClose(Object* object, void (Base::*function)()) {
        close_ = Member(object, function);
    }

  private:
    GtkWidget* menu_;
    std::vector<MenuItem*> items_;
    Handler open_;
    Handler close_;
};

// The bar of menus at the top of one window, and the accelerators of that window.
class MenuBar : public Control {
  public:
    explicit MenuBar(std::string name);
    ~MenuBar() override;
    // `menu`: with all its items in it.
    void append(Menu& menu);
    // The bar itself, its menus and their items.
    const std::vector<Control*>& controls() const { return controls_; }
    GtkAccelGroup* accelerators() const { return accelerators_; }

  private:
    std::vector<Control*> controls_{this};
    GtkAccelGroup* accelerators_;
};

}  // namespace toolkit
