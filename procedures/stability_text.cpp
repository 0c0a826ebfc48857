#include "procedures/stability_text.h"

#include <array>
#include <cstddef>

namespace procedures {

const char* stabilityName(fluid::Stability stability) {
    constexpr std::array<const char*, 4> names = {"stable", "meta-stable", "unstable",
                                                  "not examined"};
    return names[static_cast<std::size_t>(stability)];
}

std::string splitSentence(fluid::Stability stability) {
    if (stability == fluid::Stability::Stable) {
        return "";
    }
    return std::string("this equilibrium is ") + stabilityName(stability) +
           ": the fluid would rather split in another way";
}

}  // namespace procedures
