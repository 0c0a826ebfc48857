#include "toolkit/formula/typesetter.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <string>
#include <utility>

namespace toolkit {

namespace {

using Box = FormulaBox;

// The font sizes of the text, of an index, and of an index of an index. All lengths here are in
// units of the font size at hand, `unit`.
constexpr std::array<double, 3> sizes = {1.0, 0.72, 0.58};

// How far the middle of the ink stands above the baseline.
double Middle(const Box& box) {
    return (box.ascent - box.descent) / 2.0;
}

// Puts `child` into `parent`, whose extents follow it.
void Place(Box& parent, Box child, double x, double rise) {
    parent.width = std::max(parent.width, x + child.width);
    parent.ascent = std::max(parent.ascent, child.ascent + rise);
    parent.descent = std::max(parent.descent, child.descent - rise);
    parent.parts.push_back({std::move(child), x, rise});
}

// The thickness of a line, in whole pixels.
double Rule(double unit) {
    return std::max(std::round(0.055 * unit), 1.0);
}

void StrokePath(cairo_t* cairo, double lineWidth,
                std::initializer_list<std::array<double, 2>> path) {
    if (path.size() > 0) {
        cairo_new_path(cairo);
    }
    for (const auto& [x, y] : path) {
        cairo_line_to(cairo, x, y);
    }
    cairo_set_line_width(cairo, lineWidth);
    cairo_stroke(cairo);
}

// A thick stroke down, and thin ones to it and up to the bar.
void DrawRadical(cairo_t* cairo, const Box& box, double unit, double x, double baseline) {
    const double bar = std::round(baseline - box.ascent) + Rule(unit) / 2.0;
    const double bottom = baseline + box.descent;
    const double tip = bottom - 0.45 * (bottom - bar);
    const double foot = x + 0.31 * unit;
    StrokePath(cairo, Rule(unit), {{x + 0.04 * unit, tip + 0.09 * unit}, {x + 0.15 * unit, tip}});
    StrokePath(cairo, 0.09 * unit, {{x + 0.15 * unit, tip}, {foot, bottom - 0.04 * unit}});
    StrokePath(cairo, Rule(unit), {{foot, bottom}, {x + 0.56 * unit, bar}, {x + box.width, bar}});
}

// A round bracket, thicker in its middle, or a square one. A negative `unit` makes the right one.
void DrawBracket(cairo_t* cairo, const Box& box, double unit, double x, double baseline,
                 bool isRound) {
    const double line = Rule(std::abs(unit));
    const double top = std::round(baseline - box.ascent) + line / 2.0;
    const double bottom = std::round(baseline + box.descent) - line / 2.0;
    const double tip = x + 0.27 * unit;
    if (!isRound) {
        const double stem = std::round(x + 0.1 * unit) + std::copysign(line / 2.0, unit);
        StrokePath(cairo, line, {{tip, top}, {stem, top}, {stem, bottom}, {tip, bottom}});
        return;
    }
    const double bend = 0.28 * (bottom - top);
    const double back = x + 0.06 * unit;
    const double belly = x + 0.17 * unit;
    cairo_move_to(cairo, tip, top);
    cairo_curve_to(cairo, back, top + bend, back, bottom - bend, tip, bottom);
    cairo_curve_to(cairo, belly, bottom - bend, belly, top + bend, tip, top);
    cairo_fill_preserve(cairo);
    StrokePath(cairo, 0.03 * std::abs(unit), {});  // keeps the ends from fading
}

// A context like `original`, in which widths are not rounded to pixels: indices would stand at
// uneven distances.
PangoContext* ExactContext(PangoContext* original) {
    PangoContext* const context =
        pango_font_map_create_context(pango_context_get_font_map(original));
    cairo_font_options_t* const options = cairo_font_options_create();
    if (const auto* const given = pango_cairo_context_get_font_options(original)) {
        cairo_font_options_merge(options, given);
    }
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    if (cairo_font_options_get_hint_style(options) != CAIRO_HINT_STYLE_NONE) {
        // Stronger hinting changes widths, and takes longer than all the rest of the drawing.
        cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_SLIGHT);
    }
    pango_cairo_context_set_font_options(context, options);
    cairo_font_options_destroy(options);
    pango_context_set_round_glyph_positions(context, FALSE);
    return context;
}

// Reads a source from its start, and sets what it reads.
class Setter {
  public:
    Setter(std::string_view source, PangoContext* context, double pixels)
        : rest_(source),
          em_(pixels),
          context_(ExactContext(context), &g_object_unref),
          axis_(Middle(glyphs("−", 0)) / em_) {}

    // What stands before `end`, or before the end of the source.
    Box line(std::size_t level, char end) {
        Box box;
        while (!rest_.empty() && rest_.front() != end) {
            Box next = scripts(atom(level), level);
            box.left = box.parts.empty() ? next.left : box.left;
            box.overhang = next.overhang;
            Place(box, std::move(next), box.width, 0.0);
        }
        rest_.remove_prefix(rest_.empty() ? 0 : 1);
        return box;
    }

  private:
    double em(std::size_t level) const { return em_ * sizes[std::min(level, sizes.size() - 1)]; }

    bool skip(std::string_view token) {
        const bool isThere = rest_.starts_with(token);
        rest_.remove_prefix(isThere ? token.size() : 0);
        return isThere;
    }

    Box group(std::size_t level) { return skip("{") ? line(level, '}') : atom(level); }

    Box atom(std::size_t level) {
        return skip(" = ")      ? space(0.28, level, "=")
               : skip(" − ")    ? space(0.2, level, "−")
               : skip(" ")      ? space(0.065, level, "")
               : skip("~")      ? space(0.6, level, "")
               : skip("(")      ? fence(true, level)
               : skip("[")      ? fence(false, level)
               : skip("\\frac") ? fraction(level)
               : skip("\\sqrt") ? root(level)
               : skip("\\sum")  ? sum(level)
               : skip("\\int")  ? big("∫", 2.1, 0.45, level)
                                : characters(level);
    }

    // Room at both sides of a sign.
    Box space(double width, std::size_t level, const char* sign) const {
        Box box;
        Place(box, glyphs(sign, level), width * em(level), 0.0);
        box.width += width * em(level);
        return box;
    }

    // A quantity, whose name may have several letters, or an upright character.
    Box characters(std::size_t level) {
        const bool isUpright = skip("\\up{");
        const auto isLetter = [this](std::size_t i) {
            return g_unichar_isalpha(g_utf8_get_char(rest_.data() + i)) != FALSE;
        };
        const auto next = [this](std::size_t i) {
            return static_cast<std::size_t>(g_utf8_next_char(rest_.data() + i) - rest_.data());
        };
        const bool isQuantity = !isUpright && isLetter(0);
        std::size_t size = isUpright ? rest_.find('}') : next(0);
        while (isQuantity && size < rest_.size() && isLetter(size)) {
            size = next(size);
        }
        Box box = glyphs(rest_.substr(0, size), level, isQuantity);
        rest_.remove_prefix(size);
        skip(isUpright ? "}" : "");
        return box;
    }

    // All sizes are drawn from the fonts of the text: to look up one more font takes longer than
    // to set a whole formula.
    Box glyphs(std::string_view text, std::size_t level, bool isItalic = false,
               double size = 1.0) const {
        const std::shared_ptr<PangoLayout> layout(pango_layout_new(context_.get()),
                                                  &g_object_unref);
        PangoFontDescription* const font = pango_font_description_from_string("serif");
        pango_font_description_set_absolute_size(font, em_ * PANGO_SCALE);
        pango_font_description_set_style(font, isItalic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
        pango_layout_set_font_description(layout.get(), font);
        pango_font_description_free(font);
        pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
        PangoRectangle ink;
        PangoRectangle logical;
        pango_layout_get_extents(layout.get(), &ink, &logical);
        const double scale = size * em(level) / em_;
        const double unit = scale / PANGO_SCALE;
        const double top = pango_layout_get_baseline(layout.get()) * unit;
        Box box;
        box.left = ink.x * unit;
        box.ink = ink.width * unit;
        box.overhang = std::max(ink.x + ink.width - logical.width, 0) * unit;
        box.width = logical.width * unit + box.overhang;
        box.ascent = top - ink.y * unit;
        box.descent = (ink.y + ink.height) * unit - top;
        box.paint = [layout, scale, top](cairo_t* cairo, double x, double baseline) {
            cairo_save(cairo);
            cairo_translate(cairo, x, baseline - top);
            cairo_scale(cairo, scale, scale);
            cairo_move_to(cairo, 0.0, 0.0);
            pango_cairo_show_layout(cairo, layout.get());
            cairo_restore(cairo);
        };
        return box;
    }

    // A large sign stands by its ink, its middle on the axis: fonts differ in the room around it.
    // `lean`: how far an index goes back below it, in units of its width.
    Box big(const char* sign, double size, double lean, std::size_t level) const {
        Box box = glyphs(sign, level, false, size);
        Box big;
        big.overhang = lean * box.ink;
        const double rise = axis_ * em(level) - Middle(box);
        const double left = std::exchange(box.left, 0.0);
        box.width = box.ink + left;
        Place(big, std::move(box), -left, rise);
        return big;
    }

    Box scripts(Box base, std::size_t level) {
        const double unit = em(level);
        const Box index = skip("_") ? group(level + 1) : Box();
        const Box exponent = skip("^") ? group(level + 1) : Box();
        if (index.width + exponent.width == 0.0) return base;
        const double x = base.width + 0.04 * unit;
        const double rise =
            std::max({0.4 * unit, base.ascent - 0.32 * unit, exponent.descent + 0.25 * unit});
        const double highest = std::min(0.38, (rise - exponent.descent) / unit - 0.12) * unit;
        const double drop =
            std::max({0.2 * unit, base.descent - 0.05 * unit, index.ascent - highest});
        Box box;
        box.left = base.left;
        Place(box, index, x - base.overhang, index.width > 0.0 ? -drop : 0.0);
        Place(box, exponent, x, exponent.width > 0.0 ? rise : 0.0);
        Place(box, std::move(base), 0.0, 0.0);
        box.width += 0.04 * unit;
        return box;
    }

    Box fraction(std::size_t level) {
        const double unit = em(level);
        const Box above = group(level == 0 ? 0 : level + 1);
        const Box below = group(level == 0 ? 0 : level + 1);
        Box bar;
        bar.width = std::max(above.width, below.width) + 0.2 * unit;
        bar.paint = [width = bar.width, unit](cairo_t* cairo, double x, double baseline) {
            cairo_rectangle(cairo, std::round(x), std::round(baseline - Rule(unit) / 2.0), width,
                            Rule(unit));
            cairo_fill(cairo);
        };
        const double center = 0.06 * unit + bar.width / 2.0;
        const double axis = axis_ * unit;
        Box box;
        Place(box, bar, 0.06 * unit, axis);
        Place(box, above, center - above.width / 2.0, axis + 0.17 * unit + above.descent);
        Place(box, below, center - below.width / 2.0, axis - 0.17 * unit - below.ascent);
        box.width += 0.06 * unit;
        return box;
    }

    Box root(std::size_t level) {
        const double unit = em(level);
        const Box radicand = group(level);
        const double start = 0.6 * unit - std::min(radicand.left, 0.0);
        Box box;
        Place(box, radicand, start, 0.0);
        Box sign;
        sign.width = box.width + 0.06 * unit;
        sign.ascent = std::max(radicand.ascent, 0.6 * unit) + 0.175 * unit;
        sign.descent = std::max(radicand.descent, 0.05 * unit);
        sign.paint = [sign, unit](cairo_t* cairo, double x, double baseline) {
            DrawRadical(cairo, sign, unit, x, baseline);
        };
        Place(box, sign, 0.0, 0.0);
        box.width += 0.06 * unit;
        return box;
    }

    Box sum(std::size_t level) {
        const double unit = em(level);
        const Box sign = big("∑", 1.5, 0.0, level);
        const Box below = group(level + 1);
        const double center = std::max(sign.width, below.width) / 2.0;
        Box box;
        Place(box, sign, center - sign.width / 2.0, 0.0);
        Place(box, below, center - below.width / 2.0, -sign.descent - 0.12 * unit - below.ascent);
        box.width += 0.16 * unit;
        return box;
    }

    Box fence(bool isRound, std::size_t level) {
        const double unit = em(level);
        const double axis = axis_ * unit;
        const Box content = line(level, isRound ? ')' : ']');
        const double half =
            std::max({content.ascent - axis, content.descent + axis, 0.46 * unit}) + 0.04 * unit;
        Box box;
        box.width = content.width + 0.72 * unit;
        box.ascent = half + axis;
        box.descent = half - axis;
        box.paint = [box, isRound, unit](cairo_t* cairo, double x, double baseline) {
            DrawBracket(cairo, box, unit, x, baseline, isRound);
            DrawBracket(cairo, box, -unit, x + box.width, baseline, isRound);
        };
        Place(box, content, 0.36 * unit, 0.0);
        return box;
    }

    std::string_view rest_;
    double em_;  // pixels, of the text
    std::unique_ptr<PangoContext, decltype(&g_object_unref)> context_;
    double axis_;  // height of minus signs and fraction bars, in units of the font size
};

}  // namespace

void FormulaBox::draw(cairo_t* cairo, double x, double baseline) const {
    if (paint) {
        paint(cairo, x, baseline);
    }
    for (const Part& part : parts) {
        part.box.draw(cairo, x + part.x, baseline - part.rise);
    }
}

FormulaBox Typeset(std::string_view source, PangoContext* context, double points) {
    const double resolution = pango_cairo_context_get_resolution(context);
    const double em = points * (resolution > 0.0 ? resolution : 96.0) / 72.0;
    const Box line = Setter(source, context, em).line(0, '\0');
    Box box;
    box.ascent = 0.75 * em;  // at least as high as a line of text
    box.descent = 0.22 * em;
    Place(box, line, std::max(-line.left, 0.0), 0.0);
    return box;
}

}  // namespace toolkit
