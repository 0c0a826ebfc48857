#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "model/component_table.h"
#include "model/mixture.h"

namespace fluid {

// Fractions are counted in units of 10^-12, which makes the test that they add up to 1 exact.
inline constexpr std::int64_t fractionScale = 1'000'000'000'000;

// The fractions being entered, in internal order. A fraction whose count has no room in 64 bits
// stands here as the nearest bound, and is no part of an acceptable composition.
extern const std::array<std::int64_t, componentCount>& FractionCounts;

// The accepted composition; one without components until there is one.
const Mixture& AcceptedMixture();

// The same as lists: positions 0..LastComponent of ComponentIndex and Fractions hold the internal
// index and the fraction of each present component. LastComponent is -1 until a composition has
// been accepted.
extern const std::int32_t& LastComponent;
extern const ComponentValues& Fractions;

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
