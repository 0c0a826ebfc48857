#include "procedures/spinodal_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "model/spinodal.h"
#include "model/van_der_waals.h"
#include "procedures/phase_sentences.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

using fluid::SpinodalKind;
using fluid::StatePoint;

constexpr double infinity = std::numeric_limits<double>::infinity();

// For a pure gas both kinds are the same.
std::vector<SpinodalKind> KindsOf(const fluid::Mixture& mixture) {
    if (mixture.count == 1) {
        return {SpinodalKind::Diffusional};
    }
    return {SpinodalKind::Diffusional, SpinodalKind::Mechanical};
}

// The dilute fluid is stable, so that each volume of a spinodal is a vapour side or a liquid side
// of unstable states by its place from the largest one.
const char* LimitName(const fluid::Mixture& mixture, SpinodalKind kind,
                      const fluid::SpinodalVolumes& volumes, std::size_t number) {
    const bool isLiquid = (volumes.count - number) % 2 == 0;
    if (mixture.count == 1) return isLiquid ? "liquid side" : "vapour side";
    if (kind == SpinodalKind::Diffusional) {
        return isLiquid ? "diffusional, liquid side" : "diffusional, vapour side";
    }
    return isLiquid ? "mechanical, liquid side" : "mechanical, vapour side";
}

std::size_t NearestOf(const fluid::SpinodalVolumes& volumes, double V) {
    const auto* const nearest =
        std::min_element(volumes.begin(), volumes.end(),
                         [V](double x, double y) { return std::abs(x - V) < std::abs(y - V); });
    return static_cast<std::size_t>(nearest - volumes.begin());
}

}  // namespace

std::string SpinodalInput::refusal(const fluid::Mixture& mixture) const {
    if (given == Given::Volume) {
        if (!(V > 0.0) || !std::isfinite(V)) return "warning: put a number for molar volume";
        const double b = mixture.covolume;
        return V > b ? ""
                     : "warning: the molar volume must be larger than the co-volume of this "
                       "fluid, " +
                           SentenceText(b) + " " + volumeUnit;
    }
    if (!temperatures) {
        return given == Given::Range
                   ? "warning: put a number for both temperatures and for the step"
                   : "warning: put a number for temperature";
    }
    return temperatures->refusal();
}

SpinodalTable::SpinodalTable(const fluid::Mixture& mixture, const SpinodalInput& input)
    : mixture_(mixture) {
    if (input.given == SpinodalInput::Given::Volume) {
        addAtVolume(input.V);
        traceAround(limits_.front().state.T);
        return;
    }
    asked_ = input.temperatures->count();
    for (std::size_t i = 0; i < asked_; ++i) {
        addAt(input.temperatures->at(i));
    }
    if (input.given == SpinodalInput::Given::Temperature) {
        traceAround(input.temperatures->lowest().kelvin);
    } else {
        trace(input.temperatures->lowest().kelvin, input.temperatures->highest().kelvin);
    }
}

SpinodalTable::Limit SpinodalTable::limitAt(const WrittenTemperature& T, double V,
                                            const char* name) const {
    const double P = fluid::PressureVdW(mixture_.attraction, mixture_.covolume, T.kelvin, V);
    return {{T.kelvin, P, V}, T, name};
}

void SpinodalTable::addAt(const WrittenTemperature& T) {
    const std::size_t before = limits_.size();
    for (const SpinodalKind kind : KindsOf(mixture_)) {
        const fluid::SpinodalVolumes volumes = fluid::SpinodalOf(mixture_, kind).volumes(T.kelvin);
        for (std::size_t i = 0; i < volumes.count; ++i) {
            limits_.push_back(
                limitAt(T, volumes.volumes[i], LimitName(mixture_, kind, volumes, i)));
        }
    }
    if (limits_.size() == before) {
        constexpr double none = std::numeric_limits<double>::quiet_NaN();
        limits_.push_back({{T.kelvin, none, none}, T, "no spinodal"});
        missing_.push_back(T);
    }
}

void SpinodalTable::addAtVolume(double V) {
    for (const SpinodalKind kind : KindsOf(mixture_)) {
        const double T = fluid::SpinodalOf(mixture_, kind).temperature(V);
        const fluid::SpinodalVolumes volumes = fluid::SpinodalOf(mixture_, kind).volumes(T);
        limits_.push_back(limitAt(WrittenTemperature::calculated(T), V,
                                  LimitName(mixture_, kind, volumes, NearestOf(volumes, V))));
    }
}

void SpinodalTable::traceAround(double T) {
    trace(0.0, infinity);
    double hottest = 0.0;
    for (const auto& curve : diffusional_) {
        for (const StatePoint& point : curve) {
            hottest = std::max(hottest, point.T);
        }
    }
    constexpr double share = 0.6;
    constexpr double below = 0.9;
    trace(std::min(share * hottest, below * T), infinity);
}

void SpinodalTable::trace(double lowestT, double highestT) {
    diffusional_ = fluid::TraceSpinodal(mixture_, SpinodalKind::Diffusional, lowestT, highestT);
    mechanical_ = isPure()
                      ? Curves()
                      : fluid::TraceSpinodal(mixture_, SpinodalKind::Mechanical, lowestT, highestT);
}

SeriesTable::Row SpinodalTable::heads(const TemperatureScale& scale) {
    return {std::string("Temperature\n(") + scale.name + ")", "Pressure\n(MPa)",
            std::string("Molar Volume\n(") + volumeUnit + ")",
            std::string("Density\n(") + densityUnit + ")", "Limit"};
}

SeriesTable::Row SpinodalTable::row(std::size_t number, const TemperatureScale& scale,
                                    Digits digits) const {
    const Limit& limit = limits_[number];
    const std::string T = CellText(limit.T.in(scale), temperatureDecimals, digits);
    if (!limit.isThere()) return {T, "", "", "", limit.name};
    const double density = fluid::MolarVolumeFromDensity(mixture_, limit.state.V);
    return {T, CellText(limit.state.P, pressureDecimals, digits),
            CellText(limit.state.V, volumeDecimals, digits),
            CellText(density, densityDecimals, digits), limit.name};
}

std::string SpinodalTable::fileHeading() const {
    return "Temperature, Pressure, Molar Volume, Density, Limit\n"
           "(Celsius), (MPa), (cm3/mol), (g/cm3)\n";
}

std::string SpinodalTable::missingSentence(const TemperatureScale& scale) const {
    if (missing_.empty()) {
        return {};
    }
    if (missing_.size() == asked_) {
        return std::string("There is no spinodal") +
               (asked_ == 1 ? "" : " at any of these temperatures") +
               ": the fluid withstands small changes at every molar volume";
    }
    // The highest temperature of a spinodal lies below all of them.
    const auto coldest = std::min_element(
        missing_.begin(), missing_.end(),
        [](const auto& one, const auto& other) { return one.kelvin < other.kelvin; });
    return "There is no spinodal at " + SentenceText(coldest->in(scale)) + " " + scale.name +
           " and above: " + std::to_string(missing_.size()) + " of " + std::to_string(asked_) +
           " temperatures";
}

}  // namespace procedures
