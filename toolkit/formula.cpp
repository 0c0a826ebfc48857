#include "toolkit/formula.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace toolkit {

struct Formula::Node {
    enum class Kind { characters, space, row, scripts, fraction, root, big, fence };

    Kind kind = Kind::row;
    std::string characters{};  // of a fence: the two brackets
    bool isItalic = false;
    double em = 0.0;  // width of a space
    std::vector<Formula> parts{};
    std::optional<Formula> index{};  // or the lower limit
    std::optional<Formula> exponent{};
};

namespace {

using Node = Formula::Node;
using Kind = Node::Kind;

// Proportions of the setting, in units of the font size at hand.
constexpr std::array<double, 3> levelSizes = {1.0, 0.72, 0.58};  // text, index, index of an index
constexpr double ruleThickness = 0.055;
constexpr double fractionGap = 0.14;
constexpr double fractionOverhang = 0.1;
constexpr double fractionSide = 0.06;
constexpr double subscriptDrop = 0.2;
constexpr double superscriptRise = 0.4;
constexpr double scriptSpace = 0.04;
constexpr double scriptGap = 0.12;  // at least, between an index and an exponent above it
constexpr double radicalWidth = 0.6;
constexpr double radicalGap = 0.12;
constexpr double sumSize = 1.5;
constexpr double integralSize = 2.1;
constexpr double integralLean = 0.45;  // of its width: how far it goes back to its lower limit
constexpr double bigSpace = 0.16;
constexpr double limitGap = 0.12;
constexpr double bracketWidth = 0.36;
constexpr double bracketOverhang = 0.04;
constexpr double bracketHalfHeight = 0.46;  // at least
constexpr double strutAscent = 0.75;        // a formula is at least as high as a line of text
constexpr double strutDescent = 0.22;

constexpr double pointsPerInch = 72.0;
constexpr double usualResolution = 96.0;

struct UnrefObject {
    void operator()(gpointer object) const { g_object_unref(object); }
};
using Context = std::unique_ptr<PangoContext, UnrefObject>;

struct FreeFont {
    void operator()(PangoFontDescription* font) const { pango_font_description_free(font); }
};
using FontDescription = std::unique_ptr<PangoFontDescription, FreeFont>;

}  // namespace

/// A piece with its place: what stands in it, or a shape of its own.
struct TypesetFormula::Box {
    enum class Shape { none, glyphs, rule, radical, parentheses, brackets };
    struct Child;

    FormulaSize size;
    double left = 0.0;      // where the ink starts; negative for an italic f or j
    double inkWidth = 0.0;  // of glyphs
    double overhang = 0.0;  // of leaning glyphs over their advance; an index stands below it
    Shape shape = Shape::none;
    std::unique_ptr<PangoLayout, UnrefObject> layout;  // for Shape::glyphs, in the text size
    double scale = 1.0;                                // of the glyphs
    double top = 0.0;                                  // of the layout, above the baseline
    double unit = 0.0;                                 // font size, for the other shapes
    std::vector<Child> children;
};

struct TypesetFormula::Box::Child {
    Box box;
    double x = 0.0;
    double rise = 0.0;  // of its baseline above the parent's
};

namespace {

using Box = TypesetFormula::Box;

/// A context like `original`, in which widths are not rounded to pixels: indices would stand at
/// uneven distances.
Context exactContext(PangoContext* original) {
    Context context(pango_font_map_create_context(pango_context_get_font_map(original)));
    const cairo_font_options_t* const given = pango_cairo_context_get_font_options(original);
    const std::unique_ptr<cairo_font_options_t, decltype(&cairo_font_options_destroy)> options(
        given != nullptr ? cairo_font_options_copy(given) : cairo_font_options_create(),
        &cairo_font_options_destroy);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    if (cairo_font_options_get_hint_style(options.get()) != CAIRO_HINT_STYLE_NONE) {
        // Stronger hinting changes widths, and takes longer than all the rest of the drawing.
        cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_SLIGHT);
    }
    pango_cairo_context_set_font_options(context.get(), options.get());
    pango_context_set_round_glyph_positions(context.get(), FALSE);
    pango_context_set_language(context.get(), pango_context_get_language(original));
    return context;
}

double textSize(const FormulaStyle& style) {
    const double resolution = pango_cairo_context_get_resolution(style.context);
    return style.size * (resolution > 0.0 ? resolution : usualResolution) / pointsPerInch;
}

FontDescription serifFont(double pixels, PangoStyle style) {
    FontDescription font(pango_font_description_from_string("serif"));
    pango_font_description_set_absolute_size(font.get(), pixels * PANGO_SCALE);
    pango_font_description_set_style(font.get(), style);
    return font;
}

/// How far the middle of the ink stands above the baseline.
double middle(const Box& box) {
    return (box.size.ascent - box.size.descent) / 2.0;
}

/// Puts `child` into `parent`, whose extents follow it.
void place(Box& parent, Box child, double x, double rise) {
    FormulaSize& size = parent.size;
    size.width = std::max(size.width, x + child.size.width);
    size.ascent = std::max(size.ascent, child.size.ascent + rise);
    size.descent = std::max(size.descent, child.size.descent - rise);
    parent.children.push_back({std::move(child), x, rise});
}

/// Puts `child` so that its ink, too, stays at the right of `x`.
void placeInk(Box& parent, Box child, double x, double rise) {
    const double shift = std::max(-child.left, 0.0);
    place(parent, std::move(child), x + shift, rise);
}

/// Sets nodes into boxes.
class Setter {
  public:
    explicit Setter(const FormulaStyle& style)
        : em_(textSize(style)),
          context_(exactContext(style.context)),
          upright_(serifFont(em_, PANGO_STYLE_NORMAL)),
          italic_(serifFont(em_, PANGO_STYLE_ITALIC)),
          axis_(middle(glyphs("−", false, 1.0)) / em_) {}

    Box set(const Formula& formula, std::size_t level) const;
    double em(std::size_t level) const {
        return em_ * levelSizes[std::min(level, levelSizes.size() - 1)];
    }

  private:
    Box glyphs(const std::string& characters, bool isItalic, double scale) const;
    Box row(const Node& node, std::size_t level) const;
    Box addScripts(Box base, const Node& node, std::size_t level) const;
    Box fraction(const Node& node, std::size_t level) const;
    Box root(const Node& node, std::size_t level) const;
    Box big(const Node& node, std::size_t level) const;
    Box fence(const Node& node, std::size_t level) const;

    double em_;  // pixels, of the text
    Context context_;
    FontDescription upright_;
    FontDescription italic_;
    double axis_;  // height of minus signs and fraction bars, in units of the font size
};

/// All sizes are drawn from the fonts of the text: to look up one more font takes longer than to
/// set a whole formula.
Box Setter::glyphs(const std::string& characters, bool isItalic, double scale) const {
    Box box;
    box.shape = Box::Shape::glyphs;
    box.scale = scale;
    box.layout.reset(pango_layout_new(context_.get()));
    pango_layout_set_font_description(box.layout.get(), (isItalic ? italic_ : upright_).get());
    pango_layout_set_text(box.layout.get(), characters.c_str(), -1);
    PangoRectangle ink;
    PangoRectangle logical;
    pango_layout_get_extents(box.layout.get(), &ink, &logical);
    const double unit = scale / PANGO_SCALE;
    box.top = pango_layout_get_baseline(box.layout.get()) * unit;
    box.left = ink.x * unit;
    box.inkWidth = ink.width * unit;
    box.overhang = std::max(ink.x + ink.width - logical.width, 0) * unit;
    box.size = {logical.width * unit + box.overhang, box.top - ink.y * unit,
                (ink.y + ink.height) * unit - box.top};
    return box;
}

Box Setter::row(const Node& node, std::size_t level) const {
    Box box;
    for (const Formula& part : node.parts) {
        Box child = set(part, level);
        box.left = box.children.empty() ? child.left : box.left;
        box.overhang = child.overhang;
        place(box, std::move(child), box.size.width, 0.0);
    }
    return box;
}

Box Setter::addScripts(Box base, const Node& node, std::size_t level) const {
    const double unit = em(level);
    const double exponentX = base.size.width + scriptSpace * unit;
    const double indexX = exponentX - base.overhang;
    double drop = std::max(subscriptDrop * unit, base.size.descent - 0.05 * unit);
    double rise = std::max(superscriptRise * unit, base.size.ascent - 0.32 * unit);
    Box box;
    box.left = base.left;
    place(box, std::move(base), 0.0, 0.0);
    double exponentBottom = box.size.ascent + box.size.descent;
    if (node.exponent) {
        Box exponent = set(*node.exponent, level + 1);
        rise = std::max(rise, exponent.size.descent + 0.25 * unit);
        exponentBottom = rise - exponent.size.descent;
        place(box, std::move(exponent), exponentX, rise);
    }
    if (node.index) {
        Box index = set(*node.index, level + 1);
        const double highest = std::min(0.38 * unit, exponentBottom - scriptGap * unit);
        drop = std::max(drop, index.size.ascent - highest);
        place(box, std::move(index), indexX, -drop);
    }
    box.size.width += scriptSpace * unit;
    return box;
}

Box Setter::fraction(const Node& node, std::size_t level) const {
    const double unit = em(level);
    const std::size_t partLevel = level == 0 ? 0 : level + 1;
    Box numerator = set(node.parts[0], partLevel);
    Box denominator = set(node.parts[1], partLevel);
    const double content = std::max(numerator.size.width, denominator.size.width);
    const double distance = (ruleThickness / 2.0 + fractionGap) * unit;
    const double up = axis_ * unit + distance + numerator.size.descent;
    const double down = axis_ * unit - distance - denominator.size.ascent;
    Box rule;
    rule.shape = Box::Shape::rule;
    rule.unit = unit;
    rule.size.width = content + 2.0 * fractionOverhang * unit;
    const double center = fractionSide * unit + rule.size.width / 2.0;
    const double numeratorX = center - numerator.size.width / 2.0;
    const double denominatorX = center - denominator.size.width / 2.0;
    Box box;
    place(box, std::move(rule), fractionSide * unit, axis_ * unit);
    place(box, std::move(numerator), numeratorX, up);
    place(box, std::move(denominator), denominatorX, down);
    box.size.width = 2.0 * center;
    return box;
}

Box Setter::root(const Node& node, std::size_t level) const {
    const double unit = em(level);
    Box radicand = set(node.parts[0], level);
    Box sign;
    sign.shape = Box::Shape::radical;
    sign.unit = unit;
    sign.size = {(radicalWidth + 0.06) * unit + radicand.size.width - std::min(radicand.left, 0.0),
                 std::max(radicand.size.ascent, 0.6 * unit) + (radicalGap + ruleThickness) * unit,
                 std::max(radicand.size.descent, 0.05 * unit)};
    Box box;
    place(box, std::move(sign), 0.0, 0.0);
    placeInk(box, std::move(radicand), radicalWidth * unit, 0.0);
    box.size.width += 0.06 * unit;
    return box;
}

/// The sign stands by its ink, its middle on the axis: fonts differ in the room around it.
Box Setter::big(const Node& node, std::size_t level) const {
    const double unit = em(level);
    const bool isIntegral = node.characters == "∫";
    Box glyph = glyphs(node.characters, false, (isIntegral ? integralSize : sumSize) * unit / em_);
    const double rise = axis_ * unit - middle(glyph);
    const double left = glyph.left;
    const double width = glyph.inkWidth;
    Box sign;
    place(sign, std::move(glyph), -left, rise);
    sign.size.width = width;
    if (isIntegral) {
        sign.overhang = integralLean * width;
        Box box = addScripts(std::move(sign), node, level);
        box.size.width += bigSpace * unit;
        return box;
    }
    Box lower = node.index ? set(*node.index, level + 1) : Box();
    Box upper = node.exponent ? set(*node.exponent, level + 1) : Box();
    const double center = std::max({width, lower.size.width, upper.size.width}) / 2.0;
    const double drop = sign.size.descent + limitGap * unit + lower.size.ascent;
    const double lift = sign.size.ascent + limitGap * unit + upper.size.descent;
    Box box;
    place(box, std::move(sign), center - width / 2.0, 0.0);
    if (node.index) {
        const double x = center - lower.size.width / 2.0;
        place(box, std::move(lower), x, -drop);
    }
    if (node.exponent) {
        const double x = center - upper.size.width / 2.0;
        place(box, std::move(upper), x, lift);
    }
    box.size.width = 2.0 * center + bigSpace * unit;
    return box;
}

Box Setter::fence(const Node& node, std::size_t level) const {
    const double unit = em(level);
    const double axis = axis_ * unit;
    const double side = bracketWidth * unit;
    Box content = set(node.parts[0], level);
    const double half = std::max({content.size.ascent - axis, content.size.descent + axis,
                                  bracketHalfHeight * unit}) +
                        bracketOverhang * unit;
    Box brackets;
    brackets.shape = node.characters == "()" ? Box::Shape::parentheses : Box::Shape::brackets;
    brackets.unit = unit;
    brackets.size = {content.size.width + 2.0 * side, half + axis, half - axis};
    Box box;
    place(box, std::move(brackets), 0.0, 0.0);
    place(box, std::move(content), side, 0.0);
    return box;
}

Box Setter::set(const Formula& formula, std::size_t level) const {
    const Node& node = *formula.node();
    switch (node.kind) {
        case Kind::characters:
            return glyphs(node.characters, node.isItalic, em(level) / em_);
        case Kind::space: {
            Box box;
            box.size.width = node.em * em(level);
            return box;
        }
        case Kind::row:
            return row(node, level);
        case Kind::scripts:
            return addScripts(set(node.parts[0], level), node, level);
        case Kind::fraction:
            return fraction(node, level);
        case Kind::root:
            return root(node, level);
        case Kind::big:
            return big(node, level);
        case Kind::fence:
            return fence(node, level);
    }
    return {};
}

/// Moves a point to the nearest corner of the device's pixels.
void snap(cairo_t* cairo, double& x, double& y) {
    cairo_user_to_device(cairo, &x, &y);
    x = std::round(x);
    y = std::round(y);
    cairo_device_to_user(cairo, &x, &y);
}

/// The thickness of a line of one rule, in whole pixels of the device.
double lineThickness(cairo_t* cairo, const Box& box) {
    double across = 0.0;
    double thickness = ruleThickness * box.unit;
    cairo_user_to_device_distance(cairo, &across, &thickness);
    thickness = std::max(std::round(thickness), 1.0);
    cairo_device_to_user_distance(cairo, &across, &thickness);
    return thickness;
}

void drawRule(cairo_t* cairo, const Box& box, double x, double baseline) {
    const double thickness = lineThickness(cairo, box);
    double top = baseline - thickness / 2.0;
    snap(cairo, x, top);
    cairo_rectangle(cairo, x, top, box.size.width, thickness);
    cairo_fill(cairo);
}

/// A thick stroke down and a thin one up to the bar, in one outline.
void drawRadical(cairo_t* cairo, const Box& box, double x, double baseline) {
    const double unit = box.unit;
    const double thin = lineThickness(cairo, box);
    const double thick = 0.1 * unit;
    const double right = x + box.size.width;
    double barStart = x + 0.56 * unit;
    double top = baseline - box.size.ascent;
    snap(cairo, barStart, top);
    const double bottom = baseline + box.size.descent;
    const double tip = bottom - 0.45 * (bottom - top);
    const double foot = x + 0.3 * unit;
    const double downSlope = 0.19 * unit / (bottom - tip - 0.09 * unit);  // width by height
    const double upSlope = (barStart - foot - thin) / (bottom - top);
    const double innerHeight = thick / (downSlope + upSlope);
    cairo_move_to(cairo, x + 0.04 * unit, tip + 0.08 * unit);
    cairo_line_to(cairo, x + 0.19 * unit, tip);
    cairo_line_to(cairo, foot + upSlope * innerHeight, bottom - innerHeight);
    cairo_line_to(cairo, barStart - thin, top);
    cairo_line_to(cairo, right, top);
    cairo_line_to(cairo, right, top + thin);
    cairo_line_to(cairo, barStart, top + thin);
    cairo_line_to(cairo, foot + thin, bottom);
    cairo_line_to(cairo, foot, bottom);
    cairo_line_to(cairo, x + 0.11 * unit, tip + 0.09 * unit);
    cairo_line_to(cairo, x + 0.06 * unit, tip + 0.12 * unit);
    cairo_close_path(cairo);
    cairo_fill(cairo);
}

/// One round bracket, thicker in its middle; `direction` is 1 for the left and -1 for the right.
void drawParenthesis(cairo_t* cairo, const Box& box, double x, double baseline, double direction) {
    const double tip = x + 0.26 * box.unit * direction;
    const double back = x + 0.06 * box.unit * direction;  // of the curve's control points
    const double belly = back + 0.11 * box.unit * direction;
    const double line = 0.5 * ruleThickness * box.unit;  // keeps the ends from fading
    const double top = baseline - box.size.ascent + line / 2.0;
    const double bottom = baseline + box.size.descent - line / 2.0;
    const double bend = 0.28 * (bottom - top);
    cairo_move_to(cairo, tip, top);
    cairo_curve_to(cairo, back, top + bend, back, bottom - bend, tip, bottom);
    cairo_curve_to(cairo, belly, bottom - bend, belly, top + bend, tip, top);
    cairo_close_path(cairo);
    cairo_set_line_width(cairo, line);
    cairo_fill_preserve(cairo);
    cairo_stroke(cairo);
}

/// One square bracket; its serifs go in `direction`.
void drawBracket(cairo_t* cairo, const Box& box, double x, double baseline, double direction) {
    const double thickness = lineThickness(cairo, box);
    const double serif = 0.18 * box.unit * direction;
    double stem = x + 0.1 * box.unit * direction;
    double top = baseline - box.size.ascent;
    double bottom = baseline + box.size.descent - thickness;
    snap(cairo, stem, top);
    snap(cairo, stem, bottom);
    cairo_rectangle(cairo, stem, top, thickness * direction, bottom + thickness - top);
    cairo_rectangle(cairo, stem, top, serif, thickness);
    cairo_rectangle(cairo, stem, bottom, serif, thickness);
    cairo_fill(cairo);
}

void drawGlyphs(cairo_t* cairo, const Box& box, double x, double baseline) {
    cairo_save(cairo);
    cairo_translate(cairo, x, baseline - box.top);
    cairo_scale(cairo, box.scale, box.scale);
    cairo_move_to(cairo, 0.0, 0.0);
    pango_cairo_show_layout(cairo, box.layout.get());
    cairo_restore(cairo);
}

void drawBox(cairo_t* cairo, const Box& box, double x, double baseline) {
    const double right = x + box.size.width;
    switch (box.shape) {
        case Box::Shape::none:
            break;
        case Box::Shape::glyphs:
            drawGlyphs(cairo, box, x, baseline);
            break;
        case Box::Shape::rule:
            drawRule(cairo, box, x, baseline);
            break;
        case Box::Shape::radical:
            drawRadical(cairo, box, x, baseline);
            break;
        case Box::Shape::parentheses:
            drawParenthesis(cairo, box, x, baseline, 1.0);
            drawParenthesis(cairo, box, right, baseline, -1.0);
            break;
        case Box::Shape::brackets:
            drawBracket(cairo, box, x, baseline, 1.0);
            drawBracket(cairo, box, right, baseline, -1.0);
            break;
    }
    for (const Box::Child& child : box.children) {
        drawBox(cairo, child.box, x + child.x, baseline - child.rise);
    }
}

/// `text` in brackets when it is more than one name or number.
std::string grouped(const std::string& text) {
    const bool isSimple = text.find_first_of(" ,=+/") == std::string::npos;
    return isSimple ? text : "(" + text + ")";
}

std::string scriptsText(const Node& node, std::string text) {
    if (node.index) {
        const std::string index = node.index->plainText();
        const bool isUpright = node.kind == Kind::scripts && !node.parts[0].node()->isItalic;
        const bool isNumber = index.find_first_not_of("0123456789") == std::string::npos;
        text += (isUpright && isNumber ? "" : "_") + grouped(index);  // H2O, not H_2O
    }
    if (node.exponent) {
        text += "^" + grouped(node.exponent->plainText());
    }
    return text;
}

std::string rowText(const Node& node) {
    std::string text;
    for (const Formula& part : node.parts) {
        const std::string next = part.plainText();
        const bool isSpaced = text.ends_with(' ') && next.starts_with(' ');
        text.append(next, isSpaced ? 1 : 0);
    }
    return text;
}

Formula make(Node node) {
    return Formula(std::make_shared<const Node>(std::move(node)));
}

}  // namespace

std::string Formula::plainText() const {
    const std::vector<Formula>& parts = node_->parts;
    switch (node_->kind) {
        case Kind::characters:
            return node_->characters;
        case Kind::space:
            return " ";
        case Kind::row:
            return rowText(*node_);
        case Kind::scripts:
            return scriptsText(*node_, parts[0].plainText());
        case Kind::fraction:
            return grouped(parts[0].plainText()) + "/" + grouped(parts[1].plainText());
        case Kind::root:
            return "√(" + parts[0].plainText() + ")";
        case Kind::big:
            return scriptsText(*node_, node_->characters) + " ";
        case Kind::fence:
            return node_->characters[0] + parts[0].plainText() + node_->characters[1];
    }
    return {};
}

TypesetFormula::TypesetFormula(const Formula& formula, const FormulaStyle& style) {
    const Setter setter(style);
    Box line;
    placeInk(line, setter.set(formula, 0), 0.0, 0.0);
    line.size.ascent = std::max(line.size.ascent, strutAscent * setter.em(0));
    line.size.descent = std::max(line.size.descent, strutDescent * setter.em(0));
    size_ = line.size;
    box_ = std::make_shared<const Box>(std::move(line));
}

void TypesetFormula::draw(cairo_t* cairo, double x, double baseline) const {
    cairo_save(cairo);
    drawBox(cairo, *box_, x, baseline);
    cairo_restore(cairo);
}

namespace formula {

Formula text(const std::string& characters) {
    return make({.kind = Kind::characters, .characters = characters});
}

Formula variable(const std::string& characters) {
    return make({.kind = Kind::characters, .characters = characters, .isItalic = true});
}

Formula relation(const std::string& sign) {
    return join({space(0.28), text(sign), space(0.28)});
}

Formula operation(const std::string& sign) {
    return join({space(0.2), text(sign), space(0.2)});
}

Formula space(double em) {
    return make({.kind = Kind::space, .em = em});
}

Formula join(const std::vector<Formula>& parts) {
    return make({.kind = Kind::row, .parts = parts});
}

Formula sub(const Formula& base, const Formula& index) {
    return make({.kind = Kind::scripts, .parts = {base}, .index = index});
}

Formula sup(const Formula& base, const Formula& exponent) {
    return make({.kind = Kind::scripts, .parts = {base}, .exponent = exponent});
}

Formula subsup(const Formula& base, const Formula& index, const Formula& exponent) {
    return make({.kind = Kind::scripts, .parts = {base}, .index = index, .exponent = exponent});
}

Formula fraction(const Formula& numerator, const Formula& denominator) {
    return make({.kind = Kind::fraction, .parts = {numerator, denominator}});
}

Formula root(const Formula& radicand) {
    return make({.kind = Kind::root, .parts = {radicand}});
}

Formula big(const std::string& sign, const std::optional<Formula>& lower,
            const std::optional<Formula>& upper) {
    return make({.kind = Kind::big, .characters = sign, .index = lower, .exponent = upper});
}

Formula sum(const Formula& index) {
    return big("∑", index, std::nullopt);
}

Formula integral(const Formula& lower, const Formula& upper) {
    return big("∫", lower, upper);
}

Formula parentheses(const Formula& content) {
    return make({.kind = Kind::fence, .characters = "()", .parts = {content}});
}

Formula brackets(const Formula& content) {
    return make({.kind = Kind::fence, .characters = "[]", .parts = {content}});
}

}  // namespace formula

}  // namespace toolkit
