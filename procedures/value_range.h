#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "procedures/units.h"

namespace procedures {

// The values that a table runs through: the first one, those in steps from it, and the last one,
// whether the step divides the range or not. Where the numbers are decimal fractions of up to
// twelve digits behind the point, so are the values, as if calculated by hand.
class ValueRange {
  public:
    // The direction of the range counts, not the sign of the step. Nothing where the step is 0 and
    // the range is not, or where a number is not finite.
    static std::optional<ValueRange> of(double first, double last, double step);

    // How many values there are; may be more than anything can hold.
    double count() const { return count_; }
    // The k-th value, k below count().
    double value(std::size_t k) const;
    double smallest() const;
    double largest() const;
    double step() const;
    // `number` rounded to the decimals of the range and at least to hundredths; unchanged where
    // the range has no decimals.
    double rounded(double number) const;
    // How many decimals show every value in full; six where they are no decimal fractions.
    int decimals() const;
    // Why these values cannot be listed, as a sentence about the `quantity`; empty where they can:
    // they must not be too many, and each has to differ from the next by more than rounding.
    std::string refusal(const std::string& quantity) const;

  private:
    double first_ = 0.0;  // all in units of 1/scale_
    double last_ = 0.0;
    double step_ = 0.0;
    double scale_ = 1.0;
    bool isDecimal_ = false;
    double count_ = 1.0;
};

// A temperature as it is written in either unit: what was typed stays as it is, and is converted
// with its own decimals.
struct WrittenTemperature {
    // `number` in the unit of `scale`.
    static WrittenTemperature typed(double number, const TemperatureScale& scale);
    // A calculated one.
    static WrittenTemperature calculated(double kelvin) { return {kelvin, kelvin - zeroCelsius}; }

    double in(const TemperatureScale& scale) const { return scale.isKelvin() ? kelvin : celsius; }

    double kelvin = 0.0;
    double celsius = 0.0;
};

// A range of temperatures typed in one unit.
struct TemperatureRange {
    ValueRange values;
    TemperatureScale scale = kelvinScale;

    std::size_t count() const { return static_cast<std::size_t>(values.count()); }
    WrittenTemperature at(std::size_t k) const { return written(values.value(k)); }
    WrittenTemperature lowest() const { return written(values.smallest()); }
    WrittenTemperature highest() const { return written(values.largest()); }
    // How many decimals show every temperature in full, in the unit of `shown`.
    int decimals(const TemperatureScale& shown) const;
    // As ValueRange::refusal; the temperatures have to be above absolute zero besides.
    std::string refusal() const;

  private:
    WrittenTemperature written(double number) const;
};

}  // namespace procedures
