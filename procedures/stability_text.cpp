#include "procedures/stability_text.h"

#include <array>
#include <cstddef>

namespace procedures {

const char* StabilityName(fluid::Stability stability) {
    constexpr std::array<const char*, 4> names = {"stable", "meta-stable", "unstable",
                                                  "not examined"};
    return names[static_cast<std::size_t>(stability)];
}

std::string SplitSentence(fluid::Stability stability) {
    if (stability == fluid::Stability::Stable) return "";
    return std::string("this equilibrium is ") + StabilityName(stability) +
           ": the fluid would rather split in another way";
}

}  // namespace procedures
