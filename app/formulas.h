#pragma once

#include <string_view>

#include "toolkit/formula.h"

namespace app {

/// The formula of a compound, such as "CO2", its digits as subscripts.
toolkit::Formula chemicalFormula(std::string_view text);

/// The pictures of the title screen.
toolkit::Formula fluidSystemFormula();
toolkit::Formula equationFormula();
toolkit::Formula mixingRulesFormula();
toolkit::Formula pureGasParametersFormula();
toolkit::Formula fugacityFormula();

}  // namespace app
