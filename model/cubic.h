#pragma once

#include <array>
#include <vector>

namespace fluid {

struct CubicRoot {
    double real = 0.0;
    double imaginary = 0.0;

    bool isReal() const { return imaginary == 0.0; }
};

// Three real roots: number 2 is the largest, 1 the smallest, 0 lies between. One real root: it is
// number 0, the complex pair stands at 1 and 2.
using CubicRoots = std::array<CubicRoot, 3>;

// Roots of x³ + a2·x² + a1·x + a0 by Cardano's closed form, right to a few units in the last place
// of the largest root, or to about 1e-8 of it where two roots lie closer together than that and
// 1e-5 beside a triple one, as the rounding of the coefficients alone would have it. With x = t -
// a2/3 the cubic is t³ + p·t + q; when p·q is exactly 0, and when p, q or a root has no room in a
// double, all six numbers are 0.
CubicRoots SolveCubic(double a2, double a1, double a0);

// Molar volumes in cm3/mol at which the van der Waals fluid (aMix in MPa·cm6/mol2, bMix in cm3/mol)
// has the pressure P in MPa at the temperature T in K; P may be negative. Roots of
// V³ - (R·T/P + b)·V² + (a/P)·V - a·b/P, in the order of CubicRoots.
// P = 0, and p·q = 0 as in SolveCubic, give six zeros. For a, b, T > 0 every real root is right to
// 1e-14 relative, also the smallest beside a huge one and, where R·T·b/a > 1e-8, those beside a
// double root; otherwise the roots are those of SolveCubic. Never infinite or not-a-number for
// finite arguments.
CubicRoots VolumeCubicSolver(double aMix, double bMix, double T, double P);

// The real ones of these volumes, ascending, also where p·q = 0: at the critical point of a fluid
// the triple root 3b. None where T or P is not above 0 or a volume has no room in a double.
std::vector<double> RealVolumes(double aMix, double bMix, double T, double P);

}  // namespace fluid
