#include <gtest/gtest.h>
#include <pango/pangocairo.h>

#include <memory>
#include <utility>
#include <vector>

#include "toolkit/formula/typesetter.h"

namespace {

constexpr int margin = 20;
constexpr int side = 400;

// A formula set and drawn large, and its ink.
class Picture {
  public:
    explicit Picture(const char* source) {
        const std::unique_ptr<PangoContext, decltype(&g_object_unref)> context(
            pango_font_map_create_context(pango_cairo_font_map_get_default()), &g_object_unref);
        box = toolkit::Typeset(source, context.get(), 30.0);
        cairo_surface_t* const surface = cairo_image_surface_create(CAIRO_FORMAT_A8, side, side);
        cairo_t* const cairo = cairo_create(surface);
        box.draw(cairo, margin, side / 2.0);
        cairo_surface_flush(surface);
        const unsigned char* const pixels = cairo_image_surface_get_data(surface);
        const int stride = cairo_image_surface_get_stride(surface);
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                ink.push_back(pixels[y * stride + x] > 100);
            }
        }
        cairo_destroy(cairo);
        cairo_surface_destroy(surface);
    }

    bool isWithinItsExtents() const {
        bool isWithin = true;
        for (int i = 0; i < side * side; ++i) {
            const int x = i % side - margin;
            const int y = i / side - side / 2;
            isWithin =
                isWithin &&
                (!ink[static_cast<std::size_t>(i)] ||
                 (x >= -1 && x <= box.width + 1 && y >= -box.ascent - 1 && y <= box.descent + 1));
        }
        return isWithin;
    }

    // How many pieces of ink stand apart from each other.
    int pieces() const {
        std::vector<bool> rest = ink;
        int count = 0;
        for (int start = 0; start < side * side; ++start) {
            std::vector<int> open(rest[static_cast<std::size_t>(start)] ? 1 : 0, start);
            count += static_cast<int>(open.size());
            while (!open.empty()) {
                const int i = open.back();
                open.pop_back();
                for (const int next : {i, i - 1, i + 1, i - side, i + side, i - side - 1,
                                       i - side + 1, i + side - 1, i + side + 1}) {
                    if (rest[static_cast<std::size_t>(next)]) {
                        rest[static_cast<std::size_t>(next)] = false;
                        open.push_back(next);
                    }
                }
            }
        }
        return count;
    }

    toolkit::FormulaBox box;

  private:
    std::vector<bool> ink;
};

TEST(FormulaTest, PiecesStandApartAndWithinTheRoomOfTheFormula) {
    using Cases = std::initializer_list<std::pair<const char*, int>>;
    for (const auto& [source, pieces] : Cases{{"P = a", 4},
                                              {"\\frac{a}{V − b}", 5},
                                              {"x_a^2", 3},
                                              {"T_{\\up{c,}a}^2", 5},
                                              {"\\sqrt{ab}", 3},
                                              {"\\sum{a}x", 3},
                                              {"\\int_V^2  \\up{x", 4},
                                              {"[(\\frac{a}{b})_x − V]", 10},
                                              {"x_{a_{b}}", 3},
                                              {"x_", 1}}) {
        const Picture picture(source);
        EXPECT_EQ(picture.pieces(), pieces) << source;
        EXPECT_TRUE(picture.isWithinItsExtents()) << source;
    }
}

TEST(FormulaTest, WhatIsAboveStandsAboveBracketsGrowAndSignsHaveRoom) {
    const auto boxOf = [](const char* source) { return Picture(source).box; };
    EXPECT_GT(boxOf("x^a").ascent, boxOf("x_a").ascent);
    EXPECT_LT(boxOf("\\frac{x_a}{x}").descent, boxOf("\\frac{x}{x_a}").descent);
    EXPECT_GT(boxOf("x_ab").width, boxOf("x_{ab}").width);
    EXPECT_NEAR(boxOf("a + b").width, boxOf("a − b").width, 5.0);
    EXPECT_GT(boxOf("(\\frac{a}{b})").ascent, boxOf("\\frac{a}{b}").ascent);
}

}  // namespace
