#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "model/component_table.h"

namespace fluid {

// Fractions are counted in units of 10^-12, which makes the test that they add up to 1 exact.
inline constexpr std::int64_t FractionScale = 1'000'000'000'000;

// The fractions being entered, in internal order. A fraction whose count has no room in 64 bits
// stands here as the nearest bound, and is no part of an acceptable composition.
extern const std::array<std::int64_t, ComponentCount>& FractionCounts;

// The accepted composition: positions 0..LastComponent of ComponentIndex and Fractions hold the
// internal index and the fraction of each present component, in increasing internal index.
// LastComponent is -1 until a composition has been accepted.
extern const std::int32_t& LastComponent;
extern const std::array<std::size_t, ComponentCount>& ComponentIndex;
extern const ComponentValues& Fractions;

// An accepted composition, to be compared with a later one.
struct Composition {
    std::int32_t lastComponent = -1;
    std::array<std::size_t, ComponentCount> index{};
    ComponentValues fractions{};

    bool operator==(const Composition&) const = default;
};
const Composition& AcceptedComposition();

// Stores the fraction of the component with this internal index (0 to 10), rounded to the nearest
// count. Any double may be given; not-a-number counts as a fraction that has no room.
void SetFractionCount(std::size_t index, double fraction);

// Sum of the entered fractions, to be shown: exact to the rounding of the double. If a fraction has
// no room in 64 bits it is the sum of the doubles as entered.
double FractionSum();

// Whether the entered fractions add up to 1 to the last count.
bool FractionsAddUpToOne();

// Takes the entered fractions as the composition of the model and rebuilds the component tables;
// a fraction below 0 counts in the sum, but its component is not present.
// Returns false, and changes nothing, unless the fractions add up to exactly 1.
bool AcceptComposition();

}  // namespace fluid
