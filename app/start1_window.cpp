#include "app/start1_window.h"

#include <memory>

#include "app/start2_window.h"
#include "toolkit/layout.h"

namespace app {

Start1Window::Start1Window(toolkit::ScreenHost& host)
    : Screen(host, "Start1Window", "Drovan W"),
      Canvas2("Canvas2", "P = RT/(V − b) − a/V^2", R"(P = \frac{RT}{V − b} − \frac{a}{V^2})"),
      EquationReference("EquationReference",
                        "Over de continuiteit van den gas- en vloeistoftoestand (1873), thesis"),
      Canvas3("Canvas3", "a = ∑_i ∑_j x_i x_j a_ij, a_ij = √(a_i a_j), b = ∑_i x_i b_i",
              R"(a = \sum{i}\sum{j}x_i x_j a_{ij},~a_{ij} = \sqrt{a_i a_j},~b = \sum{i}x_i b_i)"),
      PureGases("PureGases",
                "a-values and b-values of individual gases are obtained from critical-point "
                "properties"),
      Canvas4("Canvas4", "a_i = (27 R^2 T_(c,i)^2)/(64 P_(c,i)), b_i = (R T_(c,i))/(8 P_(c,i))",
              R"(a_i = \frac{\up{27} R^2 T_{\up{c,}i}^2}{\up{64} P_{\up{c,}i}},~)"
              R"(b_i = \frac{R T_{\up{c,}i}}{8 P_{\up{c,}i}})"),
      Canvas5(
          "Canvas5", "RT ln φ_i = ∫_V^∞ [(∂P/∂n_i)_(T, V, n_j) − RT/V] dV − RT ln Z",
          R"(RT \up{ln} φ_i = \int_V^∞  [(\frac{∂P}{∂n_i})_{T\up{, }V\up{, }n_j} − \frac{RT}{V}] )"
          R"(\up{d}V − RT \up{ln} Z)"),
      DerivationsReference("DerivationsReference",
                           "Molecular Thermodynamics of Fluid-Phase Equilibria (1999), textbook"),
      IdealGasesReference("IdealGasesReference",
                          "Thermodynamic Properties of Minerals and Related Substances (1995), "
                          "data compilation") {
    using toolkit::Block;
    using toolkit::Spacing;
    Canvas1.lowerDigits();
    continueButton.onClick(this, &Start1Window::continue1_Action);
    const auto section = [](toolkit::Heading& heading, const std::vector<Block>& content) {
        return toolkit::Column({heading, toolkit::Column(content).indented(Spacing::Group)});
    };
    setContent(
        toolkit::Column(
            {toolkit::Column({Title, Package, Version}),
             section(FluidSystem, {Block(Canvas1).atStart()}),
             section(Equation, {Block(Canvas2).atStart(), EquationReference}),
             section(MixingRules, {Block(Canvas3).atStart(), PureGases, Block(Canvas4).atStart()}),
             section(Derivations, {Block(Canvas5).atStart(), DerivationsReference}),
             section(IdealGases, {IdealGasesReference})},
            Spacing::Group),
        toolkit::Row({Block(Author).expanding(), toolkit::ButtonRow({continueButton})}));
    setDefault(continueButton);
    setFocus(continueButton);
}

void Start1Window::continue1_Action() {
    host().open(std::make_unique<Start2Window>(host()));
    host().close(*this);
}

}  // namespace app
