#pragma once

#include <cstddef>

namespace fluid {

// Saturation pressure in MPa of a pure gas of nature at T in K, by its reference equation.
// component: internal index, 0 to 10. Right from the triple point to the critical point; outside,
// for first approaches only, smoothly and strictly rising: the equation itself down to half the
// triple point, below that ln P linear in 1/T, and above the critical point ln P linear in 1/T with
// the slope of the curve's end. T not above 0 gives 0.
double SaturationPressure(std::size_t component, double T);

}  // namespace fluid
