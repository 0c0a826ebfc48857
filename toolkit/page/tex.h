#pragma once

#include <string>
#include <string_view>

#include "toolkit/page/markdown.h"

namespace toolkit {

// A formula as TeX has it, as `typeset` takes it. What it does not know stays as it is.
std::string FormulaOfTex(std::string_view tex);

// A formula as `typeset` takes it, in a line of text: italic letters, indices and exponents;
// fractions with a stroke.
TextRuns LineOfFormula(std::string_view formula);

}  // namespace toolkit
