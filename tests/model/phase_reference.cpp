#include "tests/model/phase_reference.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <vector>

#include "model/composition.h"

using fluid::componentCount;
using fluid::ComponentValues;

namespace {

// Makes these parts the composition of the model, each rounded up, at the cost of one of them.
void AcceptParts(ComponentValues parts, std::size_t chief) {
    const auto scale = static_cast<double>(fluid::fractionScale);
    const double sum = std::accumulate(parts.begin(), parts.end(), 0.0);
    for (double& part : parts) part = std::ceil(part / sum * scale);
    parts[chief] += scale - std::accumulate(parts.begin(), parts.end(), 0.0);
    for (std::size_t i = 0; i < parts.size(); ++i) fluid::SetFractionCount(i, parts[i] / scale);
    fluid::AcceptComposition();
}

}  // namespace

void AcceptRandomMixture(std::mt19937_64& random, int most) {
    std::uniform_real_distribution<double> share(0.0, 1.0);
    std::array<std::size_t, componentCount> order{};
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), random);
    if (share(random) < 0.3) {
        constexpr std::array<std::size_t, 3> partners = {5, 2, 9};
        std::swap(*std::find(order.begin(), order.end(), 0), order[0]);
        const std::size_t partner = partners[random() % partners.size()];
        std::swap(*std::find(order.begin(), order.end(), partner), order[1]);
    }
    const auto present = 2 + random() % static_cast<unsigned>(most - 1);
    ComponentValues parts{};
    for (std::size_t i = 0; i < present; ++i) {
        const double rarity = share(random) < 0.1 ? std::pow(10.0, -6.0 * share(random)) : 1.0;
        parts[order[i]] = -std::log(share(random)) * rarity;
    }
    AcceptParts(parts, order[0]);
}

void AcceptAnyMixture(std::mt19937_64& random) {
    std::uniform_real_distribution<double> share(0.0, 1.0);
    constexpr double smallest = 1e-12;
    const auto trace = [&] { return std::pow(smallest, share(random)); };
    ComponentValues parts{};
    switch (random() % 4) {
        case 0:
            AcceptRandomMixture(random, static_cast<int>(componentCount));
            return;
        case 1:  // nearly pure
            parts[random() % componentCount] = 1.0;
            parts[random() % componentCount] += trace();
            break;
        case 2: {  // nearly azeotropic
            constexpr std::array<std::array<std::size_t, 2>, 6> pairs = {
                {{8, 9}, {1, 10}, {1, 4}, {6, 8}, {2, 7}, {3, 10}}};
            const auto& [one, other] = pairs[random() % pairs.size()];
            parts[one] = share(random);
            parts[other] = 1.0 - parts[one];
            break;
        }
        default:
            for (std::size_t i = 0; i < 4; ++i) parts[random() % componentCount] += trace();
    }
    const auto chief = std::max_element(parts.begin(), parts.end()) - parts.begin();
    AcceptParts(parts, static_cast<std::size_t>(chief));
}

PhaseReference::PhaseReference() : count_(fluid::AcceptedMixture().count) {
    for (std::size_t i = 0; i < count_; ++i) {
        z_[i] = fluid::AcceptedMixture().z[i];
        s_[i] = std::sqrt(fluid::a[i][i]);
        b_ += z_[i] * fluid::b[i];
        sMix_ += z_[i] * s_[i];
        densestA_ = std::max(densestA_, s_[i] / fluid::b[i]);
    }
}

double PhaseReference::pressure(double T, double V) const {
    return fluid::R * T / (V - b_) - sMix_ * sMix_ / (V * V);
}

PhaseReference::Trial PhaseReference::trial(const State& bulk, double A, double& logU) const {
    const double RT = fluid::R * bulk.T;
    const double bulkU = 1.0 / (bulk.V - b_);
    const double bulkA = sMix_ / bulk.V;
    double covolume = 0.0;
    double u = 0.0;
    for (int step = 0; step < 200; ++step) {
        u = std::exp(logU);
        ComponentValues logX{};
        double largest = -1e300;
        for (std::size_t i = 0; i < count_; ++i) {
            logX[i] = std::log(z_[i] * bulkU) - fluid::b[i] * (u - bulkU) +
                      2.0 / RT * s_[i] * (A - bulkA);
            largest = std::max(largest, logX[i]);
        }
        double sum = 0.0;
        covolume = 0.0;
        for (std::size_t i = 0; i < count_; ++i) {
            const double x = std::exp(logX[i] - largest);
            sum += x;
            covolume += fluid::b[i] * x;
        }
        covolume /= sum;
        const double move = (largest + std::log(sum) - logU) / (1.0 + covolume * u);
        logU += std::clamp(move, -2.0, 2.0);
        if (std::abs(move) < 1e-13) break;
    }
    const double rise = u - bulkU;
    const double D = std::abs(rise) < 0.5 * bulkU ? RT * rise - (A - bulkA) * (A + bulkA)
                                                  : RT * u - A * A - bulk.P;
    return {D, covolume + 1.0 / u};
}

bool PhaseReference::isUnstable(double T, double V, double P, double least) const {
    const double A = sMix_ / V;
    std::vector<double> grid;
    grid.reserve(720);
    for (int i = 0; i < 60; ++i) grid.push_back(densestA_ * std::pow(10.0, -12.0 + 0.2 * i));
    for (int i = 1; i < 600; ++i) grid.push_back(densestA_ * i / 600.0);
    for (int i = 0; i < 30; ++i) {
        const double away = A * std::pow(10.0, -4.0 + 0.13 * i);
        if (away < A) grid.push_back(A - away);
        if (A + away < densestA_) grid.push_back(A + away);
    }
    std::sort(grid.begin(), grid.end());
    const double RT = fluid::R * T;
    double logU = -std::log(V - b_);
    for (const double place : grid) {
        const double away = place - A;
        if (std::abs(away) < 0.9e-4 * A) continue;
        const Trial found = trial({T, P, V}, place, logU);
        const double drive = found.D * found.V / RT;
        const double rounding = 2e-12 * (RT / (V - b_) + A * A) + 1e-7 * away * away;
        const bool unstable = std::abs(away) < 0.3 * A ? found.D > rounding : drive > 1e-9;
        if (unstable && drive > least) return true;
    }
    return false;
}
