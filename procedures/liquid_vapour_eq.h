#pragma once

#include <optional>
#include <string>

#include "model/first_approach.h"
#include "model/fluid_model.h"
#include "model/phase_equilibrium.h"
#include "procedures/phase_lists.h"
#include "procedures/temperature_unit.h"
#include "procedures/volume_entry.h"
#include "toolkit/button.h"
#include "toolkit/entry.h"
#include "toolkit/label.h"
#include "toolkit/layout.h"
#include "toolkit/screen.h"

namespace procedures {

/// The liquid and the vapour of a fluid inclusion of known density, and their pressure.
class LiquidVapourEq : public toolkit::Screen {
  public:
    explicit LiquidVapourEq(toolkit::ScreenHost& host);

    void Event_Activate() override;

  private:
    void CalFirstApproach_Action();
    void calculate_Action();
    void dataEntryP_TextChange();
    void dataEntryF_TextChange();
    void ListBoxPhaseX_CellTextChange();
    void ListBoxPhaseY_CellTextChange();
    void Clear_Action();
    void PushButton1_Action();

    /// What is given: K and cm3/mol.
    struct State {
        double T = 0.0;
        double V = 0.0;
    };

    void connectHandlers();
    void layOut();
    toolkit::Block inputBlock();
    toolkit::Block approachBlock();
    void emptyResults();
    void emptyApproach();
    /// Nothing where the temperature is not above 0 or the volume not above the co-volume.
    std::optional<State> state() const;
    std::optional<fluid::PhaseGuess> guess() const;
    std::optional<double> volumeFraction() const;
    void showResult(const fluid::EquilibriumResult& result);
    void showSolution(const fluid::EquilibriumResult& result);
    void showPhases(const fluid::PhasePair& phases, const std::string& shareX,
                    const std::string& shareY);

    TemperatureEntry temperature{"GroupBox2", "StaticText3", "\u00B0Celsius"};
    VolumeEntry volume{"GroupBox3", "StaticText1", "MolarVolume1"};
    toolkit::GroupBox approachBox{"GroupBox5", "First Approach"};
    toolkit::Button CalFirstApproach{"CalFirstApproach", "first approach"};
    toolkit::Caption Pressure{"Pressure", "Pressure"};
    toolkit::Entry dataEntryP{"dataEntryP", 20};
    toolkit::Label pressureUnit{"StaticText4", "MPa"};
    toolkit::Caption VapourFraction{"VapourFraction", "Volume fraction of vapour"};
    toolkit::Entry dataEntryF{"dataEntryF", 20};
    ApproachList approachX{"X"};
    ApproachList approachY{"Y"};
    toolkit::Button PushButton1{"PushButton1", "explanation"};
    toolkit::Button Clear{"Clear", "clear"};
    toolkit::Button calculate{"calculate", "calculate"};
    toolkit::Message warning{"warning"};
    toolkit::Caption answerCaption{"AnswerCaption", "Equilibrium Pressure"};
    toolkit::ResultLabel Answer{"Answer"};
    toolkit::Label answerUnit{"AnswerUnit", "MPa"};
    toolkit::ResultLabel iterations{"iterations"};
    PhaseResult phaseX{"X", true};
    PhaseResult phaseY{"Y", true};

    fluid::Mixture composition_ = fluid::AcceptedMixture();
};

}  // namespace procedures
