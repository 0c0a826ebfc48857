#pragma once

namespace toolkit {

enum class EditCommand { Undo, Cut, Copy, Paste, Erase, SelectAll };

// What the Edit menu can act on: entries, result labels, lists.
class Editable {
  public:
    virtual ~Editable() = default;
    // Whether `command` would change or copy anything now.
    virtual bool canPerform(EditCommand command) const = 0;
    // Performs `command`; does nothing where it does not apply.
    virtual void perform(EditCommand command) = 0;

  protected:
    Editable() = default;
    Editable(const Editable&) = default;
    Editable& operator=(const Editable&) = default;
};

}  // namespace toolkit
