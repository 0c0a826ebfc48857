#include "procedures/phase_lists.h"

#include <utility>
#include <vector>

#include "model/fluid_model.h"
#include "procedures/units.h"
#include "toolkit/event.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr int visibleGases = 4;
constexpr std::size_t fractionColumn = 1;

void EditClicked(toolkit::List& list) {
    const toolkit::List::Cell& cell = list.clickedCell();
    if (cell.column == fractionColumn) {
        list.editCell(cell.row);
    }
}

void ShowApproach(toolkit::List& list, const std::vector<std::string>& gases,
                  const fluid::ComponentValues& fractions) {
    std::vector<toolkit::List::Row> rows;
    rows.reserve(gases.size());
    for (const std::string& gas : gases) {
        rows.push_back({gas, toolkit::NumberText(fractions[rows.size()])});
    }
    list.setRows(rows);
}

bool ReadFractions(const toolkit::List& list, std::size_t count,
                   fluid::ComponentValues& fractions) {
    const std::vector<toolkit::List::Row> rows = list.rows();
    for (std::size_t k = 0; k < rows.size(); ++k) {
        const std::optional<double> fraction = toolkit::ParseNumber(rows[k][fractionColumn]);
        if (!fraction || *fraction < 0.0 || *fraction > 1.0) return false;
        fractions[k] = *fraction;
    }
    return rows.size() == count;
}

std::vector<toolkit::List::Row> Column(const std::vector<std::string>& texts) {
    std::vector<toolkit::List::Row> rows;
    rows.reserve(texts.size());
    for (const std::string& text : texts) {
        rows.push_back({text});
    }
    return rows;
}

}  // namespace

ApproachLists::ApproachLists()
    : ListBoxPhaseX("ListBoxPhaseX", {"gas", "fraction"}, {5, 19}),
      ListBoxPhaseY("ListBoxPhaseY", {"gas", "fraction"}, {5, 19}) {
    for (toolkit::List* const list : {&ListBoxPhaseX, &ListBoxPhaseY}) {
        list->setEmptyText("The composition that the search starts from appears here.");
        list->setEditable(fractionColumn);
    }
    ListBoxPhaseX.setAccessibleName("first approach, composition of phase X");
    ListBoxPhaseY.setAccessibleName("first approach, composition of phase Y");
    ListBoxPhaseX.onCellClick(this, &ApproachLists::ListBoxPhaseX_CellClick);
    ListBoxPhaseY.onCellClick(this, &ApproachLists::ListBoxPhaseY_CellClick);
    ListBoxPhaseX.onCellTextChange(this, &ApproachLists::ListBoxPhaseX_CellTextChange);
    ListBoxPhaseY.onCellTextChange(this, &ApproachLists::ListBoxPhaseY_CellTextChange);
}

toolkit::Block ApproachLists::block() {
    const auto side = [](toolkit::Label& caption, toolkit::List& list) {
        return toolkit::Column({caption, list.scrolling(visibleGases).expanding()}).expanding();
    };
    return toolkit::Row({side(captionX_, ListBoxPhaseX), side(captionY_, ListBoxPhaseY)});
}

void ApproachLists::show(const fluid::Mixture& mixture, const fluid::PhaseGuess& guess) {
    const std::vector<std::string> gases = GasesOf(mixture);
    ShowApproach(ListBoxPhaseX, gases, guess.x);
    ShowApproach(ListBoxPhaseY, gases, guess.y);
}

void ApproachLists::clear() {
    ListBoxPhaseX.clear();
    ListBoxPhaseY.clear();
}

std::optional<fluid::PhaseGuess> ApproachLists::guess(const fluid::Mixture& mixture,
                                                      double unknown) const {
    fluid::PhaseGuess guess;
    guess.unknown = unknown;
    const bool isUsable = ReadFractions(ListBoxPhaseX, mixture.count, guess.x) &&
                          ReadFractions(ListBoxPhaseY, mixture.count, guess.y);
    return isUsable ? std::optional(guess) : std::nullopt;
}

void ApproachLists::ListBoxPhaseX_CellClick() {
    EditClicked(ListBoxPhaseX);
}

void ApproachLists::ListBoxPhaseY_CellClick() {
    EditClicked(ListBoxPhaseY);
}

void ApproachLists::ListBoxPhaseX_CellTextChange() {
    toolkit::RunHandler(changed_, ListBoxPhaseX.name().c_str());
}

void ApproachLists::ListBoxPhaseY_CellTextChange() {
    toolkit::RunHandler(changed_, ListBoxPhaseY.name().c_str());
}

PhaseLists::PhaseLists(std::string phase, bool withFraction)
    : phase_(std::move(phase)),
      withFraction_(withFraction),
      heading_("Phase" + phase_ + "1", "Phase " + phase_),
      volume_("ListBoxVm" + phase_, {"Molar Volume (cm3/mol)"}, {16}),
      density_("ListBoxD" + phase_, {"Density (g/cm3)"}, {12}),
      volumeFraction_("ListBoxFrac" + phase_, {"Volume fraction"}, {12}),
      gases_("ListBoxPhase" + phase_ + "1", {"gas"}, {5}),
      fractions_("ListBoxPhase" + phase_ + "2", {"fraction"}, {10}) {
    const std::string ofPhase = " of phase " + phase_;
    volume_.setAccessibleName("molar volume" + ofPhase);
    density_.setAccessibleName("density" + ofPhase);
    volumeFraction_.setAccessibleName("volume fraction" + ofPhase);
    gases_.setAccessibleName("gases" + ofPhase);
    fractions_.setEmptyText("The composition of the phase appears here when it is calculated.");
    fractions_.setAccessibleName("fractions" + ofPhase);
}

toolkit::Block PhaseLists::block() {
    using toolkit::Spacing;
    std::vector<toolkit::Block> quantities = {volume_.framed(1).expanding(),
                                              density_.framed(1).expanding()};
    if (withFraction_) {
        quantities.push_back(volumeFraction_.framed(1).expanding());
    }
    const toolkit::Block gasBlock = gases_.scrolling(visibleGases);
    const toolkit::Block fractionBlock = fractions_.scrolling(visibleGases, &gases_);
    const toolkit::Block composition =
        toolkit::Row({gasBlock, fractionBlock.expanding()}, Spacing::Related);
    return toolkit::Column(
        {heading_, toolkit::Row(quantities, Spacing::Related), composition.expanding()});
}

void PhaseLists::showUnits() {
    volume_.setHeads({std::string("Molar Volume (") + volumeUnit + ")"});
    density_.setHeads({std::string("Density (") + densityUnit + ")"});
}

void PhaseLists::show(const fluid::Mixture& mixture, const std::optional<PhaseTexts>& texts) {
    heading_.setText("Phase " + phase_ + (texts ? texts->role : ""));
    if (!texts) {
        for (toolkit::List* const list :
             {&volume_, &density_, &volumeFraction_, &gases_, &fractions_}) {
            list->clear();
        }
        return;
    }
    volume_.setRows({{texts->volume}});
    density_.setRows({{texts->density}});
    volumeFraction_.setRows({{texts->volumeFraction}});
    gases_.setRows(Column(GasesOf(mixture)));
    fractions_.setRows(Column(texts->fractions));
}

ResultPanel::ResultPanel(const std::string& reportName, bool withFractions)
    : report(reportName), x_("X", withFractions), y_("Y", withFractions) {
    report.setUnobtrusive();
    constexpr int lines = 2;
    report.reserve(0, lines);
}

toolkit::Block ResultPanel::answerBlock(toolkit::Caption& caption, toolkit::Label& unit) {
    return toolkit::Column({warning, toolkit::Row({caption, Answer, unit}), report});
}

toolkit::Block ResultPanel::phasesBlock() {
    return toolkit::Column({x_.block().expanding(), y_.block().expanding()});
}

void ResultPanel::showUnits() {
    x_.showUnits();
    y_.showUnits();
}

void ResultPanel::show(const fluid::Mixture& mixture, const PhaseResults& results) {
    Answer.setUnobtrusive(!results.isSolution);
    Answer.setText(results.answer);
    report.setText(results.report);
    warning.setText(results.warning);
    x_.show(mixture, results.x);
    y_.show(mixture, results.y);
}

void ResultPanel::clear() {
    show({}, {});
}

}  // namespace procedures
