#pragma once

#include <cstddef>
#include <optional>

#include "model/fluid_model.h"
#include "toolkit/button.h"
#include "toolkit/layout.h"

namespace procedures {

/// The three roots of the cubic equation of state on three choice buttons, of which none is on
/// before the user chooses. Without roots there is nothing to choose.
class RootChoice {
  public:
    RootChoice();

    toolkit::Block block();
    /// Shows these roots, none of them chosen.
    void show(const fluid::CubicRoots& roots);
    void clear();
    bool isChosen() const;
    /// The number of the chosen root where all three are real.
    std::optional<std::size_t> rank() const;
    const fluid::CubicRoot& root(std::size_t index) const { return roots_[index]; }

  private:
    toolkit::RadioGroup group_;
    fluid::CubicRoots roots_;

  public:
    toolkit::GroupBox box{"Choices", "Solutions for the molar volume"};
    toolkit::RadioButton Choice0{group_, "Choice0", ""};
    toolkit::RadioButton Choice1{group_, "Choice1", ""};
    toolkit::RadioButton Choice2{group_, "Choice2", ""};
};

}  // namespace procedures
