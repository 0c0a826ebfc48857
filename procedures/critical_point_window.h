#pragma once

#include <string>
#include <vector>

#include "model/phase_diagram.h"
#include "procedures/critical_table.h"
#include "procedures/phase_curves.h"
#include "procedures/plot_panel.h"
#include "procedures/temperature_unit.h"
#include "toolkit/button.h"
#include "toolkit/label.h"
#include "toolkit/layout.h"
#include "toolkit/list.h"
#include "toolkit/screen.h"

namespace procedures {

// All critical points of the mixture, and where they lie in its phase diagram.
class CriticalPointWindow : public toolkit::Screen {
  public:
    explicit CriticalPointWindow(toolkit::ScreenHost& host);

    void Event_Activate() override;

  private:
    void calculate_Action();
    void Explanations_Action();
    void CopyCurves_Action();
    void Axes_Action();
    void Export_Action();

    void layOut();
    // Shows what is calculated, in the unit and with the plot that are chosen.
    void showResults();
    void showPoints();
    void showPseudoCriticalPoint();
    // The pressures of all critical points.
    ShownPressures allPressures() const;
    // The coldest temperature in K of a plot of these pressures.
    double coldestOf(const ShownPressures& shown) const;
    // Around the stable points and the curves between them.
    toolkit::FirstView firstView() const;
    CurveTable curves() const { return {mixture_, boundary_, spinodal_}; }
    void plot();
    // Where a state lies between the axes that are chosen.
    toolkit::PlotPoint placeOf(const fluid::StatePoint& state) const;
    // A temperature in K as the screen has it.
    std::string temperatureText(double T) const;

    fluid::Mixture mixture_;  // of what is shown
    CriticalTable points_;
    std::vector<fluid::BoundaryPiece> boundary_;
    std::vector<std::vector<fluid::StatePoint>> spinodal_;

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
    toolkit::RadioGroup axesGroup;
    toolkit::GroupBox GroupBox4{"GroupBox4", "Axes"};
    toolkit::RadioButton AxesTP{axesGroup, "AxesTP", " P over T"};
    toolkit::RadioButton AxesVP{axesGroup, "AxesVP", " P over V"};
    toolkit::RadioButton AxesDT{axesGroup, "AxesDT", " T over density"};
    toolkit::Button Explanations{"Explanations", "explanation"};
    toolkit::Button Export{"Export", "export"};
    toolkit::Button CopyCurves{"CopyCurves", "copy curves"};
    toolkit::Button calculate{"calculate", "calculate"};
    toolkit::Message warning{"warning"};
    PlotPanel plotPanel;
};

}  // namespace procedures
