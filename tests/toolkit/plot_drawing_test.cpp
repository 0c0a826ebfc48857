#include "toolkit/plot_drawing.h"

#include <cairo-svg.h>
#include <cairo.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "toolkit/number_text.h"
#include "toolkit/plot_picture.h"
#include "toolkit/plot_ticks.h"

namespace {

using Points = std::vector<std::pair<double, double>>;
using Style = toolkit::PlotSeries::Style;
using toolkit::PlotContent;
using toolkit::PlotLook;
using toolkit::PlotSeries;
using toolkit::PlotView;
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

// A plot of one series as a picture.
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
        const auto drawn = toolkit::DrawPlot(cairo.get(), width, height, {}, content, view);
        frame = drawn ? std::optional(drawn->frame) : std::nullopt;
        cairo_surface_flush(surface.get());
    }
    // Whether something blue, the first colour of the palette, is near the place.
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
                if ((pixel & 0xFFU) > (pixel >> 16U & 0xFFU) + least) return true;
            }
        }
        return false;
    }

    static constexpr int width = 520;
    static constexpr int height = 400;
    std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface;
    std::optional<toolkit::PlotFrame> frame;
};

PlotSeries SeriesOf(const Points& points, Style style = Style::Line) {
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
        for (const Style style : {Style::Line, Style::Dotted, Style::Markers}) {
            for (const bool isLogarithmic : {false, true}) {
                const Picture picture(SeriesOf(points, style), isLogarithmic);
                ASSERT_TRUE(picture.frame);
                for (const auto& [x, y] : points) {
                    const auto place = picture.frame->placeOf({x, y});
                    const bool isDrawn = std::abs(x) < 1e300 && std::abs(y) < 1e300 &&
                                         (x > 0.0 || !picture.frame->limits.x.isLogarithmic);
                    ASSERT_EQ(place.has_value(), isDrawn) << x << ' ' << y;
                    // The ends of two dots may lie in the gap between them.
                    const bool isCertain = style != Style::Dotted && points.size() < 3;
                    EXPECT_TRUE(!isDrawn || !isCertain || picture.isColoured(*place))
                        << x << ' ' << y << ' ' << isLogarithmic;
                }
            }
        }
    }
}

TEST(PlotDrawingTest, LegendStaysInThePictureAndMarksLieOnTheirPoints) {
    const Picture picture(SeriesOf({{1.0, 1.0}, {2.0, 2.0}, {3.0, 3.0}}, Style::Markers));
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
            toolkit::DrawPlot(cairo.get(), size, 500, {.textHeight = textHeight},
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

// The bytes that the steps of drawing a plot take.
std::size_t SizeOfDrawing(const PlotSeries& series) {
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
    for (const Style style : {Style::Line, Style::Dashed, Style::Markers}) {
        for (const bool isFullOfGaps : {false, true}) {
            PlotSeries series("", style);
            for (int i = 0; i < count; ++i) {
                const double y = i == 51'234 ? 9.0 : i == 61'234 ? -3.0 : std::sin(i);
                const bool isGap = (i > 20'000 && i < 30'000) || (isFullOfGaps && i % 2 == 1);
                series.add(i, isGap ? nan : y);
            }
            const Picture picture(series);
            EXPECT_LT(SizeOfDrawing(series), 150'000U);
            ASSERT_TRUE(picture.frame);
            EXPECT_TRUE(picture.isColoured(*picture.frame->placeOf({51'234.0, 9.0})));
            EXPECT_TRUE(picture.isColoured(*picture.frame->placeOf({61'234.0, -3.0})));
            EXPECT_TRUE(picture.isColoured(*picture.frame->placeOf({75'000.0, 0.0})));
            EXPECT_FALSE(picture.isColoured(*picture.frame->placeOf({25'000.0, 0.0})));
        }
    }
}

// What a picture file holds.
struct Pixels {
    explicit Pixels(const std::string& path)
        : surface(cairo_image_surface_create_from_png(path.c_str()), &cairo_surface_destroy) {}
    Pixels(const PlotLook& look, const PlotContent& content, const PlotView& view, int width,
           int height)
        : surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height),
                  &cairo_surface_destroy) {
        const std::unique_ptr<cairo_t, decltype(&cairo_destroy)> cairo(cairo_create(surface.get()),
                                                                       &cairo_destroy);
        drawn = toolkit::DrawPlot(cairo.get(), width, height, look, content, view);
        cairo_surface_flush(surface.get());
    }
    int width() const { return cairo_image_surface_get_width(surface.get()); }
    int height() const { return cairo_image_surface_get_height(surface.get()); }
    std::uint32_t at(int x, int y) const {
        const auto* const row = cairo_image_surface_get_data(surface.get()) +
                                std::ptrdiff_t{y} * cairo_image_surface_get_stride(surface.get());
        return reinterpret_cast<const std::uint32_t*>(row)[x] & 0xFFFFFFU;
    }

    std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface;
    std::optional<toolkit::DrawnPlot> drawn;
};

// An isotherm with its states, marks, a pin and more beyond its view.
PlotContent Isotherm() {
    PlotSeries curve("isotherm 220 K");
    const auto pressure = [](double V) { return 1829.2 / (V - 42.9) - 4.15e5 / (V * V); };
    curve.change("stable", Style::Line);
    for (double V = 50.0; V < 1500.0; V *= 1.1) {
        curve.add(V, pressure(V));
        if (curve.size() == 8 || curve.size() == 20) {
            curve.change(curve.size() == 8 ? "unstable" : "stable",
                         curve.size() == 8 ? Style::Dotted : Style::Dashed);
        }
    }
    PlotSeries marks("dew point", Style::Markers, 1);
    marks.add(600.0, pressure(600.0));
    return {"0.7 CO₂ + 0.3 CH₄, van der Waals",
            {"Molar Volume", "cm³/mol"},
            {"Pressure", "MPa"},
            {curve, marks},
            {{{400.0, pressure(400.0)}, "isotherm 220 K\n400.0 cm³/mol"}}};
}

TEST(PlotPictureTest, SavedPictureIsWhatIsOnTheScreenButForGroundAndSize) {
    const PlotContent content = Isotherm();
    PlotView view;
    view.start(content.series, {.y = toolkit::PlotRange{-10.0, 20.0}, .isLogarithmicX = true});
    const std::string folder = testing::TempDir();
    for (const toolkit::PictureSize& size : toolkit::pictureSizes) {
        SCOPED_TRACE(size.name);
        ASSERT_EQ(toolkit::SavePlot(folder + "plot.png", size, content, view), std::nullopt);
        const Pixels saved(folder + "plot.png");
        EXPECT_EQ(saved.width(), std::lround(size.width / 25.4 * 300.0));
        // In the proportions of the file, on the white ground of the file and on that of a dark
        // theme: a whole pixel of ink in one is so in the other.
        const double textHeight = size.text / 72.0 * 300.0;
        const Pixels white({.textHeight = textHeight, .hasMore = false}, content, view,
                           saved.width(), saved.height());
        const toolkit::Colour ground{0.1, 0.1, 0.1};
        const Pixels dark({"Sans", textHeight, ground, {1.0, 1.0, 1.0}, false}, content, view,
                          saved.width(), saved.height());
        long inks = 0;
        long differences = 0;
        for (int y = 0; y < saved.height(); ++y) {
            for (int x = 0; x < saved.width(); ++x) {
                differences += saved.at(x, y) != white.at(x, y) ? 1 : 0;
                inks += (white.at(x, y) != 0xFFFFFFU) != (dark.at(x, y) != dark.at(0, 0)) ? 1 : 0;
            }
        }
        EXPECT_EQ(differences, 0);
        EXPECT_LT(inks, saved.width() * saved.height() / 1000);
        // The labels of the x axis are digits, which are 0.73 of the size of the font high.
        const toolkit::PlotFrame& frame = white.drawn->frame;
        int first = 0;
        int last = 0;
        for (int y = static_cast<int>(frame.bottom + 0.2 * textHeight);
             y < frame.bottom + 1.5 * textHeight; ++y) {
            for (int x = static_cast<int>(frame.left); x < static_cast<int>(frame.right); ++x) {
                if (saved.at(x, y) < 0x808080U) {
                    first = first == 0 ? y : first;
                    last = y;
                }
            }
        }
        EXPECT_NEAR((last - first + 1) / textHeight, 0.74, 0.05);
        ASSERT_EQ(toolkit::SavePlot(folder + "plot.pdf", size, content, view), std::nullopt);
        std::ifstream file(folder + "plot.pdf");
        const std::string pdf{std::istreambuf_iterator<char>(file), {}};
        EXPECT_NE(pdf.find("/ToUnicode"), std::string::npos);  // its text can be selected
    }
    EXPECT_TRUE(toolkit::SavePlot("/proc/plot.svg", toolkit::pictureSizes[0], content, view));
}

TEST(PlotDrawingTest, ColoursStandOutFromTheirGroundAndLegendStandsWhereNothingIs) {
    const auto luminance = [](const toolkit::Colour& colour) {
        const auto linear = [](double share) {
            return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(colour.red) + 0.7152 * linear(colour.green) +
               0.0722 * linear(colour.blue);
    };
    for (const double shade : {1.0, 0.15}) {
        const toolkit::Colour ground{shade, shade, shade};
        for (const std::size_t i : {0UL, 1UL, 2UL, 3UL, 4UL, 5UL, 6UL, 7UL, PlotSeries::grey}) {
            const double colour = luminance(toolkit::PlotColour(i, ground));
            const auto [darker, lighter] = std::minmax({colour, luminance(ground)});
            EXPECT_GE((lighter + 0.05) / (darker + 0.05), 3.0) << i << ' ' << shade;
            for (std::size_t k = 0; k < std::min(i, 8UL); ++k) {
                const auto one = toolkit::PlotColour(i, ground);
                const auto other = toolkit::PlotColour(k, ground);
                EXPECT_GT(
                    std::hypot(one.red - other.red, one.green - other.green, one.blue - other.blue),
                    0.24)
                    << i << ' ' << k;
            }
        }
    }
    // Of a curve through three of the corners the legend takes the fourth; of one through all of
    // them it takes rows below.
    for (const bool isEverywhere : {false, true}) {
        PlotSeries curve("a curve");
        for (const auto& [x, y] : isEverywhere
                                      ? Points{{0.0, 0.0}, {1.0, 1.0}, {1.0, 0.0}, {0.0, 1.0}}
                                      : Points{{0.0, 1.0}, {0.0, 0.0}, {1.0, 0.0}}) {
            curve.add(x, y);
        }
        const PlotContent content{"", {"x", ""}, {"y", ""}, {curve}, {}, true, "No axes."};
        PlotContent empty = content;
        empty.series.clear();
        EXPECT_FALSE(Pixels({}, empty, {}, 400, 300).drawn);
        PlotView view;
        view.start(content.series, {});
        const Pixels picture({}, content, view, 400, 300);
        const auto inkIn = [&](double fromX, double fromY, double toX, double toY) {
            long ink = 0;
            for (int y = static_cast<int>(fromY); y < static_cast<int>(toY); ++y) {
                for (int x = static_cast<int>(fromX); x < static_cast<int>(toX); ++x) {
                    ink += (picture.at(x, y) & 0xC0C0C0U) == 0 ? 1 : 0;  // of the letters
                }
            }
            return ink;
        };
        const toolkit::PlotFrame& frame = picture.drawn->frame;
        EXPECT_EQ(
            inkIn(frame.right - 90.0, frame.top + 8.0, frame.right - 8.0, frame.top + 25.0) > 20,
            !isEverywhere);
        EXPECT_EQ(frame.bottom > 255.0, !isEverywhere);
    }
}

TEST(PlotDrawingTest, LabelsStandBesideTheirCurvesAndOverNothingElse) {
    std::vector<PlotSeries> series;
    for (int i = 0; i < 40;
         ++i) {  // isotherms, six with labels and more with one name in the legend
        PlotSeries curve(std::string(100, 'n'));  // too long for a legend in the frame
        curve.label = std::to_string(200 + 30 * i) + " K";
        for (double V = 70.0; V < 600.0; V += 5.0) {
            curve.add(V, (1660.0 + 250.0 * std::min(i, 6)) / (V - 43.0) - 3.7e5 / (V * V));
        }
        if (i >= 6) {
            curve.label = i == 6 ? std::string(100, 'w') : "";  // that no picture has room for
            curve.legend = "kept";
            curve.colour = PlotSeries::grey;
        }
        series.push_back(curve);
    }
    const PlotContent content{"", {"V", ""}, {"P", ""}, series, {}};
    for (const double highest : {20.0, 1.0}) {  // MPa; some isotherms are out of view below 1
        PlotView view;
        view.start(series, {.y = toolkit::PlotRange{-5.0, highest}});
        const Pixels picture({}, content, view, 700, 500);
        const toolkit::PlotFrame& frame = picture.drawn->frame;
        const auto& labels = picture.drawn->labels;
        EXPECT_FALSE((labels[6] && labels[6]->width > 0.0) || labels[7]);
        EXPECT_TRUE(highest == 1.0 ||
                    frame.bottom > 450.0);  // the legend of one row stays in the frame
        std::size_t seen = 0;
        for (std::size_t i = 0; i < 6; ++i) {
            if (!labels[i]) {
                EXPECT_EQ(highest, 1.0) << i;  // only pieces are in view
                continue;
            }
            const auto& box = *labels[i];
            seen += box.width > 0.0 ? 1 : 0;
            const auto isIn = [&box](const toolkit::PlotPlace& place, double room) {
                return place.x > box.x - room && place.x < box.x + box.width + room &&
                       place.y > box.y - room && place.y < box.y + box.height + room;
            };
            bool isBeside = box.width == 0.0;
            for (std::size_t k = 0; k < series.size(); ++k) {
                toolkit::Trace(
                    series[k], 0, frame,
                    [&](const toolkit::PlotSpot& spot) {
                        EXPECT_FALSE(k != i && isIn(spot.place, 0.0)) << i << " under " << k;
                        isBeside = isBeside || (i == k && isIn(spot.place, 10.0));
                    },
                    [] {});
                EXPECT_FALSE(k < i && labels[k] && labels[k]->width > 0.0 &&
                             isIn({labels[k]->x, labels[k]->y}, 0.0));
            }
            EXPECT_TRUE(isBeside) << i;
        }
        EXPECT_GE(seen, highest > 1.0 ? 6U : 2U);
    }
}

TEST(PlotDrawingTest, WhatLiesBelowACurveIsShadedToTheEdgeOfTheFrame) {
    PlotSeries curve("limit");
    for (const auto& [x, y] :
         Points{{1.0, 1.0}, {2.0, 9.0}, {3.0, 1.0}, {nan, 0.0}, {4.0, 2.0}, {5.0, 2.0}}) {
        curve.add(x, y);
    }
    curve.below = "unstable";
    const PlotContent content{"", {"x", ""}, {"y", ""}, {curve}, {}, false};
    PlotView view;
    view.start({curve}, {.y = toolkit::PlotRange{0.5, 5.0}});  // the top is out of view
    const Pixels picture({}, content, view, 500, 400);
    for (const auto& [x, y, isShaded] :
         std::vector<std::tuple<double, double, bool>>{{2.0, 4.8, true},
                                                       {2.0, 1.2, true},
                                                       {1.2, 1.2, true},
                                                       {1.2, 4.0, false},
                                                       {3.5, 1.2, false},
                                                       {4.5, 1.2, true},
                                                       {4.5, 2.5, false},
                                                       {0.98, 1.5, false}}) {
        const auto place = *picture.drawn->frame.placeOf({x, y});
        EXPECT_EQ(picture.at(static_cast<int>(place.x), static_cast<int>(place.y)) != 0xFFFFFFU,
                  isShaded)
            << x << ' ' << y;
    }
}

TEST(PlotViewTest, TicksAreRoundNumbersInViewHoweverLargeAndNarrow) {
    for (const toolkit::AxisLimits& limits : {toolkit::AxisLimits{0.0, 1.0},
                                              {-3.7, 12.9},
                                              {299.9999, 300.0001},
                                              {-9e299, 9e299},
                                              {1e-300, 3e-300},
                                              {1e15, 1e15 + 4e7},
                                              {50.0, 60.0, true},
                                              {1.0, 20.0, true},
                                              {40.0, 9e4, true},
                                              {1e-9, 1e-2, true},
                                              {1e-300, 1e299, true}}) {
        for (const double most : {1.0, 3.0, 7.0, 20.0}) {
            const toolkit::PlotTicks ticks = toolkit::TicksOf(limits, most);
            ASSERT_GE(ticks.major.size(), 1U) << limits.low << ' ' << limits.high << ' ' << most;
            EXPECT_LE(ticks.major.size(), std::max(most, 2.0) + 2.0);
            for (const auto& [value, label] : ticks.major) {
                EXPECT_TRUE(limits.includes(value)) << value;
                std::string plain = label;
                if (plain.starts_with("\u2212")) {
                    plain.replace(0, 3, "-");
                }
                const auto number = toolkit::ParseNumber(plain);
                EXPECT_TRUE(!number || std::abs(*number * std::pow(10.0, ticks.exponent) - value) <=
                                           1e-12 * std::abs(value))
                    << label << ' ' << value;
                EXPECT_TRUE(number || label.starts_with("10")) << label;
            }
        }
    }
    EXPECT_EQ(toolkit::PowerOfTen(-12), "10⁻¹²");
}

TEST(PlotViewTest, ViewGoesBackShowsAllAndRefusesWhatCannotBeDrawn) {
    const PlotContent content = Isotherm();
    PlotView view;
    view.start(content.series, {.y = toolkit::PlotRange{-10.0, 20.0}});
    const toolkit::PlotLimits first = view.limits();
    view.zoomTo({900.0, 5.0}, {100.0, 0.0});
    EXPECT_EQ(view.limits(), (toolkit::PlotLimits{{100.0, 900.0}, {0.0, 5.0}}));
    view.zoom({100.0, 5.0}, 0.5, PlotView::Act::Wheel);
    EXPECT_EQ(view.limits(), (toolkit::PlotLimits{{100.0, 500.0}, {2.5, 5.0}}));
    view.pan(0.5, -1.0);
    EXPECT_EQ(view.limits(), (toolkit::PlotLimits{{300.0, 700.0}, {0.0, 2.5}}));
    view.back();
    view.back();
    view.back();
    view.back();  // there is nothing left to go back to
    EXPECT_EQ(view.limits(), first);
    view.showAll();
    EXPECT_GT(view.limits().y.high, 90.0);
    view.showAll();
    EXPECT_EQ(view.limits(), first);
    for (const toolkit::AxisLimits& unsound : {toolkit::AxisLimits{5.0, 5.0},
                                               {7.0, 5.0},
                                               {nan, 5.0},
                                               {1.0, 1.0 + 1e-12},
                                               {-1.0, 5.0, true},
                                               {-1e308, 1e308}}) {
        EXPECT_FALSE(view.show({unsound, first.y})) << unsound.low << ' ' << unsound.high;
        EXPECT_EQ(view.limits(), first);
    }
    for (int i = 0; i < 2000; ++i) {
        view.zoom({400.0, 1.0}, i < 1000 ? 0.5 : 4.0, PlotView::Act::Wheel);
        ASSERT_LT(view.limits().x.low, view.limits().x.high);
    }
}

TEST(PlotFrameTest, TrueCurveIsDrawnAndReadBetweenItsPoints) {
    PlotSeries curve("circle");
    for (const double angle : {0.0, 2.0, 4.0, 6.0}) {
        curve.add(std::cos(angle), std::sin(angle));
    }
    curve.between = [](std::size_t i, double share) -> toolkit::PlotPoint {
        const double angle = 2.0 * (static_cast<double>(i) + share);
        return {std::cos(angle), std::sin(angle)};
    };
    const std::vector<PlotSeries> series = {curve};
    const toolkit::PlotFrame frame({{-1.1, 1.1}, {-1.1, 1.1}}, 0.0, 0.0, 440.0, 440.0);
    for (double angle = 0.0; angle < 6.0; angle += 0.1) {
        const auto place = *frame.placeOf({std::cos(angle), std::sin(angle)});
        const auto found = toolkit::Nearest(series, frame, {place.x + 3.0, place.y}, 10.0);
        ASSERT_TRUE(found) << angle;
        const toolkit::PlotPoint point = toolkit::PointOf(curve, *found, frame);
        EXPECT_NEAR(std::hypot(point.x, point.y), 1.0, 1e-12);
        EXPECT_NEAR(std::hypot(point.x - std::cos(angle), point.y - std::sin(angle)), 0.0, 0.02);
    }
    EXPECT_FALSE(toolkit::Nearest(series, frame, {220.0, 220.0}, 100.0));  // the middle
    // Along the circle of 200 pixels and back again.
    toolkit::PlotPosition position;
    for (int i = 0; i < 100; ++i) {
        position = toolkit::Walked(series, frame, position, 6.0);
        EXPECT_NEAR(2.0 * (static_cast<double>(position.point) + position.share), 0.03 * (i + 1),
                    0.01);
    }
    for (int i = 0; i < 110; ++i) {
        position = toolkit::Walked(series, frame, position, -6.0);
    }
    EXPECT_EQ(position, toolkit::PlotPosition{});
}

}  // namespace
