#pragma once

#include <cmath>
#include <cstddef>

#include "model/mixture.h"

namespace fluid {

// A coefficient of fugacity outside of e^±227 counts as 1.
inline constexpr double largestLogPhi = 227.0;

// The one of the real roots above the co-volume that a phase has at a temperature and a pressure:
// phase X the smallest, phase Y the largest.
enum class PhaseRoot { Smallest, Largest };

// A fluid at T in K and V in cm3/mol, and what the equation of state says of it. The only place of
// ln f_i, P and dP/dV.
struct State {
    State(const Blend& blend, double T, double V);

    Blend blend;
    double T;
    double RT;
    double V;
    double free;  // V - b
    double u;     // 1/(V - b)

    // Whether the molecules have room in V, and V in a double.
    bool isPossible() const { return free > 0.0 && std::isfinite(V); }
    // Rather than a vapour or a dense gas: colder and denser than at the critical point of a pure
    // gas of this a and b.
    bool isLiquid() const { return V < 3.0 * blend.b && 27.0 * RT * blend.b < 8.0 * blend.a; }
    double A() const { return blend.aRoot / V; }
    // -V·dP/dV, MPa; not above 0 where the fluid is mechanically unstable
    double stiffness() const { return RT * V / free / free - 2.0 * blend.a / V / V; }
    // ln(f_i/(x_i·R·T·u)) = b_i/(V - b) - A_i/(R·T·V) of a component with this b_i and
    // A_i = sum of 2·x_j·a_ij
    double interaction(double covolume, double attraction) const {
        return covolume * u - attraction * perEnergy_;
    }
    // ln(P·(V - b)/(R·T)), by which ln phi_i is less than that: Z·(1 - b/V) is P·(V - b)/(R·T), one
    // logarithm, near 0 at low density, nothing cancels. P need not be the pressure at V.
    double logFree(double P) const { return std::log(P / RT * free); }

  private:
    double perEnergy_;  // 1/(R·T·V)
};

// A phase of a mixture's components.
struct PhaseState : State {
    // fractions: those of the phase. They and the mixture must outlive the state.
    PhaseState(const Mixture& components, const ComponentValues& fractions, double T, double V);
    // The same at P in MPa; V is 0 where there is no such root.
    PhaseState(const Mixture& components, const ComponentValues& fractions, double T, double P,
               PhaseRoot root);

    const Mixture& of;
    const ComponentValues& x;

    using State::interaction;
    double attraction(std::size_t i) const { return AttractionOf(of, x, blend, i); }
    double interaction(std::size_t i) const { return interaction(of.b[i], attraction(i)); }
    // ln of f_i over R·T·mol/cm3
    double logFugacity(std::size_t i) const { return std::log(x[i] * u) + interaction(i); }

  private:
    PhaseState(const Mixture& components, const ComponentValues& fractions, const Blend& blend,
               double T, double P, PhaseRoot root);
};

}  // namespace fluid
