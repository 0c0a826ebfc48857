// The long run for the critical points: random mixtures of 2 to 11 gases, a quarter of them with a
// trace of one, whose critical points must be those that a fine grid sees, and fulfil both
// conditions to 1e-12 of their terms; the volumes of the spinodals likewise.
// usage: critical_completeness [MIXTURES [SEED]]

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "model/critical_point.h"
#include "model/fluid_model.h"
#include "model/spinodal.h"
#include "tests/model/critical_reference.h"
#include "tests/model/phase_reference.h"

namespace {

using fluid::CriticalPoint;
using fluid::Fractions;
using fluid::LastComponent;

struct Tally {
    std::array<int, 5> mixtures{};  // by how many critical points they have
    std::array<int, 4> kinds{};     // of critical points, as in fluid::Stability
    int different = 0;
    double distance = 0.0;
    double residual = 0.0;
    double spinodalResidual = 0.0;
};

// Leaves nothing but a trace of 1e-12 to 1e-6 of one gas of the mixture; another takes the rest.
void MakeRare(std::mt19937_64& random) {
    const std::size_t rare = fluid::ComponentIndex[0];
    const std::size_t other = fluid::ComponentIndex[1];
    const double part = std::pow(10.0, std::uniform_real_distribution(-12.0, -6.0)(random));
    const auto scale = static_cast<double>(fluid::FractionScale);
    const double trace = std::ceil(part * scale) / scale;
    const auto sum = fluid::FractionCounts[rare] + fluid::FractionCounts[other];
    fluid::SetFractionCount(rare, trace);
    fluid::SetFractionCount(other, static_cast<double>(sum - fluid::FractionCounts[rare]) / scale);
    fluid::AcceptComposition();
}

void LookAtPoints(const CriticalReference& reference, Tally& tally) {
    constexpr double Step = 0.01;
    const auto points = fluid::FindCriticalPoints(LastComponent, Fractions);
    const auto places = reference.roots(Step);
    ++tally.mixtures.at(points.count);
    if (points.count != places.size()) {
        ++tally.different;
        std::printf("%zu points, but %zu on the grid:", points.count, places.size());
        for (std::size_t i = 0; i <= static_cast<std::size_t>(LastComponent); ++i) {
            std::printf(" %s %.12g", fluid::ComponentFormulas[fluid::ComponentIndex[i]].data(),
                        Fractions[i]);
        }
        std::puts("");
        return;
    }
    for (std::size_t i = 0; i < points.count; ++i) {
        const CriticalPoint& point = points.points[i];
        const double w = point.freeVolume;
        const auto kind = fluid::CriticalStability(LastComponent, Fractions, point);
        ++tally.kinds.at(static_cast<std::size_t>(kind));
        tally.distance = std::max(tally.distance, std::abs(w / places[i] - 1.0));
        const auto cubic = static_cast<double>(std::abs(reference.condition(w)));
        const auto square = static_cast<double>(std::abs(reference.temperature(w) / point.T - 1.0));
        tally.residual = std::max({tally.residual, cubic, square});
    }
}

void LookAtSpinodal(const CriticalReference& reference, double T, Tally& tally) {
    const double b = fluid::MixtureB(LastComponent, Fractions);
    const auto keep = [&](double temperature) {
        tally.spinodalResidual = std::max(tally.spinodalResidual, std::abs(temperature / T - 1.0));
    };
    for (const double V : fluid::DiffusionalSpinodal(LastComponent, Fractions, T)) {
        keep(static_cast<double>(reference.temperature(V - b)));
    }
    for (const double V : fluid::MechanicalSpinodal(LastComponent, Fractions, T)) {
        keep(fluid::MechanicalSpinodalTemperature(LastComponent, Fractions, V));
    }
}

}  // namespace

int main(int argc, char** argv) {
    const int mixtures = argc > 1 ? std::atoi(argv[1]) : 10000;
    std::mt19937_64 random(static_cast<std::uint64_t>(argc > 2 ? std::atoi(argv[2]) : 1));
    std::uniform_real_distribution<double> logT(std::log(5.0), std::log(700.0));
    constexpr int MostComponents = 11;
    Tally tally;
    for (int i = 0; i < mixtures; ++i) {
        AcceptRandomMixture(random, MostComponents);
        if (i % 4 == 0) MakeRare(random);
        const CriticalReference reference;
        LookAtPoints(reference, tally);
        LookAtSpinodal(reference, std::exp(logT(random)), tally);
    }
    std::printf("mixtures with 0 to 4 points: %d %d %d %d %d; %d differ from the grid\n",
                tally.mixtures[0], tally.mixtures[1], tally.mixtures[2], tally.mixtures[3],
                tally.mixtures[4], tally.different);
    std::printf("points: %d stable, %d metastable, %d unstable, %d too cold to tell\n",
                tally.kinds[0], tally.kinds[1], tally.kinds[2], tally.kinds[3]);
    std::printf("largest distance %.1e; conditions hold to %.1e, those of the spinodal to %.1e\n",
                tally.distance, tally.residual, tally.spinodalResidual);
    constexpr double Enough = 1e-12;
    const bool holds = tally.residual < Enough && tally.spinodalResidual < Enough;
    return tally.different == 0 && holds ? EXIT_SUCCESS : EXIT_FAILURE;
}
