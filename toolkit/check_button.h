#pragma once

#include <string>

#include "toolkit/control.h"

namespace toolkit {

// A box that is ticked or not. It has no mnemonic; Tab leads to it.
class CheckButton : public Control {
  public:
    CheckButton(std::string name, std::string caption);

    std::string text() const override { return caption_; }
    bool isOn() const;
    // Ticks the box or not, and its handler runs where that changes it.
    void turn(bool isOn);
    // `toggled` runs when the box has been ticked, or is no longer.
    void onToggle(Handler toggled) { toggled_ = std::move(toggled); }

  private:
    std::string caption_;
    Handler toggled_;
};

}  // namespace toolkit
