#include "procedures/fugacity_window.h"

#include <string>
#include <vector>

#include "toolkit/layout.h"

namespace procedures {

namespace {

constexpr int visibleRows = 11;
const toolkit::List::Row heads = {"gas", "fugacity (in MPa)", "coefficient"};

}  // namespace

FugacityWindow::FugacityWindow(toolkit::ScreenHost& host)
    : FugacityScreen(host,
                     {"FugacityWindow", "Fugacities - Drovan W", "Label1", "warning", heads}) {
    using toolkit::Block;
    setContent(toolkit::column(
        {inputBlock(), choice.block(), slope, Block(toolkit::grid(volumeRows())).atStart(),
         ListBox1.scrolling(visibleRows).expanding()},
        toolkit::Spacing::group));
    setDefault(calculate);
    setFocus(dataEntryT);
}

void FugacityWindow::Event_Activate() {
    ListBox1.setHeads(heads);
    FugacityScreen::Event_Activate();
}

void FugacityWindow::showRoot(const StatePoint& state, double V) {
    const Fugacities fugacities = showState(state, V);
    std::vector<toolkit::List::Row> rows;
    for (std::size_t k = 0; k < fluid::AcceptedMixture().count; ++k) {
        rows.push_back({std::string(fluid::AcceptedMixture().formula(k)),
                        valueText(fugacities.values[k]), valueText(fugacities.coefficients[k])});
    }
    ListBox1.setRows(rows);
}

}  // namespace procedures
