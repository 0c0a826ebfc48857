#pragma once

#include <array>

#include "procedures/property_table.h"
#include "procedures/typed_state.h"
#include "toolkit/button.h"
#include "toolkit/label.h"
#include "toolkit/layout.h"
#include "toolkit/list.h"

namespace procedures {

// What a fluid is at a temperature and a pressure, in words, and the choice of what is shown of
// it: one of its molar volumes, or its two phases.
class StateChoice {
  public:
    StateChoice();

    // `function` runs when something has been chosen, by the user or by calculate().
    template <class Object, class Base>
    void onChoose(Object* object, void (Base::*function)()) {
        chosen_ = toolkit::Member(object, function);
    }

    toolkit::Block block();
    // Calculates what the accepted mixture is at a typed state, says it, and chooses what is
    // stable.
    void calculate(const TypedState& typed);
    void clear();
    // Whether another mixture has been accepted since.
    bool isOutdated() const;
    bool isChosen() const;
    // What has been chosen, and of which fluid; to be asked for where something has.
    ChosenVolume chosen() const;
    const fluid::Mixture& mixture() const { return mixture_; }
    const fluid::FluidState& state() const { return state_; }

  private:
    void choice_Action();

    fluid::Mixture mixture_;
    fluid::FluidState state_;
    toolkit::RadioGroup group_;
    toolkit::Handler chosen_;

  public:
    toolkit::ResultLabel State{"State"};
    toolkit::GroupBox box{"Choices", "Solutions for the molar volume (cm\u00B3/mol)"};
    toolkit::RadioButton Choice0{group_, "Choice0", ""};
    toolkit::RadioButton Choice1{group_, "Choice1", ""};
    toolkit::RadioButton Choice2{group_, "Choice2", ""};
    toolkit::RadioButton ChoicePhases{group_, "ChoicePhases", ""};

  private:
    std::array<toolkit::RadioButton*, 3> volumes_{&Choice0, &Choice1, &Choice2};
};

// Shows a table, whose numbers Copy gives in full, and what is to be said about it.
void ShowTable(const StateTable& table, toolkit::List& list, toolkit::Label& note);

}  // namespace procedures
