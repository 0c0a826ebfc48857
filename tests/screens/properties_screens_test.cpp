#include <array>
#include <cmath>
#include <span>
#include <string>

#include "model/fluid_model.h"
#include "tests/model/golden.h"
#include "tests/screens/root_screen_test.h"
#include "toolkit/number_text.h"

namespace {

class PropertiesScreensTest : public tests::RootScreenTest {
  protected:
    /// Opens a screen with the composition and the state of a golden row, and chooses its root.
    void openAt(const std::vector<double>& row, const std::string& button,
                const std::string& screen) {
        openProcedure(tests::fractionsOf(row), button, screen);
        solve(row[11], row[12]);
        for (const int root : {0, 1, 2}) {
            const std::string caption = text("Choice" + std::to_string(root));
            if (RelativeError(toolkit::numberOrZero(caption), row[13]) < 1e-9) {
                choose(root);
            }
        }
        SCOPED_TRACE(text("Result"));
        ASSERT_FALSE(rows().empty()) << row[11] << ' ' << row[12];
    }
    void expectNear(std::size_t line, std::size_t column, double golden, double scale) const {
        EXPECT_LT(Error(cell(line, column), golden, std::abs(golden) + scale), 2e-9)
            << line << ' ' << column;
    }
};

TEST_F(PropertiesScreensTest, TablesShowTheGoldenProperties) {
    int compared = 0;
    auto golden = ReadGolden("properties.csv", 69);
    golden.resize(14);  // the others are no different for the screens
    for (const auto& row : golden) {
        constexpr double huge = 1e6;  // Cp where a root does not hold to ten digits
        if (!(row[12] > 0.0) || std::abs(row[20]) > huge) {
            continue;
        }
        const double RT = fluid::R * row[11];
        openAt(row, "Thermodynamics", "ThermodynamicWindow");
        // The lines of the table and the columns of the file.
        for (const auto& [line, column, scale] :
             std::vector<std::tuple<std::size_t, std::size_t, double>>{
                 {0, 13, 0.0},
                 {3, 14, RT},
                 {4, 15, RT},
                 {5, 16, 1.0},
                 {6, 17, RT},
                 {7, 18, RT},
                 {8, 19, 1.0},
                 {9, 20, 1.0},
                 {11, 21, 0.0},
                 {12, 22, 0.0},
                 {14, 24, row[13] / row[20]}}) {
            expectNear(line, 4, row[column], scale);
        }
        EXPECT_EQ(rows()[13][4] == "---", row[23] <= 0.0);
        EXPECT_EQ(text("note").find("speed of sound") != std::string::npos, row[23] <= 0.0);
        const bool isOutside = row[11] < 10.0 || row[11] > 6000.0;
        EXPECT_EQ(text("note").find("ideal-gas data") != std::string::npos, isOutside);
        openAt(row, "ChemicalPotentials", "ChemPotWindow");
        expectGases(row, [&](std::size_t line, std::size_t i) {
            expectNear(line, 1, row[25 + i], RT);
            EXPECT_NEAR(cell(line, 2) + cell(line, 3), cell(line, 1),
                        1e-8 * std::abs(cell(line, 1)) + 1e-3);
            expectNear(line, 5, row[36 + i], RT);
            expectNear(line, 6, row[47 + i], fluid::R);
            expectNear(line, 7, row[58 + i], row[13]);
        });
        ++compared;
    }
    EXPECT_EQ(compared, 12);
    EXPECT_TRUE(text("ListBox1").starts_with("gas\tchemical potential (J/mol)\tstandard part"));
}

TEST_F(PropertiesScreensTest, MissingValuesHaveTheirReason) {
    for (const auto& [button, screen] : {std::pair("Thermodynamics", "ThermodynamicWindow"),
                                         std::pair("ChemicalPotentials", "ChemPotWindow")}) {
        openProcedure({{"CO2", "1"}}, button, screen);
        for (const auto& [T, P, reason] :
             {std::tuple("300", "1e20", "co-volume"), std::tuple("1e305", "1", "too large"),
              std::tuple("300", "5", "")}) {
            solve(T, P);
            for (const int root : {0, 1, 2}) {
                choose(root);
                const std::string table = text("ListBox1");
                for (const char* const word : {"nan", "inf"}) {
                    EXPECT_EQ(table.find(word), std::string::npos) << T << ' ' << P;
                }
                const bool isExpected = *reason != '\0' && !rows().empty();
                EXPECT_EQ(table.find("---") != std::string::npos, isExpected) << T << ' ' << P;
                const std::string note = text("note");
                EXPECT_TRUE(!isExpected || note.find(reason) != std::string::npos) << note;
                EXPECT_EQ(note.find("--- ") != std::string::npos, isExpected) << note;
            }
        }
    }
}

}  // namespace
