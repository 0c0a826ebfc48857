#pragma once

#include <string>
#include <vector>

#include "toolkit/control.h"
#include "toolkit/edit_commands.h"

namespace toolkit {

// A line of text to type into. Enter presses the screen's default button; every change, by the
// user or by setText, runs the TextChange handler and can be undone.
class Entry : public Control, public Editable {
  public:
    // An empty entry, wide enough for `widthChars` characters.
    explicit Entry(std::string name, int widthChars = 14);

    std::string text() const override;
    void setText(const std::string& text);
    // Has `text` stand for nothing typed: a click selects it whole, to be typed over.
    void setPlaceholder(const std::string& text);
    // Has Enter press this button of the same screen instead of the default one.
    void setDefault(const Control& button);
    // The number in the entry; 0 where the text is not a number.
    double number() const;

    template <class Object, class Base>
    void onTextChange(Object* object, void (Base::*function)()) {
        textChange_ = Member(object, function);
    }

    bool canPerform(EditCommand command) const override;
    void perform(EditCommand command) override;

  private:
    struct Step {
        std::string text;
        int cursor = 0;
        unsigned time = 0;
    };

    void changed();
    void undo();

    Handler textChange_;
    std::string placeholder_;
    GtkWidget* default_ = nullptr;
    std::vector<Step> history_;
    Step present_;
    bool isUndoing_ = false;
};

}  // namespace toolkit
