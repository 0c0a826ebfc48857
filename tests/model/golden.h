#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

// Rows of numbers of a comma-separated file in tests/data; lines that begin with # are notes.
// Throws when the file is missing, empty, or holds anything else than `columns` numbers a row.
std::vector<std::vector<double>> ReadGolden(const std::string& file, std::size_t columns);

// Makes eleven counts of 10^-12 the composition of the model; a refusal fails the test.
void Accept(std::span<const double> counts);
void AcceptPure(std::size_t index);

// |value - expected| / |scale|
double Error(double value, double expected, double scale);
double RelativeError(double value, double expected);
