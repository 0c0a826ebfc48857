#include "model/state.h"

#include "model/cubic.h"

namespace fluid {

namespace {

double RootAt(const Blend& blend, double T, double P, PhaseRoot choice) {
    double chosen = 0.0;
    for (const CubicRoot& root : VolumeCubicSolver(blend.a, blend.b, T, P)) {
        if (!root.isReal() || !(root.real > blend.b)) continue;
        const bool isSmaller = root.real < chosen;
        if (chosen == 0.0 || isSmaller == (choice == PhaseRoot::Smallest)) chosen = root.real;
    }
    return chosen;
}

}  // namespace

State::State(const Blend& of, double temperature, double volume)
    : blend(of),
      T(temperature),
      RT(R * temperature),
      V(volume),
      free(volume - of.b),
      u(1.0 / free),
      perEnergy_(1.0 / (RT * V)) {}

PhaseState::PhaseState(const Mixture& components, const ComponentValues& fractions,
                       double temperature, double volume)
    : State(BlendOf(components, fractions), temperature, volume), of(components), x(fractions) {}

PhaseState::PhaseState(const Mixture& components, const ComponentValues& fractions,
                       double temperature, double P, PhaseRoot root)
    : PhaseState(components, fractions, BlendOf(components, fractions), temperature, P, root) {}

PhaseState::PhaseState(const Mixture& components, const ComponentValues& fractions,
                       const Blend& mixed, double temperature, double P, PhaseRoot root)
    : State(mixed, temperature, RootAt(mixed, temperature, P, root)),
      of(components),
      x(fractions) {}

}  // namespace fluid
