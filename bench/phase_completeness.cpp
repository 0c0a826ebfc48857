// The long run for the phase equilibria: random mixtures of 2 to 11 gases, every homogenisation
// point that the reference sees must be found and confirmed by the iteration, and none made up.
// usage: phase_completeness [MIXTURES [SEED [MOST_COMPONENTS]]]

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "model/first_approach.h"
#include "model/fluid_model.h"
#include "model/phase_equilibrium.h"
#include "tests/model/phase_reference.h"

namespace {

using fluid::Fractions;
using fluid::Given;
using fluid::Homogenisation;
using fluid::LastComponent;
using fluid::Outcome;
using fluid::PhasePair;

struct Tally {
    int existing = 0;
    int missed = 0;
    int ambiguous = 0;  // phases that do not take their roots, or changes of another kind
    int unconfirmed = 0;
    int finer = 0;  // confirmed points on two-phase ranges shorter than the reference's steps
    int without = 0;
};

double Away(double x, double y) {
    return std::abs(x / y - 1.0);
}

void Describe(const char* what, Given given, const PhasePair& pair) {
    std::printf("%s (%s given) T %.10g K, P %.10g MPa, Vx %.6g, Vy %.6g:", what,
                given == Given::Temperature ? "T" : "P", pair.T, pair.P, pair.Vx, pair.Vy);
    for (std::size_t i = 0; i <= static_cast<std::size_t>(LastComponent); ++i) {
        std::printf(" %s %.12g", fluid::ComponentFormulas[fluid::ComponentIndex[i]].data(),
                    Fractions[i]);
    }
    std::puts("");
}

bool Confirmed(Given given, double value, Homogenisation kind, const PhasePair& point) {
    const auto guess = fluid::HomogenisationApproach(given, point);
    const auto result =
        fluid::IterateHomogenisation(LastComponent, Fractions, given, value, kind, guess);
    return result.outcome == Outcome::Converged && !result.metastable &&
           Away(result.phases.P, point.P) < 1e-7 && Away(result.phases.T, point.T) < 1e-7;
}

void Search(Given given, double value, const PhaseReference& reference, Tally& tally) {
    const auto changes = given == Given::Temperature ? reference.alongIsotherm(value, 0.05)
                                                     : reference.alongIsobar(value, 0.005);
    for (const Homogenisation kind : {Homogenisation::IntoLiquid, Homogenisation::IntoVapour}) {
        const auto points =
            fluid::FindHomogenisationPoints(LastComponent, Fractions, given, value, kind);
        std::size_t seen = 0;
        for (const auto& change : changes) {
            if (change.kind != kind) continue;
            if (!change.takesItsRoots || change.P > 1e4) {
                ++tally.ambiguous;
                continue;
            }
            ++tally.existing;
            const bool found =
                std::any_of(points.begin(), points.end(), [&](const PhasePair& pair) {
                    const double V = kind == Homogenisation::IntoLiquid ? pair.Vx : pair.Vy;
                    return Away(pair.T, change.T) < 2e-3 && Away(V, change.V) < 1e-2;
                });
            seen += found ? 1 : 0;
            if (found) continue;
            ++tally.missed;
            Describe("missed", given, {change.T, change.P, {}, {}, change.V, change.V});
        }
        if (points.count == 0) ++tally.without;
        if (points.count > seen) tally.finer += static_cast<int>(points.count - seen);
        for (const PhasePair& point : points) {
            if (Confirmed(given, value, kind, point)) continue;
            ++tally.unconfirmed;
            Describe("not confirmed", given, point);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    const auto argument = [&](int i, int usual) { return argc > i ? std::atoi(argv[i]) : usual; };
    const int mixtures = argument(1, 500);
    const int mostComponents = std::clamp(argument(3, 11), 2, 11);
    std::mt19937_64 random(static_cast<std::uint64_t>(argument(2, 1)));
    std::uniform_real_distribution<double> share(0.0, 1.0);
    Tally tally;
    for (int i = 0; i < mixtures; ++i) {
        AcceptRandomMixture(random, mostComponents);
        const PhaseReference reference;
        const double hottest = *std::max_element(fluid::Tc.begin(), fluid::Tc.end());
        Search(Given::Temperature, hottest * (0.3 + 0.8 * share(random)), reference, tally);
        Search(Given::Pressure, std::pow(10.0, -2.0 + 4.0 * share(random)), reference, tally);
    }
    std::printf("%d existing points, %d missed, %d found but not confirmed\n", tally.existing,
                tally.missed, tally.unconfirmed);
    std::printf(
        "%d searches without a point; %d points on shorter ranges than the reference "
        "resolves; %d changes that no homogenisation can show\n",
        tally.without, tally.finer, tally.ambiguous);
    return tally.missed + tally.unconfirmed > 0 ? EXIT_FAILURE : EXIT_SUCCESS;
}
