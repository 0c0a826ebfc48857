#include "procedures/homogenisation_conditions.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "model/first_approach.h"
#include "model/homogenisation.h"
#include "procedures/phase_sentences.h"
#include "procedures/stability_text.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

using fluid::PhasePair;

bool seeksPressure(const HomogenisationInput& input) {
    return input.given == fluid::Given::Temperature;
}

double soughtOf(const HomogenisationInput& input, const PhasePair& point) {
    return input.shown(seeksPressure(input) ? point.P : point.T);
}

std::string withUnit(const HomogenisationInput& input, const std::string& number) {
    return number + " " + (seeksPressure(input) ? "MPa" : input.scale.name);
}

fluid::HomogenisationPoints pointsOf(const fluid::Mixture& mixture,
                                     const HomogenisationInput& input) {
    return fluid::FindHomogenisationPoints(mixture, input.given, input.value, input.kind);
}

/// Why there is no point.
std::string nowhereSentence(const fluid::Mixture& mixture, const HomogenisationInput& input,
                            const fluid::HomogenisationPoints& found) {
    constexpr const char* estimate = "the first approach is an estimate only";
    if (!found.liquids.empty()) {
        const double value = soughtOf(input, found.liquids.front());
        return hiddenLiquidsSentence(withUnit(input, sentenceText(value)));
    }
    if (!found.isExamined) {
        constexpr int decimals = 2;
        const double coldest = input.scale.fromKelvin(fluid::ColdestT(mixture));
        return "not examined below " + toolkit::fixedText(coldest, decimals) + " " +
               input.scale.name + " or above 10000 MPa, " + estimate;
    }
    return std::string("no homogenization point exists here, ") + estimate;
}

/// What is to be known of a point beside its numbers; empty for a single bubble or dew point.
std::string pointSentence(const fluid::Mixture& mixture, const HomogenisationInput& input,
                          const std::vector<PhasePair>& points, std::size_t number) {
    const bool areLiquids = fluid::AreTwoLiquids(mixture, points[number]);
    if (points.size() == 1) {
        return areLiquids ? twoLiquidsSentence : "";
    }
    std::string values;
    for (const PhasePair& point : points) {
        values += (values.empty() ? "" : ", ") + sentenceText(soughtOf(input, point));
    }
    return std::to_string(points.size()) + " homogenization points: " + withUnit(input, values) +
           "; this is number " + std::to_string(number + 1) +
           (areLiquids ? std::string("; ") + twoLiquidsSentence : "");
}

std::optional<std::size_t> numberOf(const PhasePair& result, const std::vector<PhasePair>& points) {
    const auto isResult = [&result](const PhasePair& point) {
        constexpr double same = 1e-6;
        return std::abs(point.P / result.P - 1.0) < same &&
               std::abs(point.T / result.T - 1.0) < same;
    };
    const auto found = std::find_if(points.begin(), points.end(), isResult);
    return found == points.end() ? std::nullopt
                                 : std::optional<std::size_t>(found - points.begin());
}

}  // namespace

double HomogenisationInput::shown(double unknown) const {
    return seeksPressure(*this) ? unknown : scale.fromKelvin(unknown);
}

double HomogenisationInput::taken(double number) const {
    return seeksPressure(*this) ? number : scale.toKelvin(number);
}

HomogenisationStart homogenisationStart(const fluid::Mixture& mixture,
                                        const HomogenisationInput& input, std::size_t point) {
    const fluid::HomogenisationPoints found = pointsOf(mixture, input);
    const std::vector<PhasePair>& points = found.points;
    if (points.empty()) {
        return {fluid::HomogenisationSeed(mixture, input.given, input.value, input.kind), 0,
                nowhereSentence(mixture, input, found)};
    }
    const std::size_t number = point % points.size();
    return {fluid::HomogenisationApproach(input.given, points[number]), number,
            pointSentence(mixture, input, points, number) +
                (points.size() > 1 ? ", press first approach again for the next" : "")};
}

HomogenisationAnswer homogenisationFrom(const fluid::Mixture& mixture,
                                        const HomogenisationInput& input,
                                        const fluid::PhaseGuess& guess) {
    using fluid::Outcome;
    const fluid::HomogenisationResult result =
        fluid::IterateHomogenisation(mixture, input.given, input.value, input.kind, guess);
    const fluid::HomogenisationPoints found = pointsOf(mixture, input);
    HomogenisationAnswer answer;
    PhaseResults& shown = answer.results;
    if (result.outcome != Outcome::NoSolution) {
        shown.answer = quantityText(soughtOf(input, result.phases));
        shown.x = phaseTexts(mixture, result.phases.x, result.phases.Vx);
        shown.y = phaseTexts(mixture, result.phases.y, result.phases.Vy);
    }
    if (result.outcome != Outcome::Converged) {
        shown.report = result.outcome == Outcome::Trivial ? trivialSentence : noSolutionSentence;
        // Where no other first approach would do, it is said.
        shown.warning =
            found.points.empty() ? nowhereSentence(mixture, input, found) : std::string();
        return answer;
    }
    shown.isSolution = true;
    shown.report =
        "solution after " + std::to_string(result.iterations) + " iterations, accuracy 1.0e-10";
    if (input.kind == fluid::Homogenisation::IntoLiquid) {
        shown.x->role = ", solution (liquid)";
    } else {
        shown.y->role = ", solution (vapour)";
    }
    shown.warning = splitSentence(result.stability);
    if (result.stability == fluid::Stability::Stable) {
        answer.point = numberOf(result.phases, found.points);
    }
    if (answer.point) {
        shown.warning = pointSentence(mixture, input, found.points, *answer.point);
    }
    return answer;
}

}  // namespace procedures
