#pragma once

#include <string>

#include "toolkit/control.h"
#include "toolkit/formula/typesetter.h"

namespace toolkit {

// A picture of a formula, drawn in the size and colour of the texts around it.
class FormulaView : public Control {
  public:
    // `text`: the formula in one line, for screen readers; `source`: what `Typeset` takes.
    FormulaView(std::string name, std::string text, std::string source);

    std::string text() const override { return text_; }

  private:
    std::string text_;
    std::string source_;
    FormulaBox box_;
};

}  // namespace toolkit
