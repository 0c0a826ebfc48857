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
    toolkit::Message note{"note"};
    RangePanel range;
};

}  // namespace procedures
