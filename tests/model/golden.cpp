#include "tests/model/golden.h"

#include <gtest/gtest.h>

#include <array>
#include <charconv>
#include <cmath>
#include <fstream>
#include <stdexcept>

#include "model/composition.h"

std::vector<std::vector<double>> ReadGolden(const std::string& file, std::size_t columns) {
    std::ifstream stream(DROVAN_TEST_DATA "/" + file);
    std::vector<std::vector<double>> rows;
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with('#')) continue;
        auto& row = rows.emplace_back();
        const char* const end = line.data() + line.size();
        for (const char* at = line.data(); at < end; ++at) {
            const auto [next, error] = std::from_chars(at, end, row.emplace_back());
            if (error != std::errc{}) throw std::runtime_error(file + ": not a number");
            at = next;
        }
        if (row.size() != columns) throw std::runtime_error(file + ": columns");
    }
    if (rows.empty()) throw std::runtime_error(file + " is missing or empty");
    return rows;
}

void Accept(std::span<const double> counts) {
    for (std::size_t i = 0; i < fluid::componentCount; ++i) {
        fluid::SetFractionCount(i, counts[i] / static_cast<double>(fluid::fractionScale));
        ASSERT_EQ(static_cast<double>(fluid::FractionCounts[i]), counts[i]);
    }
    ASSERT_TRUE(fluid::AcceptComposition());
}

void AcceptPure(std::size_t index) {
    std::array<double, fluid::componentCount> counts{};
    counts[index] = static_cast<double>(fluid::fractionScale);
    Accept(counts);
}

double Error(double value, double expected, double scale) {
    return std::abs((value - expected) / scale);
}

double RelativeError(double value, double expected) {
    return value == expected ? 0.0 : Error(value, expected, expected);
}
