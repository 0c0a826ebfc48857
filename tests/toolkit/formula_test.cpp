#include "toolkit/formula.h"

#include <gtest/gtest.h>
#include <pango/pangocairo.h>

#include <memory>
#include <utility>

namespace {

using namespace toolkit::formula;

TEST(FormulaTest, ExponentsStandAboveTheLineAndIndicesBelow) {
    const std::unique_ptr<PangoContext, decltype(&g_object_unref)> context(
        pango_font_map_create_context(pango_cairo_font_map_get_default()), &g_object_unref);
    const toolkit::Formula x = text("x");
    const toolkit::Formula tall = fraction(x, x);
    const auto sizeOf = [&context](const toolkit::Formula& formula) {
        return toolkit::TypesetFormula(formula, {context.get(), 20.0}).size();
    };
    for (const auto& [above, below] : {std::pair(sup(x, tall), sub(x, tall)),
                                       {fraction(tall, x), fraction(x, tall)},
                                       {big("∑", x, tall), big("∑", tall, x)},
                                       {big("∫", x, tall), big("∫", tall, x)}}) {
        EXPECT_GT(sizeOf(above).ascent, sizeOf(below).ascent) << above.plainText();
        EXPECT_LT(sizeOf(above).descent, sizeOf(below).descent) << above.plainText();
        EXPECT_GT(sizeOf(above).width, sizeOf(x).width);
    }
}

}  // namespace
