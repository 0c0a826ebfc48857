#pragma once

#include <array>
#include <cstddef>
#include <span>

namespace fluid {

// The highest degree of the polynomials below.
inline constexpr std::size_t largestDegree = 4;

struct PolynomialRoots {
    std::array<double, largestDegree> values{};  // ascending
    std::size_t count = 0;

    const double* begin() const { return values.data(); }
    const double* end() const { return values.data() + count; }
};

// The real roots above 0 of c[0] + c[1]·w + ... + c[n]·w^n, n <= largestDegree, each to the last
// bits of the coefficients: isolated by the roots of the derivative, then Newton's method kept
// between bounds by bisection. A double root is found where the extremum is 0 within the rounding
// of its terms, and then counts once. None for coefficients that are all 0 or not finite.
PolynomialRoots PositiveRoots(std::span<const double> c);

}  // namespace fluid
