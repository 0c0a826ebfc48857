#include "toolkit/formula/typesetter.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

namespace toolkit {

namespace {

using Box = FormulaBox;

// All lengths are in units of the font size at hand, `unit`, which is in pixels.

// How far the middle of the ink stands above the baseline.
double Middle(const Box& box) {
    return (box.ascent - box.descent) / 2.0;
}

// Puts `child` into `parent`, whose extents follow it.
void Place(Box& parent, const Box& child, double x, double rise) {
    parent.width = std::max(parent.width, x + child.width);
    parent.ascent = std::max(parent.ascent, child.ascent + rise);
    parent.descent = std::max(parent.descent, child.descent - rise);
    for (const Box::Mark& mark : child.marks) {
        parent.marks.push_back({mark.draw, mark.x + x, mark.rise + rise});
    }
}

// With room at both sides.
Box Spaced(const Box& content, double room) {
    Box box;
    Place(box, content, room, 0.0);
    box.width += room;
    return box;
}

// The thickness of a line, in whole pixels.
double Rule(double unit) {
    return std::max(std::round(0.055 * unit), 1.0);
}

void Stroke(cairo_t* cairo, double width, std::initializer_list<std::array<double, 2>> path) {
    for (const auto& [x, y] : path) {
        cairo_line_to(cairo, x, y);
    }
    cairo_set_line_width(cairo, width);
    cairo_stroke(cairo);
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
          axis_(Middle(glyphs("−", em_)) / em_) {}

    // What stands before `end`, or before the end of the source.
    Box line(double unit, char end) {
        Box box;
        while (!rest_.empty() && rest_.front() != end) {
            const Box next = scripts(atom(unit), unit);
            box.left = box.marks.empty() ? next.left : box.left;
            box.overhang = next.overhang;
            Place(box, next, box.width, 0.0);
        }
        take(1);
        return box;
    }

  private:
    // The font size of an index, or of an index of an index.
    double smaller(double unit) const { return std::max(0.72 * unit, 0.58 * em_); }

    std::string_view take(std::size_t size) {
        const std::string_view taken = rest_.substr(0, size);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    bool skip(std::string_view token) {
        return rest_.starts_with(token) && take(token.size()) == token;
    }

    Box group(double unit) {
        return skip("{") ? line(unit, '}') : rest_.empty() ? Box() : characters(unit, true);
    }

    Box atom(double unit) {
        return skip(" = ")      ? Spaced(glyphs("=", unit), 0.28 * unit)
               : skip(" − ")    ? Spaced(glyphs("−", unit), 0.2 * unit)
               : skip(" + ")    ? Spaced(glyphs("+", unit), 0.2 * unit)
               : skip(" ")      ? Spaced(glyphs("", unit), 0.065 * unit)
               : skip("~")      ? Spaced(glyphs("", unit), 0.6 * unit)
               : skip("(")      ? fence(true, unit)
               : skip("[")      ? fence(false, unit)
               : skip("\\frac") ? fraction(unit)
               : skip("\\sqrt") ? root(unit)
               : skip("\\sum")  ? sum(unit)
               : skip("\\int")  ? big("∫", 2.1, 0.45, unit)
                                : characters(unit, false);
    }

    // A quantity, whose name may have several letters, or an upright character.
    Box characters(double unit, bool isSingle) {
        if (skip("\\up{")) {
            const std::string_view text = take(rest_.find('}'));
            take(1);
            return glyphs(text, unit);
        }
        const char* end = rest_.data();
        const char* const stop = isSingle ? g_utf8_next_char(end) : end + rest_.size();
        while (end < stop && g_unichar_isalpha(g_utf8_get_char(end)) != FALSE) {
            end = g_utf8_next_char(end);
        }
        const bool isQuantity = end > rest_.data();
        const auto size = (isQuantity ? end : g_utf8_next_char(end)) - rest_.data();
        return glyphs(take(static_cast<std::size_t>(size)), unit,
                      isQuantity ? "serif italic" : "serif");
    }

    // All sizes are drawn from the fonts of the text: to look up one more font takes longer than
    // to set a whole formula.
    Box glyphs(std::string_view text, double unit, const char* fontName = "serif") const {
        const std::shared_ptr<PangoLayout> layout(pango_layout_new(context_.get()),
                                                  &g_object_unref);
        PangoFontDescription* const font = pango_font_description_from_string(fontName);
        pango_font_description_set_absolute_size(font, em_ * PANGO_SCALE);
        pango_layout_set_font_description(layout.get(), font);
        pango_font_description_free(font);
        pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
        PangoLayoutLine* const line = pango_layout_get_line_readonly(layout.get(), 0);
        PangoRectangle ink;
        PangoRectangle logical;
        pango_layout_line_get_extents(line, &ink, &logical);
        const double scale = unit / em_;
        const double step = scale / PANGO_SCALE;
        Box box;
        box.left = ink.x * step;
        box.overhang = (ink.x + ink.width - logical.width) * step;
        box.width = logical.width * step + std::max(box.overhang, 0.0);
        box.ascent = -ink.y * step;
        box.descent = (ink.y + ink.height) * step;
        box.marks.push_back({[layout, line, scale](cairo_t* cairo, double x, double baseline) {
            cairo_save(cairo);
            cairo_translate(cairo, x, baseline);
            cairo_scale(cairo, scale, scale);
            pango_cairo_show_layout_line(cairo, line);
            cairo_restore(cairo);
        }});
        return box;
    }

    // A large sign stands by its ink, its middle on the axis: fonts differ in the room around it.
    // `lean`: how far an index goes back below it, in units of its width.
    Box big(const char* text, double size, double lean, double unit) const {
        const Box sign = glyphs(text, size * unit);
        Box box;
        Place(box, sign, -sign.left, axis_ * unit - Middle(sign));
        box.width += std::min(sign.overhang, 0.0);
        box.overhang = lean * box.width;
        return box;
    }

    Box scripts(const Box& base, double unit) {
        const Box index = skip("_") ? group(smaller(unit)) : Box();
        const Box exponent = skip("^") ? group(smaller(unit)) : Box();
        if (index.width + exponent.width == 0.0) return base;
        const double x = base.width + 0.04 * unit;
        const double rise =
            std::max({0.4 * unit, base.ascent - 0.32 * unit, exponent.descent + 0.25 * unit});
        const double highest = std::min(0.38 * unit, rise - exponent.descent - 0.12 * unit);
        const double drop =
            std::max({0.2 * unit, base.descent - 0.05 * unit, index.ascent - highest});
        Box box = base;
        box.overhang = 0.0;
        Place(box, index, x - std::max(base.overhang, 0.0), index.width > 0.0 ? -drop : 0.0);
        Place(box, exponent, x, exponent.width > 0.0 ? rise : 0.0);
        box.width += 0.04 * unit;
        return box;
    }

    Box fraction(double unit) {
        const double size = unit == em_ ? unit : smaller(unit);
        const Box above = group(size);
        const Box below = group(size);
        const double axis = axis_ * unit;
        Box box;
        box.width = std::max(above.width, below.width) + 0.2 * unit;
        box.marks.push_back(
            {[width = box.width, unit](cairo_t* cairo, double x, double baseline) {
                 const double line = Rule(unit);
                 const double y = std::round(baseline - line / 2.0) + line / 2.0;
                 Stroke(cairo, line, {{std::round(x), y}, {std::round(x) + width, y}});
             },
             0.0, axis});
        Place(box, above, (box.width - above.width) / 2.0, axis + 0.17 * unit + above.descent);
        Place(box, below, (box.width - below.width) / 2.0, axis - 0.17 * unit - below.ascent);
        return Spaced(box, 0.06 * unit);
    }

    // A thick stroke down, and thin ones to it and up to the bar.
    Box root(double unit) {
        const Box radicand = group(unit);
        Box box;
        Place(box, radicand, 0.6 * unit - std::min(radicand.left, 0.0), 0.0);
        const double end = box.width + 0.06 * unit;
        box.width = end + 0.06 * unit;
        box.ascent = std::max(box.ascent, 0.6 * unit) + 0.175 * unit;
        box.descent = std::max(box.descent, 0.05 * unit);
        box.marks.push_back({[=, ascent = box.ascent, descent = box.descent](
                                 cairo_t* cairo, double x, double baseline) {
            const double bar = std::round(baseline - ascent) + Rule(unit) / 2.0;
            const double bottom = baseline + descent;
            const double tip = bottom - 0.45 * (bottom - bar);
            const double neck = x + 0.15 * unit;
            const double foot = x + 0.31 * unit;
            Stroke(cairo, Rule(unit), {{x + 0.04 * unit, tip + 0.09 * unit}, {neck, tip}});
            Stroke(cairo, 0.09 * unit, {{neck, tip}, {foot, bottom - 0.04 * unit}});
            Stroke(cairo, Rule(unit), {{foot, bottom}, {x + 0.56 * unit, bar}, {x + end, bar}});
        }});
        return box;
    }

    Box sum(double unit) {
        const Box sign = big("∑", 1.5, 0.0, unit);
        const Box below = group(smaller(unit));
        const double drop = sign.descent + 0.12 * unit + below.ascent;
        Box box;
        box.width = std::max(sign.width, below.width);
        Place(box, sign, (box.width - sign.width) / 2.0, 0.0);
        Place(box, below, (box.width - below.width) / 2.0, -drop);
        box.width += 0.16 * unit;
        return box;
    }

    // Round brackets, thicker in their middle, or square ones.
    Box fence(bool isRound, double unit) {
        const Box content = line(unit, isRound ? ')' : ']');
        const double axis = axis_ * unit;
        const double half =
            std::max({content.ascent - axis, content.descent + axis, 0.46 * unit}) + 0.04 * unit;
        Box box = Spaced(content, 0.36 * unit);
        box.ascent = half + axis;
        box.descent = half - axis;
        box.marks.push_back({[=, width = box.width](cairo_t* cairo, double x, double baseline) {
            const double line = Rule(unit);
            const double top = std::round(baseline - axis - half) + line / 2.0;
            const double bottom = std::round(baseline - axis + half) - line / 2.0;
            const double bend = 0.28 * (bottom - top);
            for (const double side : {1.0, -1.0}) {
                const auto inside = [=](double distance) {
                    return (side > 0.0 ? x : x + width) + side * distance;
                };
                const double tip = inside(0.27 * unit);
                if (isRound) {
                    const double back = inside(0.06 * unit);
                    const double belly = inside(0.17 * unit);
                    cairo_move_to(cairo, tip, top);
                    cairo_curve_to(cairo, back, top + bend, back, bottom - bend, tip, bottom);
                    cairo_curve_to(cairo, belly, bottom - bend, belly, top + bend, tip, top);
                    cairo_fill_preserve(cairo);
                    Stroke(cairo, 0.03 * unit, {});  // keeps the ends from fading
                } else {
                    const double stem = std::round(inside(0.1 * unit)) + side * line / 2.0;
                    Stroke(cairo, line, {{tip, top}, {stem, top}, {stem, bottom}, {tip, bottom}});
                }
            }
        }});
        return box;
    }

    std::string_view rest_;
    double em_;  // pixels, of the text
    std::unique_ptr<PangoContext, decltype(&g_object_unref)> context_;
    double axis_;  // height of minus signs and fraction bars
};

}  // namespace

void FormulaBox::draw(cairo_t* cairo, double x, double baseline) const {
    for (const Mark& mark : marks) {
        mark.draw(cairo, x + mark.x, baseline - mark.rise);
    }
}

FormulaBox Typeset(std::string_view source, PangoContext* context, double points) {
    const double resolution = pango_cairo_context_get_resolution(context);
    const double em = points * (resolution > 0.0 ? resolution : 96.0) / 72.0;
    const Box line = Setter(source, context, em).line(em, '\0');
    Box box;
    box.ascent = 0.75 * em;  // at least as high as a line of text
    box.descent = 0.22 * em;
    Place(box, line, std::max(-line.left, 0.0), 0.0);
    return box;
}

}  // namespace toolkit
