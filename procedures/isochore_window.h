#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "procedures/inclusion_list.h"
#include "procedures/isochore_diagram.h"
#include "procedures/isochore_table.h"
#include "procedures/plot_panel.h"
#include "procedures/range_entry.h"
#include "procedures/table_panel.h"
#include "procedures/temperature_unit.h"
#include "procedures/volume_entry.h"
#include "toolkit/deck.h"
#include "toolkit/screen.h"

namespace procedures {

// The isochores of inclusions whose molar volume, density or homogenization temperature is known:
// a list of them with where they homogenize and were trapped, the table of one of them, and all in
// a P-T diagram.
class IsochoreWindow : public toolkit::Screen {
  public:
    explicit IsochoreWindow(toolkit::ScreenHost& host);

    void Event_Activate() override;

  private:
    void calculate_Action();
    void Clear_Action();
    void NextPoint_Action();
    void Add_Action();
    void Paste_Action();
    void Rename_Action();
    void Remove_Action();
    void Up_Action();
    void Down_Action();
    void SetTrapping_Action();
    void Keep_Action();
    void ExportIsochores_Action();
    void ShowList_Action();
    void ShowTable_Action();
    void Diagram_Action();
    void ListBox2_Select();
    void volumeChanged();
    void dataEntryTh_TextChange();
    void dataEntryTt_TextChange();
    void dataEntryPt_TextChange();
    void intoChosen();
    void temperatureUnitChosen();
    void pasted(const std::string& text);

    void connectHandlers();
    void layOut();
    toolkit::Block inputBlock();
    void showUnits();
    // Empties what belongs to the inclusion that is typed.
    void emptyResults();
    // The inclusion that is typed; nothing where it is refused, by a sentence.
    std::optional<Inclusion> readInclusion();
    // The temperatures for these inclusions: as typed, and as proposed where nothing is.
    std::optional<TemperatureRange> readRange(const std::vector<InclusionState>& inclusions,
                                              double hottestTrapping = 0.0) const;
    // The trapping condition that is typed; nothing where it is refused, by a sentence.
    std::optional<Trapping> readTrapping();
    // Gives it to all inclusions; returns whether that could be done.
    bool takeTrapping();
    // Shows the isochore of the inclusion that is typed, or says why there is none.
    void showIsochore(const InclusionState& state);
    // Shows the table of the inclusion that is selected in the list, if it is one.
    void showSelected();
    // Shows the list with these rows selected, what belongs to the selected one, and the diagram.
    void showList(const InclusionList::Rows& selected);
    void showDiagram();
    struct Shown;
    std::vector<Shown> shownInclusions() const;
    void calculateList();

    Fluid fluid_;  // of what is shown
    std::shared_ptr<InclusionList> inclusions_ = std::make_shared<InclusionList>();
    // The inclusion that is typed, once it is calculated, and which of several points it is.
    std::optional<InclusionState> typed_;
    std::optional<std::size_t> typedPoint_;

    VolumeEntry volume{"GroupBox3", "StaticText1"};
    toolkit::Caption HomogenizationT{"HomogenizationT", "Homogenization Temperature"};
    toolkit::Entry dataEntryTh{"dataEntryTh"};
    toolkit::Label StaticText2{"StaticText2", "Kelvin"};
    toolkit::GroupBox intoBox{"GroupBox4", "into the"};
    toolkit::RadioGroup intoGroup;
    toolkit::RadioButton LiquidMode{intoGroup, "LiquidMode", " liquid"};
    toolkit::RadioButton VapourMode{intoGroup, "VapourMode", " vapour"};
    toolkit::Caption Name{"Name", "Name"};
    toolkit::Entry dataEntryName{"dataEntryName"};
    RangeEntry range{"dataEntryT1", "dataEntryT2"};
    toolkit::Caption TrappingT{"TrappingT", "Trapping Temperature"};
    toolkit::Entry dataEntryTt{"dataEntryTt"};
    toolkit::Label StaticText3{"StaticText3", "Kelvin"};
    toolkit::Caption TrappingP{"TrappingP", "Trapping Pressure"};
    toolkit::Entry dataEntryPt{"dataEntryPt"};
    toolkit::Label StaticText4{"StaticText4", "MPa"};
    toolkit::Button SetTrapping{"SetTrapping", "trap selected"};
    TemperatureUnit temperature{"GroupBox2"};
    toolkit::Button Clear{"Clear", "clear"};
    toolkit::Button NextPoint{"NextPoint", "next point"};
    toolkit::Button Add{"Add", "add"};
    toolkit::Button calculate{"calculate", "calculate"};
    toolkit::Message warning{"warning"};
    toolkit::ResultLabel Homogenisation{"Homogenisation"};
    toolkit::RadioGroup pageGroup;
    toolkit::RadioButton ShowTable{pageGroup, "ShowTable", " table of one isochore"};
    toolkit::RadioButton ShowList{pageGroup, "ShowList", " list of inclusions"};
    toolkit::RadioGroup diagramGroup;
    toolkit::RadioButton WithoutSpinodal{diagramGroup, "WithoutSpinodal", " without spinodal"};
    toolkit::RadioButton WithSpinodal{diagramGroup, "WithSpinodal", " with spinodal"};
    toolkit::Deck Pages{"Pages"};
    TablePanel table;
    TablePanel list;
    toolkit::Button Paste{"Paste", "paste"};
    toolkit::Button Rename{"Rename", "rename"};
    toolkit::Button Remove{"Remove", "remove"};
    toolkit::Button Up{"Up", "up"};
    toolkit::Button Down{"Down", "down"};
    toolkit::Button Keep{"Keep", "keep"};
    toolkit::Button ExportIsochores{"ExportIsochores", "export isochores"};
    PlotPanel plotPanel;
    toolkit::Label DiagramNote{"DiagramNote"};
};

}  // namespace procedures
