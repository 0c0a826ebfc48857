#include "model/properties.h"

#include <cmath>

#include "model/fugacity.h"
#include "model/ideal_gas.h"
#include "model/molar_volume.h"

namespace fluid {

namespace {

// A state of the mixture; b stands for bMix, a for aMix.
struct State {
    double T;
    double RT;
    double P;
    double V;
    double free;  // V - b
    double attraction;
    double covolume;
    double molarMass;

    // -V·dP/dV, MPa; not above 0 where the fluid is mechanically unstable
    double stiffness() const { return RT * V / free / free - 2.0 * attraction / V / V; }
    // dP/dT at constant V, MPa/K
    double thermalPressure() const { return R / free; }
    // ln(P·(V - b)/(R·T)), for P > 0, without the cancellation that a gas near ideal would suffer
    double logFree() const {
        const double share = attraction / RT / V * (free / V);
        constexpr double Half = 0.5;
        return share < Half ? std::log1p(-share) : std::log(P / RT * free);
    }
};

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

std::optional<State> StateAt(const Mixture& mixture, double T, double P, double V) {
    const double covolume = mixture.covolume;
    if (mixture.count == 0 || !(T > 0.0) || !(V > covolume)) return {};
    return State{T, R * T, P, V, V - covolume, mixture.attraction, covolume, mixture.molarMass};
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

void SetVolumes(const State& state, MixtureProperties& result) {
    const auto& [T, RT, P, V, free, attraction, covolume, molarMass] = state;
    const double excess = covolume / free - attraction / (RT * V);  // Z - 1
    const double idealV = RT / P;
    const double density = molarMass / V;
    result.V = Parts(idealV, idealV * excess, V, P);
    result.density = Parts(molarMass / idealV, -density * excess, density, P);
    const double Z = P / RT * V;
    result.Z = {1.0, Real(excess), Real(Z)};
}

void SetEnergies(const State& state, const IdealGasProperties& ideal, MixtureProperties& result) {
    const auto& [T, RT, P, V, free, attraction, covolume, molarMass] = state;
    const double flow = RT * covolume / free - attraction / V;  // P·V - R·T
    const double logFree = P > 0.0 ? state.logFree() : 0.0;
    // Of the ideal gas at T and P, and of the fluid itself, for which P need not be above 0.
    const double idealS = ideal.S - R * std::log(P / StandardPressure);
    const double S = ideal.S + R * std::log(StandardPressure / RT * free);
    const double idealU = ideal.H - RT;
    const double U = idealU - attraction / V;
    result.U = Parts(idealU, -attraction / V);
    result.H = Parts(ideal.H, flow - attraction / V);
    result.S = Parts(idealS, R * logFree, S, P);
    result.A = Parts(idealU - T * idealS, -attraction / V - RT * logFree, U - T * S, P);
    result.G =
        Parts(ideal.H - T * idealS, flow - attraction / V - RT * logFree, U + RT + flow - T * S, P);
}

void SetDerivatives(const State& state, double idealCp, MixtureProperties& result) {
    const auto& [T, RT, P, V, free, attraction, covolume, molarMass] = state;
    const double stiffness = state.stiffness();
    const double thermal = state.thermalPressure();
    const double Cv = idealCp - R;                  // the attraction does not depend on T
    const double work = T * V * thermal * thermal;  // (Cp - Cv)·stiffness
    const double Cp = Cv + work / stiffness;
    constexpr double GramsPerKilogram = 1000.0;
    const double perMass = GramsPerKilogram / molarMass;
    result.Cv = Parts(Cv, 0.0);
    // Cp - Cv - R = R·(2a/V²)/stiffness
    result.Cp = Parts(idealCp, R * 2.0 * attraction / V / V / stiffness);
    result.heatRatio = Whole(idealCp / Cv, Cp / Cv);
    result.compressibility =
        Whole(P > 0.0 ? std::optional(1.0 / P) : std::nullopt, 1.0 / stiffness);
    result.expansion = Whole(1.0 / T, thermal / stiffness);
    // (dS/dT)/(dS/dV) = (Cv/T)/(dP/dT)
    result.isentropicExpansion = Whole(-Cv / RT, -Cv / (T * V * thermal));
    result.soundSpeed = Whole(std::sqrt(idealCp / Cv * RT * perMass),
                              std::sqrt(V * (stiffness + work / Cv) * perMass));
    // V·(T·(dV/dT)/V - 1)/Cp, where T·(dV/dT)/V - 1 = (2a/V² - R·T·b/(V - b)²)/stiffness
    const double excess = 2.0 * attraction / V / V - RT * covolume / free / free;
    result.jouleThomson = Whole(0.0, V * excess / (stiffness * Cv + work));
    result.secondVirial = Whole(0.0, covolume - attraction / RT);
}

}  // namespace

MixtureProperties PropertiesOf(const Mixture& mixture, double T, double P, double V) {
    MixtureProperties result;
    const std::optional<State> state = StateAt(mixture, T, P, V);
    if (!state) return result;
    const IdealGasProperties ideal = IdealMixture(mixture, T);
    SetVolumes(*state, result);
    SetEnergies(*state, ideal, result);
    SetDerivatives(*state, ideal.Cp, result);
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

std::array<ComponentProperties, ComponentCount> ComponentPropertiesOf(const Mixture& mixture,
                                                                      double T, double P,
                                                                      double V) {
    std::array<ComponentProperties, ComponentCount> result;
    const std::optional<State> state = StateAt(mixture, T, P, V);
    if (!state) return result;
    const double RT = state->RT;
    const double free = state->free;
    const ComponentValues attractions = ComponentAttraction(mixture);
    const auto volumes = PartialMolarVolumes(mixture, T, V);
    for (std::size_t k = 0; k < mixture.count; ++k) {
        const IdealGasProperties gas = IdealGas(mixture.index[k], T);
        // ln(f/P0) = ln(x·R·T/((V - b)·P0)) + b_k/(V - b) - A_k/(R·T·V)
        const double logConcentration =
            std::log(mixture.fractions[k] * RT / (free * StandardPressure));
        const double interaction = mixture.b[k] / free - attractions[k] / (RT * V);
        const double standard = gas.H - T * gas.S;
        const double term = RT * (logConcentration + interaction);
        ComponentProperties& component = result[k];
        component.standardPotential = Real(standard);
        component.fugacityTerm = Real(term);
        component.chemicalPotential = Real(standard + term);
        if (P > 0.0) component.logPhi = Real(interaction - state->logFree());
        if (!volumes) continue;
        const double volume = (*volumes)[k];
        component.volume = Real(volume);
        component.enthalpy = Real(gas.H - RT - attractions[k] / V + RT * volume / free);
        component.entropy =
            Real(gas.S - R * logConcentration + R * ((volume - mixture.b[k]) / free - 1.0));
    }
    return result;
}

}  // namespace fluid
