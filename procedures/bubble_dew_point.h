#pragma once

#include <optional>
#include <string>

#include "model/first_approach.h"
#include "model/fluid_model.h"
#include "model/homogenisation.h"
#include "model/phase_equilibrium.h"
#include "procedures/phase_lists.h"
#include "procedures/temperature_unit.h"
#include "toolkit/button.h"
#include "toolkit/drawing.h"
#include "toolkit/entry.h"
#include "toolkit/label.h"
#include "toolkit/layout.h"
#include "toolkit/screen.h"

namespace procedures {

/// The temperature or pressure at which a fluid inclusion homogenises into liquid or vapour.
class BubbleDewPoint : public toolkit::Screen {
  public:
    explicit BubbleDewPoint(toolkit::ScreenHost& host);

    void Event_Activate() override;

  private:
    void RadioButtonTh_Action();
    void RadioButtonPh_Action();
    void dataEntryTh_TextChange();
    void dataEntryPh_TextChange();
    void dataEntry2_TextChange();
    void LiquidMode_Action();
    void VapourMode_Action();
    void FirstApproach_Action();
    void calculate_Action();
    void ListBoxPhaseX_CellTextChange();
    void ListBoxPhaseY_CellTextChange();
    void Clear_Action();
    void Explanations_Action();

    void connectHandlers();
    void layOut();
    toolkit::Block inputBlock();
    toolkit::Block approachBlock();
    void setUse(toolkit::Entry& entry, bool isUsed);
    void showGivenQuantity();
    void temperatureUnitChosen();
    void emptyResults();
    void emptyAll();

    fluid::Given given() const;
    fluid::Homogenisation kind() const;
    bool hasMode() const;
    /// The given temperature in K or pressure in MPa; nothing where it is no usable number.
    std::optional<double> givenValue() const;
    /// The first approach in the entry and the lists; nothing where a part of it is unusable.
    std::optional<fluid::PhaseGuess> guess() const;
    /// The sought quantity as the screen has it, MPa or the chosen unit of temperature.
    double shownUnknown(double unknown) const;
    void showApproach(const fluid::PhaseGuess& approach);
    /// What is to be said where there is not just one point: how many there are, or why none.
    std::string pointsSentence() const;
    std::string nowhereSentence() const;
    void showResult(const fluid::HomogenisationResult& result);
    void showPhases(const fluid::PhasePair& phases);

    toolkit::RadioGroup quantityGroup;
    toolkit::RadioButton RadioButtonTh{quantityGroup, "RadioButtonTh",
                                       " Homogenization Temperature"};
    toolkit::Entry dataEntryTh{"dataEntryTh", 16};
    toolkit::Label StaticText3{"StaticText3", "Kelvin"};
    toolkit::RadioButton RadioButtonPh{quantityGroup, "RadioButtonPh", " Homogenization Pressure"};
    toolkit::Entry dataEntryPh{"dataEntryPh", 16};
    toolkit::Label StaticText4{"StaticText4", "MPa"};
    TemperatureUnit temperature{"GroupBox2", "\u00B0Celsius"};
    toolkit::RadioGroup modeGroup;
    toolkit::GroupBox modeBox{"GroupBox4", "Homogenization into"};
    toolkit::RadioButton LiquidMode{modeGroup, "LiquidMode", " liquid (bubble point)"};
    toolkit::RadioButton VapourMode{modeGroup, "VapourMode", " vapour (dew point)"};
    toolkit::Drawing CanvasLiquid;
    toolkit::Drawing CanvasVapour;
    toolkit::GroupBox GroupBox5{"GroupBox5", "First Approach"};
    toolkit::Button FirstApproach{"FirstApproach", "first approach"};
    toolkit::Caption Homogen{"Homogen", ""};
    toolkit::Entry dataEntry2{"dataEntry2", 20};
    toolkit::Label Dimension{"Dimension", ""};
    ApproachList approachX{"X"};
    ApproachList approachY{"Y"};
    toolkit::Button Clear{"Clear", "clear"};
    toolkit::Button Explanations{"Explanations", "explanation"};
    toolkit::Button calculate{"calculate", "calculate"};
    toolkit::Message warning{"warning"};
    toolkit::Caption Homogen2{"Homogen2", ""};
    toolkit::ResultLabel Answer{"Answer"};
    toolkit::Label Dimension2{"Dimension2", ""};
    toolkit::ResultLabel Iterations{"Iterations"};
    PhaseResult phaseX{"X", false};
    PhaseResult phaseY{"Y", false};

    // The points found by the last search, and the one that is shown.
    fluid::HomogenisationPoints points_;
    std::size_t shownPoint_ = 0;
};

}  // namespace procedures
