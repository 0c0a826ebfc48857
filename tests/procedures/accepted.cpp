#include "tests/procedures/accepted.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "model/composition.h"
#include "tests/model/golden.h"

const fluid::Mixture& Accepted(const Fractions& fractions) {
    for (std::size_t i = 0; i < fluid::componentCount; ++i) {
        const auto found = std::find_if(
            fractions.begin(), fractions.end(),
            [i](const auto& fraction) { return fraction.first == fluid::componentFormulas[i]; });
        fluid::SetFractionCount(i, found == fractions.end() ? 0.0 : found->second);
    }
    EXPECT_TRUE(fluid::AcceptComposition());
    return fluid::AcceptedMixture();
}

const fluid::Mixture& AcceptedRow(std::span<const double> row) {
    Accept(row.first(fluid::componentCount));
    return fluid::AcceptedMixture();
}
