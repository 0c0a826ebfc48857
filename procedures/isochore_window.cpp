#include "procedures/isochore_window.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <numeric>
#include <utility>

#include "model/composition.h"
#include "procedures/composition_text.h"
#include "procedures/phase_sentences.h"
#include "toolkit/file_writing.h"
#include "toolkit/layout.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

const TemperatureScale longestScale = {"˚Celsius", zeroCelsius};
constexpr int visibleRows = 4;
constexpr std::size_t mostPaths = 60;

// The composition: "CO2 0.7, CH4 0.3".
std::string FractionsText(const fluid::Mixture& mixture) {
    std::string text;
    for (std::size_t k = 0; k < mixture.count; ++k) {
        text += (k == 0 ? "" : ", ") + std::string(mixture.formula(k)) + " " +
                toolkit::NumberText(mixture.fractions[k]);
    }
    return text;
}

std::string PointsSentence(const InclusionState& state) {
    std::string sentence = "warning: " + std::to_string(state.points.size()) +
                           " points of homogenization; choose by “next point”:";
    for (const HomogenizationPoint& point : state.points) {
        sentence +=
            "\n" + SentenceText(point.P) + " MPa and " + SentenceText(point.V) + " " + volumeUnit;
    }
    return sentence;
}

// ". Trapping at 500 Kelvin and 80 MPa", or why there is none; empty where none was asked for.
std::string TrappingText(const Trapped& trapped, const TemperatureScale& scale) {
    if (trapped.point) {
        return ". Trapping at " + SentenceText(trapped.point->T.in(scale)) + " " + scale.name +
               " and " + SentenceText(trapped.point->P) + " MPa";
    }
    return trapped.remark.empty() ? "" : ". No trapping: " + trapped.remark;
}

}  // namespace

IsochoreWindow::IsochoreWindow(toolkit::ScreenHost& host)
    : Screen(host, "IsochoreWindow", "Isochores - Drovan W"),
      table(*this, warning, "isochore",
            {.heads = IsochoreTable::heads(longestScale),
             .characters = {10, 11, 11, 10, 17},
             .words = {4}}),
      list(*this, warning, "inclusions",
           {.heads = InclusionList::heads(longestScale),
            .characters = {10, 12, 11, 8, 11, 12, 11, 10, 12, 12, 24, 18},
            .words = InclusionList::words(),
            .isWide = true,
            .listName = "ListBox2",
            .exportName = "ExportList"}),
      plotPanel(*this, warning, table.ListBox1, "isochore",
                "Pressure over temperature: bubble and dew points, and of each inclusion its "
                "isochore from where it homogenizes on, and below that the pressure of its two "
                "phases") {
    HomogenizationT.setTarget(dataEntryTh, StaticText2);
    Name.setTarget(dataEntryName);
    TrappingT.setTarget(dataEntryTt, StaticText3);
    TrappingP.setTarget(dataEntryPt, StaticText4);
    table.ListBox1.setEmptyText(
        "The pressure at each temperature of the range appears here when it is calculated.");
    plotPanel.plot.setEmptyText(
        "The bubble and dew points and the isochore of an inclusion appear here when it is "
        "calculated or added.");
    list.ListBox1.setEmptyText("Inclusions that are added or pasted appear here.");
    Homogenisation.reserve(0, 3);
    DiagramNote.reserve(0, 2);
    showUnits();
    connectHandlers();
    layOut();
    ShowTable.turnOn();
    WithoutSpinodal.turnOn();
    setDefault(calculate);
    setFocus(volume.dataEntryV);
}

void IsochoreWindow::connectHandlers() {
    volume.onChange(this, &IsochoreWindow::volumeChanged);
    dataEntryTh.onTextChange(this, &IsochoreWindow::dataEntryTh_TextChange);
    LiquidMode.onChoose(this, &IsochoreWindow::intoChosen);
    VapourMode.onChoose(this, &IsochoreWindow::intoChosen);
    temperature.onChange(this, &IsochoreWindow::temperatureUnitChosen);
    range.onTextChange(this, &IsochoreWindow::emptyResults);
    dataEntryTt.onTextChange(this, &IsochoreWindow::dataEntryTt_TextChange);
    dataEntryPt.onTextChange(this, &IsochoreWindow::dataEntryPt_TextChange);
    Clear.onClick(this, &IsochoreWindow::Clear_Action);
    NextPoint.onClick(this, &IsochoreWindow::NextPoint_Action);
    Add.onClick(this, &IsochoreWindow::Add_Action);
    calculate.onClick(this, &IsochoreWindow::calculate_Action);
    ShowTable.onChoose(this, &IsochoreWindow::ShowTable_Action);
    ShowList.onChoose(this, &IsochoreWindow::ShowList_Action);
    WithoutSpinodal.onChoose(this, &IsochoreWindow::Diagram_Action);
    WithSpinodal.onChoose(this, &IsochoreWindow::Diagram_Action);
    list.ListBox1.onSelect(this, &IsochoreWindow::ListBox2_Select);
    list.ListBox1.onPaste(this, &IsochoreWindow::pasted);
    Paste.onClick(this, &IsochoreWindow::Paste_Action);
    Rename.onClick(this, &IsochoreWindow::Rename_Action);
    Remove.onClick(this, &IsochoreWindow::Remove_Action);
    Up.onClick(this, &IsochoreWindow::Up_Action);
    Down.onClick(this, &IsochoreWindow::Down_Action);
    Keep.onClick(this, &IsochoreWindow::Keep_Action);
    SetTrapping.onClick(this, &IsochoreWindow::SetTrapping_Action);
    ExportIsochores.onClick(this, &IsochoreWindow::ExportIsochores_Action);
    SetTrapping.dropMnemonic();
    NextPoint.setTooltip("Takes the next of several points of homogenization");
    Add.setTooltip("Puts this inclusion into the list");
    Paste.setTooltip(
        "Adds inclusions from a spreadsheet: values; or names and values; or names, values and L "
        "or V");
    Rename.setTooltip("Gives the selected inclusion the name in the entry");
    SetTrapping.setTooltip(
        "Gives this trapping temperature or pressure to the selected inclusions only");
    Keep.setTooltip("Leaves these inclusions as they are when the composition changes");
    ExportIsochores.setTooltip("Writes the isochores of the selected inclusions, or of all");
}

toolkit::Block IsochoreWindow::inputBlock() {
    using toolkit::Block;
    std::vector<std::vector<Block>> entries = {
        {volume.MolarVolume, Block(volume.dataEntryV).expanding(), volume.unitLabel},
        {HomogenizationT, Block(dataEntryTh).expanding(), StaticText2}};
    const std::vector<std::vector<Block>> temperatures = range.rows();
    entries.insert(entries.end(), temperatures.begin(), temperatures.end());
    entries.push_back({TrappingT, Block(dataEntryTt).expanding(), StaticText3});
    entries.push_back({TrappingP, Block(dataEntryPt).expanding(), StaticText4});
    using toolkit::Spacing;
    const Block grid = toolkit::Grid(entries, Spacing::Related, Spacing::Related);
    const Block into = intoBox.around(toolkit::Column({LiquidMode, VapourMode}));
    const Block units = toolkit::Column({volume.unit.block(), temperature.block(), into});
    return toolkit::Column(
        {toolkit::Row({grid.expanding(), units}, Spacing::Related), volume.DensityResult});
}

void IsochoreWindow::layOut() {
    using toolkit::Block;
    const Block inclusion = toolkit::Column(
        {inputBlock(), toolkit::ButtonRow({Clear, NextPoint, Add, table.Export, calculate}),
         warning, Homogenisation});
    const Block plot = toolkit::Column({plotPanel.block().expanding(), DiagramNote,
                                        toolkit::Row({WithoutSpinodal, WithSpinodal})});
    const Block buttons = toolkit::Grid(
        {{Paste, Rename, Remove}, {Up, Down, SetTrapping}, {Keep, list.Export, ExportIsochores}});
    const Block pages =
        Pages.of({table.ListBox1.scrolling(visibleRows),
                  toolkit::Row({list.ListBox1.scrolling(visibleRows).expanding(), buttons})});
    const Block tables = toolkit::Column(
        {toolkit::Row({ShowTable, ShowList, Name, dataEntryName}), pages.expanding()});
    setContent(toolkit::Columns({"inclusion", inclusion}, {{"plot", plot}}, {"tables", tables}));
}

void IsochoreWindow::Event_Activate() {
    showUnits();
    if (!(fluid_.mixture == fluid::AcceptedMixture())) {
        fluid_ = {fluid::AcceptedMixture(), FractionsText(fluid::AcceptedMixture())};
        inclusions_->forgetResults();
        typedPoint_.reset();
        emptyResults();
        showList({});
    }
}

void IsochoreWindow::showUnits() {
    volume.activated();
    const std::string unit = temperature.unitText();
    StaticText2.setText(unit);
    StaticText3.setText(unit);
    range.setQuantity("Temperature", unit);
    table.ListBox1.setHeads(IsochoreTable::heads(temperature.scale()));
    list.ListBox1.setHeads(InclusionList::heads(temperature.scale()));
    plotPanel.setAxes("Temperature", temperature.scale().symbol(), "Pressure", "MPa");
}

// --- What is typed

void IsochoreWindow::emptyResults() {
    warning.setText("");
    Homogenisation.setText("");
    table.clear();
    if (typed_) {
        typed_.reset();
        showDiagram();
    }
}

void IsochoreWindow::volumeChanged() {
    if (!volume.dataEntryV.text().empty() && !dataEntryTh.text().empty()) {
        dataEntryTh.setText("");
    }
    typedPoint_.reset();
    emptyResults();
}

void IsochoreWindow::dataEntryTh_TextChange() {
    if (!dataEntryTh.text().empty() && !volume.dataEntryV.text().empty()) {
        volume.dataEntryV.setText("");
    }
    typedPoint_.reset();
    emptyResults();
}

void IsochoreWindow::intoChosen() {
    typedPoint_.reset();
    emptyResults();
}

void IsochoreWindow::dataEntryTt_TextChange() {
    if (!dataEntryTt.text().empty() && !dataEntryPt.text().empty()) {
        dataEntryPt.setText("");
    }
    emptyResults();
    if (takeTrapping()) {
        showList(list.ListBox1.selected());
    }
}

void IsochoreWindow::dataEntryPt_TextChange() {
    if (!dataEntryPt.text().empty() && !dataEntryTt.text().empty()) {
        dataEntryTt.setText("");
    }
    emptyResults();
    if (takeTrapping()) {
        showList(list.ListBox1.selected());
    }
}

void IsochoreWindow::temperatureUnitChosen() {
    dataEntryTh.setText("");
    dataEntryTt.setText("");
    range.clearEnds();
    showUnits();
    emptyResults();
    showList(list.ListBox1.selected());
}

void IsochoreWindow::Clear_Action() {
    volume.dataEntryV.setText("");
    dataEntryTh.setText("");
    dataEntryName.setText("");
    dataEntryTt.setText("");
    dataEntryPt.setText("");
    range.clear();
    emptyResults();
}

std::optional<Inclusion> IsochoreWindow::readInclusion() {
    Inclusion inclusion;
    inclusion.name = dataEntryName.text();
    inclusion.scale = temperature.scale();
    inclusion.point = typedPoint_;
    if (dataEntryTh.text().empty()) {
        inclusion.by = volume.unit.kgm3.isOn() ? GivenBy::Density : GivenBy::MolarVolume;
        inclusion.number = volume.dataEntryV.number();
        const double V = volume.molarVolume();
        if (!(V > 0.0) || !std::isfinite(V)) {
            warning.setText(
                "warning: put a number for molar volume or for homogenization temperature");
            return std::nullopt;
        }
        return inclusion;
    }
    const auto number = toolkit::ParseNumber(dataEntryTh.text());
    if (!number || !(temperature.toKelvin(*number) > 0.0)) {
        warning.setText("warning: put a homogenization temperature above absolute zero");
        return std::nullopt;
    }
    if (!LiquidMode.isOn() && !VapourMode.isOn()) {
        warning.setText("warning: choose whether it homogenizes into the liquid or the vapour");
        return std::nullopt;
    }
    inclusion.by = LiquidMode.isOn() ? GivenBy::IntoLiquid : GivenBy::IntoVapour;
    inclusion.number = *number;
    return inclusion;
}

std::optional<TemperatureRange> IsochoreWindow::readRange(
    const std::vector<InclusionState>& inclusions, double hottestTrapping) const {
    const TemperatureRange proposed =
        ProposedTemperatures(fluid_.mixture, inclusions, temperature.scale(), hottestTrapping);
    const auto values = range.read(proposed.values);
    return values ? std::optional(TemperatureRange{*values, temperature.scale()}) : std::nullopt;
}

std::optional<Trapping> IsochoreWindow::readTrapping() {
    Trapping trapping;
    const auto T = toolkit::ParseNumber(dataEntryTt.text());
    const auto P = toolkit::ParseNumber(dataEntryPt.text());
    if (T && temperature.toKelvin(*T) > 0.0) {
        trapping.T = WrittenTemperature::typed(*T, temperature.scale());
    } else if (!T && P && *P > 0.0) {
        trapping.P = *P;
    } else if (!dataEntryTt.text().empty()) {
        warning.setText("warning: put a trapping temperature above absolute zero");
        return std::nullopt;
    } else if (!dataEntryPt.text().empty()) {
        warning.setText("warning: put a trapping pressure above 0");
        return std::nullopt;
    }
    return trapping;
}

bool IsochoreWindow::takeTrapping() {
    const std::optional<Trapping> trapping = readTrapping();
    inclusions_->setTrapping(trapping.value_or(Trapping()));
    return trapping.has_value();
}

void IsochoreWindow::SetTrapping_Action() {
    const InclusionList::Rows rows = list.ListBox1.selected();
    const std::optional<Trapping> trapping = readTrapping();
    if (!trapping) return;
    if (rows.empty()) {
        warning.setText("warning: select the inclusions in the list that it is for");
        return;
    }
    inclusions_->setTrapping(rows, *trapping);
    dataEntryTt.setText("");
    dataEntryPt.setText("");
    showList(rows);
    warning.inform(trapping->isKnown()
                       ? "the selected inclusions have this trapping condition, others another"
                       : "the selected inclusions are trapped as all others are");
}

void IsochoreWindow::calculate_Action() {
    emptyResults();
    const bool isListOnly =
        volume.dataEntryV.text().empty() && dataEntryTh.text().empty() && inclusions_->count() > 0;
    if (!takeTrapping()) return;
    if (isListOnly) {
        calculateList();
        return;
    }
    const std::optional<Inclusion> inclusion = readInclusion();
    if (!inclusion) return;
    typed_ = StateOf(fluid_.mixture, *inclusion);
    if (inclusions_->count() > 0) {
        inclusions_->calculate(fluid_);
        list.show(inclusions_, temperature.scale());
    }
    ShowTable.turnOn();
    showIsochore(*typed_);
}

void IsochoreWindow::NextPoint_Action() {
    if (ShowList.isOn()) {
        const InclusionList::Rows rows = list.ListBox1.selected();
        inclusions_->chooseNextPoint(rows);
        showList(rows);
        return;
    }
    if (!typed_ || typed_->points.size() < 2) {
        warning.setText("warning: there is no other point of homogenization");
        return;
    }
    typedPoint_ = typedPoint_ ? (*typedPoint_ + 1) % typed_->points.size() : 0;
    calculate_Action();
}

void IsochoreWindow::showIsochore(const InclusionState& state) {
    if (!(state.V > 0.0)) {
        const bool areSeveral = state.points.size() > 1;
        warning.setText(areSeveral ? PointsSentence(state) : "warning: " + state.remark);
        showDiagram();
        return;
    }
    const IsochoreInput input = {state.V, readRange({state})};
    const std::string refusal = input.refusal(fluid_.mixture);
    warning.setText(refusal);
    if (!refusal.empty()) {
        typed_.reset();
        return;
    }
    const auto isochore = std::make_shared<const IsochoreTable>(fluid_.mixture, input);
    std::string tail = state.points.size() > 1 ? " (" + state.remark + ")" : "";
    if (!dataEntryTh.text().empty()) {
        tail += ". Molar volume " + SentenceText(state.V) + " " + volumeUnit + ", density " +
                SentenceText(state.density) + " " + densityUnit;
    }
    Homogenisation.setText(isochore->homogenizationSentence(temperature.scale()) + tail +
                           TrappingText(TrappedAt(fluid_.mixture, state, inclusions_->trapping()),
                                        temperature.scale()));
    table.show(isochore, temperature.scale());
    showDiagram();
}

// --- The list

void IsochoreWindow::calculateList() {
    inclusions_->calculate(fluid_);
    ShowList.turnOn();
    showList(list.ListBox1.selected());
}

void IsochoreWindow::showList(const InclusionList::Rows& selected) {
    list.show(inclusions_, temperature.scale());
    list.ListBox1.select(selected);
    if (!typed_) {
        Homogenisation.setText("");
        table.clear();
        showSelected();
    }
    showDiagram();
}

void IsochoreWindow::Add_Action() {
    const std::optional<Inclusion> inclusion = readInclusion();
    if (!inclusion || !takeTrapping()) return;
    inclusions_->calculate(fluid_);
    inclusions_->add({*inclusion});
    typed_.reset();
    typedPoint_.reset();
    warning.setText("");
    dataEntryName.setText("");
    ShowList.turnOn();
    showList({inclusions_->count() - 1});
}

void IsochoreWindow::Paste_Action() {
    list.ListBox1.perform(toolkit::EditCommand::Paste);
}

void IsochoreWindow::pasted(const std::string& text) {
    PastePattern pattern;
    pattern.scale = temperature.scale();
    const bool isByVolume = !volume.dataEntryV.text().empty() && dataEntryTh.text().empty();
    if (isByVolume) {
        pattern.by = volume.unit.kgm3.isOn() ? GivenBy::Density : GivenBy::MolarVolume;
    } else if (LiquidMode.isOn() || VapourMode.isOn()) {
        pattern.by = LiquidMode.isOn() ? GivenBy::IntoLiquid : GivenBy::IntoVapour;
    }
    PastedInclusions rows = ReadPasted(text, pattern);
    if (rows.inclusions.empty()) {
        warning.setText("warning: there are no rows of inclusions on the clipboard");
        return;
    }
    const std::size_t understood = rows.inclusions.size() - rows.problems;
    const std::size_t first = inclusions_->count();
    takeTrapping();
    inclusions_->calculate(fluid_);
    inclusions_->add(std::move(rows.inclusions));
    ShowList.turnOn();
    showList({});
    list.ListBox1.scrollTo(first);
    std::size_t withoutVolume = 0;
    for (std::size_t row = first; row < inclusions_->count(); ++row) {
        withoutVolume += inclusions_->state(row).V > 0.0 ? 0 : 1;
    }
    std::string sentence = std::to_string(understood) +
                           (understood == 1 ? " inclusion was added" : " inclusions were added");
    if (!rows.heads.empty()) {
        sentence += "; the first row was taken for heads" +
                    (rows.unit.empty() ? "" : ", with the unit " + rows.unit);
    }
    const auto add = [&sentence](std::size_t count, const char* one, const char* many) {
        if (count > 0) sentence += "; " + std::to_string(count) + (count == 1 ? one : many);
    };
    add(rows.problems, " row was not understood", " rows were not understood");
    add(withoutVolume - rows.problems, " has no isochore yet", " have no isochore yet");
    if (withoutVolume > 0) {
        warning.setText(sentence + ": see the remarks in the list");
    } else {
        warning.inform(sentence);
    }
}

void IsochoreWindow::Rename_Action() {
    const InclusionList::Rows rows = list.ListBox1.selected();
    if (rows.size() != 1 || dataEntryName.text().empty()) {
        warning.setText("warning: select one inclusion in the list and put its new name");
        return;
    }
    inclusions_->rename(rows.front(), dataEntryName.text());
    dataEntryName.setText("");
    showList(rows);
}

void IsochoreWindow::Remove_Action() {
    inclusions_->remove(list.ListBox1.selected());
    showList({});
}

void IsochoreWindow::Up_Action() {
    showList(inclusions_->move(list.ListBox1.selected(), false));
}

void IsochoreWindow::Down_Action() {
    showList(inclusions_->move(list.ListBox1.selected(), true));
}

void IsochoreWindow::Keep_Action() {
    inclusions_->keep();
    showList(list.ListBox1.selected());
}

void IsochoreWindow::ListBox2_Select() {
    warning.setText("");
    showSelected();
    if (inclusions_->count() > mostPaths) {
        showDiagram();
    }
}

void IsochoreWindow::showSelected() {
    const InclusionList::Rows rows = list.ListBox1.selected();
    if (rows.size() == 1 && inclusions_->state(rows.front()).V > 0.0) {
        typed_.reset();
        const auto& fluid = inclusions_->fluidOf(rows.front());
        const InclusionState& state = inclusions_->state(rows.front());
        const IsochoreInput input = {state.V, readRange({state})};
        if (input.refusal(fluid->mixture).empty()) {
            const auto isochore = std::make_shared<const IsochoreTable>(fluid->mixture, input);
            Homogenisation.setText(
                inclusions_->inclusion(rows.front()).name + ": " +
                isochore->homogenizationSentence(temperature.scale()) +
                TrappingText(inclusions_->trapped(rows.front()), temperature.scale()));
            table.show(isochore, temperature.scale());
        }
    }
}

void IsochoreWindow::ExportIsochores_Action() {
    InclusionList::Rows rows = list.ListBox1.selected();
    if (rows.empty()) {
        rows.resize(inclusions_->count());
        std::iota(rows.begin(), rows.end(), 0U);
    }
    std::string text;
    std::vector<InclusionState> states;
    for (const std::size_t row : rows) {
        states.push_back(inclusions_->state(row));
    }
    const auto temperatures = readRange(states);
    for (const std::size_t row : rows) {
        const IsochoreInput input = {inclusions_->state(row).V, temperatures};
        const auto& fluid = inclusions_->fluidOf(row);
        if (fluid && input.refusal(fluid->mixture).empty()) {
            text += (text.empty() ? "Name = " : "\nName = ") + inclusions_->inclusion(row).name +
                    "\nComposition = " + fluid->composition + "\n" +
                    IsochoreTable(fluid->mixture, input).fileText();
        }
    }
    if (text.empty()) {
        warning.setText("warning: there is no isochore to export; calculate one first");
        return;
    }
    SaveToFile(*this, warning, "Export isochores", "isochores", {".txt"},
               [text](const std::string& path) { return toolkit::WriteFile(path, text); });
}

void IsochoreWindow::ShowList_Action() {
    Pages.show(1);
}

void IsochoreWindow::ShowTable_Action() {
    Pages.show(0);
}

// --- The diagram

void IsochoreWindow::Diagram_Action() {
    showDiagram();
}

struct IsochoreWindow::Shown {
    std::string name;
    InclusionState state;
    std::shared_ptr<const Fluid> kept;  // null for an inclusion of the present fluid
    std::optional<TrappingPoint> trapping;
    bool isSelected = false;
};

std::vector<IsochoreWindow::Shown> IsochoreWindow::shownInclusions() const {
    const InclusionList::Rows selected = list.ListBox1.selected();
    std::vector<Shown> shown;
    for (std::size_t row = 0; row < inclusions_->count(); ++row) {
        if (inclusions_->state(row).V > 0.0) {
            shown.push_back({inclusions_->inclusion(row).name, inclusions_->state(row),
                             inclusions_->keptFluid(row), inclusions_->trapped(row).point,
                             std::binary_search(selected.begin(), selected.end(), row)});
        }
    }
    if (typed_ && typed_->V > 0.0) {
        shown.push_back({dataEntryName.text(),
                         *typed_,
                         {},
                         TrappedAt(fluid_.mixture, *typed_, inclusions_->trapping()).point,
                         true});
    }
    return shown;
}

void IsochoreWindow::showDiagram() {
    const std::vector<Shown> inclusions = shownInclusions();
    DiagramNote.setText("");
    if (inclusions.empty()) {
        plotPanel.clear();
        return;
    }
    const TemperatureScale scale = temperature.scale();
    std::vector<InclusionState> states;
    std::vector<toolkit::PlotSeries> trapping;
    double hottestTrapping = 0.0;
    double highestTrapping = 0.0;
    std::size_t selected = 0;
    for (const Shown& each : inclusions) {
        states.push_back(each.state);
        selected += each.isSelected ? 1 : 0;
        if (each.trapping) {
            trapping.emplace_back("trapping" + (each.name.empty() ? "" : " of " + each.name),
                                  toolkit::PlotSeries::Style::Markers, 2);
            trapping.back().legend = "trapping";
            trapping.back().add(each.trapping->T.in(scale), each.trapping->P);
            hottestTrapping = std::max(hottestTrapping, each.trapping->T.kelvin);
            highestTrapping = std::max(highestTrapping, each.trapping->P);
        }
    }
    std::optional<TemperatureRange> temperatures = readRange(states, hottestTrapping);
    if (!temperatures || !temperatures->refusal().empty()) {
        temperatures = ProposedTemperatures(fluid_.mixture, states, scale, hottestTrapping);
    }
    const double lowestT = temperatures->lowest().kelvin;
    const double highestT = temperatures->highest().kelvin;
    constexpr std::size_t allSteps = 600;
    constexpr std::size_t mostSteps = 24;
    const bool areMany = inclusions.size() > mostPaths;
    const std::size_t paths = areMany ? selected : inclusions.size();
    const std::size_t steps = std::min(mostSteps, allSteps / std::max<std::size_t>(paths, 1));
    using Group = std::pair<std::shared_ptr<const Fluid>, std::vector<InclusionLine>>;
    std::vector<Group> groups = {{nullptr, {}}};  // first that of the present fluid
    double highestP = 0.0;
    double highestPh = 0.0;
    for (const Shown& each : inclusions) {
        const bool hasPath = paths <= mostPaths && (!areMany || each.isSelected);
        InclusionLine line = LineOf(each.kept ? each.kept->mixture : fluid_.mixture, each.state,
                                    lowestT, highestT, hasPath ? steps : 0);
        line.name = each.name;
        if (!line.pieces.empty()) {
            highestP = std::max(highestP, line.pieces.back().points.back().P);
        }
        highestPh = std::max(highestPh, line.homogenization ? line.homogenization->P : 0.0);
        auto group = std::find_if(groups.begin(), groups.end(),
                                  [&each](const Group& one) { return one.first == each.kept; });
        if (group == groups.end()) {
            group = groups.insert(groups.end(), {each.kept, {}});
        }
        group->second.push_back(std::move(line));
    }
    std::vector<toolkit::PlotSeries> series =
        EnvelopeSeries(fluid_.mixture, highestP, {scale, lowestT, WithSpinodal.isOn()});
    std::size_t colour = 4;  // behind those of the curves
    for (const auto& [fluid, lines] : groups) {
        const std::string name =
            groups.size() == 1 ? "isochores"
                               : "isochores, " + CompositionText((fluid ? *fluid : fluid_).mixture);
        for (toolkit::PlotSeries& each : LineSeries(lines, scale, name, colour)) {
            series.push_back(std::move(each));
        }
        colour = colour == 4 ? 5 : toolkit::PlotSeries::grey;
        const std::string said =
            LineSentences(fluid ? fluid->mixture : fluid_.mixture, lines, lowestT, scale);
        if (DiagramNote.text().empty()) {
            DiagramNote.setText(said);
        }
    }
    if (areMany) {
        DiagramNote.setText(
            "Of more than " + std::to_string(mostPaths) +
            " inclusions the two phases are drawn for selected ones, up to so many. " +
            DiagramNote.text());
    }
    std::move(trapping.begin(), trapping.end(), std::back_inserter(series));
    plotPanel.show(std::move(series),
                   DiagramView(fluid_.mixture, *temperatures, scale, highestPh, highestTrapping),
                   inclusions.size() > 1 ? std::to_string(inclusions.size()) + "inclusions"
                                         : SentenceText(inclusions.front().state.V) + "cm3mol");
}

}  // namespace procedures
