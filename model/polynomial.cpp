#include "model/polynomial.h"

#include <algorithm>
#include <cmath>

namespace fluid {

namespace {

struct Value {
    double value = 0.0;
    double slope = 0.0;
    double rounding = 0.0;  // how far the value may be off
};

Value Evaluate(std::span<const double> c, double w) {
    constexpr double Unit = 1.2e-16;
    Value result;
    double size = 0.0;
    for (std::size_t i = c.size(); i-- > 0;) {
        result.slope = result.slope * w + result.value;
        result.value = result.value * w + c[i];
        size = size * w + std::abs(c[i]);
    }
    result.rounding = static_cast<double>(2 * c.size()) * Unit * size;
    return result;
}

// The root between two places at which the values have different signs.
double Refine(std::span<const double> c, double low, double high, bool rises) {
    constexpr int StepLimit = 200;
    // A step of Newton's method this short leaves its square, over the distance of the next root,
    // which is less than the rounding of the value over the slope.
    constexpr double Short = 1e-9;
    double at = 0.5 * (low + high);
    for (int i = 0; i < StepLimit; ++i) {
        const Value here = Evaluate(c, at);
        if (here.value == 0.0) return at;
        ((here.value > 0.0) == rises ? high : low) = at;
        double next = at - here.value / here.slope;
        if (next > low && next < high) {
            if (std::abs(next - at) <= Short * at) return next;
        } else {
            // Far bounds are halved in their order of magnitude.
            constexpr double Far = 4.0;
            next = low > 0.0 && high > Far * low ? std::sqrt(low) * std::sqrt(high)
                                                 : 0.5 * (low + high);
            if (!(next > low && next < high)) return at;
        }
        at = next;
    }
    return at;
}

// No root is larger (Cauchy's bound).
double LargestRoot(std::span<const double> c) {
    double largest = 0.0;
    for (const double x : c.first(c.size() - 1)) largest = std::max(largest, std::abs(x));
    return 1.0 + largest / std::abs(c.back());
}

// c[0] + c[1]·w + c[2]·w² without the cancellation of -c[1] and the root of the discriminant.
PolynomialRoots QuadraticRoots(std::span<const double> c) {
    const double half = -0.5 * c[1];
    const double product = c[0] * c[2];
    const double lost = std::fma(c[0], c[2], -product);  // Kahan's difference of products
    const double discriminant = std::fma(half, half, -product) - lost;
    PolynomialRoots roots;
    if (discriminant < 0.0) return roots;
    const double sum = half + std::copysign(std::sqrt(discriminant), half);
    const auto [low, high] = std::minmax({sum / c[2], sum != 0.0 ? c[0] / sum : 0.0});
    if (low > 0.0) roots.values[roots.count++] = low;
    if (high > 0.0 && high != low) roots.values[roots.count++] = high;
    return roots;
}

PolynomialRoots Roots(std::span<const double> c) {
    while (!c.empty() && c.back() == 0.0) c = c.first(c.size() - 1);
    PolynomialRoots roots;
    if (c.size() < 2) return roots;
    const std::size_t n = c.size() - 1;
    if (n == 1) {
        const double root = -c[0] / c[1];
        if (root > 0.0) roots.values[roots.count++] = root;
        return roots;
    }
    if (n == 2) return QuadraticRoots(c);
    std::array<double, LargestDegree> derivative{};
    for (std::size_t i = 0; i < n; ++i) derivative[i] = static_cast<double>(i + 1) * c[i + 1];
    const PolynomialRoots extrema = Roots(std::span(derivative).first(n));
    const double largest = LargestRoot(c);
    double low = 0.0;
    double atLow = c[0];
    const auto visit = [&](double high, bool isExtremum) {
        const Value atHigh = Evaluate(c, high);
        if (isExtremum && std::abs(atHigh.value) <= atHigh.rounding) {
            roots.values[roots.count++] = high;  // a double root, or two that rounding hides
            atLow = 0.0;                         // no other until the next extremum
        } else {
            if (atLow != 0.0 && (atLow > 0.0) != (atHigh.value > 0.0)) {
                roots.values[roots.count++] = Refine(c, low, high, atHigh.value > 0.0);
            }
            atLow = atHigh.value;
        }
        low = high;
    };
    for (const double extremum : extrema) {
        if (extremum < largest) visit(extremum, true);
    }
    visit(largest, false);
    return roots;
}

}  // namespace

PolynomialRoots PositiveRoots(std::span<const double> c) {
    const bool isFinite =
        std::all_of(c.begin(), c.end(), [](double x) { return std::isfinite(x); });
    return isFinite ? Roots(c) : PolynomialRoots{};
}

}  // namespace fluid
