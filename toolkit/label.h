#pragma once

#include <string>

#include "toolkit/control.h"
#include "toolkit/edit_commands.h"

namespace toolkit {

// A line of text that a user only reads: a unit, a sentence.
class Label : public Control {
  public:
    explicit Label(std::string name, const std::string& text = {});

    std::string text() const override;
    virtual void setText(const std::string& text);
    // Keeps room for so many characters, or with 0 for as many as there is room for, in so many
    // lines, whatever the text. A longer one is in the tooltip as a whole.
    void reserve(int characters, int lines = 1);
    // Breaks the text into lines of about `characters` characters.
    void wrapAt(int characters);
    // Shows the digits as those of a chemical formula.
    void lowerDigits();
    // Aligns the text with the right edge of its place instead of the left one.
    void alignRight();

  protected:
    enum class Style { Plain, Bold, Title };
    Label(std::string name, const std::string& text, Style style);

    void setStyle(Style style);

  private:
    int lines_ = 0;
};

// The heading of a window or of a group of controls.
class Heading : public Label {
  public:
    enum class Level { Window, Group };
    Heading(std::string name, const std::string& text, Level level = Level::Group);
};

// The text that names an entry or a result; its mnemonic leads to the entry.
class Caption : public Label, public Captioned {
  public:
    Caption(std::string name, const std::string& text);

    void setText(const std::string& text) override;
    // Ties the caption to the control that it names.
    void setTarget(Control& target);
    // Ties the caption and a unit to the control that stands between them.
    void setTarget(Control& target, const Label& unit);

    std::string caption() const override { return caption_; }
    void underline(std::size_t position) override;
    bool canCarryMnemonic() const override { return leadsSomewhere_; }
    void setMnemonicsChanged(Handler changed) override { changed_ = std::move(changed); }

  private:
    std::string caption_;
    bool leadsSomewhere_ = false;
    Handler changed_;
};

// A computed result: can be selected and copied, and is a stop of the Tab key while it shows one.
class ResultLabel : public Label, public Editable {
  public:
    explicit ResultLabel(std::string name, const std::string& text = {});
    // The text in the weight of the labels around it, for what only accompanies the results.
    void setUnobtrusive(bool isUnobtrusive = true);

    void setText(const std::string& text) override;
    bool canPerform(EditCommand command) const override;
    void perform(EditCommand command) override;
};

// A sentence about what was typed or computed, set off by its colour and announced to a screen
// reader when it appears.
class Message : public Label {
  public:
    explicit Message(std::string name);
    void setText(const std::string& text) override;
    // Shows a sentence that is good news, in the colour of other labels.
    void inform(const std::string& text);
    bool isGoodNews() const { return isGoodNews_; }

  private:
    void show(const std::string& text, bool isGoodNews);

    bool isGoodNews_ = false;
};

}  // namespace toolkit
