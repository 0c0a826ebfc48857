#pragma once

#include "procedures/fugacity_screen.h"

namespace procedures {

/// The thermodynamic properties of the mixture at a temperature and a pressure, each split into
/// those of the ideal gas and what the equation of state adds to them.
class ThermodynamicWindow : public FugacityScreen {
  public:
    explicit ThermodynamicWindow(toolkit::ScreenHost& host);

  private:
    void emptyResults() override;
    void showRoot(const StatePoint& state, double V) override;

    toolkit::Label reference{"reference",
                             "Energies refer to the elements at 298.15 Kelvin and 0.1 MPa."};
    toolkit::Message note{"note"};
};

}  // namespace procedures
