#include "procedures/fugacity_table.h"

#include <cmath>
#include <limits>

#include "model/fluid_model.h"

namespace procedures {

namespace {

// Whether a coefficient of 1 stands for one beyond the range of numbers. Only where the volume is
// far larger than the co-volume a gas is so nearly ideal that its coefficient is 1.
bool IsGuarded(double coefficient, double V, double b) {
    constexpr double dilute = 1e10;
    return coefficient == 1.0 && !(V > dilute * b);
}

template <class Gases>
std::string SentenceOf(const Gases& gases) {
    std::string names;
    for (const auto& gas : gases) {
        if (gas.isGuarded) {
            names += (names.empty() ? "" : ", ") + std::string(gas.formula);
        }
    }
    return names.empty() ? ""
                         : "A fugacity coefficient of " + names +
                               " has no number here: 1 stands in its place.";
}

}  // namespace

FugacityTable FugacitiesAt(const fluid::Mixture& mixture, const TypedState& state,
                           std::size_t number) {
    FugacityTable table{.root = RootVolumeOf(mixture, state, RootsAt(mixture, state)[number])};
    const double V = table.root.V;
    if (table.root.kind != RootVolume::Kind::Volume) return table;
    const fluid::ComponentValues coefficients =
        fluid::FugacityCoefficients(mixture, state.T, state.P, V);
    for (std::size_t k = 0; k < mixture.count; ++k) {
        table.gases.push_back({mixture.formula(k), mixture.fractions[k] * coefficients[k] * state.P,
                               coefficients[k], IsGuarded(coefficients[k], V, mixture.covolume)});
    }
    return table;
}

std::vector<std::string> FugacityRow(const FugacityTable::Gas& gas) {
    return {std::string(gas.formula), ValueText(gas.fugacity), ValueText(gas.coefficient)};
}

ActivityTable ActivitiesAt(const fluid::Mixture& mixture, const TypedState& state,
                           const FugacityTable& fugacities, StandardState standard,
                           double reference) {
    ActivityTable table;
    for (std::size_t k = 0; k < mixture.count; ++k) {
        const FugacityTable::Gas& gas = fugacities.gases[k];
        double V = fluid::R * state.T / reference;
        double coefficient = 1.0;
        bool guarded = gas.isGuarded;
        if (standard == StandardState::Real) {
            // The volume is that at the pressure of the mixture, also where Pref is another.
            V = fluid::PureGasVolume(mixture, k, state.T, state.P).volume;
            coefficient = fluid::PureFugacityCoefficient(mixture, k, state.T, reference, V);
            if (V > 0.0) {
                guarded = guarded || IsGuarded(coefficient, V, mixture.b[k]);
            } else {
                V = coefficient = std::numeric_limits<double>::quiet_NaN();
            }
        }
        const double activity = gas.fugacity / (coefficient * reference);
        table.gases.push_back({gas.formula, V, activity, activity / mixture.fractions[k], guarded});
    }
    return table;
}

std::vector<std::string> ActivityRow(const ActivityTable::Gas& gas) {
    return {std::string(gas.formula), ValueText(gas.V), ValueText(gas.activity),
            ValueText(gas.coefficient)};
}

std::string GuardSentence(const FugacityTable& table) {
    return SentenceOf(table.gases);
}

std::string GuardSentence(const ActivityTable& table) {
    return SentenceOf(table.gases);
}

}  // namespace procedures
