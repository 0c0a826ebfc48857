#pragma once

#include <array>
#include <optional>
#include <string>

#include "toolkit/plot_drawing.h"

namespace toolkit {

// The size of a picture, and that of the text in it.
struct PictureSize {
    const char* name;
    double width;   // mm
    double height;  // mm
    double text;    // points
};

inline constexpr std::array<PictureSize, 3> pictureSizes = {{
    {"journal column, 85 mm", 85.0, 68.0, 7.0},
    {"journal page, 175 mm", 175.0, 115.0, 9.0},
    {"slide, 254 mm", 254.0, 143.0, 16.0},
}};
inline constexpr std::size_t pageSize = 1;  // the one that is proposed
inline constexpr double picturePixelsPerInch = 300.0;

// Writes a plot as black on white, in the format that the path ends with: .svg, .pdf or .png.
// Returns nothing, or the sentence that says what went wrong.
std::optional<std::string> SavePlot(const std::string& path, const PictureSize& size,
                                    const PlotContent& content, const PlotView& view);

// Puts a plot on the clipboard; returns nothing, or the sentence that says what went wrong.
std::optional<std::string> CopyPlot(const PictureSize& size, const PlotContent& content,
                                    const PlotView& view);

}  // namespace toolkit
