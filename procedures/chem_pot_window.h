#pragma once

#include "procedures/property_table.h"
#include "procedures/range_panel.h"
#include "procedures/state_choice.h"
#include "procedures/state_entry.h"
#include "toolkit/list.h"
#include "toolkit/screen.h"

namespace procedures {

// The chemical potentials and the partial molar properties of the gases in the mixture.
class ChemPotWindow : public toolkit::Screen {
  public:
    explicit ChemPotWindow(toolkit::ScreenHost& host);

    void Event_Activate() override;

  private:
    void calculate_Action();

    void layOut();
    void showPotentials();
    void emptyAll();

    fluid::Mixture mixture_;  // of what is shown

    StateEntry state{"Label1", "warning"};
    StateChoice choice;
    toolkit::List ListBox1{"ListBox1", PotentialHeads(), {10, 11, 11, 11, 10, 11, 10, 11}};
    toolkit::Label reference{"reference",
                             "The standard part is that of the ideal gas at this temperature and "
                             "p° = 0.1 MPa; energies refer "
                             "to the elements at 298.15 Kelvin and 0.1 MPa; the ideal "
                             "gases are those of NASA TP-2002-211556."};
    toolkit::Message note{"note"};
    RangePanel range;
};

}  // namespace procedures
