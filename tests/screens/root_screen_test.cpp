#include "tests/screens/root_screen_test.h"

#include "model/fluid_model.h"
#include "tests/model/golden.h"
#include "toolkit/number_text.h"

namespace tests {

void RootScreenTest::solve(std::string_view temperature, std::string_view pressure) {
    robot.enter("dataEntryT", temperature);
    robot.enter("dataEntryP", pressure);
    robot.press("Return");
}

void RootScreenTest::solve(double temperature, double pressure) {
    solve(toolkit::numberText(temperature), toolkit::numberText(pressure));
}

void RootScreenTest::choose(int root) {
    robot.click("Choice" + std::to_string(root));
}

void RootScreenTest::expectSlope(double expected, double tolerance) const {
    const std::string head = expected < 0.0 ? "Negative slope dP/dV = " : "Positive slope dP/dV = ";
    const std::string tail =
        expected < 0.0 ? " (stable field)" : " (meta-stable). Choose another solution";
    const std::string shown = text("slope");
    ASSERT_TRUE(shown.starts_with(head) && shown.ends_with(tail)) << shown;
    const auto value =
        toolkit::parseNumber(shown.substr(head.size(), shown.size() - head.size() - tail.size()));
    EXPECT_LT(RelativeError(value.value_or(0.0), expected), tolerance) << shown;
}

void RootScreenTest::expectGases(
    const std::vector<double>& row,
    const std::function<void(std::size_t, std::size_t)>& compare) const {
    std::size_t line = 0;
    for (std::size_t i = 0; i < fluid::ComponentCount; ++i) {
        if (row[i] > 0.0) {
            SCOPED_TRACE(fluid::ComponentFormulas[i]);
            EXPECT_TRUE(rows().at(line).at(0).ends_with(fluid::ComponentFormulas[i]));
            compare(line++, i);
        }
    }
    EXPECT_EQ(rows().size(), line);
}

double RootScreenTest::cell(std::size_t row, std::size_t column) const {
    const std::string shown = rows().at(row).at(column);
    const auto value = toolkit::parseNumber(shown);
    EXPECT_TRUE(value.has_value()) << shown;
    return value.value_or(0.0);
}

}  // namespace tests
