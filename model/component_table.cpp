#include "model/component_table.h"

#include <cmath>

namespace fluid {

// The critical molar volumes are the source's own values.
constexpr std::array<Gas, componentCount> gases = {{
    {18.01528, 273.16, 647.096, 22.064, 56.0, 0.344},        // H2O
    {44.0098, 216.592, 304.128, 7.3773, 94.118905, 0.225},   // CO2
    {28.01348, 63.148, 126.193, 3.3978, 89.46944618, 0.04},  // N2
    {34.08188, 187.6, 373.539, 8.94, 97.6998, 0.1},          // H2S
    {17.03056, 195.4, 405.6, 11.28, 72.5, 0.25},             // NH3
    {2.01588, 13.8, 32.98, 1.293, 65.029, -0.22},            // H2
    {31.9988, 54.361, 154.581, 5.043, 73.36757153, 0.021},   // O2
    {28.0104, 68.127, 132.85, 3.4935, 92.16589862, 0.049},   // CO
    {39.9484, 83.3, 150.87, 4.898, 74.29496, 0.0},           // Ar
    {16.04276, 90.6941, 190.564, 4.5922, 98.628, 0.008},     // CH4
    {30.06964, 90.352, 305.33, 4.8718, 145.5604076, 0.098},  // C2H6
}};

namespace {

// From the critical point of the van der Waals equation: 27/64·R² and R/8.
constexpr double attractionFactor = 29.164406331987003;
constexpr double covolumeFactor = 1.039309;

struct Tables {
    std::array<std::size_t, componentCount> index;
    ComponentValues M, omega, Zc, Pc, Tc, Vc, Ttriple;
    ComponentMatrix a;
    ComponentValues b, aRoot, aRootDefect;
};

constinit Tables tables{};

void Append(std::size_t k, std::size_t i) {
    const Gas& gas = gases[i];
    tables.index[k] = i;
    tables.M[k] = gas.M;
    tables.omega[k] = gas.omega;
    tables.Zc[k] = 0.2905 - 0.085 * gas.omega;
    tables.Pc[k] = gas.Pc;
    tables.Tc[k] = gas.Tc;
    tables.Vc[k] = gas.Vc;
    tables.Ttriple[k] = gas.Ttriple;
    const double attraction = attractionFactor * gas.Tc * gas.Tc / gas.Pc;
    const double root = std::sqrt(attraction);
    tables.a[k][k] = attraction;
    tables.b[k] = covolumeFactor * gas.Tc / gas.Pc;
    tables.aRoot[k] = root;
    tables.aRootDefect[k] = attraction - root * root;
}

}  // namespace

constinit const std::array<std::size_t, componentCount>& ComponentIndex = tables.index;
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

void InitComponentTable(std::span<const double, componentCount> x) {
    tables = Tables{};
    std::size_t count = 0;
    for (std::size_t i = 0; i < componentCount; ++i) {
        if (x[i] > 0.0) Append(count++, i);
    }
    for (std::size_t k = 0; k < count; ++k) {
        for (std::size_t l = 0; l < count; ++l) {
            if (k != l) tables.a[k][l] = std::sqrt(tables.a[k][k] * tables.a[l][l]);
        }
    }
}

}  // namespace fluid
