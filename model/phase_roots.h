#pragma once

#include "model/cubic.h"

namespace fluid {

// The molar volume that phase X, or phase Y, takes of the roots at its temperature and pressure, in
// cm3/mol: the smallest, or the largest, real root above the co-volume bMix; 0 where there is none.
double LiquidRoot(const CubicRoots& roots, double bMix);
double VapourRoot(const CubicRoots& roots, double bMix);

}  // namespace fluid
