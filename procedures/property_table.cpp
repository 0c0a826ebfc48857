#include "procedures/property_table.h"

#include <cmath>
#include <initializer_list>
#include <utility>

#include "model/ideal_gas.h"
#include "model/properties.h"
#include "procedures/phase_sentences.h"
#include "procedures/root_volume.h"
#include "procedures/stability_text.h"
#include "procedures/units.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

using All = fluid::MixtureProperties;
using fluid::FluidState;
using fluid::Mixture;
using fluid::PhaseSplit;
using Number = StateTable::Number;
using Absence = StateTable::Absence;

constexpr int energyDecimals = 3;   // J/mol
constexpr int entropyDecimals = 4;  // J/(mol·K)
constexpr int otherDecimals = mostDecimals;

struct Quantity {
    const char* name = nullptr;
    const char* unit = nullptr;
    const char* unitPerMass = nullptr;  // where the amount counts
    fluid::Property All::*property = nullptr;
    int decimals = 0;
    bool hasResidual = true;
    bool addsUp = false;  // over phases, by their amounts
};

constexpr std::array<Quantity, 17> quantities = {
    {{"molar volume", volumeUnit, "cm\u00B3/g", &All::V, otherDecimals, true, true},
     {"density", densityUnit, nullptr, &All::density, otherDecimals},
     {"compressibility factor", "", nullptr, &All::Z, otherDecimals, true, true},
     {"internal energy", "J/mol", "kJ/kg", &All::U, energyDecimals, true, true},
     {"enthalpy", "J/mol", "kJ/kg", &All::H, energyDecimals, true, true},
     {"entropy", "J/(mol K)", "kJ/(kg K)", &All::S, entropyDecimals, true, true},
     {"Helmholtz energy", "J/mol", "kJ/kg", &All::A, energyDecimals, true, true},
     {"Gibbs energy", "J/mol", "kJ/kg", &All::G, energyDecimals, true, true},
     {"isochoric heat capacity Cv", "J/(mol K)", "kJ/(kg K)", &All::Cv, entropyDecimals},
     {"isobaric heat capacity Cp", "J/(mol K)", "kJ/(kg K)", &All::Cp, entropyDecimals},
     {"heat capacity ratio Cp/Cv", "", nullptr, &All::heatRatio, otherDecimals, false},
     {"isothermal compressibility", "1/MPa", nullptr, &All::compressibility, otherDecimals, false},
     {"thermal expansion", "1/K", nullptr, &All::expansion, otherDecimals, false},
     {"isentropic expansion", "1/K", nullptr, &All::isentropicExpansion, otherDecimals, false},
     {"speed of sound", "m/s", nullptr, &All::soundSpeed, entropyDecimals, false},
     {"Joule-Thomson coefficient", "K/MPa", nullptr, &All::jouleThomson, otherDecimals, false},
     {"second virial coefficient", volumeUnit, "cm\u00B3/g", &All::secondVirial, otherDecimals,
      false}}};

std::string PercentText(double share) {
    constexpr double percent = 100.0;
    constexpr int digits = 6;
    return toolkit::SignificantText(percent * share, digits) + " %";
}

// Each sentence that is not empty on a line of its own.
std::string LinesOf(std::initializer_list<std::string> sentences) {
    std::string lines;
    for (const std::string& sentence : sentences) {
        lines += lines.empty() || sentence.empty() ? "" : "\n";
        lines += sentence;
    }
    return lines;
}

// Says that T in K lies outside the range of the ideal-gas data; empty where it does not.
std::string OutsideRangeSentence(double T) {
    constexpr auto range = fluid::idealGasRange;
    if (T >= range.lowest && T <= range.highest) return "";
    return "The ideal-gas data reach from " + SentenceText(range.lowest) + " to " +
           SentenceText(range.highest) +
           " Kelvin; outside this range the heat capacity is that at its end.";
}

bool IsWhole(const StateTable& table) {
    for (const StateTable::Line& line : table.lines) {
        for (const Number& number : line.numbers) {
            if (!number.value && number.absence == Absence::Unexplained) return false;
        }
    }
    return true;
}

std::string MissingSentence(const StateTable& table) {
    return IsWhole(table) ? ""
                          : "--- stands for a value that is infinite or too large for a number.";
}

}  // namespace

double AmountOfY(const PhaseSplit& split) {
    const double y = split.volumeFraction / split.phases.Vy;
    const double x = (1.0 - split.volumeFraction) / split.phases.Vx;
    return y / (x + y);
}

const char* KindText(fluid::PhaseKind kind) {
    constexpr std::array<const char*, 4> texts = {"gas-like", "liquid-like", "supercritical",
                                                  "at a critical point"};
    return texts[static_cast<std::size_t>(kind)];
}

std::string StateSentence(const Mixture& mixture, const FluidState& state) {
    if (state.volumes.empty()) {
        return "warning: no molar volume above the co-volume " + SentenceText(mixture.covolume) +
               " " + volumeUnit + " could be calculated here";
    }
    if (!state.isExamined) {
        return "Not examined: at so low a temperature fugacities of coexisting phases have no "
               "numbers.";
    }
    if (state.stable) return std::string("One stable phase, ") + KindText(state.kind) + ".";
    if (!state.split) return "No single phase is stable here; the phases that are were not found.";
    const PhaseSplit& split = *state.split;
    const double y = AmountOfY(split);
    const auto phase = [](const char* name, double V, double amount, double volume) {
        return std::string(name) + " of " + SentenceText(V) + " " + volumeUnit + ", " +
               PercentText(amount) + " of the amount and " + PercentText(volume) + " of the volume";
    };
    return std::string(split.metastable ? "Two phases, though others would be more stable,"
                                        : "Two phases") +
           " at " + SentenceText(state.P) +
           " MPa: " + phase("X", split.phases.Vx, 1.0 - y, 1.0 - split.volumeFraction) + "; " +
           phase("Y", split.phases.Vy, y, split.volumeFraction) + ".";
}

std::string InversionSentence(const Mixture& mixture, double P) {
    std::string temperatures;
    for (const fluid::InversionPoint& point : fluid::InversionPoints(mixture, P)) {
        const FluidState state = fluid::StateAt(mixture, point.T, P);
        constexpr double same = 1e-6;
        if (state.stable && std::abs(state.volumes[*state.stable].V / point.V - 1.0) < same) {
            temperatures += (temperatures.empty() ? "" : " and ") + SentenceText(point.T);
        }
    }
    return temperatures.empty()
               ? "There is no Joule-Thomson inversion at this pressure."
               : "Joule-Thomson inversion at this pressure: " + temperatures + " Kelvin.";
}

StateTable::Row RowOf(const StateTable::Line& line, Digits digits) {
    StateTable::Row row = line.names;
    for (const Number& number : line.numbers) {
        if (!number.value) {
            row.emplace_back(number.absence == Absence::Pointless ? "" : "---");
        } else {
            row.push_back(CellText(*number.value, number.decimals, digits));
        }
    }
    return row;
}

namespace {

// The name of what is shown of one state, with its stability where it is not the stable one.
std::string Named(const std::string& name, const FluidState::Volume& volume) {
    return volume.stability == fluid::Stability::Stable
               ? name
               : name + " (" + StabilityName(volume.stability) + ")";
}

std::string UnstableSentence(const All& all) {
    const bool isUnstable = all.compressibility.total.value_or(0.0) < 0.0;
    return isUnstable && !all.soundSpeed.total
               ? "--- because the fluid is mechanically unstable at this root: the square of its "
                 "speed of sound is negative."
               : "";
}

StateTable::Row NamesOf(const Quantity& quantity, Amount amount) {
    const bool isPerMass = amount == Amount::Kilogram && quantity.unitPerMass != nullptr;
    return {isPerMass && quantity.property == &All::V ? "specific volume" : quantity.name,
            isPerMass ? quantity.unitPerMass : quantity.unit};
}

Number NumberOf(const std::optional<double>& value, const Quantity& quantity, Amount amount,
                double molarMass, Absence absence = Absence::Unexplained) {
    const bool isPerMass = amount == Amount::Kilogram && quantity.unitPerMass != nullptr;
    return {value && isPerMass ? std::optional(*value / molarMass) : value, quantity.decimals,
            absence};
}

// One state at a volume V.
StateTable PartsAt(const Mixture& mixture, const FluidState& state,
                   const FluidState::Volume& volume, Amount amount) {
    StateTable table{
        .heads = {"property", "unit", "ideal gas", "residual", Named("total", volume)}};
    const All all = fluid::PropertiesOf(mixture, state.T, state.P, volume.V);
    const std::string unstable = UnstableSentence(all);
    for (const Quantity& quantity : quantities) {
        const auto& [idealGas, residual, total] = all.*quantity.property;
        const bool isExplained = quantity.property == &All::soundSpeed && !unstable.empty();
        table.lines.push_back(
            {NamesOf(quantity, amount),
             {NumberOf(idealGas, quantity, amount, mixture.molarMass),
              NumberOf(residual, quantity, amount, mixture.molarMass,
                       quantity.hasResidual ? Absence::Unexplained : Absence::Pointless),
              NumberOf(total, quantity, amount, mixture.molarMass,
                       isExplained ? Absence::Explained : Absence::Unexplained)}});
    }
    table.note = LinesOf({OutsideRangeSentence(state.T), unstable, MissingSentence(table)});
    return table;
}

// Two phases and both together, whose properties are those of the phases by their amounts.
StateTable PhasesAt(const Mixture& mixture, const FluidState& state, Amount amount) {
    StateTable table{.heads = {"property", "unit", "phase X", "phase Y", "whole"}};
    const auto& [T, P, x, y, Vx, Vy] = state.split->phases;
    const Mixture X = fluid::WithFractions(mixture, x);
    const Mixture Y = fluid::WithFractions(mixture, y);
    const All inX = fluid::PropertiesOf(X, T, P, Vx);
    const All inY = fluid::PropertiesOf(Y, T, P, Vy);
    const double share = AmountOfY(*state.split);
    const auto sum = [share](const fluid::Property& one, const fluid::Property& other) {
        return one.total && other.total
                   ? std::optional((1.0 - share) * *one.total + share * *other.total)
                   : std::nullopt;
    };
    for (const Quantity& quantity : quantities) {
        const fluid::Property& ofX = inX.*quantity.property;
        const fluid::Property& ofY = inY.*quantity.property;
        std::optional<double> whole = quantity.addsUp ? sum(ofX, ofY) : std::nullopt;
        if (quantity.property == &All::density) {
            whole = mixture.molarMass / *sum(inX.V, inY.V);
        }
        table.lines.push_back(
            {NamesOf(quantity, amount),
             {NumberOf(ofX.total, quantity, amount, X.molarMass),
              NumberOf(ofY.total, quantity, amount, Y.molarMass),
              NumberOf(whole, quantity, amount, mixture.molarMass, Absence::Pointless)}});
    }
    table.note = LinesOf({OutsideRangeSentence(T), MissingSentence(table)});
    return table;
}

struct Potential {
    const char* head;
    std::optional<double> fluid::ComponentProperties::*property;
    int decimals;
};

using Gas = fluid::ComponentProperties;
constexpr std::array<Potential, 7> potentials = {
    {{"chemical\npotential\n(J/mol)", &Gas::chemicalPotential, energyDecimals},
     {"standard\npart\n(J/mol)", &Gas::standardPotential, energyDecimals},
     {"RT ln f/p°\n(J/mol)", &Gas::fugacityTerm, energyDecimals},
     {"ln φ", &Gas::logPhi, otherDecimals},
     {"partial molar\nenthalpy\n(J/mol)", &Gas::enthalpy, energyDecimals},
     {"partial molar\nentropy\n(J/(mol K))", &Gas::entropy, entropyDecimals},
     {"partial molar\nvolume\n(cm³/mol)", &Gas::volume, otherDecimals}}};

// The lines of the gases of one phase, `where` behind their formulas.
void AddGases(StateTable& table, const Mixture& mixture, const FluidState& state, double V,
              const std::string& where) {
    const auto gases = fluid::ComponentPropertiesOf(mixture, state.T, state.P, V);
    for (std::size_t k = 0; k < mixture.count; ++k) {
        StateTable::Line line{{std::string(mixture.formula(k)) + where}, {}};
        line.numbers.push_back({mixture.z[k], otherDecimals});
        for (const Potential& potential : potentials) {
            line.numbers.push_back({gases[k].*potential.property, potential.decimals});
        }
        table.lines.push_back(std::move(line));
    }
}

}  // namespace

StateTable PropertiesAt(const Mixture& mixture, const FluidState& state, ChosenVolume chosen,
                        Amount amount) {
    return chosen ? PartsAt(mixture, state, state.volumes[*chosen], amount)
                  : PhasesAt(mixture, state, amount);
}

StateTable::Row PotentialHeads() {
    StateTable::Row heads = {"gas", "amount\nfraction"};
    for (const Potential& potential : potentials) {
        heads.emplace_back(potential.head);
    }
    return heads;
}

StateTable PotentialsAt(const Mixture& mixture, const FluidState& state, ChosenVolume chosen) {
    StateTable table{.heads = PotentialHeads()};
    if (chosen) {
        const FluidState::Volume& volume = state.volumes[*chosen];
        table.heads[0] = Named(table.heads[0], volume);
        AddGases(table, mixture, state, volume.V, "");
    } else {
        const auto& [T, P, x, y, Vx, Vy] = state.split->phases;
        AddGases(table, fluid::WithFractions(mixture, x), state, Vx, " in X");
        AddGases(table, fluid::WithFractions(mixture, y), state, Vy, " in Y");
    }
    table.note = LinesOf({OutsideRangeSentence(state.T), MissingSentence(table)});
    return table;
}

namespace {

// Of one phase its own; of two phases what adds up.
std::optional<double> ValueOf(const Quantity& quantity, const RangeState& state) {
    double sum = 0.0;
    double mass = 0.0;
    const bool isDensity = quantity.property == &All::density;
    if (state.phases.empty() || (state.phases.size() > 1 && !quantity.addsUp && !isDensity)) {
        return std::nullopt;
    }
    for (const RangeState::Phase& phase : state.phases) {
        const All all = fluid::PropertiesOf(phase.mixture, state.T, state.P, phase.V);
        const auto& total = isDensity ? all.V.total : (all.*quantity.property).total;
        if (!total) return std::nullopt;
        sum += phase.amount * *total;
        mass += phase.amount * phase.mixture.molarMass;
    }
    return isDensity ? mass / sum : sum;
}

// In each phase; nothing where two phases differ in it.
std::optional<double> GasValue(const Potential& potential, std::size_t k, bool isEqual,
                               const RangeState& state) {
    if (state.phases.empty() || (state.phases.size() > 1 && !isEqual)) return std::nullopt;
    const RangeState::Phase& phase = state.phases.front();
    return fluid::ComponentPropertiesOf(phase.mixture, state.T, state.P, phase.V)[k].*
           potential.property;
}

}  // namespace

std::vector<RangeQuantity> PropertyQuantities(Amount amount) {
    std::vector<RangeQuantity> listed;
    for (const Quantity& quantity : quantities) {
        const StateTable::Row names = NamesOf(quantity, amount);
        listed.push_back({names[0], names[1], quantity.decimals,
                          [&quantity, amount](const RangeState& state) -> std::optional<double> {
                              const auto value = ValueOf(quantity, state);
                              double mass = 0.0;
                              for (const RangeState::Phase& phase : state.phases) {
                                  mass += phase.amount * phase.mixture.molarMass;
                              }
                              return NumberOf(value, quantity, amount, mass).value;
                          }});
    }
    return listed;
}

std::vector<RangeQuantity> PotentialQuantities(const Mixture& mixture) {
    struct Listed {
        const char* name;
        const char* unit;
        std::size_t potential;  // of those in the columns
        bool isEqual;           // in all phases
    };
    constexpr std::array<Listed, 5> columns = {
        {{"chemical potential of ", "J/mol", 0, true},
         {"ln φ of ", "", 3, false},
         {"partial molar enthalpy of ", "J/mol", 4, false},
         {"partial molar entropy of ", "J/(mol K)", 5, false},
         {"partial molar volume of ", "cm³/mol", 6, false}}};
    std::vector<RangeQuantity> listed;
    for (std::size_t k = 0; k < mixture.count; ++k) {
        const std::string gas(mixture.formula(k));
        constexpr std::size_t fugacityTerm = 2;
        listed.push_back({"fugacity of " + gas, "MPa", otherDecimals,
                          [k](const RangeState& state) -> std::optional<double> {
                              const auto term = GasValue(potentials[fugacityTerm], k, true, state);
                              return term ? std::optional(fluid::standardPressure *
                                                          std::exp(*term / (fluid::R * state.T)))
                                          : std::nullopt;
                          }});
        for (const Listed& column : columns) {
            const Potential& potential = potentials[column.potential];
            listed.push_back({column.name + gas, column.unit, potential.decimals,
                              [&potential, k, isEqual = column.isEqual](const RangeState& state) {
                                  return GasValue(potential, k, isEqual, state);
                              }});
        }
    }
    return listed;
}

}  // namespace procedures
