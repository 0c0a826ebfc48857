#pragma once

#include <string>

#include "toolkit/control.h"

namespace toolkit {

// A push button.
class Button : public Control, public Captioned {
  public:
    Button(std::string name, std::string caption);

    std::string text() const override { return caption_; }
    template <class Object, class Base>
    void onClick(Object* object, void (Base::*function)()) {
        click_ = Member(object, function);
    }

    std::string caption() const override { return caption_; }
    void underline(std::size_t position) override;
    bool canCarryMnemonic() const override { return hasMnemonic_; }
    // Leaves the letters to others, where a window has more captions than there are letters.
    void dropMnemonic() { hasMnemonic_ = false; }
    void setMnemonicsChanged(Handler /*changed*/) override {}  // its caption never changes

  private:
    std::string caption_;
    bool hasMnemonic_ = true;
    Handler click_;
};

// Radio buttons of which at most one is on. The group has to outlive its buttons.
class RadioGroup {
  public:
    RadioGroup();
    RadioGroup(const RadioGroup&) = delete;
    RadioGroup& operator=(const RadioGroup&) = delete;
    ~RadioGroup();

    // Turns every button off; no handler runs.
    void clear();

  private:
    friend class RadioButton;
    GtkWidget* none_;  // GTK+ wants one button of a group on: this one, which is never shown
};

// A button of a group; all buttons of a new group are off.
class RadioButton : public Control, public Captioned {
  public:
    RadioButton(RadioGroup& group, std::string name, std::string caption);

    std::string text() const override { return caption_; }
    bool isOn() const;
    // Turns the button on, and its handler runs as if a user had chosen it.
    void turnOn();
    void setCaption(const std::string& caption);
    // Keeps room for a caption of so many characters, whatever it is.
    void reserve(int characters);
    // `function` runs when the button comes on, not when it goes off.
    template <class Object, class Base>
    void onChoose(Object* object, void (Base::*function)()) {
        choose_ = Member(object, function);
    }

    std::string caption() const override { return caption_; }
    void underline(std::size_t position) override;
    void setMnemonicsChanged(Handler changed) override { changed_ = std::move(changed); }

  private:
    std::string caption_;
    GtkWidget* none_;  // of its group, which outlives it
    Handler choose_;
    Handler changed_;
};

}  // namespace toolkit
