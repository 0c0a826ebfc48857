#pragma once

#include <string>

#include "procedures/root_screen.h"

namespace procedures {

/// The molar volumes of the mixture at a temperature and a pressure, and the volumes of its parts.
class VolumeWindow : public RootScreen {
  public:
    explicit VolumeWindow(toolkit::ScreenHost& host);

    void Event_Activate() override;

  protected:
    std::string temperatureToShow() const override;
    std::string inputSentence() const override;
    void emptyResults() override;
    void showComplexRoot() override;
    void showRoot(const StatePoint& state, double V) override;

  private:
    void layOut();
    /// Fills the list of the pure gases and partial volumes, and the ideal and excess volumes.
    void showParts(const StatePoint& state, double V);

    toolkit::Label StaticText1;
    toolkit::Caption idealCaption{"IdealVolume", "Ideal mixture"};
    toolkit::ResultLabel ResultIdeal{"ResultIdeal"};
    toolkit::Label Label5{"Label5", " cm3/mol"};
    toolkit::Caption excessCaption{"ExcessVolume", "Excess volume"};
    toolkit::ResultLabel ExcessVol{"ExcessVol"};
    toolkit::Label Label6{"Label6", " cm3/mol"};
};

}  // namespace procedures
