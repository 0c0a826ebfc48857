#include "procedures/phase_lists.h"

#include <utility>
#include <vector>

#include "procedures/units.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr int visibleGases = 5;
constexpr int quantityDecimals = 6;
constexpr int fractionDecimals = 8;

std::size_t presentGases() {
    return fluid::AcceptedMixture().count;
}

std::string gasAt(std::size_t k) {
    return std::string(fluid::AcceptedMixture().formula(k));
}

}  // namespace

ApproachList::ApproachList(const std::string& phase)
    : caption_("Approach" + phase, "Phase " + phase),
      list("ListBoxPhase" + phase, {"gas", "fraction"}) {
    list.setEditable(1);
    list.setAccessibleName("first approach, composition of phase " + phase);
}

toolkit::Block ApproachList::block() {
    return toolkit::column({caption_, list.scrolling(visibleGases).expanding()});
}

void ApproachList::show(const fluid::ComponentValues& fractions) {
    std::vector<toolkit::List::Row> rows;
    for (std::size_t k = 0; k < presentGases(); ++k) {
        rows.push_back({gasAt(k), toolkit::numberText(fractions[k])});
    }
    list.setRows(rows);
}

std::optional<fluid::ComponentValues> ApproachList::fractions() const {
    const std::vector<toolkit::List::Row> rows = list.rows();
    if (rows.size() != presentGases()) {
        return std::nullopt;
    }
    fluid::ComponentValues fractions{};
    for (std::size_t k = 0; k < rows.size(); ++k) {
        const std::optional<double> fraction = toolkit::parseNumber(rows[k][1]);
        if (!fraction || *fraction < 0.0 || *fraction > 1.0) {
            return std::nullopt;
        }
        fractions[k] = *fraction;
    }
    return fractions;
}

PhaseResult::PhaseResult(std::string phase, bool withFraction)
    : phase_(std::move(phase)),
      withFraction_(withFraction),
      heading("Phase" + phase_ + "1", "Phase " + phase_),
      volume("ListBoxVm" + phase_, {"Molar Volume (cm3/mol)"}),
      density("ListBoxD" + phase_, {"Density (g/cm3)"}),
      volumeFraction("ListBoxFrac" + phase_, {"Volume fraction"}),
      gases("ListBoxPhase" + phase_ + "1", {"gas"}),
      fractions("ListBoxPhase" + phase_ + "2", {"fraction"}) {
    const std::string ofPhase = " of phase " + phase_;
    volume.setAccessibleName("molar volume" + ofPhase);
    density.setAccessibleName("density" + ofPhase);
    volumeFraction.setAccessibleName("volume fraction" + ofPhase);
    gases.setAccessibleName("gases" + ofPhase);
    gases.showAllColumns();
    fractions.setAccessibleName("fractions" + ofPhase);
}

toolkit::Block PhaseResult::block() {
    using toolkit::Spacing;
    std::vector<toolkit::Block> quantities = {volume.framed(1).expanding(),
                                              density.framed(1).expanding()};
    if (withFraction_) {
        quantities.push_back(volumeFraction.framed(1).expanding());
    }
    const toolkit::Block gasBlock = gases.scrolling(visibleGases);
    const toolkit::Block fractionBlock = fractions.scrolling(visibleGases, &gases);
    const toolkit::Block composition =
        toolkit::row({gasBlock, fractionBlock.expanding()}, Spacing::related);
    return toolkit::column(
        {heading, toolkit::row(quantities, Spacing::related), composition.expanding()});
}

void PhaseResult::showUnits() {
    volume.setHeads({std::string("Molar Volume (") + volumeUnit + ")"});
    density.setHeads({std::string("Density (") + densityUnit + ")"});
}

void PhaseResult::clear() {
    setRole("");
    for (toolkit::List* const list : {&volume, &density, &volumeFraction, &gases, &fractions}) {
        list->clear();
    }
}

void PhaseResult::show(const fluid::ComponentValues& amounts, double V, const std::string& share) {
    const double rho =
        fluid::MolarVolumeFromDensity(fluid::WithFractions(fluid::AcceptedMixture(), amounts), V);
    volume.setRows({{toolkit::resultText(V, quantityDecimals)}});
    density.setRows({{toolkit::resultText(rho, quantityDecimals)}});
    volumeFraction.setRows({{share}});
    std::vector<toolkit::List::Row> names;
    std::vector<toolkit::List::Row> values;
    for (std::size_t k = 0; k < presentGases(); ++k) {
        names.push_back({gasAt(k)});
        values.push_back({toolkit::resultText(amounts[k], fractionDecimals)});
    }
    gases.setRows(names);
    fractions.setRows(values);
}

}  // namespace procedures
