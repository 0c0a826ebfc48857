#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/screens/screen_test.h"

namespace tests {

/// A test of screens that show the three roots of the cubic equation of state.
class RootScreenTest : public ScreenTest {
  protected:
    /// Types a temperature and a pressure and presses Enter.
    void solve(std::string_view temperature, std::string_view pressure);
    void solve(double temperature, double pressure);
    /// Chooses a root by its number.
    void choose(int root);
    /// The captions of the three choices, each with a "|" behind it.
    std::string captions() const { return texts({"Choice0", "Choice1", "Choice2"}); }
    /// Expects the verdict on the stability that belongs to this slope in MPa·mol/cm3.
    void expectSlope(double expected, double tolerance) const;
    /// Expects a line of the list for each gas of a golden row, and gives the line and the gas to
    /// `compare`.
    void expectGases(const std::vector<double>& row,
                     const std::function<void(std::size_t, std::size_t)>& compare) const;
    /// The number in a cell of the list; fails the test where there is none.
    double cell(std::size_t row, std::size_t column) const;
};

}  // namespace tests
