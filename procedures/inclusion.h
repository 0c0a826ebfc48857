#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/homogenisation.h"
#include "model/mixture.h"
#include "procedures/value_range.h"

namespace procedures {

// What is given of an inclusion.
enum class GivenBy { MolarVolume, Density, IntoLiquid, IntoVapour };

// The temperature or the pressure at which an inclusion was trapped, if one is known.
struct Trapping {
    std::optional<WrittenTemperature> T;
    std::optional<double> P;  // MPa

    bool isKnown() const { return T || P; }
};

// An inclusion as it was typed or pasted.
struct Inclusion {
    std::string name;
    GivenBy by = GivenBy::IntoLiquid;
    double number = 0.0;  // cm3/mol, g/cm3, or a temperature in the unit of `scale`
    TemperatureScale scale = kelvinScale;
    // Which of several points of homogenization it is, from the densest one on.
    std::optional<std::size_t> point{};
    // Its own, where it is not trapped as all others are.
    Trapping trapping{};
    // Why a pasted row was not understood; its text is the name then.
    std::string problem{};

    bool isByTemperature() const { return by == GivenBy::IntoLiquid || by == GivenBy::IntoVapour; }
    // The homogenization temperature that is given.
    WrittenTemperature temperature() const { return WrittenTemperature::typed(number, scale); }
};

// Where an inclusion homogenizes.
struct HomogenizationPoint {
    WrittenTemperature T;
    double P = 0.0;  // MPa
    double V = 0.0;  // cm3/mol
    fluid::Homogenisation into = fluid::Homogenisation::IntoLiquid;
    bool isCritical = false;
};

// What follows from what is given.
struct InclusionState {
    // Every point of homogenization that agrees with what is given, from the densest one on.
    std::vector<HomogenizationPoint> points;
    // The one that is meant; none where none was chosen of several.
    std::optional<HomogenizationPoint> point;
    double V = 0.0;  // cm3/mol, 0 where it is not known
    double density = 0.0;
    double slope = 0.0;  // dP/dT of the isochore, MPa/K
    // What is missing or has to be said; empty where there is nothing to say.
    std::string remark;
};

// Where the isochore of an inclusion meets its trapping condition.
struct TrappingPoint {
    WrittenTemperature T;
    double P = 0.0;  // MPa
};

// That point, or why there is none; neither where no isochore or no condition is known.
struct Trapped {
    std::optional<TrappingPoint> point;
    std::string remark;
};

Trapped TrappedAt(const fluid::Mixture& mixture, const InclusionState& state,
                  const Trapping& trapping);

InclusionState StateOf(const fluid::Mixture& mixture, const Inclusion& inclusion);

// What pasted rows leave open: what a number without a unit is, and for a homogenization
// temperature what it homogenizes into, if that was chosen.
struct PastePattern {
    std::optional<GivenBy> by;  // none: a homogenization temperature, into either
    TemperatureScale scale = kelvinScale;
};

struct PastedInclusions {
    std::vector<Inclusion> inclusions;
    std::string heads;         // the first row, where nothing in it is like a number
    std::string unit;          // that they name for all numbers without one
    std::size_t problems = 0;  // how many rows were not understood
};

// The inclusions of a text from a spreadsheet: in each row a value; or a name and a value; or a
// name, a value and "L" or "V" for what it homogenizes into. Tabs, semicolons or blanks stand
// between them, and a unit may follow the number or stand in the heads. Of a row that is not
// understood the text is kept as a name, with a sentence. Blank rows are left out.
PastedInclusions ReadPasted(std::string_view text, const PastePattern& pattern);

}  // namespace procedures
