#include "model/cubic.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

#include "model/component_table.h"
#include "model/double_double.h"

namespace fluid {

namespace {

using std::numbers::sqrt3;

struct Depressed {
    double p;
    double q;
};

// The order of operations decides whether p·q is exactly 0.
Depressed Depress(double a2, double a1, double a0) {
    return {(3.0 * a1 - a2 * a2) / 3.0,
            (((a2 * (a2 * (2.0 * a2))) - a1 * (9.0 * a2)) + 27.0 * a0) / 27.0};
}

bool AllFinite(const CubicRoots& roots) {
    return std::all_of(roots.begin(), roots.end(), [](const CubicRoot& root) {
        return std::isfinite(root.real) && std::isfinite(root.imaginary);
    });
}

// Roots of t³ + p·t + q for p > 0. U and V are A·u/2 and A·v/2 of the usual hyperbolic form with
// w = |s| + sqrt(s² + 1): U·V = p/3, U³ - V³ = |q|, so that U - V need not be subtracted.
CubicRoots OneRealRootRising(double p, double q) {
    const double r = std::sqrt(p / 3.0);
    const double half = 0.5 * std::abs(q);
    const double U = std::cbrt(half + std::hypot(half, r * r * r));
    const double V = r * (r / U);
    const double t = -q / (U * U + r * r + V * V);
    const double y = 0.5 * sqrt3 * (U + V);
    return {{{t, 0.0}, {-0.5 * t, -y}, {-0.5 * t, y}}};
}

// The same for p < 0 and |s| > 1, with s = -q/(2·r³), r = sqrt(-p/3), w = |s| + sqrt(s² - 1):
// U·V = r², U³ - V³ = 2·root.
CubicRoots OneRealRootWaved(double r, double q) {
    const double half = 0.5 * std::abs(q);
    const double r3 = r * r * r;
    const double root = std::sqrt((half - r3) * (half + r3));
    const double U = std::cbrt(half + root);
    const double V = r * (r / U);
    const double x = std::copysign(0.5 * (U + V), q);
    const double y = std::copysign(sqrt3 * root / (U * U + r * r + V * V), -q);
    return {{{-2.0 * x, 0.0}, {x, -y}, {x, y}}};
}

// The same for -1 <= s <= 1; theta = arccos(s).
CubicRoots ThreeRealRoots(double r, double q) {
    using std::numbers::pi;
    const double r3 = r * r * r;
    const double half = 0.5 * q;
    const double theta = std::atan2(std::sqrt((r3 - half) * (r3 + half)), -half);
    return {{{2.0 * r * std::cos((theta + 4.0 * pi) / 3.0), 0.0},
             {2.0 * r * std::cos((theta + 2.0 * pi) / 3.0), 0.0},
             {2.0 * r * std::cos(theta / 3.0), 0.0}}};
}

CubicRoots DepressedRoots(double p, double q) {
    if (p > 0.0) return OneRealRootRising(p, q);
    const double r = std::sqrt(-p / 3.0);
    return 0.5 * std::abs(q) <= r * r * r ? ThreeRealRoots(r, q) : OneRealRootWaved(r, q);
}

// The volumes in the variables of docs/cubic.md: y = b/V solves y³ - y² + (tau + pi)·y - pi = 0,
// z = 3·y - 1 solves z³ + A·z + B = 0.
struct Reduced {
    double tau;  // R·T·b/a
    double pi;   // P·b²/a
    double A;
    double B;
};

// One root z0 lies apart from the two others, on the side of -B; they are the pair
// y = centre ± sqrt(split), a complex one where split < 0.
struct Packing {
    double apart;
    double centre;
    double split;
};

// Halley's step for x³ + A·x = C.
double Improve(double x, double A, double C) {
    const double f = x * (x * x + A) - C;
    const double slope = 3.0 * x * x + A;
    const double divisor = slope * slope - 3.0 * x * f;
    return divisor != 0.0 ? x - f * slope / divisor : x;
}

// The positive root of x³ + A·x = C for C >= 0, the largest in magnitude of the three.
double ApartRoot(double A, double C) {
    const double r = std::sqrt(std::max(0.0, -A / 3.0));
    const double r3 = r * r * r;
    if (C <= 2.0 * r3) {
        // x/r = 2·cos(acos(s)/3), by a cubic that fits values and slopes at s = 0 and 1.
        const double s = r3 > 0.0 ? 0.5 * C / r3 : 0.0;
        const double fit = sqrt3 + s * (1.0 / 3.0 + s * (-0.0850412 + s * 0.0196571));
        return Improve(r * fit, A, C);
    }
    const double scale = std::cbrt(C);
    const double alpha = A / (scale * scale);
    const double shifted = alpha + 0.5;
    const double fit = alpha < 1.0 ? 1.0 - alpha / 3.0 : 1.0 / (alpha + 1.0 / (shifted * shifted));
    return Improve(Improve(scale * fit, A, C), A, C);
}

// y from z0, with all its digits where it is small.
double PolishedPacking(double z, const Reduced& reduced) {
    const double c = reduced.tau + reduced.pi;
    double y = (1.0 + z) / 3.0;
    constexpr double small = 1e-3;  // three digits are lost
    if (std::abs(y) < small) y = reduced.pi / (c - y * (1.0 - y));
    const double slope = c - y * (2.0 - 3.0 * y);
    const double residual = y * (c - y * (1.0 - y)) - reduced.pi;
    // Beside the other two the residual is mere rounding.
    constexpr double wellApart = 1e-3;
    return slope > wellApart ? y - residual / slope : y;
}

// 1 - y for a root y; near 1 by the equation itself, (1 - y)·(pi + y²) = tau·y.
double Complement(double y, const Reduced& reduced) {
    constexpr double least = -0.1;  // of pi, beside which y² does not vanish
    if (y < 0.5 || reduced.pi < least) return 1.0 - y;
    return reduced.tau * y / (reduced.pi + y * y);
}

Packing PlainPacking(const Reduced& reduced) {
    const double sum = reduced.tau + reduced.pi;
    // From here on y³ - y² is nothing beside the other terms.
    constexpr double nearlyIdeal = 1e20;
    if (sum > nearlyIdeal && reduced.pi > 0.0) {
        const double y = reduced.pi / sum;
        const double centre = 0.5 * reduced.tau / sum;
        return {y, centre, centre * centre - sum};
    }
    const double x = ApartRoot(reduced.A, std::abs(reduced.B));
    const double y = PolishedPacking(std::copysign(x, -reduced.B), reduced);
    const double centre = 0.5 * Complement(y, reduced);
    return {y, centre, centre * centre - reduced.pi / y};
}

// The same beside a double or triple root: A, B and the discriminant in doubled precision, the
// pair from the discriminant.
Packing SharpPacking(double aMix, double bMix, double T, double P, Reduced reduced) {
    const DoubleDouble thermal = DoubleDouble::product(R, T) * bMix;
    const DoubleDouble pressure = DoubleDouble::product(P, bMix) * bMix;
    const DoubleDouble A = (thermal + pressure) * 9.0 - DoubleDouble::product(3.0, aMix);
    const DoubleDouble B = thermal * 9.0 - pressure * 18.0 - DoubleDouble::product(2.0, aMix);
    const DoubleDouble discriminant = A * A * A * -4.0 - B * B * 27.0 * aMix;
    reduced.A = A.high / aMix;
    reduced.B = B.high / aMix;
    const double C = std::abs(reduced.B);
    const double x = Improve(ApartRoot(reduced.A, C), reduced.A, C);
    const double z = std::copysign(x, -reduced.B);
    constexpr double wellApart = 0.2;
    const double plain = (1.0 + z) / 3.0;
    const double y = plain < wellApart ? PolishedPacking(z, reduced) : plain;
    const double slope = 6.0 * (3.0 * x * x + reduced.A);
    const double split = discriminant.high / (aMix * aMix * aMix) / (slope * slope);
    return {y, 0.5 * Complement(y, reduced), slope > 0.0 ? split : 0.0};
}

Packing SolvePacking(double aMix, double bMix, double T, double P, const Reduced& reduced) {
    constexpr double nearlyCritical = 0.2;
    constexpr double nearlyDouble = 0.1;
    // Colder, the terms of the discriminant cancel beyond the 32 digits.
    constexpr double coldest = 1e-8;
    const bool canSharpen = std::isnormal(aMix * aMix * aMix) && reduced.tau > coldest;
    const bool critical = std::max(std::abs(reduced.A), std::abs(reduced.B)) < nearlyCritical;
    if (!critical || !canSharpen) {
        const Packing packing = PlainPacking(reduced);
        const bool apart =
            std::abs(packing.split) >= nearlyDouble * packing.centre * packing.centre;
        if (apart || !canSharpen) return packing;
    }
    return SharpPacking(aMix, bMix, T, P, reduced);
}

CubicRoots ThreeVolumes(double bMix, const Packing& packing, double product) {
    const double half = std::sqrt(packing.split);
    const double large = packing.centre + half;
    const double small = half < 0.5 * packing.centre ? packing.centre - half : product / large;
    std::array<double, 3> volumes = {bMix / packing.apart, bMix / large, bMix / small};
    std::sort(volumes.begin(), volumes.end());
    return {{{volumes[1], 0.0}, {volumes[0], 0.0}, {volumes[2], 0.0}}};
}

// The sign of the imaginary parts is that of SolveCubic.
CubicRoots PairedVolumes(double bMix, const Packing& packing, double product,
                         const Depressed& depressed) {
    const double real = bMix * (packing.centre / product);
    const double magnitude = bMix * (std::sqrt(-packing.split) / product);
    const double imaginary = depressed.p < 0.0 && depressed.q > 0.0 ? -magnitude : magnitude;
    return {{{bMix / packing.apart, 0.0}, {real, -imaginary}, {real, imaginary}}};
}

std::optional<Reduced> Reduce(double aMix, double bMix, double T, double P) {
    if (!(aMix > 0.0 && bMix > 0.0 && T > 0.0)) return {};
    const double tau = T * (R * bMix / aMix);
    const double pi = P * (bMix * bMix / aMix);
    if (!std::isfinite(tau) || !std::isnormal(pi)) return {};
    return Reduced{tau, pi, 9.0 * (tau + pi) - 3.0, 9.0 * tau - 18.0 * pi - 2.0};
}

}  // namespace

CubicRoots SolveCubic(double a2, double a1, double a0) {
    const auto [p, q] = Depress(a2, a1, a0);
    if (p * q == 0.0) return {};
    CubicRoots roots = DepressedRoots(p, q);
    for (CubicRoot& root : roots) root.real -= a2 / 3.0;
    return AllFinite(roots) ? roots : CubicRoots{};
}

CubicRoots VolumeCubicSolver(double aMix, double bMix, double T, double P) {
    if (P == 0.0) return {};
    const double a2 = (-R * T - P * bMix) / P;
    const double a1 = aMix / P;
    const double a0 = -aMix * bMix / P;
    const std::optional<Reduced> reduced = Reduce(aMix, bMix, T, P);
    if (!reduced) return SolveCubic(a2, a1, a0);
    const Depressed depressed = Depress(a2, a1, a0);
    if (depressed.p * depressed.q == 0.0) return {};
    const Packing packing = SolvePacking(aMix, bMix, T, P, *reduced);
    const double product = reduced->pi / packing.apart;
    const CubicRoots roots = packing.split < 0.0 ? PairedVolumes(bMix, packing, product, depressed)
                                                 : ThreeVolumes(bMix, packing, product);
    return AllFinite(roots) ? roots : CubicRoots{};
}

std::vector<double> RealVolumes(double aMix, double bMix, double T, double P) {
    const std::optional<Reduced> reduced = Reduce(aMix, bMix, T, P);
    if (!reduced || !(P > 0.0)) return {};
    // So near to the triple root that the rounding of T and P tells nothing any more.
    constexpr double rounding = 1e-14;
    if (std::max(std::abs(reduced->A), std::abs(reduced->B)) < rounding) return {3.0 * bMix};
    const Packing packing = SolvePacking(aMix, bMix, T, P, *reduced);
    std::vector<double> volumes = {bMix / packing.apart};
    if (packing.split >= 0.0) {
        const CubicRoots roots = ThreeVolumes(bMix, packing, reduced->pi / packing.apart);
        volumes = {roots[1].real, roots[0].real, roots[2].real};
    }
    const bool areFinite = std::all_of(volumes.begin(), volumes.end(),
                                       [](double volume) { return std::isfinite(volume); });
    return areFinite ? volumes : std::vector<double>{};
}

}  // namespace fluid
