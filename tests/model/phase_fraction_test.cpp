#include <gtest/gtest.h>

#include <cstddef>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "model/fluid_model.h"
#include "model/phase_equilibrium.h"
#include "tests/model/golden.h"

namespace {

// A bulk that is all liquid or all vapour to the last digit: its fraction leaves 0..1 by rounding.
TEST(Equilibrium, BulkOnTheEdgeOfTwoPhasesLeadsToThem) {
    constexpr std::size_t Columns = 27;
    for (const std::vector<double>& row : ReadGolden("phase_equilibria.csv", Columns)) {
        Accept(std::span(row).first(fluid::ComponentCount));
        const auto values = std::span(row).subspan(fluid::ComponentCount);
        const double T = values[1];
        const double P = values[2];
        fluid::PhaseGuess guess = {P, fluid::Fractions, {}};
        for (std::size_t k = 0; k <= static_cast<std::size_t>(fluid::LastComponent); ++k) {
            guess.y[k] = values[5 + fluid::ComponentIndex[k]];
        }
        const bool isBubble = values[0] == 0.0;
        const double share = isBubble ? 0.0 : 1.0;
        if (!isBubble) std::swap(guess.x, guess.y);
        const double V = isBubble ? values[3] : values[4];
        SCOPED_TRACE(std::to_string(T) + " K, " + std::to_string(P) + " MPa");
        const auto result =
            fluid::IterateEquilibrium(fluid::LastComponent, fluid::Fractions, T, V, share, guess);
        EXPECT_EQ(result.outcome, fluid::Outcome::Converged);
        EXPECT_LT(RelativeError(result.phases.P, P), 1e-9);
        EXPECT_NEAR(result.volumeFraction, share, 1e-8);
    }
}

}  // namespace
