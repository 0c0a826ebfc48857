#include "model/properties.h"

#include <cmath>

#include "model/ideal_gas.h"
#include "model/molar_volume.h"
#include "model/state.h"

namespace fluid {

namespace {

// ln(P·(V - b)/(R·T)), for P > 0, without the cancellation that a gas near ideal would suffer.
double LogFree(const State& state, double P) {
    const double share = state.blend.a / state.RT / state.V * (state.free / state.V);
    constexpr double half = 0.5;  // from here on nothing cancels
    return share < half ? std::log1p(-share) : state.logFree(P);
}

// The mixture of ideal gases at T and the standard pressure.
IdealGasProperties IdealMixture(const Mixture& mixture, double T) {
    IdealGasProperties sum;
    for (std::size_t k = 0; k < mixture.count; ++k) {
        const IdealGasProperties gas = IdealGas(mixture.index[k], T);
        const double x = mixture.fractions[k];
        sum.Cp += x * gas.Cp;
        sum.H += x * gas.H;
        sum.S += x * (gas.S - R * std::log(x));
    }
    return sum;
}

std::optional<double> Real(double value) {
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

// A property whose residual part is known whatever the pressure.
Property Parts(double idealGas, double residual) {
    return {Real(idealGas), Real(residual), Real(idealGas + residual)};
}

// A property whose ideal part needs a pressure above 0; `total` does not.
Property Parts(double idealGas, double residual, double total, double P) {
    if (!(P > 0.0)) return {{}, {}, Real(total)};
    return {Real(idealGas), Real(residual), Real(total)};
}

// A property without a residual part.
Property Whole(std::optional<double> idealGas, double total) {
    return {idealGas ? Real(*idealGas) : std::nullopt, {}, Real(total)};
}

void SetVolumes(const State& state, double P, double molarMass, MixtureProperties& result) {
    const double excess =
        state.blend.b / state.free - state.blend.a / (state.RT * state.V);  // Z - 1
    const double idealV = state.RT / P;
    const double density = molarMass / state.V;
    result.V = Parts(idealV, idealV * excess, state.V, P);
    result.density = Parts(molarMass / idealV, -density * excess, density, P);
    result.Z = {1.0, Real(excess), Real(P / state.RT * state.V)};
}

void SetEnergies(const State& state, double P, const IdealGasProperties& ideal,
                 MixtureProperties& result) {
    const double T = state.T;
    const double RT = state.RT;
    const double attraction = state.blend.a / state.V;
    const double flow = RT * state.blend.b / state.free - attraction;  // P·V - R·T
    const double logFree = P > 0.0 ? LogFree(state, P) : 0.0;
    // Of the ideal gas at T and P, and of the fluid itself, for which P need not be above 0.
    const double idealS = ideal.S - R * std::log(P / standardPressure);
    const double S = ideal.S + R * std::log(standardPressure / RT * state.free);
    const double idealU = ideal.H - RT;
    const double U = idealU - attraction;
    result.U = Parts(idealU, -attraction);
    result.H = Parts(ideal.H, flow - attraction);
    result.S = Parts(idealS, R * logFree, S, P);
    result.A = Parts(idealU - T * idealS, -attraction - RT * logFree, U - T * S, P);
    result.G =
        Parts(ideal.H - T * idealS, flow - attraction - RT * logFree, U + RT + flow - T * S, P);
}

void SetDerivatives(const State& state, double P, double molarMass, double idealCp,
                    MixtureProperties& result) {
    const double T = state.T;
    const double V = state.V;
    const double stiffness = state.stiffness();
    const double thermal = R / state.free;            // dP/dT at constant V, MPa/K
    const double pull = 2.0 * state.blend.a / V / V;  // MPa
    const double Cv = idealCp - R;                    // the attraction knows no T
    const double work = T * V * thermal * thermal;    // (Cp - Cv)·stiffness
    const double Cp = Cv + work / stiffness;
    constexpr double gramsPerKilogram = 1000.0;
    const double perMass = gramsPerKilogram / molarMass;
    result.Cv = Parts(Cv, 0.0);
    result.Cp = Parts(idealCp, R * pull / stiffness);
    result.heatRatio = Whole(idealCp / Cv, Cp / Cv);
    result.compressibility =
        Whole(P > 0.0 ? std::optional(1.0 / P) : std::nullopt, 1.0 / stiffness);
    result.expansion = Whole(1.0 / T, thermal / stiffness);
    // (dS/dT)/(dS/dV) = (Cv/T)/(dP/dT)
    result.isentropicExpansion = Whole(-Cv / state.RT, -Cv / (T * V * thermal));
    result.soundSpeed = Whole(std::sqrt(idealCp / Cv * state.RT * perMass),
                              std::sqrt(V * (stiffness + work / Cv) * perMass));
    // V·(T·(dV/dT)/V - 1)/Cp, where T·(dV/dT)/V - 1 = (2a/V² - R·T·b/(V - b)²)/stiffness
    const double excess = pull - state.RT * state.blend.b / state.free / state.free;
    result.jouleThomson = Whole(0.0, V * excess / (stiffness * Cv + work));
    result.secondVirial = Whole(0.0, state.blend.b - state.blend.a / state.RT);
}

}  // namespace

MixtureProperties PropertiesOf(const Mixture& mixture, double T, double P, double V) {
    MixtureProperties result;
    if (mixture.count == 0 || !(T > 0.0) || !(V > mixture.covolume)) return result;
    const State state(BlendOf(mixture, mixture.fractions), T, V);
    const IdealGasProperties ideal = IdealMixture(mixture, T);
    SetVolumes(state, P, mixture.molarMass, result);
    SetEnergies(state, P, ideal, result);
    SetDerivatives(state, P, mixture.molarMass, ideal.Cp, result);
    return result;
}

// With y = b/V the coefficient is 0 where R·T = 2a/b·(1 - y)², so that P = a/b²·(2y - 3y²).
std::vector<InversionPoint> InversionPoints(const Mixture& mixture, double P) {
    const double aMix = mixture.attraction;
    const double bMix = mixture.covolume;
    const double pi = P / aMix * bMix * bMix;
    if (!(pi > 0.0 && 3.0 * pi < 1.0)) return {};
    const double dense = (1.0 + std::sqrt(1.0 - 3.0 * pi)) / 3.0;
    std::vector<InversionPoint> points;
    for (const double y : {dense, pi / (3.0 * dense)}) {
        points.push_back({2.0 * aMix / (R * bMix) * (1.0 - y) * (1.0 - y), bMix / y});
    }
    return points;
}

std::array<ComponentProperties, componentCount> ComponentPropertiesOf(const Mixture& mixture,
                                                                      double T, double P,
                                                                      double V) {
    std::array<ComponentProperties, componentCount> result;
    if (mixture.count == 0 || !(T > 0.0) || !(V > mixture.covolume)) return result;
    const PhaseState state(mixture, mixture.fractions, T, V);
    const double RT = state.RT;
    const double logFree = P > 0.0 ? LogFree(state, P) : 0.0;
    const auto volumes = PartialMolarVolumes(mixture, T, V);
    for (std::size_t k = 0; k < mixture.count; ++k) {
        const IdealGasProperties gas = IdealGas(mixture.index[k], T);
        // of the gas alone in the free volume; ln(f/P0) is this and the interaction
        const double logIdeal = std::log(state.x[k] * RT / (state.free * standardPressure));
        const double interaction = state.interaction(k);
        const double standard = gas.H - T * gas.S;
        const double term = RT * (logIdeal + interaction);
        ComponentProperties& component = result[k];
        component.standardPotential = Real(standard);
        component.fugacityTerm = Real(term);
        component.chemicalPotential = Real(standard + term);
        if (P > 0.0) component.logPhi = Real(interaction - logFree);
        if (!volumes) continue;
        const double volume = (*volumes)[k];
        component.volume = Real(volume);
        component.enthalpy = Real(gas.H - RT - state.attraction(k) / V + RT * volume / state.free);
        component.entropy =
            Real(gas.S - R * logIdeal + R * ((volume - mixture.b[k]) / state.free - 1.0));
    }
    return result;
}

}  // namespace fluid
