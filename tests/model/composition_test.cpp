#include "model/composition.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t CO2 = 1;
constexpr std::size_t H2 = 5;
constexpr std::size_t CH4 = 9;

using Entries = std::vector<std::pair<std::size_t, double>>;

void Enter(const Entries& entries) {
    for (std::size_t i = 0; i < fluid::componentCount; ++i) fluid::SetFractionCount(i, 0.0);
    for (const auto& [index, fraction] : entries) fluid::SetFractionCount(index, fraction);
}

Entries InAllFields(double fraction) {
    Entries entries;
    for (std::size_t i = 0; i < fluid::componentCount; ++i) entries.emplace_back(i, fraction);
    return entries;
}

TEST(Composition, WrongSumsLeaveTheModelAsItWas) {
    Enter({{0, 0.25}, {H2, 0.25}, {CH4, 0.5}});
    ASSERT_TRUE(fluid::AcceptComposition());
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const std::vector<Entries> refused = {
        {},
        {{0, 0.333}, {1, 0.333}, {2, 0.333}},
        {{0, 0.5}, {1, 0.499999999999}},
        {{0, 0.5}, {1, 0.500000000001}},
        {{0, 1e30}},
        {{0, -1e19}, {1, 1e19}, {2, 1.0}},
        {{0, nan}, {1, 1.0}},
        {{0, -0x1p63 / 1e12}, {1, 0x1p63 / 1e12}, {2, 1.0}},
        // The wrapped 64-bit sum of these counts would be one.
        {{0, 0x1p62 / 1e12}, {1, 0x1p62 / 1e12}, {2, 0x1p62 / 1e12}, {3, 0x1p62 / 1e12}, {4, 1.0}},
        InAllFields(9.3e6),
        InAllFields(-9.3e6)};
    for (const Entries& entries : refused) {
        Enter(entries);
        EXPECT_FALSE(fluid::FractionsAddUpToOne());
        EXPECT_FALSE(fluid::AcceptComposition());
        EXPECT_EQ(fluid::LastComponent, 2);
        EXPECT_EQ(fluid::Fractions[2], 0.5);
        EXPECT_EQ(fluid::M[1], 2.01588);
    }
}

TEST(Composition, ShownSumIsExact) {
    const std::vector<std::pair<Entries, double>> cases = {
        {{}, 0.0},
        {{{0, 0.1}, {1, 0.2}}, 0.3},
        {{{0, 0.333}, {1, 0.333}, {2, 0.333}}, 0.999},
        {{{0, 1e30}, {1, -2.0}}, 1e30},
        {InAllFields(9.3e6), 1.023e8},
        {{{0, 9e6}, {1, 9e6}, {2, -9e6}, {3, -9e6}, {4, 1e-12}}, 1e-12}};
    for (const auto& [entries, sum] : cases) {
        Enter(entries);
        EXPECT_DOUBLE_EQ(fluid::FractionSum(), sum);
    }
}

TEST(Composition, CountsAreRounded) {
    Enter({{0, 0.47171945}, {1, 0.52828055}});  // 0.52828055·10^12 ends in .99994
    EXPECT_EQ(fluid::FractionCounts[1], 528'280'550'000);
    EXPECT_TRUE(fluid::AcceptComposition());
    fluid::SetFractionCount(2, -0.6e-12);
    EXPECT_EQ(fluid::FractionCounts[2], -1);
}

TEST(Composition, PresentComponentsStandInOrderWithoutNegativeOnes) {
    Enter({{CH4, 0.75}, {H2, -0.25}, {CO2, 0.5}});
    ASSERT_TRUE(fluid::AcceptComposition());
    EXPECT_EQ(fluid::LastComponent, 1);
    EXPECT_EQ(std::pair(fluid::ComponentIndex[0], fluid::Fractions[0]), std::pair(CO2, 0.5));
    EXPECT_EQ(std::pair(fluid::ComponentIndex[1], fluid::Fractions[1]), std::pair(CH4, 0.75));
    EXPECT_EQ(fluid::Tc[1], 190.564);
    EXPECT_EQ(fluid::Tc[2], 0.0);
}

}  // namespace
