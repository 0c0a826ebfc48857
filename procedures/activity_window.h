#pragma once

#include <string>

#include "model/fluid_model.h"
#include "procedures/fugacity_screen.h"

namespace procedures {

/// The activity and the activity coefficient of each component against a standard state.
class ActivityWindow : public FugacityScreen {
  public:
    explicit ActivityWindow(toolkit::ScreenHost& host);

    void Event_Activate() override;

  protected:
    void emptyResults() override;
    void emptyAll() override;
    void showComplexRoot() override;
    void showRoot(const StatePoint& state, double V) override;

  private:
    /// The pure gases in the chosen standard state: cm3/mol and MPa.
    struct StandardStates {
        fluid::ComponentValues volumes{};
        fluid::ComponentValues fugacities{};
    };

    void StandardChoice0_Action();
    void StandardChoice1_Action();
    void StandardChoice2_Action();
    void dataEntryPref1_TextChange();
    void dataEntryPref2_TextChange();
    void PushButton1_Action();

    void layOut();
    void clearStandardState();
    void emptyActivities();
    double referencePressure() const;
    /// The sentence about what is missing for the activities; empty where nothing is.
    std::string missingInput() const;
    StandardStates standardState(double T, double Pref) const;

    toolkit::RadioGroup standardStates;
    toolkit::GroupBox standardBox{"GroupBox2", "select standard state conditions"};
    toolkit::RadioButton StandardChoice0{standardStates, "StandardChoice0",
                                         " Pure real gases at selected T and P"};
    toolkit::RadioButton StandardChoice1{standardStates, "StandardChoice1",
                                         " Pure real gases at selected T and P(ref.)"};
    toolkit::RadioButton StandardChoice2{standardStates, "StandardChoice2",
                                         " Pure ideal gases at selected T and P(ref.)"};
    toolkit::Entry dataEntryPref1{"dataEntryPref1", 14};
    toolkit::Label unitPref1{"unitPref1", "MPa"};
    toolkit::Entry dataEntryPref2{"dataEntryPref2", 14};
    toolkit::Label unitPref2{"unitPref2", "MPa"};
    toolkit::Button PushButton1{"PushButton1", "calculate activities"};
    toolkit::Message warning{"warning"};
    toolkit::Label volumeNote{"volumeNote", "Vm (pure gas) in cm3/mol"};

    // Of the chosen root: the fugacity of each component in the mixture in MPa, and the molar
    // volume of each pure gas in cm3/mol.
    fluid::ComponentValues fugacities_{};
    fluid::ComponentValues pureVolumes_{};
};

}  // namespace procedures
