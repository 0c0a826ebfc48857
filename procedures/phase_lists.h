#pragma once

#include <optional>
#include <string>

#include "model/phase_equilibrium.h"
#include "procedures/phase_results.h"
#include "toolkit/label.h"
#include "toolkit/layout.h"
#include "toolkit/list.h"

// Parts of the screens of phase equilibria.
namespace procedures {

// The first approach to the compositions of both phases: two lists whose fractions the user may
// edit.
class ApproachLists {
  public:
    ApproachLists();

    // `function` runs when the user has changed a fraction.
    template <class Object, class Base>
    void onChange(Object* object, void (Base::*function)()) {
        changed_ = toolkit::Member(object, function);
    }
    // The lists side by side.
    toolkit::Block block();
    void show(const fluid::Mixture& mixture, const fluid::PhaseGuess& guess);
    void clear();
    bool isEmpty() const { return ListBoxPhaseX.isEmpty(); }
    // The guess of these compositions and of the unknown quantity; nothing where a fraction is no
    // number from 0 to 1, or where the lists are empty.
    std::optional<fluid::PhaseGuess> guess(const fluid::Mixture& mixture, double unknown) const;

  private:
    void ListBoxPhaseX_CellClick();
    void ListBoxPhaseY_CellClick();
    void ListBoxPhaseX_CellTextChange();
    void ListBoxPhaseY_CellTextChange();

    toolkit::Handler changed_;
    toolkit::Label captionX_{"ApproachX", "First approach, phase X"};
    toolkit::Label captionY_{"ApproachY", "First approach, phase Y"};
    toolkit::List ListBoxPhaseX;
    toolkit::List ListBoxPhaseY;
};

// A phase of the result: its heading, molar volume, density and composition.
class PhaseLists {
  public:
    // `phase`: "X" or "Y"; `withFraction`: whether the share of the phase in the volume is shown
    // as well.
    PhaseLists(std::string phase, bool withFraction);

    toolkit::Block block();
    void showUnits();
    // Shows this phase; without one the lists are empty.
    void show(const fluid::Mixture& mixture, const std::optional<PhaseTexts>& texts);

  private:
    std::string phase_;
    bool withFraction_;
    toolkit::Heading heading_;
    toolkit::List volume_;
    toolkit::List density_;
    toolkit::List volumeFraction_;
    toolkit::List gases_;
    toolkit::List fractions_;
};

// Everything that shows a result: the answer, how the iteration ended, both phases, and the
// message.
class ResultPanel {
  public:
    // `reportName`: the control name of the line on the iteration; `withFractions`: as for
    // PhaseLists.
    ResultPanel(const std::string& reportName, bool withFractions);

    // The message, the answer between its caption and its unit, and how it was found.
    toolkit::Block answerBlock(toolkit::Caption& caption, toolkit::Label& unit);
    toolkit::Block phasesBlock();
    void showUnits();
    void show(const fluid::Mixture& mixture, const PhaseResults& results);
    void clear();

    toolkit::ResultLabel Answer{"Answer"};
    toolkit::ResultLabel report;
    toolkit::Message warning{"warning"};

  private:
    PhaseLists x_;
    PhaseLists y_;
};

}  // namespace procedures
