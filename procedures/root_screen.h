#pragma once

#include <string>

#include "model/fluid_model.h"
#include "procedures/root_choice.h"
#include "procedures/temperature_unit.h"
#include "toolkit/button.h"
#include "toolkit/entry.h"
#include "toolkit/label.h"
#include "toolkit/list.h"
#include "toolkit/screen.h"

namespace procedures {

/// What the screens have in common that solve the equation of state at a temperature and a
/// pressure, let the user choose one of its three roots, and show what follows from it.
class RootScreen : public toolkit::Screen {
  public:
    void Event_Activate() override;

  protected:
    /// Names that the screens do not share.
    struct Names {
        std::string screen;
        std::string title;
        std::string unitLabel;
        std::string inputWarning;
        toolkit::List::Row heads;  // of the list of components
    };
    /// The state of the mixture without its volume: K, MPa, MPa·cm6/mol2, cm3/mol.
    struct StatePoint {
        double T = 0.0;
        double P = 0.0;
        double a = 0.0;
        double b = 0.0;
    };

    RootScreen(toolkit::ScreenHost& host, const Names& names);

    void calculate_Action();
    void Choice0_Action();
    void Choice1_Action();
    void Choice2_Action();
    void Clear_Action();
    void dataEntryT_TextChange();
    void dataEntryP_TextChange();

    /// The text that the temperature entry shows during a calculation; it is calculated with the
    /// temperature that stands there then. "0.000" for 0 degrees Celsius, as the user may have
    /// typed nothing; else the text as typed.
    virtual std::string temperatureToShow() const;
    /// The sentence for a temperature or a pressure that is not above 0.
    virtual std::string inputSentence() const;
    /// Empties what is shown for a root, all messages included.
    virtual void emptyResults();
    /// Empties what belongs to the typed state; beside the results, by default, only the roots.
    virtual void emptyAll();
    virtual void showComplexRoot() = 0;
    /// For three roots that are 0: no volume has been found.
    virtual void showNoVolume();
    virtual void showRoot(const StatePoint& state, double V) = 0;

    StatePoint readState() const;
    void showVolume(double V);
    /// Shows whether the mixture is mechanically stable at V.
    void showStability(const StatePoint& state, double V);

    /// The entries with their units, and the buttons.
    toolkit::Block inputBlock();
    /// The molar volume and the density, each in a row of a grid.
    std::vector<std::vector<toolkit::Block>> volumeRows();

  private:
    void rootChosen(std::size_t index);
    void temperatureUnitChosen();

  protected:
    toolkit::Caption Temperature{"Temperature", "Temperature"};
    toolkit::Entry dataEntryT{"dataEntryT"};
    toolkit::Label temperatureUnitLabel;
    toolkit::Caption Pressure{"Pressure", "Pressure"};
    toolkit::Entry dataEntryP{"dataEntryP"};
    toolkit::Label pressureUnitLabel{"StaticText4", "MPa"};
    TemperatureUnit temperature{"GroupBox1"};
    toolkit::Button Clear{"Clear", "clear"};
    toolkit::Button calculate{"calculate", "calculate"};
    toolkit::Message inputWarning;
    RootChoice choice;
    toolkit::ResultLabel slope{"slope"};
    toolkit::Caption resultCaption{"MolarVolume", "Molar Volume"};
    toolkit::ResultLabel Result{"Result"};
    toolkit::Label Label4{"Label4", " cm3/mol"};
    toolkit::Caption densityCaption{"Density", "Density"};
    toolkit::ResultLabel DensityResult{"DensityResult"};
    toolkit::Label Label01{"Label01", " g/cm3"};
    toolkit::List ListBox1;
};

}  // namespace procedures
