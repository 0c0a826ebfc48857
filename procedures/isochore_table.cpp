#include "procedures/isochore_table.h"

#include <cmath>

#include "model/phase_split.h"
#include "model/van_der_waals.h"
#include "procedures/phase_sentences.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

constexpr int fractionDecimals = 8;  // as those of the phases elsewhere

const char* SplitName(const fluid::PhaseSplit& split) {
    if (!split.found) return "two phases, not found";
    return split.metastable ? "two of three phases" : "two phases";
}

}  // namespace

std::string IsochoreInput::refusal(const fluid::Mixture& mixture) const {
    if (!(V > 0.0) || !std::isfinite(V)) {
        return "warning: put a number for molar volume or for homogenization temperature";
    }
    if (!temperatures) {
        return "warning: put a number for both temperatures and for the step, or leave them empty";
    }
    const double b = mixture.covolume;
    if (!(V > b)) {
        return "warning: the molar volume must be larger than the co-volume of this fluid, " +
               SentenceText(b) + " " + volumeUnit;
    }
    const std::string refused = temperatures->refusal();
    const double a = mixture.attraction;
    const double highest = fluid::PressureVdW(a, b, temperatures->highest().kelvin, V);
    return refused.empty() && !std::isfinite(highest) ? tooLarge : refused;
}

IsochoreTable::IsochoreTable(const fluid::Mixture& mixture, const IsochoreInput& input)
    : mixture_(mixture),
      V_(input.V),
      temperatures_(*input.temperatures),
      a_(mixture.attraction),
      b_(mixture.covolume),
      boundary_(fluid::FindBoundary(mixture, input.V)) {}

SeriesTable::Row IsochoreTable::heads(const TemperatureScale& scale) {
    return {std::string("Temperature\n(") + scale.name + ")", "Pressure\n(MPa)",
            "Two phases\n(MPa)", "Vapour\nvolume fraction", "State"};
}

double IsochoreTable::pressure(double T) const {
    return fluid::PressureVdW(a_, b_, T, V_);
}

SeriesTable::Row IsochoreTable::row(std::size_t number, const TemperatureScale& scale,
                                    Digits digits) const {
    const WrittenTemperature T = temperatures_.at(number);
    Row cells = {CellText(T.in(scale), temperatures_.decimals(scale), digits),
                 CellText(pressure(T.kelvin), pressureDecimals, digits), "", "", ""};
    if (!boundary_ && T.kelvin < fluid::ColdestT(mixture_)) {
        cells.back() = "not examined";
    }
    if (!splitsAt(T.kelvin)) return cells;
    const auto split = fluid::SplitAtVolume(mixture_, T.kelvin, V_);
    if (!split) {  // one phase, but for rounding
        return cells;
    }
    cells.back() = SplitName(*split);
    if (split->found) {
        cells[2] = CellText(split->phases.P, pressureDecimals, digits);
        cells[3] = CellText(split->volumeFraction, fractionDecimals, digits);
    }
    return cells;
}

std::string IsochoreTable::fileHeading() const {
    return "Molar Volume = " + toolkit::NumberText(V_) + " cm3/mol\nDensity = " +
           toolkit::NumberText(fluid::MolarVolumeFromDensity(mixture_, V_)) +
           " g/cm3\nTemperature, Pressure\n(Celsius), (MPa)\n";
}

std::string IsochoreTable::homogenizationSentence(const TemperatureScale& scale) const {
    const auto inUnit = [scale](double kelvin) {
        return SentenceText(WrittenTemperature::calculated(kelvin).in(scale)) + " " + scale.name;
    };
    if (!boundary_) {
        return "The fluid of this density is homogeneous at every temperature above " +
               inUnit(fluid::ColdestT(mixture_)) + "; below it nothing is searched";
    }
    const bool intoLiquid = boundary_->kind() == fluid::Homogenisation::IntoLiquid;
    std::string sentence =
        "Homogenization at " + inUnit(boundary_->T) + " and " + SentenceText(boundary_->P) + " MPa";
    sentence += boundary_->isCritical() ? ", at the critical point"
                : boundary_->twoLiquids ? ", where two liquids become one"
                : intoLiquid            ? ", into the liquid"
                                        : ", into the vapour";
    if (boundary_->T > temperatures_.highest().kelvin) {
        sentence += "; these temperatures lie below it";
    } else if (boundary_->T < temperatures_.lowest().kelvin) {
        sentence += "; these temperatures lie above it";
    }
    return sentence;
}

}  // namespace procedures
