#pragma once

#include <functional>
#include <string>
#include <string_view>

using GtkWidget = struct _GtkWidget;

namespace toolkit {

// What runs when a control's event happens.
using Handler = std::function<void()>;

// A member function of `object` as a handler. The object has to outlive the control, as it does
// where the control is its member.
template <class Object, class Base>
Handler Member(Object* object, void (Base::*function)()) {
    return [object, function] { (object->*function)(); };
}

// A rectangle on the display, in pixels from its upper left corner.
struct Area {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

// One control of a screen: a named widget that lives as long as this object, and that no handler
// is run for afterwards. The name serves as widget name and as accessible id.
class Control {
  public:
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control();

    const std::string& name() const { return name_; }
    GtkWidget* widget() const { return widget_; }

    // The text that the control shows, without the mark of a mnemonic; empty where it has none.
    virtual std::string text() const;

    // Where the control is on the display; empty while it is not shown.
    Area area() const;

    bool isSensitive() const;
    void setSensitive(bool sensitive);
    // Shows or hides the control; its place in a grid or box closes up while it is hidden.
    void setVisible(bool visible);
    // An empty text takes the tooltip away.
    void setTooltip(const std::string& text);
    std::string tooltip() const;

    // Tells a screen reader that `caption` is what names this control.
    void setLabelledBy(const Control& caption);
    // Tells a screen reader that `unit` says more about this control.
    void setDescribedBy(const Control& unit);
    // Names the control for a screen reader: for pictures, lists and plots, which show no text.
    void setAccessibleName(const std::string& name);

  protected:
    // Takes over a new, floating widget.
    Control(std::string name, GtkWidget* widget);

  private:
    std::string name_;
    GtkWidget* widget_;
};

// A control whose caption carries a mnemonic: the underlined letter that works with Alt. The
// screen gives the letters out, so that none stands twice in a window.
class Captioned {
  public:
    virtual ~Captioned() = default;
    // The caption as a user reads it.
    virtual std::string caption() const = 0;
    // Underlines the character that starts at byte `position`; npos underlines none.
    virtual void underline(std::size_t position) = 0;
    // Whether a mnemonic would lead anywhere.
    virtual bool canCarryMnemonic() const { return true; }
    // `changed` runs when the caption has become another, so that the letters are given out anew.
    virtual void setMnemonicsChanged(Handler changed) = 0;

  protected:
    Captioned() = default;
    Captioned(const Captioned&) = default;
    Captioned& operator=(const Captioned&) = default;
};

// `caption` with an underscore before byte `position`, as GTK+ marks a mnemonic, and the
// underscores of the caption itself doubled.
std::string MarkMnemonic(std::string_view caption, std::size_t position);

}  // namespace toolkit
