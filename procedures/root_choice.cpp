#include "procedures/root_choice.h"

#include <string>

#include "toolkit/announcement.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

std::string captionOf(const fluid::CubicRoot& root) {
    std::string caption = " " + toolkit::numberText(root.real);
    if (!root.isReal()) {
        caption += " and " + toolkit::numberText(root.imaginary) + "·i";
    }
    return caption;
}

}  // namespace

RootChoice::RootChoice() {
    clear();
}

toolkit::Block RootChoice::block() {
    return box.around(toolkit::column({Choice0, Choice1, Choice2}, toolkit::Spacing::none));
}

void RootChoice::show(const fluid::CubicRoots& roots) {
    roots_ = roots;
    group_.clear();
    std::size_t index = 0;
    std::string sentence = box.text() + ":";
    for (toolkit::RadioButton* const button : {&Choice0, &Choice1, &Choice2}) {
        button->setCaption(captionOf(roots[index]));
        button->setSensitive(true);
        sentence += (index == 0 ? "" : ",") + button->caption();
        ++index;
    }
    toolkit::announce(box, sentence);
}

void RootChoice::clear() {
    roots_ = {};
    group_.clear();
    for (toolkit::RadioButton* const button : {&Choice0, &Choice1, &Choice2}) {
        button->setCaption("");
        button->setSensitive(false);
    }
}

std::optional<std::size_t> RootChoice::rank() const {
    if (!isChosen() || !roots_[1].isReal()) {
        return std::nullopt;
    }
    return Choice0.isOn() ? 0 : Choice1.isOn() ? 1 : 2;
}

bool RootChoice::isChosen() const {
    return Choice0.isOn() || Choice1.isOn() || Choice2.isOn();
}

}  // namespace procedures
