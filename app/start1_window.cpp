#include "app/start1_window.h"

#include <memory>

#include "app/formulas.h"
#include "app/start2_window.h"
#include "toolkit/layout.h"

namespace app {

Start1Window::Start1Window(toolkit::ScreenHost& host)
    : Screen(host, "Start1Window", "Drovan W"),
      Canvas1("Canvas1", fluidSystemFormula()),
      Canvas2("Canvas2", equationFormula()),
      EquationReference("EquationReference",
                        "Over de continuiteit van den gas- en vloeistoftoestand (1873), thesis"),
      Canvas3("Canvas3", mixingRulesFormula()),
      PureGases("PureGases",
                "a-values and b-values of individual gases are obtained from critical-point "
                "properties"),
      Canvas4("Canvas4", pureGasParametersFormula()),
      Canvas5("Canvas5", fugacityFormula()),
      DerivationsReference("DerivationsReference",
                           "Molecular Thermodynamics of Fluid-Phase Equilibria (1999), textbook"),
      IdealGasesReference("IdealGasesReference",
                          "Thermodynamic Properties of Minerals and Related Substances (1995), "
                          "data compilation") {
    using toolkit::Block;
    using toolkit::Spacing;
    continueButton.onClick(this, &Start1Window::continue1_Action);
    const auto section = [](toolkit::Heading& heading, const std::vector<Block>& content) {
        return toolkit::column({heading, toolkit::column(content).indented(Spacing::group)});
    };
    setContent(toolkit::column(
        {toolkit::column({Title, Package, Version}),
         section(FluidSystem, {Block(Canvas1).atStart()}),
         section(Equation, {Block(Canvas2).atStart(), EquationReference}),
         section(MixingRules, {Block(Canvas3).atStart(), PureGases, Block(Canvas4).atStart()}),
         section(Derivations, {Block(Canvas5).atStart(), DerivationsReference}),
         section(IdealGases, {IdealGasesReference}),
         toolkit::row({Block(Author).expanding(), toolkit::buttonRow({continueButton})})},
        Spacing::group));
    setDefault(continueButton);
    setFocus(continueButton);
}

void Start1Window::continue1_Action() {
    host().open(std::make_unique<Start2Window>(host()));
    host().close(*this);
}

}  // namespace app
