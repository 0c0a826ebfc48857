#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "model/component_table.h"

namespace fluid {

// docs/phase_equilibria.md derives everything in this header.

// A composition together with what the tables say about its components, at compact positions.
struct Mixture {
    std::size_t count = 0;
    ComponentValues z{};      // amount fractions, adding up to 1
    ComponentValues b{};      // co-volumes, cm3/mol
    ComponentValues aRoot{};  // square roots of the attractions, (MPa·cm6/mol2)^½
    double bMix = 0.0;
    double aRootMix = 0.0;
    double densestA = 0.0;  // largest aRoot/b, which no A reaches, MPa^½
    double largestB = 0.0;
    double largestARoot = 0.0;
};

// lastComponent: index of the last fraction; fractions: at least lastComponent + 1 amount fractions
// above 0 at the positions of the tables, normalised here.
Mixture MixtureOf(std::int32_t lastComponent, std::span<const double> fractions);

// Above this temperature in K no mixture of these components has two phases
// (docs/phase_equilibria.md, "H rises"): R·T = largestB·densestA²/2.
double HottestT(const Mixture& mixture);

// Below this temperature in K coefficients of fugacity in a dense phase leave e^±227.
double ColdestT(const Mixture& mixture);

// One homogeneous state: T in K, V in cm3/mol, u = 1/(V - b) in mol/cm3, A = aRootMix/V in MPa^½,
// P = R·T·u - A² in MPa, k = 2/(R·T).
struct BulkState {
    double T = 0.0;
    double RT = 0.0;
    double k = 0.0;
    double V = 0.0;
    double u = 0.0;
    double A = 0.0;
    double P = 0.0;
};

// The state with the free volume V - bMix > 0 in cm3/mol.
BulkState BulkAt(const Mixture& mixture, double T, double freeVolume);

// ln(f/RT) of the mixture, sum of z_i·ln(f_i/RT) without the constant sum of z_i·ln z_i: the
// smaller the more stable, among states of one T and P.
double MolarFugacity(const Mixture& mixture, const BulkState& bulk);

// Slope k·sum z_i·(aRoot_i - b_i·A)²/V of H at the bulk itself: above 1 it splits by itself.
double BulkSlope(const Mixture& mixture, const BulkState& bulk);

// A phase whose components have the fugacities of the bulk, at a given A. It lies at pressure
// P + D; its stationary points (H = A) are the phases of equal fugacities.
struct TrialPhase {
    double A = 0.0;
    double u = 0.0;
    double concentration = 0.0;  // 1/V, mol/cm3
    double packing = 0.0;        // b/V
    double H = 0.0;              // sum of aRoot_i·c_i, MPa^½; dD/dA = 2·(H - A)
    double slope = 0.0;          // dH/dA, above 0
    double D = 0.0;              // MPa

    double volume() const { return 1.0 / concentration; }
};

// Amount fractions of a trial phase.
ComponentValues FractionsOf(const Mixture& mixture, const BulkState& bulk, const TrialPhase& trial);

// D in units of the trial phase's R·T/V; dimensionless measure of how much more stable it is.
double Drive(const BulkState& bulk, const TrialPhase& trial);

// Moves a trial phase near a maximum of D onto it by Newton's method.
// Returns false when there is none within reach; the trial phase is then of no use.
bool ClimbToMaximum(const Mixture& mixture, const BulkState& bulk, TrialPhase& trial);

// The maxima of D other than the bulk itself.
struct Maxima {
    static constexpr std::size_t Capacity = 8;
    std::array<TrialPhase, Capacity> phases{};
    std::size_t count = 0;

    const TrialPhase* begin() const { return phases.data(); }
    const TrialPhase* end() const { return phases.data() + count; }
    // The one of the largest drive; null when there is none.
    const TrialPhase* best(const BulkState& bulk) const;
};

// Searches all A from 0 to densestA.
Maxima FindMaxima(const Mixture& mixture, const BulkState& bulk);

}  // namespace fluid
