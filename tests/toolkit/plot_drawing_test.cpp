#include "toolkit/plot_drawing.h"

#include <cairo-svg.h>
#include <cairo.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using Points = std::vector<std::pair<double, double>>;
using Style = toolkit::PlotSeries::Style;
using toolkit::PlotSeries;
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// A plot of one series as a picture.
struct Picture {
    explicit Picture(const PlotSeries& series, bool isLogarithmic = false,
                     cairo_surface_t* onto = cairo_image_surface_create(CAIRO_FORMAT_RGB24, width,
                                                                        height))
        : surface(onto, &cairo_surface_destroy) {
        const std::string title = "V (cm³/mol), #1 <&>";
        const std::unique_ptr<cairo_t, decltype(&cairo_destroy)> cairo(cairo_create(surface.get()),
                                                                       &cairo_destroy);
        const toolkit::PlotContent content{title, {title, "K"}, {title, ""}, {series}, {}};
        toolkit::PlotView view;
        view.start(content.series, {.isLogarithmicX = isLogarithmic});
        const auto drawn = toolkit::drawPlot(cairo.get(), width, height, {}, content, view);
        frame = drawn ? std::optional(drawn->frame) : std::nullopt;
        cairo_surface_flush(surface.get());
    }
    /// Whether something blue, the first colour of the palette, is near the place.
    bool isColoured(const toolkit::PlotPlace& place) const {
        const auto* const pixels =
            reinterpret_cast<const std::uint32_t*>(cairo_image_surface_get_data(surface.get()));
        const auto column = static_cast<int>(std::lround(place.x));
        const auto row = static_cast<int>(std::lround(place.y));
        for (int y = row - 2; y <= row + 2; ++y) {
            for (int x = column - 2; x <= column + 2; ++x) {
                const bool isInside = x >= 0 && x < width && y >= 0 && y < height;
                const std::uint32_t pixel = isInside ? pixels[y * width + x] : 0;
                constexpr std::uint32_t least = 64;
                if ((pixel & 0xFFU) > (pixel >> 16U & 0xFFU) + least) {
                    return true;
                }
            }
        }
        return false;
    }

    static constexpr int width = 520;
    static constexpr int height = 400;
    std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface;
    std::optional<toolkit::PlotFrame> frame;
};

PlotSeries seriesOf(const Points& points, Style style = Style::line) {
    PlotSeries series("50 % #1 \xff <√>", style);
    for (const auto& [x, y] : points) {
        series.add(x, y);
    }
    return series;
}

// What the library does not like it writes to stderr, which fails the test as well.
TEST(PlotDrawingTest, PointsAreDrawnWhereTheyAreReadOut) {
    for (const Points& points :
         {Points{}, Points{{300.0, 2.5}}, Points{{0.0, 0.0}}, Points{{nan, 1.0}, {2.0, nan}},
          Points{{1.0, 1e299}, {2.0, -9e299}}, Points{{-9e299, -9e299}, {9e299, 9e299}},
          Points{{1.0, 1.0}, {2.0, 1.7e308}, {3.0, 2.0}}, Points{{1.0, 1e-300}, {2.0, 3e-300}},
          Points{{5e-324, 5e-324}, {1e-320, 1e-320}}, Points{{1.0, 5.0}, {9.0, 5.0}},
          Points{{1e15, 1e15}, {1e15 + 1.0, 1e15}}, Points{{-10.0, -1e6}, {-5.0, -2e6}},
          Points{{300.0, 1234.5}, {300.08, 1234.66}}, Points{{1e-9, 1.0}, {1e-3, 2.0}},
          Points{{1e-300, 1.0}, {1e299, 2.0}}, Points{{0.0, 1.0}, {40.0, 2.0}, {4e5, 3.0}}}) {
        for (const Style style : {Style::line, Style::dotted, Style::markers}) {
            for (const bool isLogarithmic : {false, true}) {
                const Picture picture(seriesOf(points, style), isLogarithmic);
                ASSERT_TRUE(picture.frame);
                for (const auto& [x, y] : points) {
                    const auto place = picture.frame->placeOf({x, y});
                    const bool isDrawn = std::abs(x) < 1e300 && std::abs(y) < 1e300 &&
                                         (x > 0.0 || !picture.frame->limits.x.isLogarithmic);
                    ASSERT_EQ(place.has_value(), isDrawn) << x << ' ' << y;
                    // The ends of two dots may lie in the gap between them.
                    const bool isCertain = style != Style::dotted && points.size() < 3;
                    EXPECT_TRUE(!isDrawn || !isCertain || picture.isColoured(*place))
                        << x << ' ' << y << ' ' << isLogarithmic;
                }
            }
        }
    }
}

TEST(PlotDrawingTest, LegendStaysInThePictureAndMarksLieOnTheirPoints) {
    const Picture picture(seriesOf({{1.0, 1.0}, {2.0, 2.0}, {3.0, 3.0}}, Style::markers));
    for (const double side : {-5.0, 5.0}) {
        const toolkit::PlotPlace place = *picture.frame->placeOf({2.0, 2.0});
        EXPECT_TRUE(picture.isColoured({place.x + 0.8 * side, place.y}));
        EXPECT_TRUE(picture.isColoured({place.x, place.y + side}));
        EXPECT_FALSE(picture.isColoured({place.x, place.y + 2.0 * side}));
    }
    const std::string title = "P";
    const std::vector<PlotSeries> series(6, [] {
        PlotSeries one("mechanical spinodal");
        one.add(0.0, 0.0);
        return one;
    }());
    for (const double textHeight : {10.0, 18.0}) {
        for (const int size : {300, 600, 900, 1300, 1440}) {
            const std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface(
                cairo_image_surface_create(CAIRO_FORMAT_RGB24, size, 500), &cairo_surface_destroy);
            const std::unique_ptr<cairo_t, decltype(&cairo_destroy)> cairo(
                cairo_create(surface.get()), &cairo_destroy);
            toolkit::PlotView view;
            view.start(series, {});
            toolkit::drawPlot(cairo.get(), size, 500, {.textHeight = textHeight},
                              {title, {title, ""}, {title, ""}, series, {}}, view);
            cairo_surface_flush(surface.get());
            const auto* const pixels =
                reinterpret_cast<const std::uint32_t*>(cairo_image_surface_get_data(surface.get()));
            for (int y = 0; y < 500; ++y) {
                ASSERT_EQ(pixels[y * size + size - 1] & 0xFFFFFFU, 0xFFFFFFU) << size << ' ' << y;
            }
        }
    }
}

/// The bytes that the steps of drawing a plot take.
std::size_t sizeOfDrawing(const PlotSeries& series) {
    std::size_t size = 0;
    const auto count = +[](void* sum, const unsigned char* /*bytes*/, unsigned length) {
        *static_cast<std::size_t*>(sum) += length;
        return CAIRO_STATUS_SUCCESS;
    };
    const Picture picture(
        series, false,
        cairo_svg_surface_create_for_stream(count, &size, Picture::width, Picture::height));
    cairo_surface_finish(picture.surface.get());
    return size;
}

TEST(PlotDrawingTest, LongSeriesKeepTheirPeaksAndGapsAndFewOfTheirPoints) {
    constexpr int count = 100'000;
    for (const Style style : {Style::line, Style::dashed, Style::markers}) {
        for (const bool isFullOfGaps : {false, true}) {
            PlotSeries series("", style);
            for (int i = 0; i < count; ++i) {
                const double y = i == 51'234 ? 9.0 : std::sin(i);
                const bool isGap = (i > 20'000 && i < 30'000) || (isFullOfGaps && i % 2 == 1);
                series.add(i, isGap ? nan : y);
            }
            const Picture picture(series);
            EXPECT_LT(sizeOfDrawing(series), style == Style::dashed ? 2000000U : 200000U);
            ASSERT_TRUE(picture.frame);
            EXPECT_TRUE(picture.isColoured(*picture.frame->placeOf({51'234.0, 9.0})));
            EXPECT_TRUE(picture.isColoured(*picture.frame->placeOf({75'000.0, 0.0})));
            EXPECT_FALSE(picture.isColoured(*picture.frame->placeOf({25'000.0, 0.0})));
        }
    }
}

}  // namespace
