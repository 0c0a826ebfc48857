#include "procedures/state_form.h"

namespace procedures {

namespace {

constexpr int warningWidth = 48;  // characters of a line

}  // namespace

StateForm::StateForm(const std::string& boxName, const std::string& unitName)
    : volume(boxName, unitName) {
    warning.wrapAt(warningWidth);
}

toolkit::Block StateForm::block(const std::vector<toolkit::Block>& second,
                                const toolkit::Block& temperatureUnit,
                                const std::vector<toolkit::Block>& result) {
    using toolkit::Block;
    const Block inputs = toolkit::grid(
        {{volume.MolarVolume, Block(volume.dataEntryV).expanding(), volume.unitLabel}, second});
    return toolkit::column({toolkit::column({inputs, volume.DensityResult}),
                            toolkit::row({volume.unit.block(), temperatureUnit}),
                            toolkit::buttonRow({Clear, calculate}), toolkit::row(result), warning},
                           toolkit::Spacing::group);
}

}  // namespace procedures
