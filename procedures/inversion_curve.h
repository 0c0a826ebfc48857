#pragma once

#include <vector>

#include "model/mixture.h"
#include "procedures/units.h"
#include "toolkit/plot.h"

namespace procedures {

// Where the Joule-Thomson coefficient is 0, in a diagram of pressure over temperature with the
// bubble and dew curves: a line where the fluid is stable, dotted where it would split.
std::vector<toolkit::PlotSeries> InversionSeries(const fluid::Mixture& mixture,
                                                 const TemperatureScale& scale);

}  // namespace procedures
