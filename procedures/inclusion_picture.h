#pragma once

#include "toolkit/drawing.h"

namespace procedures {

// A fluid inclusion that homogenizes into the liquid phase: its bubble shrinks and goes.
void PaintHomogenisationIntoLiquid(const toolkit::Painter& painter);
// A fluid inclusion that homogenizes into the vapour phase: its bubble fills it.
void PaintHomogenisationIntoVapour(const toolkit::Painter& painter);

// The size for which they are drawn, in units of the height.
inline constexpr double inclusionPictureWidth = 3.0;

}  // namespace procedures
