#include "procedures/state_form.h"

namespace procedures {

StateForm::StateForm(const std::string& boxName, const std::string& unitName)
    : volume(boxName, unitName) {}

toolkit::Block StateForm::block(const std::vector<toolkit::Block>& second,
                                const toolkit::Block& temperatureUnit,
                                const std::vector<toolkit::Block>& result) {
    using toolkit::Block;
    const Block inputs = toolkit::grid(
        {{volume.MolarVolume, Block(volume.dataEntryV).expanding(), volume.unitLabel}, second});
    return toolkit::column(
        {toolkit::column({inputs, volume.DensityResult}),
         toolkit::row({volume.unit.block(), temperatureUnit}),
         toolkit::buttonRow({Clear, calculate}), toolkit::grid({result}), warning},
        toolkit::Spacing::group);
}

}  // namespace procedures
