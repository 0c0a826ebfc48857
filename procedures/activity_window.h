#pragma once

#include <optional>
#include <string>

#include "procedures/fugacity_table.h"
#include "procedures/root_choice.h"
#include "procedures/root_result.h"
#include "procedures/state_entry.h"
#include "toolkit/list.h"
#include "toolkit/screen.h"

namespace procedures {

// The activity and the activity coefficient of each component against a standard state.
class ActivityWindow : public toolkit::Screen {
  public:
    explicit ActivityWindow(toolkit::ScreenHost& host);

    void Event_Activate() override;

  private:
    // What the activities are calculated of, beside the chosen root.
    struct Standard {
        StandardState state;
        double pressure;  // MPa
    };

    void calculate_Action();
    void StandardChoice0_Action();
    void StandardChoice1_Action();
    void StandardChoice2_Action();
    void dataEntryPref1_TextChange();
    void dataEntryPref2_TextChange();
    void PushButton1_Action();

    void layOut();
    // Nothing, and a sentence about what is missing, where no activities can be calculated.
    std::optional<Standard> readStandard();
    void show(const FugacityTable& table);
    void show(const ActivityTable& table);
    void clearStandardState();
    void emptyActivities();
    void emptyResults();
    void emptyAll();

    StateEntry state{"Label1", "warning1"};
    RootChoice choice;
    RootResult result;
    toolkit::RadioGroup standardStates;
    toolkit::GroupBox standardBox{"GroupBox2", "select standard state conditions"};
    toolkit::RadioButton StandardChoice0{standardStates, "StandardChoice0",
                                         " Pure real gases at selected T and P"};
    toolkit::RadioButton StandardChoice1{standardStates, "StandardChoice1",
                                         " Pure real gases at selected T and P(ref.)"};
    toolkit::RadioButton StandardChoice2{standardStates, "StandardChoice2",
                                         " Pure ideal gases at selected T and P(ref.)"};
    toolkit::Entry dataEntryPref1{"dataEntryPref1"};
    toolkit::Label unitPref1{"unitPref1", "MPa"};
    toolkit::Entry dataEntryPref2{"dataEntryPref2"};
    toolkit::Label unitPref2{"unitPref2", "MPa"};
    toolkit::Button PushButton1{"PushButton1", "calculate activities"};
    toolkit::Message warning{"warning"};
    toolkit::List ListBox1;
    toolkit::Label volumeNote{"volumeNote", "Vm (pure gas) in cm3/mol"};
    toolkit::Message note{"note"};

    TypedState calculated_;     // the state that the roots on the buttons belong to
    FugacityTable fugacities_;  // of the chosen root
};

}  // namespace procedures
