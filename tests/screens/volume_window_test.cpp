#include "model/fluid_model.h"
#include "tests/model/golden.h"
#include "tests/screens/root_screen_test.h"
#include "toolkit/number_text.h"

namespace {

class VolumeWindowTest : public tests::RootScreenTest {
  protected:
    void open(const tests::Composition& fractions) {
        openProcedure(fractions, "MolarVolumes", "VolumeWindow");
    }
    static std::string captionOf(const double* root) {
        const std::string real = " " + toolkit::numberText(root[0]);
        return root[1] == 0.0 ? real : real + " and " + toolkit::numberText(root[1]) + "·i";
    }
    /// Compares the list and the sentence about its gases with the last 33 numbers of the row.
    void expectParts(const std::vector<double>& row) const {
        std::string ambiguous;
        expectGases(row, [&](std::size_t line, std::size_t i) {
            EXPECT_LT(RelativeError(cell(line, 1), row[25 + i]), 1e-13);
            EXPECT_LT(RelativeError(cell(line, 2), row[36 + i]), 1e-12);
            if (row[47 + i] > 0.0) {
                ambiguous += (ambiguous.empty() ? "" : ",") + rows()[line][0];
            }
        });
        EXPECT_EQ(text("warning"),
                  ambiguous.empty()
                      ? ""
                      : "warning: multiple solution for Vm(ideal) of pure" + ambiguous);
    }
};

TEST_F(VolumeWindowTest, ShowsTheRootsAtTheShownTemperatureAndWhatBelongsToEach) {
    for (const auto& row : ReadGolden("volumes.csv", 58)) {
        open(tests::fractionsOf(row));
        robot.click(row[11] > 0.0 ? "Celsius" : "Kelvin");
        solve(row[12], row[13]);
        EXPECT_EQ(text("dataEntryT"), toolkit::fixedText(row[12], 3));
        const int chosen = static_cast<int>(row[20]);
        for (std::size_t k = 0; k < 3; ++k) {
            const double* const root = &row[14 + 2 * k];
            const std::string caption = text("Choice" + std::to_string(k));
            EXPECT_EQ(caption.find(" and ") == std::string::npos, root[1] == 0.0) << caption;
            EXPECT_EQ(caption.ends_with("·i"), root[1] != 0.0) << caption;
            EXPECT_EQ(caption.substr(0, 12), captionOf(root).substr(0, 12));
        }
        choose(chosen);
        const double V = row[14 + 2 * static_cast<std::size_t>(chosen)];
        expectSlope(row[21], 1e-11);
        EXPECT_LT(RelativeError(number("Result"), V), 1e-13);
        EXPECT_LT(RelativeError(number("DensityResult"), row[22]), 1e-13);
        EXPECT_LT(RelativeError(number("ResultIdeal"), row[23]), 1e-13);
        EXPECT_LT(Error(number("ExcessVol"), row[24], V + row[23]), 1e-13);
        expectParts(row);
        double sum = 0.0;
        for (std::size_t k = 0; k < rows().size(); ++k) {
            sum += fluid::AcceptedMixture().fractions[k] * cell(k, 2);
        }
        EXPECT_LT(RelativeError(sum, V), 1e-13);
        robot.closeWindow();
    }
}

TEST_F(VolumeWindowTest, TemperatureThatIsShownAsZeroKelvinIsRefused) {
    open({{"H2O", "1"}});
    solve("0.0004", "5");
    EXPECT_EQ(texts({"Choice0", "warning"}),
              "|warning: put a valid number for temperature and pressure|");
}

TEST_F(VolumeWindowTest, CellsWithoutAValueAreDashed) {
    open({{"CH4", "0.5"}, {"H2", "0.5"}});
    solve("190.564", "4.5922");
    choose(0);
    EXPECT_EQ(rows().at(1).at(1), "---");
    EXPECT_EQ(cell(0, 1) > 0.0 && cell(0, 2) > 0.0 && cell(1, 2) > 0.0, true);
    EXPECT_EQ(texts({"ResultIdeal", "ExcessVol", "warning"}), "---|---||");
}

}  // namespace
