#include "model/component_table.h"

#include <cassert>
#include <cmath>

namespace fluid {

namespace {

// The eleven gases in internal order. The critical molar volumes are the source's own values.
constexpr ComponentValues MolarMasses = {18.01528, 44.0098, 28.01348, 34.08188, 17.03056, 2.01588,
                                         31.9988,  28.0104, 39.9484,  16.04276, 30.06964};
constexpr ComponentValues TripleTemperatures = {273.16, 216.592, 63.148, 187.6,   195.4, 13.8,
                                                54.361, 68.127,  83.3,   90.6941, 90.352};
constexpr ComponentValues CriticalTemperatures = {647.096, 304.128, 126.193, 373.539, 405.6, 32.98,
                                                  154.581, 132.85,  150.87,  190.564, 305.33};
constexpr ComponentValues CriticalPressures = {22.064, 7.3773, 3.3978, 8.94,   11.28, 1.293,
                                               5.043,  3.4935, 4.898,  4.5922, 4.8718};
constexpr ComponentValues CriticalVolumes = {56.0,     94.118905, 89.46944618, 97.6998,
                                             72.5,     65.029,    73.36757153, 92.16589862,
                                             74.29496, 98.628,    145.5604076};
constexpr ComponentValues AcentricFactors = {0.344, 0.225, 0.04, 0.1,   0.25, -0.22,
                                             0.021, 0.049, 0.0,  0.008, 0.098};

// From the critical point of the van der Waals equation: 27/64·R² and R/8.
constexpr double AttractionFactor = 29.164406331987003;
constexpr double CovolumeFactor = 1.039309;

struct Tables {
    ComponentValues M, omega, Zc, Pc, Tc, Vc, Ttriple;
    ComponentMatrix a;
    ComponentValues b, aRoot, aRootDefect;
};

constinit Tables tables{};

void Append(std::size_t k, std::size_t i) {
    const double criticalT = CriticalTemperatures[i];
    const double criticalP = CriticalPressures[i];
    tables.M[k] = MolarMasses[i];
    tables.omega[k] = AcentricFactors[i];
    tables.Zc[k] = 0.2905 - 0.085 * AcentricFactors[i];
    tables.Pc[k] = criticalP;
    tables.Tc[k] = criticalT;
    tables.Vc[k] = CriticalVolumes[i];
    tables.Ttriple[k] = TripleTemperatures[i];
    const double attraction = AttractionFactor * criticalT * criticalT / criticalP;
    const double root = std::sqrt(attraction);
    tables.a[k][k] = attraction;
    tables.b[k] = CovolumeFactor * criticalT / criticalP;
    tables.aRoot[k] = root;
    tables.aRootDefect[k] = attraction - root * root;
}

}  // namespace

constinit const ComponentValues& M = tables.M;
constinit const ComponentValues& omega = tables.omega;
constinit const ComponentValues& Zc = tables.Zc;
constinit const ComponentValues& Pc = tables.Pc;
constinit const ComponentValues& Tc = tables.Tc;
constinit const ComponentValues& Vc = tables.Vc;
constinit const ComponentValues& Ttriple = tables.Ttriple;
constinit const ComponentMatrix& a = tables.a;
constinit const ComponentValues& b = tables.b;
constinit const ComponentValues& aRoot = tables.aRoot;
constinit const ComponentValues& aRootDefect = tables.aRootDefect;

void InitComponentTable(std::span<const double, ComponentCount> x) {
    tables = Tables{};
    std::size_t count = 0;
    for (std::size_t i = 0; i < ComponentCount; ++i) {
        if (x[i] > 0.0) Append(count++, i);
    }
    for (std::size_t k = 0; k < count; ++k) {
        for (std::size_t l = 0; l < count; ++l) {
            if (k != l) tables.a[k][l] = std::sqrt(tables.a[k][k] * tables.a[l][l]);
        }
    }
}

double MolarMass(std::int32_t lastComponent, std::span<const double> fractions) {
    const auto count = static_cast<std::size_t>(lastComponent) + 1;
    assert(count <= ComponentCount && count <= fractions.size());
    double mass = 0.0;
    for (std::size_t k = 0; k < count; ++k) mass += fractions[k] * tables.M[k];
    return mass;
}

double MolarVolumeFromDensity(std::int32_t lastComponent, std::span<const double> fractions,
                              double rho) {
    return rho > 0.0 ? MolarMass(lastComponent, fractions) / rho : 0.0;
}

}  // namespace fluid
