#include "model/polynomial.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace fluid {

namespace {

struct Value {
    double value = 0.0;
    double slope = 0.0;
    double rounding = 0.0;  // how far the value may be off
};

// Where roots may lie that have no room for their powers in a double, at the price of divisions.
constexpr double farOut = 1e30;

// Value, slope and rounding at w; if `MayBeFarOut` and it is, all three over w^n.
template <bool MayBeFarOut>
Value Evaluate(std::span<const double> c, double w) {
    constexpr double unit = 1.2e-16;  // half of the last place, and a little
    Value result;
    double size = 0.0;
    if (MayBeFarOut && w > farOut) {
        for (std::size_t i = 0; i < c.size(); ++i) {
            result.slope = (result.slope + static_cast<double>(i) * c[i]) / w;
            result.value = result.value / w + c[i];
            size = size / w + std::abs(c[i]);
        }
    } else {
        for (std::size_t i = c.size(); i-- > 0;) {
            result.slope = result.slope * w + result.value;
            result.value = result.value * w + c[i];
            size = size * w + std::abs(c[i]);
        }
    }
    result.rounding = static_cast<double>(2 * c.size()) * unit * size;
    return result;
}

// The root between two places at which the values have different signs.
template <bool MayBeFarOut>
double Refine(std::span<const double> c, double low, double high, bool rises) {
    // Newton's method may halve its way through all sizes of a double.
    constexpr int stepLimit = 2200;
    // A step of Newton's method this short leaves its square, over the distance of the next root,
    // which is less than the rounding of the value over the slope.
    constexpr double shortStep = 1e-9;
    double at = 0.5 * (low + high);
    for (int i = 0; i < stepLimit; ++i) {
        const Value here = Evaluate<MayBeFarOut>(c, at);
        if (here.value == 0.0) return at;
        ((here.value > 0.0) == rises ? high : low) = at;
        double next = at - here.value / here.slope;
        if (next > low && next < high) {
            if (std::abs(next - at) <= shortStep * at) return next;
        } else {
            // Far bounds are halved in their order of magnitude.
            constexpr double far = 4.0;  // beyond, halving logarithms is quicker
            next = low > 0.0 && high > far * low ? std::sqrt(low) * std::sqrt(high)
                                                 : 0.5 * (low + high);
            if (!(next > low && next < high)) return at;
        }
        at = next;
    }
    return at;
}

// No root is larger (Cauchy's bound), nor where it has no digits for the 1 as large.
double LargestRoot(std::span<const double> c) {
    double largest = 0.0;
    for (const double x : c.first(c.size() - 1)) largest = std::max(largest, std::abs(x));
    constexpr double large = 1e12;
    const double bound = 1.0 + largest / std::abs(c.back());
    return bound < large ? bound : std::min(2.0 * bound, 0.5 * std::numeric_limits<double>::max());
}

// c[0] + c[1]·w + c[2]·w² without the cancellation of -c[1] and the root of the discriminant.
PolynomialRoots QuadraticRoots(std::span<const double> coefficients) {
    // A power of two that leaves room for the discriminant.
    const double largest =
        std::max({std::abs(coefficients[0]), std::abs(coefficients[1]), std::abs(coefficients[2])});
    constexpr double large = 0x1p500;
    const double scale = largest > large ? std::exp2(-std::ilogb(largest)) : 1.0;
    const std::array<double, 3> c = {scale * coefficients[0], scale * coefficients[1],
                                     scale * coefficients[2]};
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

// The roots below `largest`: one at most for each of the fewer than n extrema and for the end, so
// that n have room.
template <bool MayBeFarOut>
PolynomialRoots RootsBetween(std::span<const double> c, const PolynomialRoots& extrema,
                             double largest) {
    PolynomialRoots roots;
    double low = 0.0;
    double atLow = c[0];
    const auto visit = [&](double high, bool isExtremum) {
        const Value atHigh = Evaluate<MayBeFarOut>(c, high);
        if (isExtremum && std::abs(atHigh.value) <= atHigh.rounding) {
            roots.values[roots.count++] = high;  // a double root, or two that rounding hides
            atLow = 0.0;                         // no other until the next extremum
        } else {
            if (atLow != 0.0 && (atLow > 0.0) != (atHigh.value > 0.0)) {
                roots.values[roots.count++] = Refine<MayBeFarOut>(c, low, high, atHigh.value > 0.0);
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
    std::array<double, largestDegree> derivative{};
    for (std::size_t i = 0; i < n; ++i) derivative[i] = static_cast<double>(i + 1) * c[i + 1];
    const PolynomialRoots extrema = Roots(std::span(derivative).first(n));
    const double largest = LargestRoot(c);
    return largest > farOut ? RootsBetween<true>(c, extrema, largest)
                            : RootsBetween<false>(c, extrema, largest);
}

}  // namespace

PolynomialRoots PositiveRoots(std::span<const double> c) {
    const bool isFinite =
        std::all_of(c.begin(), c.end(), [](double x) { return std::isfinite(x); });
    return isFinite ? Roots(c) : PolynomialRoots{};
}

}  // namespace fluid
