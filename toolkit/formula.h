#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

using cairo_t = struct _cairo;
using PangoContext = struct _PangoContext;

namespace toolkit {

/// In what font a formula is set.
struct FormulaStyle {
    PangoContext* context = nullptr;  // of the widget, gives the resolution
    double size = 0.0;                // points
};

/// Extents of a formula in pixels, ascent and descent from its baseline.
struct FormulaSize {
    double width = 0.0;
    double ascent = 0.0;
    double descent = 0.0;
};

/// A formula, made of the pieces in namespace formula.
class Formula {
  public:
    struct Node;
    explicit Formula(std::shared_ptr<const Node> node) : node_(std::move(node)) {}

    /// The formula in one line of plain text, for screen readers.
    std::string plainText() const;
    const std::shared_ptr<const Node>& node() const { return node_; }

  private:
    std::shared_ptr<const Node> node_;
};

/// A formula set in a style: its pieces with their places. Sharp at any scale of the drawing; bars
/// and square brackets stand on whole pixels.
class TypesetFormula {
  public:
    struct Box;
    TypesetFormula(const Formula& formula, const FormulaStyle& style);

    const FormulaSize& size() const { return size_; }
    /// Draws in the source colour of `cairo`; `x` is the left end and `baseline` the ordinate of
    /// the baseline, in pixels.
    void draw(cairo_t* cairo, double x, double baseline) const;

  private:
    std::shared_ptr<const Box> box_;
    FormulaSize size_;
};

namespace formula {

/// Upright text, and the italic letters of a quantity.
Formula text(const std::string& characters);
Formula variable(const std::string& characters);
/// A sign with the spaces around it that belong to a relation ("=") or an operation ("−").
Formula relation(const std::string& sign);
Formula operation(const std::string& sign);
/// A gap; `em` is in units of the font size.
Formula space(double em);
Formula join(const std::vector<Formula>& parts);
Formula sub(const Formula& base, const Formula& index);
Formula sup(const Formula& base, const Formula& exponent);
Formula subsup(const Formula& base, const Formula& index, const Formula& exponent);
Formula fraction(const Formula& numerator, const Formula& denominator);
Formula root(const Formula& radicand);
/// A large sign such as "∑" with its limits below and above, or "∫" with them at the right.
Formula big(const std::string& sign, const std::optional<Formula>& lower,
            const std::optional<Formula>& upper);
Formula sum(const Formula& index);
Formula integral(const Formula& lower, const Formula& upper);
/// Round and square brackets as high as what they enclose.
Formula parentheses(const Formula& content);
Formula brackets(const Formula& content);

}  // namespace formula

}  // namespace toolkit
