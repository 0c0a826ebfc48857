#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>
#include <vector>

#include "model/composition.h"
#include "procedures/inclusion_list.h"
#include "procedures/isochore_diagram.h"

// A thousand inclusions pasted from a spreadsheet, as the screen Isochores reads, calculates and
// draws them.

namespace {

constexpr std::size_t inclusions = 1000;

fluid::Mixture MixtureOf(bool hasAll) {
    for (std::size_t i = 0; i < fluid::componentCount; ++i) {
        const bool isChief = fluid::componentFormulas[i] == "CO2";
        const bool isOther = hasAll || fluid::componentFormulas[i] == "CH4";
        const double share = hasAll ? 0.03 : 0.3;
        fluid::SetFractionCount(i, isChief ? 0.7 : isOther ? share : 0.0);
    }
    fluid::AcceptComposition();
    return fluid::AcceptedMixture();
}

std::string PastedText() {
    std::string text;
    for (std::size_t i = 0; i < inclusions; ++i) {
        const double T = 200.0 + 60.0 * static_cast<double>(i) / inclusions;
        text += "FI " + std::to_string(i) + "\t" + std::to_string(T) + "\tL\n";
    }
    return text;
}

void PastedList(benchmark::State& run) {
    const fluid::Mixture mixture = MixtureOf(run.range(0) != 0);
    const std::string text = PastedText();
    for ([[maybe_unused]] auto _ : run) {
        procedures::InclusionList list;
        list.calculate({mixture, ""});
        list.add(procedures::ReadPasted(text, {}).inclusions);
        std::vector<procedures::InclusionLine> lines;
        for (std::size_t i = 0; i < list.count(); ++i) {
            if (list.state(i).V > 0.0) {
                lines.push_back(procedures::LineOf(mixture, list.state(i), 150.0, 400.0, 0));
            }
        }
        benchmark::DoNotOptimize(
            procedures::LineSeries(lines, procedures::kelvinScale, "isochores", 4));
    }
}
BENCHMARK(PastedList)->ArgName("all gases")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
