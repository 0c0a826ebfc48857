#include "procedures/root_choice.h"

#include <string>

#include "procedures/root_volume.h"
#include "toolkit/announcement.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

std::string CaptionOf(const fluid::CubicRoot& root) {
    std::string caption = " " + toolkit::NumberText(root.real);
    if (!root.isReal()) {
        caption += " and " + toolkit::NumberText(root.imaginary) + "·i";
    }
    return caption;
}

}  // namespace

RootChoice::RootChoice() {
    constexpr int usualCaption = 42;  // characters
    for (toolkit::RadioButton* const button : {&Choice0, &Choice1, &Choice2}) {
        button->reserve(usualCaption);
    }
    Choice0.onChoose(this, &RootChoice::Choice0_Action);
    Choice1.onChoose(this, &RootChoice::Choice1_Action);
    Choice2.onChoose(this, &RootChoice::Choice2_Action);
    clear();
}

void RootChoice::setUnit(const toolkit::Label& unit) {
    for (toolkit::RadioButton* const button : {&Choice0, &Choice1, &Choice2}) {
        button->setDescribedBy(unit);
    }
}

toolkit::Block RootChoice::block() {
    return box.around(toolkit::Column({Choice0, Choice1, Choice2}, toolkit::Spacing::Touching));
}

void RootChoice::show(const fluid::CubicRoots& roots, toolkit::Label& warning) {
    group_.clear();
    std::size_t index = 0;
    std::string sentence = box.text() + ":";
    for (toolkit::RadioButton* const button : {&Choice0, &Choice1, &Choice2}) {
        button->setCaption(CaptionOf(roots[index]));
        button->setAccessibleName(button->caption());
        button->setSensitive(true);
        sentence += (index == 0 ? "" : ",") + button->caption();
        ++index;
    }
    toolkit::Announce(box, sentence);
    if (roots[0].real == 0.0) {
        warning.setText(noVolumeSentence);
    }
}

void RootChoice::clear() {
    group_.clear();
    for (toolkit::RadioButton* const button : {&Choice0, &Choice1, &Choice2}) {
        button->setCaption("");
        button->setAccessibleName("solution " + std::string(1, button->name().back()));
        button->setSensitive(false);
    }
}

bool RootChoice::isChosen() const {
    return Choice0.isOn() || Choice1.isOn() || Choice2.isOn();
}

void RootChoice::chosen(std::size_t number) const {
    if (chosen_) {
        chosen_(number);
    }
}

void RootChoice::Choice0_Action() {
    chosen(0);
}

void RootChoice::Choice1_Action() {
    chosen(1);
}

void RootChoice::Choice2_Action() {
    chosen(2);
}

}  // namespace procedures
