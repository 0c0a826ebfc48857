#include "toolkit/formula.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <array>
#include <utility>

namespace toolkit {

struct Formula::Node {
    enum class Kind {
        text,
        space,
        row,
        scripts,
        fraction,
        root,
        sum,
        integral,
        parentheses,
        brackets
    };

    Kind kind = Kind::text;
    std::string characters;
    bool isItalic = false;
    double em = 0.0;             // width of a space
    std::vector<Formula> parts;  // scripts, sum, integral: base, then index, then exponent
    bool hasIndex = false;
    bool hasExponent = false;
};

namespace {

using Node = Formula::Node;
using Kind = Node::Kind;

// Proportions of the setting, in units of the font size at hand.
constexpr std::array<double, 3> levelSizes = {1.0, 0.72, 0.58};  // text, index, index of an index
constexpr double axisHeight = 0.27;                              // of fraction bars and minus signs
constexpr double ruleThickness = 0.055;
constexpr double fractionGap = 0.16;
constexpr double fractionOverhang = 0.12;
constexpr double subscriptDrop = 0.2;
constexpr double superscriptRise = 0.42;
constexpr double scriptSpace = 0.06;
constexpr double radicalWidth = 0.62;
constexpr double radicalGap = 0.12;
constexpr double sumSize = 1.5;
constexpr double integralSize = 1.9;
constexpr double limitGap = 0.1;
constexpr double bracketWidth = 0.36;
constexpr double bracketOverhang = 0.06;
constexpr double strutAscent = 0.75;  // a formula is at least as high as a line of text
constexpr double strutDescent = 0.22;

constexpr double pointsPerInch = 72.0;

struct UnrefObject {
    void operator()(PangoLayout* layout) const { g_object_unref(layout); }
};

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
    Shape shape = Shape::none;
    std::unique_ptr<PangoLayout, UnrefObject> layout;  // for Shape::glyphs, in the text size
    double scale = 1.0;                                // of the glyphs
    double line = 0.0;                                 // thickness of the shape's strokes
    double baseline = 0.0;                             // of the glyphs, below the layout's top
    std::vector<Child> children;
};

struct TypesetFormula::Box::Child {
    Box box;
    double x = 0.0;
    double rise = 0.0;  // of its baseline above the parent's
};

namespace {

using Box = TypesetFormula::Box;

/// Sets nodes into boxes.
class Setter {
  public:
    explicit Setter(const FormulaStyle& style)
        : context_(style.context),
          em_(style.size * resolution(style.context) / pointsPerInch),
          upright_(font(PANGO_STYLE_NORMAL)),
          italic_(font(PANGO_STYLE_ITALIC)) {}

    Box set(const Formula& formula, std::size_t level) const;
    double em(std::size_t level) const {
        return em_ * levelSizes[std::min(level, levelSizes.size() - 1)];
    }

  private:
    static double resolution(PangoContext* context) {
        const double dotsPerInch = pango_cairo_context_get_resolution(context);
        return dotsPerInch > 0.0 ? dotsPerInch : 96.0;
    }
    FontDescription font(PangoStyle style) const;
    Box glyphs(const std::string& characters, bool isItalic, double scale) const;
    Box big(const std::string& sign, double scale, std::size_t level) const;
    Box row(const Node& node, std::size_t level) const;
    Box scripts(const Node& node, std::size_t level) const;
    Box addScripts(Box base, const Node& node, std::size_t level) const;
    Box fraction(const Node& node, std::size_t level) const;
    Box root(const Node& node, std::size_t level) const;
    Box sum(const Node& node, std::size_t level) const;
    Box fenced(const Node& node, std::size_t level) const;

    PangoContext* context_;
    double em_;  // pixels, of the text
    FontDescription upright_;
    FontDescription italic_;
};

/// Puts `child` into `parent`, whose height follows it; its width has to be set by the caller.
void place(Box& parent, Box child, double x, double rise) {
    parent.size.ascent = std::max(parent.size.ascent, child.size.ascent + rise);
    parent.size.descent = std::max(parent.size.descent, child.size.descent - rise);
    parent.children.push_back({std::move(child), x, rise});
}

FontDescription Setter::font(PangoStyle style) const {
    FontDescription font(pango_font_description_from_string("serif"));
    pango_font_description_set_absolute_size(font.get(), em_ * PANGO_SCALE);
    pango_font_description_set_style(font.get(), style);
    return font;
}

/// All sizes are drawn from the fonts of the text: to look up one more font takes longer than to
/// set a whole formula.
Box Setter::glyphs(const std::string& characters, bool isItalic, double scale) const {
    Box box;
    box.shape = Box::Shape::glyphs;
    box.scale = scale;
    box.layout.reset(pango_layout_new(context_));
    pango_layout_set_font_description(box.layout.get(), (isItalic ? italic_ : upright_).get());
    pango_layout_set_text(box.layout.get(), characters.c_str(), -1);
    PangoRectangle ink;
    PangoRectangle logical;
    pango_layout_get_extents(box.layout.get(), &ink, &logical);
    const double unit = scale / PANGO_SCALE;
    box.baseline = pango_layout_get_baseline(box.layout.get()) * unit;
    const double overhang = (ink.x + ink.width - logical.width) * unit;
    box.size = {logical.width * unit + std::max(overhang, 0.0), box.baseline - ink.y * unit,
                (ink.y + ink.height) * unit - box.baseline};
    return box;
}

/// A sign that is larger than the letters, its middle on the axis.
Box Setter::big(const std::string& sign, double scale, std::size_t level) const {
    Box glyph = glyphs(sign, false, scale * em(level) / em(0));
    const double middle = (glyph.size.ascent - glyph.size.descent) / 2.0;
    Box box;
    box.size.width = glyph.size.width;
    place(box, std::move(glyph), 0.0, axisHeight * em(level) - middle);
    return box;
}

Box Setter::row(const Node& node, std::size_t level) const {
    Box box;
    for (const Formula& part : node.parts) {
        Box child = set(part, level);
        const double x = box.size.width;
        box.size.width += child.size.width;
        place(box, std::move(child), x, 0.0);
    }
    return box;
}

Box Setter::addScripts(Box base, const Node& node, std::size_t level) const {
    const double unit = em(level);
    const FormulaSize baseSize = base.size;
    const double x = baseSize.width + scriptSpace * unit;
    double drop = std::max(subscriptDrop * unit, baseSize.descent - 0.05 * unit);
    double rise = std::max(superscriptRise * unit, baseSize.ascent - 0.32 * unit);
    Box box;
    place(box, std::move(base), 0.0, 0.0);
    double width = x;
    std::size_t part = 1;
    if (node.hasIndex) {
        Box index = set(node.parts[part++], level + 1);
        drop = std::max(drop, index.size.ascent - 0.38 * unit);
        width = std::max(width, x + index.size.width);
        place(box, std::move(index), x, -drop);
    }
    if (node.hasExponent) {
        Box exponent = set(node.parts[part], level + 1);
        rise = std::max(rise, exponent.size.descent + 0.25 * unit);
        width = std::max(width, x + exponent.size.width);
        place(box, std::move(exponent), x, rise);
    }
    box.size.width = width;
    return box;
}

Box Setter::scripts(const Node& node, std::size_t level) const {
    return addScripts(set(node.parts[0], level), node, level);
}

Box Setter::fraction(const Node& node, std::size_t level) const {
    const double unit = em(level);
    const double line = ruleThickness * unit;
    Box numerator = set(node.parts[0], level);
    Box denominator = set(node.parts[1], level);
    const double width =
        std::max(numerator.size.width, denominator.size.width) + 2.0 * fractionOverhang * unit;
    const double axis = axisHeight * unit;
    Box rule;
    rule.shape = Box::Shape::rule;
    rule.line = line;
    rule.size = {width, line / 2.0, line / 2.0};
    const double up = axis + line / 2.0 + fractionGap * unit + numerator.size.descent;
    const double down = axis - line / 2.0 - fractionGap * unit - denominator.size.ascent;
    const double numeratorX = (width - numerator.size.width) / 2.0;
    const double denominatorX = (width - denominator.size.width) / 2.0;
    Box box;
    box.size.width = width;
    place(box, std::move(numerator), numeratorX, up);
    place(box, std::move(rule), 0.0, axis);
    place(box, std::move(denominator), denominatorX, down);
    return box;
}

Box Setter::root(const Node& node, std::size_t level) const {
    const double unit = em(level);
    Box radicand = set(node.parts[0], level);
    Box sign;
    sign.shape = Box::Shape::radical;
    sign.line = ruleThickness * unit;
    sign.size = {radicalWidth * unit + radicand.size.width + 0.08 * unit,
                 std::max(radicand.size.ascent, 0.6 * unit) + radicalGap * unit + sign.line,
                 std::max(radicand.size.descent, 0.05 * unit)};
    Box box;
    box.size.width = sign.size.width + 0.05 * unit;
    place(box, std::move(sign), 0.0, 0.0);
    place(box, std::move(radicand), radicalWidth * unit, 0.0);
    return box;
}

Box Setter::sum(const Node& node, std::size_t level) const {
    const double unit = em(level);
    Box sign = big("∑", sumSize, level);
    Box index = set(node.parts[0], level + 1);
    const double width = std::max(sign.size.width, index.size.width);
    const double drop = sign.size.descent + limitGap * unit + index.size.ascent;
    const double signX = (width - sign.size.width) / 2.0;
    const double indexX = (width - index.size.width) / 2.0;
    Box box;
    box.size.width = width + 0.12 * unit;
    place(box, std::move(sign), signX, 0.0);
    place(box, std::move(index), indexX, -drop);
    return box;
}

Box Setter::fenced(const Node& node, std::size_t level) const {
    const double unit = em(level);
    Box content = set(node.parts[0], level);
    const double side = bracketWidth * unit;
    const double axis = axisHeight * unit;
    const double half =
        bracketOverhang * unit +
        std::max({content.size.ascent - axis, content.size.descent + axis, 0.5 * unit});
    Box fence;
    fence.shape = node.kind == Kind::brackets ? Box::Shape::brackets : Box::Shape::parentheses;
    fence.line = 1.2 * ruleThickness * unit;
    fence.size = {content.size.width + 2.0 * side, half + axis, half - axis};
    Box box;
    box.size.width = fence.size.width;
    place(box, std::move(fence), 0.0, 0.0);
    place(box, std::move(content), side, 0.0);
    return box;
}

Box Setter::set(const Formula& formula, std::size_t level) const {
    const Node& node = *formula.node();
    switch (node.kind) {
        case Kind::text:
            return glyphs(node.characters, node.isItalic, em(level) / em(0));
        case Kind::space: {
            Box box;
            box.size.width = node.em * em(level);
            return box;
        }
        case Kind::row:
            return row(node, level);
        case Kind::scripts:
            return scripts(node, level);
        case Kind::fraction:
            return fraction(node, level);
        case Kind::root:
            return root(node, level);
        case Kind::sum:
            return sum(node, level);
        case Kind::integral:
            return addScripts(big("∫", integralSize, level), node, level);
        case Kind::parentheses:
        case Kind::brackets:
            return fenced(node, level);
    }
    return {};
}

void strokeRadical(cairo_t* cairo, const Box& box, double x, double baseline) {
    const double top = baseline - box.size.ascent + box.line / 2.0;
    const double bottom = baseline + box.size.descent;
    const double unit = box.line / ruleThickness;
    const double middle = bottom - 0.42 * (bottom - top);
    cairo_move_to(cairo, x + 0.06 * unit, middle + 0.06 * unit);
    cairo_line_to(cairo, x + 0.18 * unit, middle);
    cairo_line_to(cairo, x + 0.34 * unit, bottom);
    cairo_line_to(cairo, x + 0.54 * unit, top);
    cairo_line_to(cairo, x + box.size.width, top);
    cairo_stroke(cairo);
}

/// One bracket: its stem at `inner` towards the content, its back at `outer`.
void strokeBracket(cairo_t* cairo, bool isRound, double outer, double inner, double top,
                   double bottom) {
    cairo_move_to(cairo, inner, top);
    if (isRound) {
        const double bend = 0.3 * (bottom - top);
        const double back = outer - (inner - outer) / 3.0;
        cairo_curve_to(cairo, back, top + bend, back, bottom - bend, inner, bottom);
    } else {
        cairo_line_to(cairo, outer, top);
        cairo_line_to(cairo, outer, bottom);
        cairo_line_to(cairo, inner, bottom);
    }
    cairo_stroke(cairo);
}

void strokeShape(cairo_t* cairo, const Box& box, double x, double baseline) {
    const double top = baseline - box.size.ascent;
    const double bottom = baseline + box.size.descent;
    const double unit = box.line / (1.2 * ruleThickness);
    cairo_set_line_width(cairo, box.line);
    switch (box.shape) {
        case Box::Shape::rule:
            cairo_rectangle(cairo, x, top, box.size.width, box.line);
            cairo_fill(cairo);
            break;
        case Box::Shape::radical:
            strokeRadical(cairo, box, x, baseline);
            break;
        case Box::Shape::parentheses:
        case Box::Shape::brackets: {
            const bool isRound = box.shape == Box::Shape::parentheses;
            const double right = x + box.size.width;
            strokeBracket(cairo, isRound, x + 0.1 * unit, x + 0.24 * unit, top, bottom);
            strokeBracket(cairo, isRound, right - 0.1 * unit, right - 0.24 * unit, top, bottom);
            break;
        }
        case Box::Shape::none:
        case Box::Shape::glyphs:
            break;
    }
}

void drawBox(cairo_t* cairo, const Box& box, double x, double baseline) {
    if (box.shape == Box::Shape::glyphs) {
        cairo_save(cairo);
        cairo_translate(cairo, x, baseline - box.baseline);
        cairo_scale(cairo, box.scale, box.scale);
        cairo_move_to(cairo, 0.0, 0.0);
        pango_cairo_show_layout(cairo, box.layout.get());
        cairo_restore(cairo);
    } else {
        strokeShape(cairo, box, x, baseline);
    }
    for (const Box::Child& child : box.children) {
        drawBox(cairo, child.box, x + child.x, baseline - child.rise);
    }
}

/// `text` in brackets when it is more than one name or number.
std::string grouped(const std::string& text) {
    const bool isSimple = text.find_first_of(" +/") == std::string::npos;
    return isSimple ? text : "(" + text + ")";
}

std::string scriptsText(const Node& node, const std::string& base) {
    std::string text = base;
    std::size_t part = 1;
    if (node.hasIndex) {
        const std::string index = node.parts[part++].plainText();
        const bool isFormula = node.parts[0].node()->kind == Kind::text &&
                               !node.parts[0].node()->isItalic;  // H2O, not H_2O
        text += (isFormula ? "" : "_") + grouped(index);
    }
    if (node.hasExponent) {
        text += "^" + grouped(node.parts[part].plainText());
    }
    return text;
}

std::shared_ptr<Node> newNode(Kind kind, std::vector<Formula> parts) {
    auto node = std::make_shared<Node>();
    node->kind = kind;
    node->parts = std::move(parts);
    return node;
}

Formula textNode(const std::string& characters, bool isItalic) {
    auto node = newNode(Kind::text, {});
    node->characters = characters;
    node->isItalic = isItalic;
    return Formula(std::move(node));
}

}  // namespace

std::string Formula::plainText() const {
    const std::vector<Formula>& parts = node_->parts;
    switch (node_->kind) {
        case Kind::text:
            return node_->characters;
        case Kind::space:
            return " ";
        case Kind::row: {
            std::string text;
            for (const Formula& part : parts) {
                text += part.plainText();
            }
            return text;
        }
        case Kind::scripts:
            return scriptsText(*node_, parts[0].plainText());
        case Kind::fraction:
            return grouped(parts[0].plainText()) + "/" + grouped(parts[1].plainText());
        case Kind::root:
            return "√(" + parts[0].plainText() + ")";
        case Kind::sum:
            return "∑_" + grouped(parts[0].plainText()) + " ";
        case Kind::integral:
            return scriptsText(*node_, "∫") + " ";
        case Kind::parentheses:
            return "(" + parts[0].plainText() + ")";
        case Kind::brackets:
            return "[" + parts[0].plainText() + "]";
    }
    return {};
}

TypesetFormula::TypesetFormula(const Formula& formula, const FormulaStyle& style) {
    const Setter setter(style);
    box_ = std::make_unique<const Box>(setter.set(formula, 0));
    size_ = box_->size;
    size_.ascent = std::max(size_.ascent, strutAscent * setter.em(0));
    size_.descent = std::max(size_.descent, strutDescent * setter.em(0));
}

TypesetFormula::TypesetFormula(TypesetFormula&& other) noexcept = default;
TypesetFormula& TypesetFormula::operator=(TypesetFormula&& other) noexcept = default;
TypesetFormula::~TypesetFormula() = default;

void TypesetFormula::draw(cairo_t* cairo, double x, double baseline) const {
    drawBox(cairo, *box_, x, baseline);
}

namespace formula {

Formula text(const std::string& characters) {
    return textNode(characters, false);
}

Formula variable(const std::string& characters) {
    return textNode(characters, true);
}

Formula relation(const std::string& sign) {
    return join({space(0.28), text(sign), space(0.28)});
}

Formula operation(const std::string& sign) {
    return join({space(0.2), text(sign), space(0.2)});
}

Formula space(double em) {
    auto node = newNode(Kind::space, {});
    node->em = em;
    return Formula(std::move(node));
}

Formula join(const std::vector<Formula>& parts) {
    return Formula(newNode(Kind::row, parts));
}

Formula sub(const Formula& base, const Formula& index) {
    auto node = newNode(Kind::scripts, {base, index});
    node->hasIndex = true;
    return Formula(std::move(node));
}

Formula sup(const Formula& base, const Formula& exponent) {
    auto node = newNode(Kind::scripts, {base, exponent});
    node->hasExponent = true;
    return Formula(std::move(node));
}

Formula subsup(const Formula& base, const Formula& index, const Formula& exponent) {
    auto node = newNode(Kind::scripts, {base, index, exponent});
    node->hasIndex = true;
    node->hasExponent = true;
    return Formula(std::move(node));
}

Formula fraction(const Formula& numerator, const Formula& denominator) {
    return Formula(newNode(Kind::fraction, {numerator, denominator}));
}

Formula root(const Formula& radicand) {
    return Formula(newNode(Kind::root, {radicand}));
}

Formula sum(const Formula& index) {
    return Formula(newNode(Kind::sum, {index}));
}

Formula integral(const Formula& lower, const Formula& upper) {
    auto node = newNode(Kind::integral, {variable("∫"), lower, upper});
    node->hasIndex = true;
    node->hasExponent = true;
    return Formula(std::move(node));
}

Formula parentheses(const Formula& content) {
    return Formula(newNode(Kind::parentheses, {content}));
}

Formula brackets(const Formula& content) {
    return Formula(newNode(Kind::brackets, {content}));
}

}  // namespace formula

}  // namespace toolkit
