#pragma once

#include <string>
#include <vector>

#include "model/critical_point.h"
#include "model/phase_diagram.h"
#include "procedures/phase_curves.h"
#include "procedures/plot_panel.h"
#include "procedures/temperature_unit.h"
#include "toolkit/button.h"
#include "toolkit/label.h"
#include "toolkit/layout.h"
#include "toolkit/list.h"
#include "toolkit/screen.h"

namespace procedures {

/// All critical points of the mixture, and where they lie in its phase diagram.
class CriticalPointWindow : public toolkit::Screen {
  public:
    explicit CriticalPointWindow(toolkit::ScreenHost& host);

    void Event_Activate() override;

  private:
    void calculate_Action();
    void Explanations_Action();
    void PlotAll_Action();
    void PlotLow_Action();

    void layOut();
    void showPoints();
    void showPseudoCriticalPoint();
    ShownPressures shownPressures() const;
    /// The coldest temperature in K of the plot.
    double coldestShown(const std::vector<fluid::BoundaryPiece>& boundary) const;
    void plot();
    /// A temperature in K as the screen has it.
    std::string temperatureText(double T) const;

    fluid::CriticalPoints points_;
    std::vector<fluid::Stability> kinds_;

    toolkit::ResultLabel Count{"Count"};
    TemperatureUnit temperature{"GroupBox1"};
    toolkit::List ListBox1;
    toolkit::GroupBox GroupBox2{"GroupBox2", "Pseudo-critical point"};
    toolkit::Caption Temperature{"Temperature", "Temperature"};
    toolkit::ResultLabel ResultT{"ResultT"};
    toolkit::Label Label1{"Label1", "Kelvin"};
    toolkit::Caption Pressure{"Pressure", "Pressure"};
    toolkit::ResultLabel ResultP{"ResultP"};
    toolkit::Label Label2{"Label2", "MPa"};
    toolkit::Caption MolarVolume{"MolarVolume", "Molar Volume"};
    toolkit::ResultLabel ResultV{"ResultV"};
    toolkit::Label Label3;
    toolkit::RadioGroup plotGroup;
    toolkit::GroupBox GroupBox3{"GroupBox3", "Plot"};
    toolkit::RadioButton PlotAll{plotGroup, "PlotAll", " all critical points"};
    toolkit::RadioButton PlotLow{plotGroup, "PlotLow", " low pressures"};
    toolkit::Button Explanations{"Explanations", "explanation"};
    toolkit::Button calculate{"calculate", "calculate"};
    toolkit::Message warning{"warning"};
    PlotPanel plotPanel;
};

}  // namespace procedures
