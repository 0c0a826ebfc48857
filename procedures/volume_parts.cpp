#include "procedures/volume_parts.h"

#include "model/fluid_model.h"
#include "toolkit/number_text.h"

namespace procedures {

VolumeParts VolumePartsAt(const fluid::Mixture& mixture, const TypedState& state,
                          std::size_t number) {
    const fluid::CubicRoots roots = RootsAt(mixture, state);
    VolumeParts parts;
    parts.root = RootVolumeOf(mixture, state, roots[number]);
    if (parts.root.kind != RootVolume::Kind::Volume) return parts;
    const bool areReal = roots[1].isReal();
    const auto partial = fluid::PartialMolarVolumes(mixture, state.T, parts.root.V);
    fluid::ComponentValues pureVolumes{};
    bool isComplete = true;
    for (std::size_t k = 0; k < mixture.count; ++k) {
        const fluid::PureGas pure = fluid::PureGasVolumeBeside(
            mixture, k, state.T, state.P, areReal ? std::optional(number) : std::nullopt);
        VolumeParts::Gas gas{.formula = mixture.formula(k), .hasOthers = pure.multiple};
        if (pure.volume > 0.0) {
            gas.pure = pure.volume;
        }
        if (partial) {
            gas.partial = (*partial)[k];
        }
        pureVolumes[k] = pure.volume;
        isComplete = isComplete && gas.pure;
        parts.gases.push_back(gas);
    }
    if (isComplete) {
        parts.ideal = fluid::IdealMixtureVolume(mixture, pureVolumes);
        parts.excess = parts.root.V - *parts.ideal;
    }
    return parts;
}

std::string VolumeText(const std::optional<double>& volume) {
    return volume ? toolkit::NumberText(*volume) : "---";
}

std::vector<std::string> VolumeRow(const VolumeParts::Gas& gas) {
    return {" " + std::string(gas.formula), VolumeText(gas.pure), VolumeText(gas.partial)};
}

std::string MultipleSentence(const VolumeParts& parts) {
    std::string gases;
    for (const VolumeParts::Gas& gas : parts.gases) {
        if (gas.hasOthers) {
            gases += (gases.empty() ? " " : ", ") + std::string(gas.formula);
        }
    }
    return gases.empty() ? "" : "warning: multiple solution for Vm(ideal) of pure" + gases;
}

}  // namespace procedures
