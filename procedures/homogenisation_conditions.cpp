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

bool SeeksPressure(const HomogenisationInput& input) {
    return input.given == fluid::Given::Temperature;
}

double SoughtOf(const HomogenisationInput& input, const PhasePair& point) {
    return input.shown(SeeksPressure(input) ? point.P : point.T);
}

std::string WithUnit(const HomogenisationInput& input, const std::string& number) {
    return number + " " + (SeeksPressure(input) ? "MPa" : input.scale.name);
}

fluid::HomogenisationPoints PointsOf(const fluid::Mixture& mixture,
                                     const HomogenisationInput& input) {
    return fluid::FindHomogenisationPoints(mixture, input.given, input.value, input.kind);
}

// Why there is no point.
std::string NowhereSentence(const fluid::Mixture& mixture, const HomogenisationInput& input,
                            const fluid::HomogenisationPoints& found) {
    constexpr const char* estimate = "the first approach is an estimate only";
    if (!found.liquids.empty()) {
        const double value = SoughtOf(input, found.liquids.front());
        return HiddenLiquidsSentence(WithUnit(input, SentenceText(value)));
    }
    if (!found.isExamined) {
        constexpr int decimals = 2;
        const double coldest = input.scale.fromKelvin(fluid::ColdestT(mixture));
        return "not examined below " + toolkit::FixedText(coldest, decimals) + " " +
               input.scale.name + " or above 10000 MPa, " + estimate;
    }
    return std::string("no homogenization point exists here, ") + estimate;
}

// What is to be known of a point beside its numbers; empty for a single bubble or dew point.
std::string PointSentence(const fluid::Mixture& mixture, const HomogenisationInput& input,
                          const std::vector<PhasePair>& points, std::size_t number) {
    const bool areLiquids = fluid::AreTwoLiquids(mixture, points[number]);
    if (points.size() == 1) return areLiquids ? twoLiquidsSentence : "";
    std::string values;
    for (const PhasePair& point : points) {
        values += (values.empty() ? "" : ", ") + SentenceText(SoughtOf(input, point));
    }
    return std::to_string(points.size()) + " homogenization points: " + WithUnit(input, values) +
           "; this is number " + std::to_string(number + 1) +
           (areLiquids ? std::string("; ") + twoLiquidsSentence : "");
}

std::optional<std::size_t> NumberOf(const PhasePair& result, const std::vector<PhasePair>& points) {
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
    return SeeksPressure(*this) ? unknown : scale.fromKelvin(unknown);
}

double HomogenisationInput::taken(double number) const {
    return SeeksPressure(*this) ? number : scale.toKelvin(number);
}

HomogenisationStart HomogenisationStartOf(const fluid::Mixture& mixture,
                                          const HomogenisationInput& input, std::size_t point) {
    const fluid::HomogenisationPoints found = PointsOf(mixture, input);
    const std::vector<PhasePair>& points = found.points;
    if (points.empty()) {
        return {fluid::HomogenisationSeed(mixture, input.given, input.value, input.kind), 0,
                NowhereSentence(mixture, input, found)};
    }
    const std::size_t number = point % points.size();
    return {fluid::HomogenisationApproach(input.given, points[number]), number,
            PointSentence(mixture, input, points, number) +
                (points.size() > 1 ? ", press first approach again for the next" : "")};
}

HomogenisationAnswer HomogenisationFrom(const fluid::Mixture& mixture,
                                        const HomogenisationInput& input,
                                        const fluid::PhaseGuess& guess) {
    using fluid::Outcome;
    const fluid::HomogenisationResult result =
        fluid::IterateHomogenisation(mixture, input.given, input.value, input.kind, guess);
    const fluid::HomogenisationPoints found = PointsOf(mixture, input);
    HomogenisationAnswer answer;
    PhaseResults& shown = answer.results;
    if (result.outcome != Outcome::NoSolution) {
        shown.answer = QuantityText(SoughtOf(input, result.phases));
        shown.x = PhaseTextsOf(mixture, result.phases.x, result.phases.Vx);
        shown.y = PhaseTextsOf(mixture, result.phases.y, result.phases.Vy);
    }
    if (result.outcome != Outcome::Converged) {
        shown.report = result.outcome == Outcome::Trivial ? trivialSentence : noSolutionSentence;
        // Where no other first approach would do, it is said.
        shown.warning =
            found.points.empty() ? NowhereSentence(mixture, input, found) : std::string();
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
    shown.warning = SplitSentence(result.stability);
    if (result.stability == fluid::Stability::Stable) {
        answer.point = NumberOf(result.phases, found.points);
    }
    if (answer.point) {
        shown.warning = PointSentence(mixture, input, found.points, *answer.point);
    }
    return answer;
}

}  // namespace procedures
