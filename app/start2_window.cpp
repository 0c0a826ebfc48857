#include "app/start2_window.h"

#include "model/fluid_model.h"
#include "procedures/activity_window.h"
#include "procedures/bubble_dew_point.h"
#include "procedures/chem_pot_window.h"
#include "procedures/critical_point_window.h"
#include "procedures/fugacity_window.h"
#include "procedures/isochore_window.h"
#include "procedures/isotherm_window.h"
#include "procedures/liquid_vapour_eq.h"
#include "procedures/pressure_window.h"
#include "procedures/spinodal_window.h"
#include "procedures/temperature_window.h"
#include "procedures/thermodynamic_window.h"
#include "procedures/volume_window.h"
#include "toolkit/layout.h"
#include "toolkit/number_text.h"

namespace app {

namespace {

template <class ProcedureWindow>
std::unique_ptr<toolkit::Screen> NewScreenOf(toolkit::ScreenHost& host) {
    return std::make_unique<ProcedureWindow>(host);
}

}  // namespace

Start2Window::Start2Window(toolkit::ScreenHost& host)
    : Screen(host, "Start2Window", "Fluid Composition - Drovan W") {
    for (std::size_t index = 0; index < fluid::componentCount; ++index) {
        fluid::SetFractionCount(index, 0.0);
    }
    connectEntries();
    connectProcedures();
    Clear.onClick(this, &Start2Window::Clear_Action);
    Continue1.onClick(this, &Start2Window::Continue1_Action);
    layOut();
    setDefault(Continue1);
    setFocus(H2Onumber);
}

void Start2Window::connectEntries() {
    H2Onumber.onTextChange(this, &Start2Window::H2Onumber_TextChange);
    CO2number.onTextChange(this, &Start2Window::CO2number_TextChange);
    CH4number.onTextChange(this, &Start2Window::CH4number_TextChange);
    N2number.onTextChange(this, &Start2Window::N2number_TextChange);
    C2H6number.onTextChange(this, &Start2Window::C2H6number_TextChange);
    H2Snumber.onTextChange(this, &Start2Window::H2Snumber_TextChange);
    NH3number.onTextChange(this, &Start2Window::NH3number_TextChange);
    H2number.onTextChange(this, &Start2Window::H2number_TextChange);
    O2number.onTextChange(this, &Start2Window::O2number_TextChange);
    COnumber.onTextChange(this, &Start2Window::COnumber_TextChange);
    Arnumber.onTextChange(this, &Start2Window::Arnumber_TextChange);
}

void Start2Window::connectProcedures() {
    Isochores.onChoose(this, &Start2Window::Isochores_Action);
    Isotherms.onChoose(this, &Start2Window::Isotherms_Action);
    ChemicalPotentials.onChoose(this, &Start2Window::ChemicalPotentials_Action);
    CriticalPoint.onChoose(this, &Start2Window::CriticalPoint_Action);
    Spinodal.onChoose(this, &Start2Window::Spinodal_Action);
    MolarVolumes.onChoose(this, &Start2Window::MolarVolumes_Action);
    Pressures.onChoose(this, &Start2Window::Pressures_Action);
    Temperatures.onChoose(this, &Start2Window::Temperatures_Action);
    Fugacities.onChoose(this, &Start2Window::Fugacities_Action);
    Activities.onChoose(this, &Start2Window::Activities_Action);
    Homogenisation.onChoose(this, &Start2Window::Homogenisation_Action);
    LiquidVapour.onChoose(this, &Start2Window::LiquidVapour_Action);
    Thermodynamics.onChoose(this, &Start2Window::Thermodynamics_Action);
    procedures_ = {{&MolarVolumes, NewScreenOf<procedures::VolumeWindow>},
                   {&Pressures, NewScreenOf<procedures::PressureWindow>},
                   {&Temperatures, NewScreenOf<procedures::TemperatureWindow>},
                   {&Isochores, NewScreenOf<procedures::IsochoreWindow>},
                   {&Isotherms, NewScreenOf<procedures::IsothermWindow>},
                   {&Fugacities, NewScreenOf<procedures::FugacityWindow>},
                   {&Activities, NewScreenOf<procedures::ActivityWindow>},
                   {&Homogenisation, NewScreenOf<procedures::BubbleDewPoint>},
                   {&LiquidVapour, NewScreenOf<procedures::LiquidVapourEq>},
                   {&Spinodal, NewScreenOf<procedures::SpinodalWindow>},
                   {&CriticalPoint, NewScreenOf<procedures::CriticalPointWindow>},
                   {&Thermodynamics, NewScreenOf<procedures::ThermodynamicWindow>},
                   {&ChemicalPotentials, NewScreenOf<procedures::ChemPotWindow>}};
}

void Start2Window::layOut() {
    using toolkit::Block;
    using toolkit::Spacing;
    std::vector<std::vector<Block>> rows;
    const auto addComponent = [&rows](toolkit::Label& picture, toolkit::Entry& entry) {
        picture.lowerDigits();
        entry.setLabelledBy(picture);
        rows.push_back({picture, Block(entry).expanding()});
    };
    addComponent(Canvas1, H2Onumber);
    addComponent(Canvas2, CO2number);
    addComponent(Canvas3, CH4number);
    addComponent(Canvas4, N2number);
    addComponent(Canvas5, C2H6number);
    addComponent(Canvas6, H2Snumber);
    addComponent(Canvas7, NH3number);
    addComponent(Canvas8, H2number);
    addComponent(Canvas9, O2number);
    addComponent(Canvas10, COnumber);
    addComponent(Canvas11, Arnumber);
    StaticText3.setTarget(Sum);
    const Block procedures = toolkit::Column(
        {StaticText4,
         toolkit::Column({Isochores, Isotherms, ChemicalPotentials, CriticalPoint, Spinodal,
                          MolarVolumes, Pressures, Temperatures, Fugacities, Activities,
                          Homogenisation, LiquidVapour, Thermodynamics},
                         Spacing::Touching)
             .indented(Spacing::Group),
         Warning2},
        Spacing::Touching);
    constexpr int refusalWidth = 18;  // characters of "adjust fractions!"
    Sum.reserve(refusalWidth);
    Warning2.reserve(0);
    StaticText5.reserve(0, 2);
    setContent(
        toolkit::Column(
            {toolkit::Row({StaticText1, StaticText2}),
             toolkit::Row({toolkit::Grid(rows, Spacing::Touching).expanding(), procedures},
                          Spacing::Section)}),
        toolkit::Row({toolkit::Column({toolkit::Row({StaticText3, Sum}), StaticText5}).expanding(),
                      toolkit::ButtonRow({Clear, Continue1})}));
}

void Start2Window::fractionTyped(const toolkit::Entry& entry, std::size_t index) {
    fluid::SetFractionCount(index, entry.number());
    Sum.setText(toolkit::NumberText(fluid::FractionSum()));
}

void Start2Window::H2Onumber_TextChange() {
    fractionTyped(H2Onumber, 0);
}

void Start2Window::CO2number_TextChange() {
    fractionTyped(CO2number, 1);
}

void Start2Window::N2number_TextChange() {
    fractionTyped(N2number, 2);
}

void Start2Window::H2Snumber_TextChange() {
    fractionTyped(H2Snumber, 3);
}

void Start2Window::NH3number_TextChange() {
    fractionTyped(NH3number, 4);
}

void Start2Window::H2number_TextChange() {
    fractionTyped(H2number, 5);
}

void Start2Window::O2number_TextChange() {
    fractionTyped(O2number, 6);
}

void Start2Window::COnumber_TextChange() {
    fractionTyped(COnumber, 7);
}

void Start2Window::Arnumber_TextChange() {
    fractionTyped(Arnumber, 8);
}

void Start2Window::CH4number_TextChange() {
    fractionTyped(CH4number, 9);
}

void Start2Window::C2H6number_TextChange() {
    fractionTyped(C2H6number, 10);
}

void Start2Window::Clear_Action() {
    for (toolkit::Entry* const entry :
         {&H2Onumber, &CO2number, &CH4number, &N2number, &C2H6number, &H2Snumber, &NH3number,
          &H2number, &O2number, &COnumber, &Arnumber}) {
        entry->setText("");
    }
    Sum.setText(toolkit::NumberText(fluid::FractionSum()));
}

void Start2Window::Continue1_Action() {
    const fluid::Mixture before = fluid::AcceptedMixture();
    if (!fluid::AcceptComposition()) {
        Sum.setText("adjust fractions!");
        return;
    }
    if (before != fluid::AcceptedMixture()) {
        host().refresh();  // the screens show results of another composition
    }
    for (const Procedure& procedure : procedures_) {
        if (procedure.button->isOn()) {
            Warning2.setText("");
            host().open(procedure.newScreen(host()));
            return;
        }
    }
    Warning2.setText("Warning: select procedure!");
}

void Start2Window::procedureChosen(const toolkit::RadioButton& button) {
    if (button.isOn()) {
        Warning2.setText("");
    }
}

void Start2Window::Isochores_Action() {
    procedureChosen(Isochores);
}

void Start2Window::Isotherms_Action() {
    procedureChosen(Isotherms);
}

void Start2Window::ChemicalPotentials_Action() {
    procedureChosen(ChemicalPotentials);
}

void Start2Window::CriticalPoint_Action() {
    procedureChosen(CriticalPoint);
}

void Start2Window::Spinodal_Action() {
    procedureChosen(Spinodal);
}

void Start2Window::MolarVolumes_Action() {
    procedureChosen(MolarVolumes);
}

void Start2Window::Pressures_Action() {
    procedureChosen(Pressures);
}

void Start2Window::Temperatures_Action() {
    procedureChosen(Temperatures);
}

void Start2Window::Fugacities_Action() {
    procedureChosen(Fugacities);
}

void Start2Window::Activities_Action() {
    procedureChosen(Activities);
}

void Start2Window::Homogenisation_Action() {
    procedureChosen(Homogenisation);
}

void Start2Window::LiquidVapour_Action() {
    procedureChosen(LiquidVapour);
}

void Start2Window::Thermodynamics_Action() {
    procedureChosen(Thermodynamics);
}

}  // namespace app
