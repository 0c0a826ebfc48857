#include "procedures/state_range.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "model/fluid_model.h"
#include "model/properties.h"
#include "procedures/inversion_curve.h"
#include "procedures/property_table.h"
#include "tests/model/golden.h"
#include "tests/procedures/accepted.h"
#include "toolkit/number_text.h"

namespace {

using procedures::RangeInput;
using procedures::StateRange;
using procedures::ValueRange;
using procedures::WrittenTemperature;

const auto kelvin = procedures::kelvinScale;

RangeInput OverT(double P, double from, double to, double step) {
    return {.P = P, .temperatures = {{*ValueRange::of(from, to, step), kelvin}}};
}
RangeInput OverP(double T, double from, double to, double step) {
    return {.isOverPressure = true,
            .T = WrittenTemperature::typed(T, kelvin),
            .pressures = ValueRange::of(from, to, step)};
}

const Fractions carbonic = {{"CO2", 0.7}, {"CH4", 0.3}};
const Fractions pure = {{"CO2", 1.0}};

// The states of the rows that differ from the one before, with their numbers.
std::string NamesAlong(const StateRange& range) {
    std::string names;
    std::string before;
    for (std::size_t i = 0; i < range.count(); ++i) {
        const std::string name = range.state(i).name;
        names +=
            name == before ? "" : name + " " + toolkit::SignificantText(range.value(i), 6) + "|";
        before = name;
    }
    return names;
}

TEST(StateRanges, PhaseChangesAreRowsInTheDirectionOfTheRange) {
    struct Case {
        Fractions fractions;
        RangeInput input;
        std::size_t count;
        std::string names;
    };
    const std::string sat = "saturated ";
    for (const Case& c : std::vector<Case>{
             {carbonic, OverT(3.0, 200, 240, 10), 7,
              "liquid-like 200|bubble point 213.169|two phases 220|dew point 229.728|gas-like "
              "230|"},
             {carbonic, OverP(220.0, 5, 1, 1), 7,
              "liquid-like 5|bubble point 3.38666|two phases 3|dew point 2.42232|gas-like 2|"},
             {pure, OverT(5.0, 300, 250, 10), 8,
              "gas-like 300|saturated vapour 276.718|saturated liquid 276.718|liquid-like 270|"},
             {pure, OverP(280.0, 5, 6, 0.25), 7,
              "gas-like 5|saturated vapour 5.25543|saturated liquid 5.25543|liquid-like 5.5|"},
             {pure, OverT(5.0, 2, 4, 1), 3, "not examined 2|"},
             {carbonic, OverT(8.0, 270, 310, 20), 3, "liquid-like 270|supercritical 290|"}}) {
        const StateRange range(Accepted(c.fractions), c.input);
        EXPECT_EQ(c.input.refusal(), "");
        EXPECT_EQ(range.count(), c.count);
        EXPECT_EQ(NamesAlong(range), c.names);
    }
}

// H = U + PV, G = H - TS and the sum of the potentials hold in every row, also of two phases; G
// goes on where a pure gas jumps; Cp is the slope of H.
TEST(StateRanges, IdentitiesHoldOverRanges) {
    int jumps = 0;
    enum Quantity : std::size_t { V, Density, Z, U, H, S, A, G, Cv, Cp };
    for (const auto& [fractions, input] :
         std::vector<std::pair<Fractions, RangeInput>>{{carbonic, OverT(3.0, 200, 240, 0.5)},
                                                       {carbonic, OverP(220.0, 1, 5, 0.05)},
                                                       {pure, OverT(5.0, 250, 300, 0.5)},
                                                       {pure, OverP(280.0, 4, 7, 0.05)}}) {
        const fluid::Mixture& mixture = Accepted(fractions);
        const StateRange range(mixture, input);
        const auto properties = procedures::PropertyQuantities(procedures::Amount::Mole);
        const auto perMass = procedures::PropertyQuantities(procedures::Amount::Kilogram);
        const auto potentials = procedures::PotentialQuantities(mixture);
        for (std::size_t i = 0; i < range.count(); ++i) {
            const auto state = range.state(i);
            const auto at = [&](std::size_t quantity) {
                return properties[quantity].value(state).value();
            };
            const double scale = std::abs(at(H));
            SCOPED_TRACE(testing::Message()
                         << state.T << " K " << state.P << " MPa " << state.name);
            EXPECT_LT(Error(at(H), at(U) + state.P * at(V), scale), 1e-12);
            EXPECT_LT(Error(at(G), at(H) - state.T * at(S), scale), 1e-12);
            EXPECT_LT(RelativeError(at(Density) * at(V), mixture.molarMass), 1e-12);
            EXPECT_LT(RelativeError(perMass[H].value(state).value() * mixture.molarMass, at(H)),
                      1e-12);
            double sum = 0.0;
            for (std::size_t k = 0; k < mixture.count; ++k) {
                sum += mixture.z[k] * potentials[6 * k + 1].value(state).value();
            }
            EXPECT_LT(RelativeError(sum, at(G)), 1e-12);
            EXPECT_EQ(properties[Cp].value(state).has_value(), state.phases.size() == 1);
            if (i > 0 && range.value(i) == range.value(i - 1)) {
                const auto before = range.state(i - 1);
                EXPECT_LT(RelativeError(*properties[G].value(before), at(G)), 1e-12);
                // Clausius and Clapeyron: along the saturation dP/dT is the quotient of the jumps.
                constexpr double step = 1e-3;
                const auto pressure = [&mixture](double T) {
                    return fluid::FindHomogenisationPoints(mixture, fluid::Given::Temperature, T,
                                                           fluid::Homogenisation::IntoLiquid)
                        .points.at(0)
                        .P;
                };
                const double slope =
                    (pressure(state.T + step) - pressure(state.T - step)) / 2.0 / step;
                EXPECT_LT(RelativeError((at(S) - *properties[S].value(before)) /
                                            (at(V) - *properties[V].value(before)),
                                        slope),
                          1e-6);
                ++jumps;
            }
            if (i > 0 && !input.isOverPressure && state.phases.size() == 1) {
                constexpr double step = 1e-3;
                const auto near = range.stateAt(state.T + step);
                const auto nearer = range.stateAt(state.T - step);
                if (near.name == state.name && nearer.name == state.name) {
                    EXPECT_LT(
                        RelativeError((*properties[H].value(near) - *properties[H].value(nearer)) /
                                          2.0 / step,
                                      at(Cp)),
                        1e-5);
                }
            }
        }
    }
    EXPECT_EQ(jumps, 2);
}

// Along an isenthalp the temperature is highest where the coefficient changes its sign.
TEST(StateRanges, TheJouleThomsonCoefficientChangesItsSignAtTheInversionPoints) {
    const StateRange range(Accepted({{"N2", 1.0}}), OverT(10.0, 110, 900, 10));
    const auto quantities = procedures::PropertyQuantities(procedures::Amount::Mole);
    std::vector<double> changes;
    for (std::size_t i = 1; i < range.count(); ++i) {
        const auto of = [&](std::size_t row) { return *quantities[15].value(range.state(row)); };
        if ((of(i) > 0.0) != (of(i - 1) > 0.0)) changes.push_back(range.value(i));
    }
    auto points = fluid::InversionPoints(range.mixture(), 10.0);
    ASSERT_EQ(changes.size(), points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_TRUE(points[i].T > changes[i] - 10.0 && points[i].T <= changes[i]) << points[i].T;
        const auto enthalpy = [&](double T, double P) {
            return *quantities[4].value(
                procedures::StateRange(range.mixture(), OverP(T, P, P, 0)).state(0));
        };
        constexpr double step = 0.01;
        EXPECT_NEAR(enthalpy(points[i].T, 10.0 + step), enthalpy(points[i].T, 10.0 - step), 1e-4);
    }
}

// Its ends are the inversion temperatures without pressure, 2a/(Rb) and a ninth of it, and it is
// dotted where the fluid would split.
TEST(StateRanges, TheInversionCurveHasNoJouleThomsonCoefficient) {
    const fluid::Mixture& mixture = Accepted(carbonic);
    const auto curve = procedures::InversionSeries(mixture, procedures::celsiusScale).back();
    const double hottest = 2.0 * mixture.attraction / (fluid::R * mixture.covolume);
    EXPECT_NEAR(curve.x.front() + procedures::zeroCelsius, hottest, 0.01);
    EXPECT_NEAR(curve.x.back() + procedures::zeroCelsius, hottest / 9.0, 1e-9);
    const auto coefficient = procedures::PropertyQuantities(procedures::Amount::Mole)[15];
    std::size_t stable = 0;
    for (std::size_t i = 20; i + 1 < curve.size(); i += 7) {
        const auto point = curve.between(i, 0.5);
        const auto state =
            StateRange(mixture, OverP(point.x + procedures::zeroCelsius, point.y, point.y, 0))
                .state(0);
        EXPECT_EQ(curve.stateAt(i), state.phases.size() == 1 ? "stable" : "would split") << i;
        if (state.phases.size() == 1) {
            EXPECT_NEAR(coefficient.value(state).value(), 0.0, 1e-9) << i;
            ++stable;
        }
    }
    EXPECT_GT(stable, 20U);
    EXPECT_EQ(curve.parts.size(), 2U);
}

TEST(StateRanges, TablesAndCurvesShowJumpsAndLeaveOutWhatHasNoValue) {
    const auto quantities = procedures::PropertyQuantities(procedures::Amount::Mole);
    const StateRange jumping(Accepted(pure), OverT(5.0, 250, 300, 0.01));
    const auto curve = RangeCurve(jumping, quantities[0], procedures::celsiusScale);
    ASSERT_EQ(curve.parts.size(), 3U);
    EXPECT_EQ(curve.parts[0].state + curve.parts[1].state, "one phasephase change");
    const std::size_t jump = curve.parts[1].first;
    EXPECT_EQ(curve.x[jump], curve.x[jump + 1]);
    EXPECT_GT(curve.y[jump + 1], 2.0 * curve.y[jump]);
    EXPECT_LT(curve.size(), 400U);
    const auto between = curve.between(jump + 1, 0.5);
    EXPECT_EQ(between.y,
              *quantities[0].value(jumping.stateAt(between.x + procedures::zeroCelsius)));
    const procedures::RangeTable table(jumping, {quantities[0], quantities[4]});
    EXPECT_EQ(table.count(), 5003U);
    EXPECT_EQ(
        table.row(1, kelvin, procedures::Digits::Shown),
        (procedures::SeriesTable::Row{"250.01", "5", "liquid-like", "66.658644", "-402473.757"}));
    EXPECT_TRUE(table.fileText().starts_with(
        "Composition = CO2\nTemperature, Pressure, State, molar volume, enthalpy\n(Celsius), "
        "(MPa), , (cm³/mol), (J/mol)\n-23.15, 5, liquid-like, 66.6557260"))
        << table.fileText().substr(0, 200);

    const StateRange split(Accepted(carbonic), OverP(220.0, 1, 5, 0.1));
    const auto heat = RangeCurve(split, quantities[9], kelvin);
    const auto volume = RangeCurve(split, quantities[0], kelvin);
    EXPECT_TRUE(std::any_of(heat.x.begin(), heat.x.end(), [](double x) { return std::isnan(x); }));
    ASSERT_EQ(volume.parts.size(), 3U);
    EXPECT_EQ(volume.parts[1].state, "two phases");
    for (const auto& [input, said] : std::vector<std::pair<RangeInput, std::string>>{
             {OverT(0.0, 250, 300, 1), "warning: put a number for pressure, for both"},
             {OverP(0.0, 1, 2, 1), "warning: put a number for temperature, for both"},
             {OverP(220.0, 0, 2, 1), "warning: pressures must be above 0"},
             {OverT(5.0, -1, 2, 1), "warning: temperatures must be above"},
             {OverP(220.0, 1, 2, 1e-6), "warning: these would be 1000001 pressures"}}) {
        EXPECT_TRUE(input.refusal().starts_with(said)) << input.refusal();
    }
}

}  // namespace
