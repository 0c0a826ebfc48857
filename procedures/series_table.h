#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "procedures/units.h"

namespace procedures {

// How the numbers of a table are written: with the decimals of their column on the screen, with
// all their digits for Copy and exports.
enum class Digits { Shown, Full };

// Decimals of calculated quantities on the screen.
inline constexpr int temperatureDecimals = 6;
inline constexpr int pressureDecimals = 6;
inline constexpr int volumeDecimals = 6;
inline constexpr int densityDecimals = 6;

// What is said of input whose results no number holds.
inline constexpr const char* tooLarge =
    "warning: with numbers of this size no pressure can be calculated";

// `value` with so many decimals, or with all its digits.
std::string CellText(double value, int decimals, Digits digits);
// A table that a screen lists and exports.
class SeriesTable {
  public:
    using Row = std::vector<std::string>;

    virtual ~SeriesTable() = default;
    virtual std::size_t count() const = 0;
    // The cells of a row, its temperatures in the unit of `scale`.
    virtual Row row(std::size_t number, const TemperatureScale& scale, Digits digits) const = 0;
    // What an exported file has above its rows.
    virtual std::string fileHeading() const = 0;
    // How many of the columns it has, from the first one on.
    virtual std::size_t fileColumns() const = 0;

    // The exported file: its temperatures are in Celsius.
    virtual std::string fileText() const;

  protected:
    SeriesTable() = default;
    SeriesTable(const SeriesTable&) = default;
    SeriesTable& operator=(const SeriesTable&) = default;
};

}  // namespace procedures
