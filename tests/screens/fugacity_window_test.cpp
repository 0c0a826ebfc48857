#include <algorithm>
#include <cmath>

#include "model/fluid_model.h"
#include "tests/model/golden.h"
#include "tests/screens/root_screen_test.h"

namespace {

class FugacityWindowTest : public tests::RootScreenTest {
  protected:
    /// Compares the list with the eleven logarithms of the coefficients from row[16] on.
    void expectFugacities(const std::vector<double>& row) {
        expectGases(row, [&](std::size_t line, std::size_t i) {
            const double logarithm = row[16 + i];
            const bool isGuarded = std::abs(logarithm) >= 227.0;
            const double coefficient = isGuarded ? 1.0 : std::exp(logarithm);
            const double fugacity = row[i] / 1e12 * coefficient * row[12];
            guarded += isGuarded ? 1 : 0;
            // An error of the volume comes in times b/(V - b).
            const double tolerance = 1e-13 * (1.0 + std::abs(logarithm) * std::abs(logarithm));
            EXPECT_LT(RelativeError(cell(line, 1), fugacity), tolerance);
            EXPECT_LT(RelativeError(cell(line, 2), coefficient), tolerance);
        });
    }

    int guarded = 0;
};

TEST_F(FugacityWindowTest, ListsTheFugacitiesOfTheChosenRootInTheInternalOrder) {
    std::vector<double> before(38);
    std::size_t compared = 0;
    for (const auto& row : ReadGolden("phases.csv", 38)) {
        if (row[0] == 0.0 && std::count(row.begin(), row.begin() + 11, 0.0) == 10) {
            continue;  // of the pure gases only water
        }
        if (!std::equal(row.begin(), row.begin() + 11, before.begin())) {
            openProcedure(tests::fractionsOf(row), "Fugacities", "FugacityWindow");
        }
        if (!std::equal(row.begin(), row.begin() + 13, before.begin())) {
            solve(row[11], row[12]);
        }
        SCOPED_TRACE(std::to_string(row[11]) + " K " + std::to_string(row[12]) + " MPa");
        choose(static_cast<int>(row[13]));
        expectSlope(row[15], 1e-9);
        EXPECT_LT(RelativeError(number("Result"), row[14]), 1e-13);
        EXPECT_LT(
            RelativeError(number("DensityResult"), fluid::AcceptedMixture().molarMass / row[14]),
            1e-13);
        expectFugacities(row);
        before = row;
        ++compared;
    }
    EXPECT_GT(compared, 30U);
    EXPECT_GT(guarded, 0);
    EXPECT_TRUE(text("ListBox1").starts_with("gas\tfugacity (in MPa)\tcoefficient\nH2O\t"));
}

}  // namespace
