#include "model/double_double.h"

#include <cmath>

namespace fluid {

namespace {

DoubleDouble Normalised(double high, double low) {
    const double sum = high + low;
    return {sum, low - (sum - high)};
}

}  // namespace

DoubleDouble DoubleDouble::product(double x, double y) {
    const double high = x * y;
    return {high, std::fma(x, y, -high)};
}

DoubleDouble operator+(const DoubleDouble& x, const DoubleDouble& y) {
    const double sum = x.high + y.high;
    const double shift = sum - x.high;
    const double error = (x.high - (sum - shift)) + (y.high - shift);
    const double low = x.low + y.low;
    const double lowShift = low - x.low;
    const double lowError = (x.low - (low - lowShift)) + (y.low - lowShift);
    const DoubleDouble first = Normalised(sum, error + low);
    return Normalised(first.high, first.low + lowError);
}

DoubleDouble operator-(const DoubleDouble& x, const DoubleDouble& y) {
    return x + DoubleDouble{-y.high, -y.low};
}

DoubleDouble operator*(const DoubleDouble& x, const DoubleDouble& y) {
    const DoubleDouble exact = DoubleDouble::product(x.high, y.high);
    return Normalised(exact.high, exact.low + (x.high * y.low + x.low * y.high));
}

DoubleDouble operator*(const DoubleDouble& x, double y) {
    const DoubleDouble exact = DoubleDouble::product(x.high, y);
    return Normalised(exact.high, exact.low + x.low * y);
}

}  // namespace fluid
