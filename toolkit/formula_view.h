#pragma once

#include <optional>
#include <string>

#include "toolkit/control.h"
#include "toolkit/formula.h"

namespace toolkit {

/// A picture of a formula, drawn in the size and colour of the texts around it. Screen readers
/// are given the formula as linear text.
class FormulaView : public Control {
  public:
    FormulaView(std::string name, Formula formula);

    std::string text() const override { return formula_.plainText(); }

  private:
    struct Callbacks;

    Formula formula_;
    std::optional<TypesetFormula> typeset_;
};

}  // namespace toolkit
