#pragma once

#include <cstddef>
#include <optional>

#include "procedures/root_choice.h"
#include "procedures/root_result.h"
#include "procedures/state_entry.h"
#include "procedures/volume_parts.h"
#include "toolkit/list.h"
#include "toolkit/screen.h"

namespace procedures {

// The molar volumes of the mixture at a temperature and a pressure, and the volumes of its parts.
class VolumeWindow : public toolkit::Screen {
  public:
    explicit VolumeWindow(toolkit::ScreenHost& host);

    void Event_Activate() override;

  private:
    void calculate_Action();

    void layOut();
    std::optional<TypedState> read();
    void show(const VolumeParts& parts);
    void emptyResults();
    void emptyAll();

    StateEntry state{"StaticText3", "warning", StateEntry::UnitChange::Keeps};
    RootChoice choice;
    RootResult result;
    toolkit::Label StaticText1;
    toolkit::Caption idealCaption{"IdealVolume", "Ideal mixture"};
    toolkit::ResultLabel ResultIdeal{"ResultIdeal"};
    toolkit::Label Label5{"Label5", " cm3/mol"};
    toolkit::Caption excessCaption{"ExcessVolume", "Excess volume"};
    toolkit::ResultLabel ExcessVol{"ExcessVol"};
    toolkit::Label Label6{"Label6", " cm3/mol"};
    toolkit::List ListBox1{
        "ListBox1", {"gas", "Vm (pure gas) cm3/mol", "partial Vm (dV/dn) cm3/mol"}, {5, 19, 19}};

    TypedState calculated_;  // the state that the roots on the buttons belong to
};

}  // namespace procedures
