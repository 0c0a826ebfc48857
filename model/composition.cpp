#include "model/composition.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <numeric>

namespace fluid {

namespace {

// Eleven 64-bit counts cannot overflow it.
__extension__ using WideCount = __int128;

struct Entered {
    std::array<std::int64_t, componentCount> counts;
    ComponentValues fractions;
    std::array<bool, componentCount> tooLarge;
};

constinit Entered entered{};
constinit Mixture accepted{};
constinit std::int32_t lastComponent = -1;

bool AllCounted() {
    return std::none_of(entered.tooLarge.begin(), entered.tooLarge.end(),
                        [](bool tooLarge) { return tooLarge; });
}

WideCount CountSum() {
    return std::accumulate(entered.counts.begin(), entered.counts.end(), WideCount{0});
}

}  // namespace

constinit const std::array<std::int64_t, componentCount>& FractionCounts = entered.counts;
constinit const std::int32_t& LastComponent = lastComponent;
constinit const ComponentValues& Fractions = accepted.fractions;

const Mixture& AcceptedMixture() {
    return accepted;
}

void SetFractionCount(std::size_t index, double fraction) {
    assert(index < componentCount);
    constexpr double countLimit = 0x1p63;
    const double count = std::round(fraction * static_cast<double>(fractionScale));
    const bool fits = count >= -countLimit && count < countLimit;
    entered.fractions[index] = fraction;
    entered.tooLarge[index] = !fits;
    using Limits = std::numeric_limits<std::int64_t>;
    const std::int64_t bound = count < 0.0 ? Limits::min() : Limits::max();
    entered.counts[index] = fits ? static_cast<std::int64_t>(count) : bound;
}

double FractionSum() {
    if (!AllCounted()) {
        return std::accumulate(entered.fractions.begin(), entered.fractions.end(), 0.0);
    }
    return static_cast<double>(CountSum()) / static_cast<double>(fractionScale);
}

bool FractionsAddUpToOne() {
    return AllCounted() && CountSum() == fractionScale;
}

bool AcceptComposition() {
    if (!FractionsAddUpToOne()) return false;
    ComponentValues x{};
    ComponentValues present{};
    lastComponent = -1;
    for (std::size_t i = 0; i < componentCount; ++i) {
        x[i] = static_cast<double>(entered.counts[i]) / static_cast<double>(fractionScale);
        if (!(x[i] > 0.0)) continue;
        present[static_cast<std::size_t>(++lastComponent)] = x[i];
    }
    InitComponentTable(x);
    accepted = MixtureOf(lastComponent, present);
    return true;
}

}  // namespace fluid
