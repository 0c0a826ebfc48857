#include "procedures/thermodynamic_window.h"

#include <array>
#include <string>
#include <vector>

#include "model/properties.h"
#include "procedures/property_notes.h"
#include "procedures/units.h"
#include "toolkit/layout.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr int noteWidth = 60;  // characters of a line

struct Line {
    const char* name = nullptr;
    const char* unit = nullptr;
    fluid::Property fluid::MixtureProperties::*property = nullptr;
    bool hasResidual = true;
};

using All = fluid::MixtureProperties;
constexpr std::array<Line, 15> lines = {
    {{"molar volume", volumeUnit, &All::V},
     {"density", densityUnit, &All::density},
     {"compressibility factor", "", &All::Z},
     {"internal energy", "J/mol", &All::U},
     {"enthalpy", "J/mol", &All::H},
     {"entropy", "J/(mol K)", &All::S},
     {"Helmholtz energy", "J/mol", &All::A},
     {"Gibbs energy", "J/mol", &All::G},
     {"isochoric heat capacity Cv", "J/(mol K)", &All::Cv},
     {"isobaric heat capacity Cp", "J/(mol K)", &All::Cp},
     {"heat capacity ratio Cp/Cv", "", &All::heatRatio, false},
     {"isothermal compressibility", "1/MPa", &All::compressibility, false},
     {"thermal expansion", "1/K", &All::expansion, false},
     {"speed of sound", "m/s", &All::soundSpeed, false},
     {"Joule-Thomson coefficient", "K/MPa", &All::jouleThomson, false}}};

// Why there is no speed of sound.
std::string unstableSentence(const All& all) {
    const bool isUnstable = all.compressibility.total.value_or(0.0) < 0.0;
    return isUnstable && !all.soundSpeed.total
               ? "--- because the fluid is mechanically unstable at this root: the square of its "
                 "speed of sound is negative."
               : "";
}

}  // namespace

ThermodynamicWindow::ThermodynamicWindow(toolkit::ScreenHost& host)
    : FugacityScreen(host, {"ThermodynamicWindow",
                            "Thermodynamic properties - Drovan W",
                            "Label1",
                            "warning",
                            {"property", "unit", "ideal gas", "residual", "total"}}) {
    using toolkit::Block;
    ListBox1.setAccessibleName("properties of the fluid");
    ListBox1.showAllColumns();
    note.wrapAt(noteWidth);
    setContent(toolkit::column({inputBlock().atStart(), choice.block(), slope,
                                Block(toolkit::grid(volumeRows())).atStart(),
                                ListBox1.scrolling(lines.size()).expanding(), reference, note},
                               toolkit::Spacing::group));
    setDefault(calculate);
    setFocus(dataEntryT);
}

void ThermodynamicWindow::emptyResults() {
    FugacityScreen::emptyResults();
    note.setText("");
}

void ThermodynamicWindow::showRoot(const StatePoint& state, double V) {
    showStability(state, V);
    showVolume(V);
    const All all = fluid::PropertiesOf(fluid::AcceptedMixture(), state.T, state.P, V);
    const std::string unstable = unstableSentence(all);
    std::vector<toolkit::List::Row> table;
    bool isWhole = true;
    for (const auto& [name, unit, property, hasResidual] : lines) {
        const auto& [idealGas, residual, total] = all.*property;
        const bool isExplained = property == &All::soundSpeed && !unstable.empty();
        isWhole = isWhole && idealGas && (residual || !hasResidual) && (total || isExplained);
        table.push_back({name, unit, shownNumber(idealGas),
                         hasResidual ? shownNumber(residual) : "", shownNumber(total)});
    }
    ListBox1.setRows(table);
    note.setText(linesOf(
        {outsideRangeSentence(state.T), unstable, isWhole ? "" : missingSentence(V, state.b)}));
}

}  // namespace procedures
