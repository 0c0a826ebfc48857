#pragma once

#include <optional>
#include <string>

#include "model/composition.h"
#include "procedures/phase_lists.h"
#include "procedures/temperature_unit.h"
#include "procedures/two_phases.h"
#include "procedures/volume_entry.h"
#include "toolkit/button.h"
#include "toolkit/entry.h"
#include "toolkit/label.h"
#include "toolkit/layout.h"
#include "toolkit/screen.h"

namespace procedures {

// The liquid and the vapour of a fluid inclusion of known density, and their pressure.
class LiquidVapourEq : public toolkit::Screen {
  public:
    explicit LiquidVapourEq(toolkit::ScreenHost& host);

    void Event_Activate() override;

  private:
    void CalFirstApproach_Action();
    void calculate_Action();
    void dataEntryP_TextChange();
    void dataEntryF_TextChange();
    void Clear_Action();
    void PushButton1_Action();

    void connectHandlers();
    void layOut();
    toolkit::Block inputBlock();
    toolkit::Block approachBlock();
    void emptyResults();
    void emptyApproach();
    // Nothing where the temperature is not above 0 or the volume not above the co-volume.
    std::optional<EquilibriumInput> read() const;
    // The first approach; nothing where a part of it is unusable.
    std::optional<EquilibriumStart> readApproach() const;

    TemperatureEntry temperature{"GroupBox2", "StaticText3", "\u00B0Celsius"};
    VolumeEntry volume{"GroupBox3", "StaticText1", "MolarVolume1"};
    toolkit::GroupBox approachBox{"GroupBox5", "First Approach"};
    toolkit::Button CalFirstApproach{"CalFirstApproach", "first approach"};
    toolkit::Caption Pressure{"Pressure", "Pressure"};
    toolkit::Entry dataEntryP{"dataEntryP"};
    toolkit::Label pressureUnit{"StaticText4", "MPa"};
    toolkit::Caption VapourFraction{"VapourFraction", "Volume fraction of vapour"};
    toolkit::Entry dataEntryF{"dataEntryF"};
    ApproachLists approach;
    toolkit::Button PushButton1{"PushButton1", "explanation"};
    toolkit::Button Clear{"Clear", "clear"};
    toolkit::Button calculate{"calculate", "calculate"};
    toolkit::Caption answerCaption{"AnswerCaption", "Equilibrium Pressure"};
    toolkit::Label answerUnit{"AnswerUnit", "MPa"};
    ResultPanel results{"iterations", true};

    fluid::Mixture composition_ = fluid::AcceptedMixture();
};

}  // namespace procedures
