#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "toolkit/button.h"
#include "toolkit/entry.h"
#include "toolkit/label.h"
#include "toolkit/screen.h"

namespace app {

// The composition of the fluid, and the choice of what to calculate for it.
class Start2Window : public toolkit::Screen {
  public:
    explicit Start2Window(toolkit::ScreenHost& host);

  private:
    using NewScreen = std::function<std::unique_ptr<toolkit::Screen>(toolkit::ScreenHost&)>;
    // A procedure's button and what makes its screen.
    struct Procedure {
        toolkit::RadioButton* button;
        NewScreen newScreen;
    };

    void H2Onumber_TextChange();
    void CO2number_TextChange();
    void CH4number_TextChange();
    void N2number_TextChange();
    void C2H6number_TextChange();
    void H2Snumber_TextChange();
    void NH3number_TextChange();
    void H2number_TextChange();
    void O2number_TextChange();
    void COnumber_TextChange();
    void Arnumber_TextChange();
    void Clear_Action();
    void Continue1_Action();
    void Isochores_Action();
    void Isotherms_Action();
    void ChemicalPotentials_Action();
    void CriticalPoint_Action();
    void Spinodal_Action();
    void MolarVolumes_Action();
    void Pressures_Action();
    void Temperatures_Action();
    void Fugacities_Action();
    void Activities_Action();
    void Homogenisation_Action();
    void LiquidVapour_Action();
    void Thermodynamics_Action();

    void connectEntries();
    void connectProcedures();
    void layOut();
    void fractionTyped(const toolkit::Entry& entry, std::size_t index);
    void procedureChosen(const toolkit::RadioButton& button);

    toolkit::Heading StaticText1{"StaticText1", "Fluid Composition"};
    toolkit::Label StaticText2{"StaticText2", "amount-of-substance fraction (\"mole\" fraction)"};
    toolkit::Label Canvas1{"Canvas1", "H2O"};
    toolkit::Label Canvas2{"Canvas2", "CO2"};
    toolkit::Label Canvas3{"Canvas3", "CH4"};
    toolkit::Label Canvas4{"Canvas4", "N2"};
    toolkit::Label Canvas5{"Canvas5", "C2H6"};
    toolkit::Label Canvas6{"Canvas6", "H2S"};
    toolkit::Label Canvas7{"Canvas7", "NH3"};
    toolkit::Label Canvas8{"Canvas8", "H2"};
    toolkit::Label Canvas9{"Canvas9", "O2"};
    toolkit::Label Canvas10{"Canvas10", "CO"};
    toolkit::Label Canvas11{"Canvas11", "Ar"};
    toolkit::Entry H2Onumber{"H2Onumber"};
    toolkit::Entry CO2number{"CO2number"};
    toolkit::Entry CH4number{"CH4number"};
    toolkit::Entry N2number{"N2number"};
    toolkit::Entry C2H6number{"C2H6number"};
    toolkit::Entry H2Snumber{"H2Snumber"};
    toolkit::Entry NH3number{"NH3number"};
    toolkit::Entry H2number{"H2number"};
    toolkit::Entry O2number{"O2number"};
    toolkit::Entry COnumber{"COnumber"};
    toolkit::Entry Arnumber{"Arnumber"};
    toolkit::Caption StaticText3{"StaticText3", "sum:"};
    toolkit::ResultLabel Sum{"Sum", "0"};
    toolkit::Button Clear{"Clear", "clear"};
    toolkit::Heading StaticText4{"StaticText4", "Calculation procedure"};
    toolkit::RadioGroup procedureGroup;
    toolkit::RadioButton Isochores{procedureGroup, "Isochores", " Isochores"};
    toolkit::RadioButton Isotherms{procedureGroup, "Isotherms", " Isotherms"};
    toolkit::RadioButton ChemicalPotentials{procedureGroup, "ChemicalPotentials",
                                            " Chemical potentials"};
    toolkit::RadioButton CriticalPoint{procedureGroup, "CriticalPoint", " Critical Point"};
    toolkit::RadioButton Spinodal{procedureGroup, "Spinodal", " Spinodal"};
    toolkit::RadioButton MolarVolumes{procedureGroup, "MolarVolumes", " Molar Volumes"};
    toolkit::RadioButton Pressures{procedureGroup, "Pressures", " Pressures"};
    toolkit::RadioButton Temperatures{procedureGroup, "Temperatures", " Temperatures"};
    toolkit::RadioButton Fugacities{procedureGroup, "Fugacities", " Fugacities"};
    toolkit::RadioButton Activities{procedureGroup, "Activities", " Activities"};
    toolkit::RadioButton Homogenisation{procedureGroup, "Homogenisation",
                                        " Homogenization conditions"};
    toolkit::RadioButton LiquidVapour{procedureGroup, "LiquidVapour", " Liquid-Vapour equilibria"};
    toolkit::RadioButton Thermodynamics{procedureGroup, "Thermodynamics",
                                        " Thermodynamic Properties"};
    toolkit::Button Continue1{"Continue1", "next"};
    toolkit::Message Warning2{"Warning2"};
    toolkit::Label StaticText5{"StaticText5",
                               "if you have changed the composition, click next to continue"};
    std::vector<Procedure> procedures_;
};

}  // namespace app
