#include "procedures/range_panel.h"

#include <algorithm>
#include <utility>

#include "toolkit/event.h"
#include "toolkit/layout.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr std::size_t mostQuantities = 18;
constexpr std::size_t givenColumns = 3;  // temperature, pressure, state

TablePanel::Form Form() {
    TablePanel::Form Form;
    Form.heads.assign(givenColumns + mostQuantities, "quantity");
    Form.characters.assign(Form.heads.size(), 15);
    Form.words = {2};
    Form.isWide = true;
    Form.listName = "ListBox2";
    return Form;
}

// The quantities of an axis: "ln φ" for those of several gases.
std::string AxisName(const std::vector<RangeQuantity>& drawn) {
    std::vector<std::string> names;
    for (const RangeQuantity& quantity : drawn) {
        const std::string name = quantity.name.substr(0, quantity.name.find(" of "));
        if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
    }
    std::string joined;
    for (const std::string& name : names) joined += (joined.empty() ? "" : ", ") + name;
    return drawn.size() == 1 ? drawn.front().name : joined;
}

}  // namespace

RangePanel::RangePanel(toolkit::Screen& screen, StateEntry& state, const std::string& fileName)
    : state_(state),
      warning_(state.warning),
      table(screen, state.warning, fileName, Form()),
      plotPanel(screen, state.warning, table.ListBox1, fileName,
                "The chosen quantities over temperature or pressure") {
    for (toolkit::RadioButton* const button : {&OneState, &BetweenT, &BetweenP}) {
        button->onChoose(this, &RangePanel::kindChosen);
    }
    range.onTextChange(this, &RangePanel::clear);
    Quantities.setAccessibleName("quantities to list and to draw");
    Quantities.onSelect(this, &RangePanel::quantitiesChosen);
    table.ListBox1.setEmptyText(
        "The chosen quantities appear here for each temperature or pressure of the range.");
    table.ListBox1.setHeads(RangeTable::heads({}, scale()));
    OneState.turnOn();
}

toolkit::Block RangePanel::choiceBlock() {
    using toolkit::Block;
    return toolkit::Row({toolkit::Column({OneState, BetweenT, BetweenP}),
                         Block(toolkit::Grid(range.rows())).expanding()});
}

toolkit::Block RangePanel::chosenBlock(const toolkit::Block& ofOneState) {
    constexpr int visibleQuantities = 5;
    return Choices.of(
        {ofOneState,
         toolkit::Column({Quantities.scrolling(visibleQuantities).expanding(), rangeReference})});
}

std::vector<toolkit::Part> RangePanel::parts(const std::string& title,
                                             const toolkit::Block& ofOneState,
                                             const std::vector<toolkit::Block>& notes,
                                             const toolkit::Block& more) {
    constexpr int visibleRows = 5;
    std::vector<toolkit::Block> ofTable = notes;
    ofTable.emplace_back(reference);
    return {{title, Pages.of({ofOneState, toolkit::Column({plotPanel.block().expanding(), more})})},
            {"table and notes",
             Tables.of({toolkit::Column(ofTable),
                        toolkit::Column({table.ListBox1.scrolling(visibleRows).expanding(),
                                         toolkit::ButtonRow({table.Export})})})}};
}

void RangePanel::setReference(const std::string& sentence, int lines) {
    for (toolkit::Label* const label : {&reference, &rangeReference}) {
        label->setText(sentence);
        label->reserve(0, lines);
    }
}

void RangePanel::offer(std::vector<RangeQuantity> quantities) {
    const std::vector<std::size_t> selected = Quantities.selected();
    const bool isSame =
        std::equal(quantities.begin(), quantities.end(), quantities_.begin(), quantities_.end(),
                   [](const auto& one, const auto& other) { return one.name == other.name; });
    quantities_ = std::move(quantities);
    std::vector<toolkit::List::Row> rows;
    for (const RangeQuantity& quantity : quantities_) {
        rows.push_back({quantity.name, quantity.unit});
    }
    Quantities.setRows(rows);
    Quantities.select(isSame ? selected : std::vector<std::size_t>{0});
}

void RangePanel::stateChanged() {
    if (scale().zero != lastScale_.zero) {
        lastScale_ = scale();
        if (BetweenT.isOn()) range.clearEnds();
    }
    const bool isP = BetweenP.isOn();
    range.setQuantity(isP ? "Pressure" : "Temperature",
                      isP ? "MPa" : state_.temperature.unitText());
    range.setSensitive(isRange());
    state_.dataEntryT.setSensitive(!BetweenT.isOn());
    state_.dataEntryP.setSensitive(!isP);
    clear();
}

void RangePanel::kindChosen() {
    range.clear();
    stateChanged();
    for (toolkit::Deck* const deck : {&Choices, &Pages, &Tables}) {
        deck->show(isRange() ? 1 : 0);
    }
    toolkit::RunHandler(chosen_, Pages.name().c_str());
}

void RangePanel::clear() {
    warning_.setText("");
    range_.reset();
    table.clear();
    plotPanel.clear();
    if (!instead_.empty()) show();
}

void RangePanel::calculate(const fluid::Mixture& mixture) {
    clear();
    RangeInput input;
    input.isOverPressure = BetweenP.isOn();
    const auto T = toolkit::ParseNumber(state_.dataEntryT.text());
    if (T && state_.temperature.toKelvin(*T) > 0.0) {
        input.T = WrittenTemperature::typed(*T, scale());
    }
    input.P = toolkit::ParseNumber(state_.dataEntryP.text());
    const auto values = range.read();
    if (values && input.isOverPressure) {
        input.pressures = values;
    } else if (values) {
        input.temperatures = TemperatureRange{*values, scale()};
    }
    const std::string refusal = input.refusal();
    warning_.setText(refusal);
    if (refusal.empty()) {
        range_.emplace(mixture, input);
        show();
    }
}

std::vector<RangeQuantity> RangePanel::shownQuantities() const {
    std::vector<RangeQuantity> shown;
    for (const std::size_t i : Quantities.selected()) shown.push_back(quantities_[i]);
    shown.resize(std::min(shown.size(), mostQuantities));
    return shown;
}

void RangePanel::quantitiesChosen() {
    if (range_) show();
}

void RangePanel::showInstead(std::vector<toolkit::PlotSeries> curves) {
    instead_ = std::move(curves);
    plotPanel.clear();
    show();
}

void RangePanel::show() {
    const std::vector<RangeQuantity> shown = shownQuantities();
    if (range_) {
        const auto rows = std::make_shared<const RangeTable>(*range_, shown);
        table.ListBox1.setHeads(RangeTable::heads(shown, scale()));
        table.show(rows, scale());
        warning_.setText(rows->remark());
    }
    if (!instead_.empty()) {
        plotPanel.setAxes("Temperature", scale().symbol(), "Pressure", "MPa");
        plotPanel.show(instead_);
    } else if (range_ && !shown.empty()) {
        plotQuantities(shown);
    }
}

void RangePanel::plotQuantities(const std::vector<RangeQuantity>& shown) {
    std::vector<RangeQuantity> drawn;
    for (const RangeQuantity& quantity : shown) {
        if (quantity.unit == shown.front().unit) drawn.push_back(quantity);
    }
    std::vector<toolkit::PlotSeries> curves;
    for (const RangeQuantity& quantity : drawn) {
        curves.push_back(RangeCurve(*range_, quantity, scale()));
        curves.back().colour = curves.size() - 1;
    }
    const bool isP = range_->isOverPressure();
    plotPanel.setAxes(isP ? "Pressure" : "Temperature", isP ? "MPa" : scale().symbol(),
                      AxisName(drawn), drawn.front().unit);
    plotPanel.show(std::move(curves), {}, range_->fixedText());
}

}  // namespace procedures
