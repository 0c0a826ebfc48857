#pragma once

#include "procedures/fugacity_screen.h"

namespace procedures {

/// The chemical potentials and the partial molar properties of the gases in the mixture.
class ChemPotWindow : public FugacityScreen {
  public:
    explicit ChemPotWindow(toolkit::ScreenHost& host);

  private:
    void emptyResults() override;
    void showRoot(const StatePoint& state, double V) override;

    toolkit::Label reference{"reference",
                             "The standard part is that of the ideal gas at this temperature and "
                             "p° = 0.1 MPa; energies refer "
                             "to the elements at 298.15 Kelvin and 0.1 MPa."};
    toolkit::Message note{"note"};
};

}  // namespace procedures
