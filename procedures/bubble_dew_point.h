#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "procedures/homogenisation_conditions.h"
#include "procedures/phase_lists.h"
#include "procedures/temperature_unit.h"
#include "toolkit/button.h"
#include "toolkit/drawing.h"
#include "toolkit/entry.h"
#include "toolkit/label.h"
#include "toolkit/layout.h"
#include "toolkit/screen.h"

namespace procedures {

// The temperature or pressure at which a fluid inclusion homogenizes into liquid or vapour.
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
    void refuse();

    // Nothing where a choice is missing, or the given quantity is no number above 0.
    std::optional<HomogenisationInput> read() const;
    // The first approach in the entry and the lists; nothing where a part of it is unusable.
    std::optional<fluid::PhaseGuess> readApproach(const HomogenisationInput& input) const;
    // Goes on to the next point where one is shown.
    void showApproach(const HomogenisationInput& input);

    toolkit::RadioGroup quantityGroup;
    toolkit::RadioButton RadioButtonTh{quantityGroup, "RadioButtonTh",
                                       " Homogenization Temperature"};
    toolkit::Entry dataEntryTh{"dataEntryTh"};
    toolkit::Label StaticText3{"StaticText3", "Kelvin"};
    toolkit::RadioButton RadioButtonPh{quantityGroup, "RadioButtonPh", " Homogenization Pressure"};
    toolkit::Entry dataEntryPh{"dataEntryPh"};
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
    toolkit::Entry dataEntry2{"dataEntry2"};
    toolkit::Label Dimension{"Dimension", ""};
    ApproachLists approach;
    toolkit::Button Clear{"Clear", "clear"};
    toolkit::Button Explanations{"Explanations", "explanation"};
    toolkit::Button calculate{"calculate", "calculate"};
    toolkit::Caption Homogen2{"Homogen2", ""};
    toolkit::Label Dimension2{"Dimension2", ""};
    ResultPanel results{"Iterations", false};

    std::optional<std::size_t> point_;  // the number of the one that is shown
};

}  // namespace procedures
