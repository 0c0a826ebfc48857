#include "procedures/state_form.h"

namespace procedures {

StateForm::StateForm(const std::string& boxName, const std::string& unitName)
    : volume(boxName, unitName) {}

toolkit::Block StateForm::block(const std::vector<toolkit::Block>& second,
                                const toolkit::Block& temperatureUnit,
                                const std::vector<toolkit::Block>& result) {
    using toolkit::Block;
    const Block inputs = toolkit::Grid(
        {{volume.MolarVolume, Block(volume.dataEntryV).expanding(), volume.unitLabel}, second});
    return toolkit::Column(
        {toolkit::Column({inputs, volume.DensityResult}),
         toolkit::Row({volume.unit.block(), temperatureUnit}),
         toolkit::ButtonRow({Clear, calculate}), toolkit::Grid({result}), warning},
        toolkit::Spacing::Group);
}

}  // namespace procedures
