#pragma once

#include <functional>
#include <string_view>
#include <vector>

using cairo_t = struct _cairo;
using PangoContext = struct _PangoContext;

namespace toolkit {

// A formula or a piece of it; pixels, from the left end of its baseline.
struct FormulaBox {
    struct Mark {
        std::function<void(cairo_t*, double x, double baseline)> draw;
        double x = 0.0;
        double rise = 0.0;  // of its baseline above that of the box
    };

    double width = 0.0;
    double ascent = 0.0;
    double descent = 0.0;
    double left = 0.0;      // where the ink starts; negative for an italic f or j
    double overhang = 0.0;  // of the ink over the advance; an index stands below it
    std::vector<Mark> marks;

    // Draws in the source colour of `cairo`, sharp at any scale of the drawing.
    void draw(cairo_t* cairo, double x, double baseline) const;
};

// Sets a formula in a size in points. `context`: of the widget, gives the resolution.
//
//   RT φ 2 ∂           italic letters, and upright ones for all other characters
//   x_i T_{\up{c}}^2   an index, an exponent, or both in this order; upright letters
//   a = b − c          the spaces of a relation and of an operation
//   (a) [b]            brackets as high as what they enclose
//   \frac{a}{b}  \sqrt{a}  \sum{i}  \int_a^b
//
// A blank is a thin space, a tilde a wide one.
FormulaBox Typeset(std::string_view source, PangoContext* context, double points);

}  // namespace toolkit
