#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>

#include "model/phase_path.h"
#include "model/trial_phase.h"

namespace fluid {

// A state of a path and what would make it split.
struct Stop {
    double at = 0.0;  // the path's parameter
    BulkState bulk;
    std::optional<TrialPhase> best;  // the trial phase of largest drive
    double drive = -1.0;
    double rate = 0.0;  // change of the best drive with the parameter

    bool unstable() const;
};

// A state at which the mixture is stable and just coexists with a trial phase.
struct Transition {
    double at = 0.0;  // the path's parameter
    BulkState bulk;
    TrialPhase trial;
};

// The transition between two parameters that Newton's method finds for one trial phase from `at`;
// none where it leads out of them or to the bulk itself. Other phases are not looked at.
std::optional<Transition> FindTransition(const Mixture& mixture, const Path& path, double low,
                                         double high, double at, TrialPhase trial);

// Follows the stability of a mixture along a path, towards larger parameters, and gathers its
// transitions in their order.
class StabilityWalk {
  public:
    static constexpr std::size_t Capacity = 16;

    StabilityWalk(const Mixture& mixture, const Path& path) : mixture_(mixture), path_(path) {}

    // The stop at a parameter; none where the path has no state.
    std::optional<Stop> look(double at) const;
    void startAt(const Stop& stop) { last_ = stop; }
    // Goes on to a larger parameter and finds what lies between.
    void go(double at);
    const Stop& last() const { return last_; }

    std::span<const Transition> transitions() const { return {transitions_.data(), count_}; }

  private:
    struct Peak {
        double at;
        double slope;
    };

    std::optional<Stop> follow(double at, const TrialPhase& trial) const;
    Stop stopOf(double at, const BulkState& bulk, const TrialPhase& best) const;
    void between(const Stop& from, const Stop& to, int depth);
    void refine(const Stop& stable, const Stop& unstable);
    bool switchRoots(const Stop& from, const Stop& to);
    bool passCritical(const Stop& from, const Stop& to);
    Peak findPeak(const Stop& from, const Stop& to) const;
    void keep(const Transition& transition);

    const Mixture& mixture_;
    const Path& path_;
    Stop last_;
    std::array<Transition, Capacity> transitions_{};
    std::size_t count_ = 0;
};

// How far to go from a stop where `usual` is far enough as a rule: the nearer the mixture is to
// splitting by itself, the shorter a two-phase range may be.
double StrideFrom(const Mixture& mixture, const Stop& stop, double usual);

// Leads a walk on an Isotherm from the dilute gas to the parameter `densest` or to the pressure
// `highestP` in MPa. Returns whether the dilute gas is stable, which it is unless doubles have no
// room for a gas so dilute; then the walk starts at the most dilute one.
bool WalkIsotherm(const Mixture& mixture, double densest, double highestP, StabilityWalk& walk);

}  // namespace fluid
