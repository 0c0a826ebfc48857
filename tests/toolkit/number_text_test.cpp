#include "toolkit/number_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace {

class NumberTextTest : public testing::Test {
  protected:
    // The locale of the environment: where it could be made, one with a decimal comma.
    NumberTextTest() { std::setlocale(LC_ALL, ""); }
    ~NumberTextTest() override { std::setlocale(LC_ALL, "C"); }
};

TEST_F(NumberTextTest, WholeTextsAreNumbersOrNothing) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    struct Case {
        std::string_view text;
        double value;
    };
    const std::vector<Case> cases = {
        {"0.5", 0.5},       {"+0.5", 0.5},     {"-0.5", -0.5},    {".5", 0.5},     {"5.", 5.0},
        {" \t12\r\n", 12},  {"1e3", 1000},     {"1E-3", 0.001},   {"00.10", 0.1},  {"-0", -0.0},
        {"5e-324", 5e-324}, {"", none},        {" ", none},       {"+", none},     {"-", none},
        {"0,5", none},      {"1.234,5", none}, {"1 000", none},   {"+-1", none},   {"++1", none},
        {"- 1", none},      {"1e", none},      {"e5", none},      {".", none},     {"0x10", none},
        {"inf", none},      {"-inf", none},    {"nan", none},     {"+nan", none},  {"1e999", none},
        {"1e-999", none},   {"1.0f", none},    {"1\u00A0", none}, {"١", none},     {"1-", none},
        {"infinity", none}, {"nan(1)", none},  {"1.2.3", none},   {"1e5.5", none}, {"1e+3", 1000}};
    for (const auto& [text, value] : cases) {
        const auto parsed = toolkit::ParseNumber(text);
        ASSERT_EQ(parsed.has_value(), !std::isnan(value)) << '"' << text << '"';
        EXPECT_EQ(parsed.value_or(0.0), parsed ? value : 0.0) << '"' << text << '"';
        EXPECT_EQ(toolkit::NumberOrZero(text), parsed ? value : 0.0) << '"' << text << '"';
    }
    EXPECT_FALSE(toolkit::ParseNumber(std::string_view("1\0", 2)));
}

TEST_F(NumberTextTest, TextsAreTheShortestThatReadBackAsTheSameDouble) {
    EXPECT_EQ(toolkit::NumberText(0.1 + 0.2), "0.30000000000000004");
    EXPECT_EQ(toolkit::NumberText(1234567.5), "1234567.5");
    EXPECT_EQ(toolkit::NumberText(-0.0), "0");
    std::mt19937_64 random(1873);
    for (int i = 0; i < 100'000; ++i) {
        const auto value = std::bit_cast<double>(random());
        if (std::isfinite(value)) {
            const std::string text = toolkit::NumberText(value);
            ASSERT_EQ(toolkit::ParseNumber(text), value) << text;
            ASSERT_EQ(text.find(','), std::string::npos);
        }
    }
    const std::vector<double> ends = {std::numeric_limits<double>::max(), -2.2250738585072014e-308,
                                      std::numeric_limits<double>::denorm_min()};
    for (const double end : ends) {
        EXPECT_EQ(toolkit::ParseNumber(toolkit::NumberText(end)), end);
    }
}

TEST_F(NumberTextTest, FixedDecimalsAreKeptWhileFourDigitsAreSeen) {
    EXPECT_EQ(toolkit::FixedText(2.0 / 3.0, 4), "0.6667");
    EXPECT_EQ(toolkit::FixedText(1234.5, 0), "1234");
    EXPECT_EQ(toolkit::FixedText(-1e-9, 3), "0.000");
    for (const auto& [value, decimals, text] :
         std::vector<std::tuple<double, int, std::string>>{{-0.0, 6, "0.000000"},
                                                           {0.001, 6, "0.001000"},
                                                           {-0.0009999, 6, "-9.999000e-04"},
                                                           {0.00001, 8, "0.00001000"},
                                                           {0.00000999, 8, "9.99000000e-06"},
                                                           {9.87e14, 2, "987000000000000.00"},
                                                           {1e15, 2, "1.00e+15"}}) {
        EXPECT_EQ(toolkit::ResultText(value, decimals), text);
    }
    const std::string longest = toolkit::FixedText(-std::numeric_limits<double>::max(), 9);
    EXPECT_EQ(longest.size(), 1U + 309U + 1U + 9U);
}

}  // namespace
