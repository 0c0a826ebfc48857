#include "procedures/two_phases.h"

#include "model/homogenisation.h"
#include "procedures/phase_sentences.h"
#include "procedures/stability_text.h"

namespace procedures {

namespace {

using fluid::Outcome;

fluid::EquilibriumResult Iterated(const fluid::Mixture& mixture, const EquilibriumInput& input,
                                  double volumeFraction, const fluid::PhaseGuess& guess) {
    return fluid::IterateEquilibrium(mixture, input.T, input.V, volumeFraction, guess);
}

fluid::EquilibriumApproach ApproachTo(const fluid::Mixture& mixture,
                                      const EquilibriumInput& input) {
    return fluid::FindEquilibriumApproach(mixture, input.T, input.V);
}

// What is to be known of two phases in equilibrium beside their numbers.
std::string PhasesSentence(const fluid::Mixture& mixture, const fluid::EquilibriumResult& result) {
    const std::string split = SplitSentence(result.stability);
    return split.empty() && fluid::AreTwoLiquids(mixture, result.phases) ? twoLiquidsSentence
                                                                         : split;
}

// What a user has to know of a first approach; empty where it is an equilibrium like any other.
std::string SentenceOf(const fluid::Mixture& mixture, const EquilibriumInput& input,
                       const fluid::EquilibriumApproach& approach) {
    using Kind = fluid::EquilibriumApproach::Kind;
    switch (approach.kind) {
        case Kind::Homogeneous:
            return "the fluid is homogeneous at this temperature and density";
        case Kind::TwoLiquids:
            return HiddenLiquidsSentence(SentenceText(approach.guess.unknown) + " MPa");
        case Kind::NotFound:
            return "not homogeneous, but no two phases were found; the first approach is an "
                   "estimate only";
        case Kind::Metastable:
        case Kind::TwoPhases:
            break;
    }
    // As the calculation that starts from it will say.
    const fluid::EquilibriumResult result =
        Iterated(mixture, input, approach.volumeFraction, approach.guess);
    if (result.outcome == Outcome::Converged) return PhasesSentence(mixture, result);
    return approach.kind == Kind::Metastable ? SplitSentence(fluid::Stability::Metastable) : "";
}

}  // namespace

EquilibriumStart EquilibriumStartOf(const fluid::Mixture& mixture, const EquilibriumInput& input) {
    const fluid::EquilibriumApproach approach = ApproachTo(mixture, input);
    return {approach.guess, approach.volumeFraction, SentenceOf(mixture, input, approach)};
}

PhaseResults EquilibriumFrom(const fluid::Mixture& mixture, const EquilibriumInput& input,
                             double volumeFraction, const fluid::PhaseGuess& guess) {
    using Kind = fluid::EquilibriumApproach::Kind;
    const fluid::EquilibriumResult result = Iterated(mixture, input, volumeFraction, guess);
    const fluid::EquilibriumApproach approach = ApproachTo(mixture, input);
    PhaseResults shown;
    shown.isSolution = result.outcome == Outcome::Converged && result.fractionInRange;
    if (result.outcome == Outcome::NoSolution) {
        shown.report = noSolutionSentence;
    } else {
        shown.answer = QuantityText(result.phases.P);
        shown.x = PhaseTextsOf(mixture, result.phases.x, result.phases.Vx);
        shown.y = PhaseTextsOf(mixture, result.phases.y, result.phases.Vy);
    }
    if (shown.isSolution) {
        shown.report = "Comments to result: solution after " + std::to_string(result.iterations) +
                       " iterations, precision 1.0e-10";
        shown.x->volumeFraction = FractionText(1.0 - result.volumeFraction);
        shown.y->volumeFraction = FractionText(result.volumeFraction);
        shown.x->role = result.swapped ? " (vapour)" : " (liquid)";
        shown.y->role = result.swapped ? " (liquid)" : " (vapour)";
        shown.warning = PhasesSentence(mixture, result);
    } else if (result.outcome == Outcome::Converged) {
        shown.report =
            "Comment to result: warning: the fractions must have a number between 0 and 1";
        shown.x->volumeFraction = shown.y->volumeFraction = "error";
    } else if (result.outcome == Outcome::Trivial) {
        shown.report = std::string("Comments to result: ") + trivialSentence;
        shown.x->volumeFraction = shown.y->volumeFraction = "---";  // one phase has no share
    }
    const bool failsByItself = !shown.isSolution && approach.kind != Kind::TwoPhases;
    if (failsByItself || approach.kind == Kind::TwoLiquids) {
        // Where another first approach would do no better, it is said.
        shown.warning = SentenceOf(mixture, input, approach);
    }
    return shown;
}

}  // namespace procedures
