#pragma once

#include "procedures/fugacity_table.h"
#include "procedures/root_choice.h"
#include "procedures/root_result.h"
#include "procedures/state_entry.h"
#include "toolkit/list.h"
#include "toolkit/screen.h"

namespace procedures {

// The fugacity and the fugacity coefficient of each component of the mixture.
class FugacityWindow : public toolkit::Screen {
  public:
    explicit FugacityWindow(toolkit::ScreenHost& host);

    void Event_Activate() override;

  private:
    void calculate_Action();

    void show(const FugacityTable& table);
    void emptyResults();
    void emptyAll();

    StateEntry state{"Label1", "warning"};
    RootChoice choice;
    RootResult result;
    toolkit::List ListBox1;
    toolkit::Message note{"note"};

    TypedState calculated_;  // the state that the roots on the buttons belong to
};

}  // namespace procedures
