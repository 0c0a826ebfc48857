#include "tests/model/phase_reference.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include "model/composition.h"
#include "model/cubic.h"

using fluid::ComponentCount;
using fluid::ComponentValues;

void AcceptRandomMixture(std::mt19937_64& random, int most) {
    std::uniform_real_distribution<double> share(0.0, 1.0);
    std::array<std::size_t, ComponentCount> order{};
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), random);
    if (share(random) < 0.3) {
        constexpr std::array<std::size_t, 3> Partners = {5, 2, 9};
        std::swap(*std::find(order.begin(), order.end(), 0), order[0]);
        const std::size_t partner = Partners[random() % Partners.size()];
        std::swap(*std::find(order.begin(), order.end(), partner), order[1]);
    }
    const auto present = 2 + random() % static_cast<unsigned>(most - 1);
    ComponentValues parts{};
    for (std::size_t i = 0; i < present; ++i) {
        const double rarity = share(random) < 0.1 ? std::pow(10.0, -6.0 * share(random)) : 1.0;
        parts[order[i]] = -std::log(share(random)) * rarity;
    }
    const double sum = std::accumulate(parts.begin(), parts.end(), 0.0);
    const auto scale = static_cast<double>(fluid::FractionScale);
    for (double& part : parts) part = std::ceil(part / sum * scale);
    parts[order[0]] += scale - std::accumulate(parts.begin(), parts.end(), 0.0);
    for (std::size_t i = 0; i < parts.size(); ++i) fluid::SetFractionCount(i, parts[i] / scale);
    fluid::AcceptComposition();
}

PhaseReference::PhaseReference() : count_(static_cast<std::size_t>(fluid::LastComponent) + 1) {
    for (std::size_t i = 0; i < count_; ++i) {
        z_[i] = fluid::Fractions[i];
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
    Trial result{};
    double covolume = 0.0;
    double u = 0.0;
    for (int step = 0; step < 200; ++step) {
        u = std::exp(logU);
        double largest = -1e300;
        for (std::size_t i = 0; i < count_; ++i) {
            result.x[i] = std::log(z_[i] * bulkU) - fluid::b[i] * (u - bulkU) +
                          2.0 / RT * s_[i] * (A - bulkA);
            largest = std::max(largest, result.x[i]);
        }
        double sum = 0.0;
        covolume = 0.0;
        for (std::size_t i = 0; i < count_; ++i) {
            result.x[i] = std::exp(result.x[i] - largest);
            sum += result.x[i];
            covolume += fluid::b[i] * result.x[i];
        }
        covolume /= sum;
        for (double& x : result.x) x /= sum;
        const double move = (largest + std::log(sum) - logU) / (1.0 + covolume * u);
        logU += std::clamp(move, -2.0, 2.0);
        if (std::abs(move) < 1e-13) break;
    }
    result.V = covolume + 1.0 / u;
    const double rise = u - bulkU;
    result.D = std::abs(rise) < 0.5 * bulkU ? RT * rise - (A - bulkA) * (A + bulkA)
                                            : RT * u - A * A - bulk.P;
    return result;
}

PhaseReference::Verdict PhaseReference::judge(double T, double V, double P) const {
    const double A = sMix_ / V;
    std::vector<double> grid;
    grid.reserve(420);
    for (int i = 0; i < 60; ++i) grid.push_back(densestA_ * std::pow(10.0, -12.0 + 0.2 * i));
    for (int i = 1; i < 300; ++i) grid.push_back(densestA_ * i / 300.0);
    for (int i = 0; i < 30; ++i) {
        const double away = A * std::pow(10.0, -4.0 + 0.13 * i);
        if (away < A) grid.push_back(A - away);
        if (A + away < densestA_) grid.push_back(A + away);
    }
    std::sort(grid.begin(), grid.end());
    const double RT = fluid::R * T;
    double logU = -std::log(V - b_);
    Verdict verdict;
    for (const double place : grid) {
        const double away = place - A;
        if (std::abs(away) < 0.9e-4 * A) continue;
        const Trial found = trial({T, P, V}, place, logU);
        const double drive = found.D * found.V / RT;
        const double rounding = 2e-12 * (RT / (V - b_) + A * A) + 1e-7 * away * away;
        const bool unstable = std::abs(away) < 0.3 * A ? found.D > rounding : drive > 1e-9;
        if (unstable && drive > verdict.drive) verdict = {true, drive, found.V, found.x};
    }
    return verdict;
}

PhaseReference::Change PhaseReference::changeAt(const State& bulk, const Verdict& other) const {
    using fluid::Homogenisation;
    const bool bubble = other.V > bulk.V;
    const auto takes = [&](const ComponentValues& x, double V, bool smallest) {
        double s = 0.0;
        double b = 0.0;
        for (std::size_t i = 0; i < count_; ++i) {
            s += x[i] * s_[i];
            b += x[i] * fluid::b[i];
        }
        for (const auto& root : fluid::VolumeCubicSolver(s * s, b, bulk.T, bulk.P)) {
            if (!root.isReal() || root.real <= b) continue;
            if (smallest ? root.real < 0.95 * V : root.real > 1.05 * V) return false;
        }
        return true;
    };
    return {bulk.T, bulk.P, bulk.V,
            bubble ? Homogenisation::IntoLiquid : Homogenisation::IntoVapour,
            takes(z_, bulk.V, bubble) && takes(other.x, other.V, !bubble)};
}

template <class Line>
std::vector<PhaseReference::Change> PhaseReference::along(const Line& line,
                                                          const std::vector<double>& places) const {
    const auto judgeAt = [&](double place) {
        const State state = line(place);
        return judge(state.T, state.V, state.P);
    };
    std::vector<Change> changes;
    Verdict last = judgeAt(places.front());
    for (std::size_t i = 1; i < places.size(); ++i) {
        const Verdict next = judgeAt(places[i]);
        if (next.unstable != last.unstable) {
            double before = places[i - 1];
            double after = places[i];
            Verdict other = next.unstable ? next : last;
            for (int halving = 0; halving < 40; ++halving) {
                const double middle = 0.5 * (before + after);
                const Verdict verdict = judgeAt(middle);
                if (verdict.unstable) other = verdict;
                (verdict.unstable == last.unstable ? before : after) = middle;
            }
            changes.push_back(changeAt(line(next.unstable ? before : after), other));
        }
        last = next;
    }
    return changes;
}

std::vector<PhaseReference::Change> PhaseReference::alongIsotherm(double T, double step) const {
    std::vector<double> places;
    for (double place = -60.0; place < 7.0; place += place < -4.0 ? 0.25 : step) {
        places.push_back(place);
    }
    return along(
        [&](double place) {
            const double V = b_ + b_ * std::exp(-place);
            return State{T, pressure(T, V), V};
        },
        places);
}

PhaseReference::State PhaseReference::onIsobar(double P, double T) const {
    State state{T, P, 0.0};
    double least = 1e300;
    for (const auto& root : fluid::VolumeCubicSolver(sMix_ * sMix_, b_, T, P)) {
        if (!root.isReal() || root.real <= b_) continue;
        const double u = 1.0 / (root.real - b_);
        const double G = std::log(u) + b_ * u - 2.0 * sMix_ * sMix_ / (fluid::R * T * root.real);
        if (G >= least) continue;
        least = G;
        state.V = root.real;
    }
    return state;
}

std::vector<PhaseReference::Change> PhaseReference::alongIsobar(double P, double step) const {
    const double largestB = *std::max_element(fluid::b.begin(), fluid::b.end());
    const double largestS = *std::max_element(s_.begin(), s_.end());
    const double hottest = densestA_ * densestA_ * largestB / (2.0 * fluid::R);
    const double coldest = 2.0 * largestS * densestA_ / (227.0 * fluid::R);
    std::vector<double> places;
    for (double place = -std::log(hottest); place < -std::log(coldest); place += step) {
        places.push_back(place);
    }
    return along([&](double place) { return onIsobar(P, std::exp(-place)); }, places);
}
