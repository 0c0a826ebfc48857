#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "model/fluid_state.h"
#include "procedures/series_table.h"
#include "procedures/state_range.h"

namespace procedures {

// What a fluid is at its temperature and pressure: one stable phase, or two with their shares.
std::string StateSentence(const fluid::Mixture& mixture, const fluid::FluidState& state);

// At which temperatures the Joule-Thomson coefficient of the stable fluid changes its sign.
std::string InversionSentence(const fluid::Mixture& mixture, double P);

// "gas-like", "liquid-like" and so on.
const char* KindText(fluid::PhaseKind kind);
// The share of the amount that phase Y has.
double AmountOfY(const fluid::PhaseSplit& split);

// What an extensive property is given for.
enum class Amount { Mole, Kilogram };

// What is shown of a fluid: the state that it would have at one of its molar volumes, or the two
// phases into which it splits.
using ChosenVolume = std::optional<std::size_t>;

// A table of numbers, one quantity in each line or each column, and what is to be said about it.
struct StateTable {
    using Row = std::vector<std::string>;
    // Why there is no value: there can be none, the note tells, or it has no room in numbers.
    enum class Absence { Pointless, Explained, Unexplained };
    struct Number {
        std::optional<double> value;
        int decimals = 0;
        Absence absence = Absence::Unexplained;
    };
    struct Line {
        Row names;
        std::vector<Number> numbers;
    };

    Row heads{};
    std::vector<Line> lines{};
    std::string note{};
};

StateTable::Row RowOf(const StateTable::Line& line, Digits digits);

// The thermodynamic properties: of one state in ideal-gas, residual and total parts, of two phases
// of each and of both together.
StateTable PropertiesAt(const fluid::Mixture& mixture, const fluid::FluidState& state,
                        ChosenVolume chosen, Amount amount);

// The decimals that a number of a table has at most.
inline constexpr int mostDecimals = 6;

StateTable::Row PotentialHeads();
// The chemical potentials and partial molar properties of the gases, in each phase.
StateTable PotentialsAt(const fluid::Mixture& mixture, const fluid::FluidState& state,
                        ChosenVolume chosen);

// The same quantities over a range of states: the properties of the whole fluid; of each gas its
// fugacity, ln φ, chemical potential and partial molar properties.
std::vector<RangeQuantity> PropertyQuantities(Amount amount);
std::vector<RangeQuantity> PotentialQuantities(const fluid::Mixture& mixture);

}  // namespace procedures
