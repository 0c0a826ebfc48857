#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "model/mixture.h"

namespace fluid {

// In all of these the arrays are indexed by the compact positions 0..n of the component tables
// (n = LastComponent), arguments hold at least n + 1 values, and results hold 0 behind position n.

// A_i = sum of 2·x_j·a_ij, MPa·cm6/mol2, for the amount fractions x.
ComponentValues ComponentAttraction(std::int32_t n, std::span<const double> x);
ComponentValues ComponentAttraction(const Mixture& mixture);

// The co-volumes b_i, cm3/mol.
ComponentValues ComponentCovolumes(std::int32_t n);

// Fugacity coefficients of the components of a mixture at T in K, P in MPa, V in cm3/mol:
// ln phi_i = b_i/(V - b) - ln(Z·(1 - b/V)) - A_i/(R·T·V), Z = P·V/(R·T), with b = bMix, and A and
// B as the functions above give them. V need not be a volume at P.
// A coefficient is exactly 1 where |ln phi_i| is 227 or more or has no value (P below 0); all are 1
// unless P differs from 0, T > 0 and V > b.
ComponentValues FugacityCoefficients(std::int32_t n, double bMix, std::span<const double> A,
                                     std::span<const double> B, double T, double P, double V);

// The same of a mixture by itself.
ComponentValues FugacityCoefficients(const Mixture& mixture, double T, double P, double V);

// Fugacity coefficient of the pure gas at position k of a mixture, as above.
double PureFugacityCoefficient(const Mixture& mixture, std::size_t k, double T, double P, double V);

// Fugacities in MPa of the pure gases as standard states: coefficient at T, P (MPa) and the molar
// volume V_k of each gas, times P. V_k need not be the volume at P.
ComponentValues PureFugacities(const Mixture& mixture, double T, double P,
                               std::span<const double> V);

}  // namespace fluid
