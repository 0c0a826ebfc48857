#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "procedures/plot_panel.h"
#include "procedures/range_entry.h"
#include "procedures/state_entry.h"
#include "procedures/state_range.h"
#include "procedures/table_panel.h"
#include "toolkit/deck.h"
#include "toolkit/layout.h"
#include "toolkit/list.h"
#include "toolkit/screen.h"

namespace procedures {

// What a screen of one state shows over a range of states: the choice of the range, that of the
// quantities, their table and their plot.
class RangePanel {
  public:
    // `state` has the temperature or the pressure that is the same everywhere; `fileName` is
    // proposed for exports.
    RangePanel(toolkit::Screen& screen, StateEntry& state, const std::string& fileName);

    // `function` runs when another kind of range, or one state, has been chosen.
    template <class Object, class Base>
    void onChoose(Object* object, void (Base::*function)()) {
        chosen_ = toolkit::Member(object, function);
    }
    // The choice of the range and its entries.
    toolkit::Block choiceBlock();
    // What can be chosen of one state, and in the same place the quantities of a range.
    toolkit::Block chosenBlock(const toolkit::Block& ofOneState);
    // What is shown of one state, and in the same places the plot and the table of a range; `notes`
    // stand where the table does, and `more` below the plot.
    std::vector<toolkit::Part> parts(const std::string& title, const toolkit::Block& ofOneState,
                                     const std::vector<toolkit::Block>& notes = {},
                                     const toolkit::Block& more = {});
    // Says, in so many lines, what the values refer to.
    void setReference(const std::string& sentence, int lines);
    bool isRange() const { return !OneState.isOn(); }
    // Lists what can be chosen; what was chosen stays so, or else the first one is.
    void offer(std::vector<RangeQuantity> quantities);
    // Calculates the range that is typed for a fluid, or says why that cannot be.
    void calculate(const fluid::Mixture& mixture);
    // To be called after every change of the entries of the state.
    void stateChanged();
    void clear();
    // Shows these curves over temperature and pressure instead of the quantities; none for those.
    void showInstead(std::vector<toolkit::PlotSeries> curves);
    TemperatureScale scale() const { return state_.temperature.scale(); }
    // Shows what is chosen now.
    void quantitiesChosen();

  private:
    void kindChosen();
    void show();
    void plotQuantities(const std::vector<RangeQuantity>& shown);
    std::vector<RangeQuantity> shownQuantities() const;

    StateEntry& state_;
    toolkit::Message& warning_;
    toolkit::Handler chosen_;
    std::vector<RangeQuantity> quantities_;
    std::optional<StateRange> range_;
    std::vector<toolkit::PlotSeries> instead_;
    TemperatureScale lastScale_;

  public:
    toolkit::RadioGroup kinds;
    toolkit::RadioButton OneState{kinds, "OneState", " One state"};
    toolkit::RadioButton BetweenT{kinds, "BetweenT", " Between two temperatures"};
    toolkit::RadioButton BetweenP{kinds, "BetweenP", " Between two pressures"};
    RangeEntry range{"dataEntry1", "dataEntry2"};
    toolkit::Deck Choices{"ChoicePages"};
    toolkit::Deck Pages{"Pages"};
    toolkit::Deck Tables{"TablePages"};
    toolkit::List Quantities{"Quantities", {"listed and drawn", "unit"}, {34, 10}};
    toolkit::Label reference{"reference"};
    toolkit::Label rangeReference{"rangeReference"};
    TablePanel table;
    PlotPanel plotPanel;
};

}  // namespace procedures
