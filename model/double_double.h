#pragma once

namespace fluid {

// A number of about 32 digits as the sum of two doubles; Dekker, Numerische Mathematik 18 (1971)
// 224. For differences that cancel; no overflow or underflow is looked after.
struct DoubleDouble {
    double high;
    double low;

    // Exact product of two doubles.
    static DoubleDouble product(double x, double y);
};

DoubleDouble operator+(const DoubleDouble& x, const DoubleDouble& y);
DoubleDouble operator-(const DoubleDouble& x, const DoubleDouble& y);
DoubleDouble operator*(const DoubleDouble& x, const DoubleDouble& y);
DoubleDouble operator*(const DoubleDouble& x, double y);

}  // namespace fluid
