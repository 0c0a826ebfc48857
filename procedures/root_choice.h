#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "model/cubic.h"
#include "toolkit/button.h"
#include "toolkit/label.h"
#include "toolkit/layout.h"

namespace procedures {

// The three roots of the cubic equation of state on three choice buttons, of which none is on
// before the user chooses. Without roots there is nothing to choose.
class RootChoice {
  public:
    RootChoice();

    // `chosen` runs with the number of the root that has been chosen.
    void onChoose(std::function<void(std::size_t)> chosen) { chosen_ = std::move(chosen); }
    // Ties the buttons to the unit of the roots.
    void setUnit(const toolkit::Label& unit);

    toolkit::Block block();
    // Shows these roots, none of them chosen; says in `warning` that there are none.
    void show(const fluid::CubicRoots& roots, toolkit::Label& warning);
    void clear();
    bool isChosen() const;

  private:
    void chosen(std::size_t number) const;
    void Choice0_Action();
    void Choice1_Action();
    void Choice2_Action();

    toolkit::RadioGroup group_;
    std::function<void(std::size_t)> chosen_;

  public:
    toolkit::GroupBox box{"Choices", "Solutions for the molar volume"};
    toolkit::RadioButton Choice0{group_, "Choice0", ""};
    toolkit::RadioButton Choice1{group_, "Choice1", ""};
    toolkit::RadioButton Choice2{group_, "Choice2", ""};
};

}  // namespace procedures
