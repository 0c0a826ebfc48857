#include "model/saturation.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>

#include "model/component_table.h"

namespace fluid {

namespace {

// Critical temperature in K, critical pressure in MPa, triple-point temperature in K; then n and t
// of the terms of p = pc·exp[(Tc/T)·sum of n·theta^t], theta = 1 - T/Tc. The first term has t = 1,
// the others t > 1.
constexpr std::size_t criticalT = 0, criticalP = 1, triple = 2, firstTerm = 3;
using Curve = std::array<double, 15>;

constexpr std::array<Curve, componentCount> curves = {{
    // H2O: Wagner & Pruss, J. Phys. Chem. Ref. Data 31 (2002) 387
    {647.096, 22.064, 273.16, -7.85951783, 1.0, 1.84408259, 1.5, -11.7866497, 3.0, 22.6807411, 3.5,
     -15.9618719, 4.0, 1.80122502, 7.5},
    // CO2: Span & Wagner, J. Phys. Chem. Ref. Data 25 (1996) 1509
    {304.1282, 7.3773, 216.592, -7.0602087, 1.0, 1.9391218, 1.5, -1.6463597, 2.0, -3.2995634, 4.0},
    // N2: Span, Lemmon, Jacobsen, Wagner & Yokozeki, J. Phys. Chem. Ref. Data 29 (2000) 1361
    {126.192, 3.3958, 63.151, -6.12445284, 1.0, 1.26327220, 1.5, -0.765910082, 2.5, -1.77570564,
     5.0},
    // H2S: auxiliary equation to Lemmon & Span, J. Chem. Eng. Data 51 (2006) 785
    {373.1, 9.0, 187.7, -6.5884, 1.0, 2.1582, 1.5, -1.6054, 2.0, -2.3870, 4.8},
    // NH3: Gao, Wu, Bell, Harvey & Lemmon, J. Phys. Chem. Ref. Data 52 (2023) 013102
    {405.56, 11.3634, 195.49, -7.3128, 1.0, 3.8888, 1.5, -2.9908, 1.6, -2.8636, 3.7},
    // H2 (normal): Leachman, Jacobsen, Penoncello & Lemmon, J. Phys. Chem. Ref. Data 38 (2009) 721
    {33.145, 1.2964, 13.957, -4.89789, 1.0, 0.988558, 1.5, 0.349689, 2.0, 0.499356, 2.85},
    // O2: Stewart, Jacobsen & Wagner, J. Phys. Chem. Ref. Data 20 (1991) 917
    {154.581, 5.043, 54.361, -6.043938, 1.0, 1.175627, 1.5, -0.994086, 3.0, -3.456781, 7.0,
     3.361499, 9.0},
    // CO: auxiliary equation to Lemmon & Span, J. Chem. Eng. Data 51 (2006) 785
    {132.86, 3.494, 68.16, -6.1192, 1.0, 1.0411, 1.5, -6.2162, 3.9, 10.437, 4.6, -7.6813, 5.4},
    // Ar: Tegeler, Span & Wagner, J. Phys. Chem. Ref. Data 28 (1999) 779
    {150.687, 4.863, 83.8058, -5.9409785, 1.0, 1.3553888, 1.5, -0.46497607, 2.0, -1.5399043, 4.5},
    // CH4: Setzmann & Wagner, J. Phys. Chem. Ref. Data 20 (1991) 1061
    {190.564, 4.5992, 90.6941, -6.036219, 1.0, 1.409353, 1.5, -0.4945199, 2.0, -1.443048, 4.5},
    // C2H6: Buecker & Wagner, J. Phys. Chem. Ref. Data 35 (2006) 205
    {305.322, 4.8722, 90.368, -6.48647577, 1.0, 1.47010078, 1.5, -1.66261122, 2.5, 3.57898378, 3.5,
     -4.79105705, 4.0},
}};

// ln(p/pc) up to the critical point, and its derivative by 1/T.
struct LogPressure {
    double value;
    double slope;
};

LogPressure OnCurve(const Curve& curve, double T) {
    const double theta = 1.0 - T / curve[criticalT];
    double sum = 0.0;
    double derivative = 0.0;  // by theta
    for (std::size_t k = firstTerm; k < curve.size() && curve[k] != 0.0; k += 2) {
        const double n = curve[k];
        const double t = curve[k + 1];
        const double power = std::pow(theta, t - 1.0);
        sum += n * theta * power;
        derivative += n * t * power;
    }
    // ln(p/pc) = (Tc/T)·sum; d theta/d(1/T) = T²/Tc
    return {curve[criticalT] / T * sum, curve[criticalT] * sum + T * derivative};
}

}  // namespace

double SaturationPressure(std::size_t component, double T) {
    assert(component < componentCount);
    if (!(T > 0.0)) return 0.0;
    const Curve& curve = curves[component];
    const double joint = std::clamp(T, 0.5 * curve[triple], curve[criticalT]);
    const auto [value, slope] = OnCurve(curve, joint);
    return curve[criticalP] * std::exp(value + slope * (1.0 / T - 1.0 / joint));
}

}  // namespace fluid
