#include "procedures/state_choice.h"

#include <cstddef>
#include <string>
#include <vector>

#include "model/composition.h"
#include "procedures/phase_sentences.h"
#include "procedures/stability_text.h"
#include "toolkit/event.h"

namespace procedures {

namespace {

constexpr int usualCaption = 20;    // characters
constexpr int longestSentence = 4;  // lines, of two phases

std::string CaptionOf(const fluid::FluidState::Volume& volume) {
    return " " + SentenceText(volume.V) + ", " + StabilityName(volume.stability);
}

}  // namespace

StateChoice::StateChoice() {
    for (toolkit::RadioButton* const button : {&Choice0, &Choice1, &Choice2, &ChoicePhases}) {
        button->onChoose(this, &StateChoice::choice_Action);
        button->reserve(usualCaption);
    }
    State.reserve(0, longestSentence);
    clear();
}

toolkit::Block StateChoice::block() {
    return toolkit::Column(
        {State, box.around(toolkit::Grid({{Choice0, Choice1}, {Choice2, ChoicePhases}},
                                         toolkit::Spacing::Touching))});
}

void StateChoice::calculate(const TypedState& typed) {
    clear();
    mixture_ = fluid::AcceptedMixture();
    state_ = fluid::StateAt(mixture_, typed.T, typed.P);
    State.setText(StateSentence(mixture_, state_));
    toolkit::RadioButton* stable = nullptr;
    for (std::size_t i = 0; i < state_.volumes.size(); ++i) {
        volumes_[i]->setCaption(CaptionOf(state_.volumes[i]));
        volumes_[i]->setSensitive(true);
        if (state_.stable == i) {
            stable = volumes_[i];
        }
    }
    if (state_.split) {
        stable = &ChoicePhases;
        stable->setCaption(" two phases");
        stable->setSensitive(true);
    }
    if (stable != nullptr) {
        stable->turnOn();
    }
}

bool StateChoice::isOutdated() const {
    return !State.text().empty() && !(mixture_ == fluid::AcceptedMixture());
}

bool StateChoice::isChosen() const {
    return chosen() || ChoicePhases.isOn();
}

void StateChoice::clear() {
    group_.clear();
    State.setText("");
    for (toolkit::RadioButton* const button : {&Choice0, &Choice1, &Choice2, &ChoicePhases}) {
        button->setCaption("");
        button->setSensitive(false);
    }
}

ChosenVolume StateChoice::chosen() const {
    for (std::size_t i = 0; i < volumes_.size(); ++i) {
        if (volumes_[i]->isOn()) return i;
    }
    return {};
}

void StateChoice::choice_Action() {
    toolkit::RunHandler(chosen_, box.name().c_str());
}

void ShowTable(const StateTable& table, toolkit::List& list, toolkit::Label& note) {
    list.setHeads(table.heads);
    std::vector<toolkit::List::Row> rows;
    for (const StateTable::Line& line : table.lines) {
        rows.push_back(RowOf(line, Digits::Shown));
    }
    list.setRows(rows);
    list.setCopied([lines = table.lines](std::size_t i) { return RowOf(lines[i], Digits::Full); });
    note.setText(table.note);
}

}  // namespace procedures
