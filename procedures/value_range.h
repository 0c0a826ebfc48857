#pragma once

#include <cstddef>
#include <optional>

namespace procedures {

/// The values that a table runs through: the first one, those in steps from it, and the last one,
/// whether the step divides the range or not. Where the numbers are decimal fractions of up to
/// twelve digits behind the point, so are the values, as if calculated by hand.
class ValueRange {
  public:
    /// The direction of the range counts, not the sign of the step. Nothing where the step is 0 and
    /// the range is not, or where a number is not finite.
    static std::optional<ValueRange> of(double first, double last, double step);

    /// How many values there are; may be more than anything can hold.
    double count() const { return count_; }
    /// The k-th value, k below count().
    double value(std::size_t k) const;
    /// `number` rounded to the decimals of the range and at least to hundredths; unchanged where
    /// the range has no decimals.
    double rounded(double number) const;

  private:
    double first_ = 0.0;  // all in units of 1/scale_
    double last_ = 0.0;
    double step_ = 0.0;
    double scale_ = 1.0;
    bool isDecimal_ = false;
    double count_ = 1.0;
};

}  // namespace procedures
