#pragma once

#include "toolkit/button.h"
#include "toolkit/formula/formula_view.h"
#include "toolkit/label.h"
#include "toolkit/screen.h"

namespace app {

// The title screen: what the program models, and on which sources.
class Start1Window : public toolkit::Screen {
  public:
    explicit Start1Window(toolkit::ScreenHost& host);

  private:
    void continue1_Action();

    toolkit::Heading Title{"Title", "Drovan W", toolkit::Heading::Level::Window};
    toolkit::Label Package{"Package", "Software Package Ostrel, v.2"};
    toolkit::Label Version{"Version", "Version 2"};
    toolkit::Heading FluidSystem{"FluidSystem", "Fluid system:"};
    toolkit::Label Canvas1{"Canvas1",
                           "H2O – CO2 – CH4 – N2 – C2H6 – H2S – NH3 – H2 – O2 – CO – Ar"};
    toolkit::Heading Equation{"Equation", "Equation:"};
    toolkit::FormulaView Canvas2;
    toolkit::Label EquationReference;
    toolkit::Heading MixingRules{"MixingRules", "Mixing rules:"};
    toolkit::FormulaView Canvas3;
    toolkit::Label PureGases;
    toolkit::FormulaView Canvas4;
    toolkit::Heading Derivations{"Derivations", "Theoretical thermodynamic derivations:"};
    toolkit::FormulaView Canvas5;
    toolkit::Label DerivationsReference;
    toolkit::Heading IdealGases{"IdealGases", "Thermodynamic data ideal gases:"};
    toolkit::Label IdealGasesReference;
    toolkit::Label Author{"Author", "The developers of Drovan W, version 2"};
    toolkit::Button continueButton{"continue", "next"};
};

}  // namespace app
