#pragma once

#include "procedures/property_table.h"
#include "procedures/range_panel.h"
#include "procedures/state_choice.h"
#include "procedures/state_entry.h"
#include "toolkit/list.h"
#include "toolkit/screen.h"

namespace procedures {

// The thermodynamic properties of the mixture at a temperature and a pressure, each split into
// those of the ideal gas and what the equation of state adds to them, or those of its two phases.
class ThermodynamicWindow : public toolkit::Screen {
  public:
    explicit ThermodynamicWindow(toolkit::ScreenHost& host);

    void Event_Activate() override;

  private:
    void calculate_Action();
    void Mole_Action();
    void Kilogram_Action();
    void kindChosen();
    void Inversion_Action();

    void layOut();
    void showProperties();
    void emptyAll();
    Amount amount() const { return Kilogram.isOn() ? Amount::Kilogram : Amount::Mole; }

    fluid::Mixture mixture_;  // of what is shown

    StateEntry state{"Label1", "warning"};
    toolkit::RadioGroup amounts;
    toolkit::Label amountOf{"amountOf", "Properties of"};
    toolkit::RadioButton Mole{amounts, "Mole", " one mole"};
    toolkit::RadioButton Kilogram{amounts, "Kilogram", " one kilogram"};
    StateChoice choice;
    toolkit::List ListBox1{
        "ListBox1", {"property", "unit", "ideal gas", "residual", "total"}, {22, 9, 14, 14, 14}};
    toolkit::ResultLabel Inversion{"Inversion"};
    toolkit::Message note{"note"};
    RangePanel range;
    toolkit::RadioGroup plots;
    toolkit::RadioButton PlotProperty{plots, "PlotProperty", " these properties"};
    toolkit::RadioButton PlotInversion{plots, "PlotInversion", " Joule-Thomson inversion"};
};

}  // namespace procedures
