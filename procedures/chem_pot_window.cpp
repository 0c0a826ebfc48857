#include "procedures/chem_pot_window.h"

#include <string>
#include <utility>
#include <vector>

#include "model/properties.h"
#include "procedures/property_notes.h"
#include "toolkit/layout.h"

namespace procedures {

namespace {

constexpr int visibleRows = 13;  // eleven and the further lines of the heads
constexpr int lineWidth = 80;    // characters

}  // namespace

ChemPotWindow::ChemPotWindow(toolkit::ScreenHost& host)
    : FugacityScreen(
          host, {"ChemPotWindow",
                 "Chemical potentials - Drovan W",
                 "Label1",
                 "warning",
                 {"gas", "chemical\npotential\n(J/mol)", "standard\npart\n(J/mol)",
                  "RT ln f/p°\n(J/mol)", "ln φ", "partial molar\nenthalpy\n(J/mol)",
                  "partial molar\nentropy\n(J/(mol K))", "partial molar\nvolume\n(cm³/mol)"}}) {
    using toolkit::Block;
    ListBox1.showAllColumns();
    reference.wrapAt(lineWidth);
    note.wrapAt(lineWidth);
    setContent(toolkit::column({inputBlock().atStart(), choice.block(), slope,
                                Block(toolkit::grid(volumeRows())).atStart(),
                                ListBox1.scrolling(visibleRows).expanding(), reference, note},
                               toolkit::Spacing::group));
    setDefault(calculate);
    setFocus(dataEntryT);
}

void ChemPotWindow::emptyResults() {
    FugacityScreen::emptyResults();
    note.setText("");
}

void ChemPotWindow::showRoot(const StatePoint& state, double V) {
    showStability(state, V);
    showVolume(V);
    const auto properties =
        fluid::ComponentPropertiesOf(fluid::AcceptedMixture(), state.T, state.P, V);
    std::vector<toolkit::List::Row> table;
    bool isWhole = true;
    for (std::size_t k = 0; k < fluid::AcceptedMixture().count; ++k) {
        const fluid::ComponentProperties& gas = properties[k];
        toolkit::List::Row row = {std::string(fluid::AcceptedMixture().formula(k))};
        for (const auto& value : {gas.chemicalPotential, gas.standardPotential, gas.fugacityTerm,
                                  gas.logPhi, gas.enthalpy, gas.entropy, gas.volume}) {
            isWhole = isWhole && value;
            row.push_back(shownNumber(value));
        }
        table.push_back(std::move(row));
    }
    ListBox1.setRows(table);
    note.setText(
        linesOf({outsideRangeSentence(state.T), isWhole ? "" : missingSentence(V, state.b)}));
}

}  // namespace procedures
