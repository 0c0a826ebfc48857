#include "model/properties.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <span>

#include "model/composition.h"
#include "model/ideal_gas.h"
#include "model/van_der_waals.h"
#include "tests/model/golden.h"

namespace {

using fluid::MixtureProperties;
using fluid::Property;

constexpr std::size_t columns = 69;

MixtureProperties PropertiesAt(double T, double P, double V) {
    return fluid::PropertiesOf(fluid::AcceptedMixture(), T, P, V);
}

// A golden state and what the model says of it.
struct GoldenState {
    explicit GoldenState(std::span<const double> golden) : row(golden) {
        Accept(row.first(fluid::componentCount));
        all = PropertiesAt(T, P, V);
        components = fluid::ComponentPropertiesOf(fluid::AcceptedMixture(), T, P, V);
    }
    std::size_t count() const { return fluid::AcceptedMixture().count; }

    std::span<const double> row;
    double T = row[11];
    double P = row[12];
    double V = row[13];
    double RT = fluid::R * T;
    MixtureProperties all;
    decltype(fluid::ComponentPropertiesOf({}, 0.0, 0.0, 0.0)) components;
};

template <class Visit>
void ForEachState(Visit visit) {
    for (const auto& row : ReadGolden("properties.csv", columns)) {
        SCOPED_TRACE(::testing::Message() << row[11] << " K, " << row[13] << " cm3/mol");
        visit(GoldenState(row));
    }
}

// By how much a rounding grows where dP/dV almost vanishes.
double Growth(const GoldenState& state) {
    const double free = state.V - fluid::AcceptedMixture().covolume;
    return std::max(1.0, state.RT * state.V / free / free * std::abs(state.row[21]));
}

// The dilute limit of the mixture: 1e-6 MPa.
TEST(PropertiesTest, DiluteGasesHaveThePublishedValues) {
    constexpr double zero = 298.15;
    for (const auto& row : ReadGolden("ideal_gas.csv", 6)) {
        const auto index = static_cast<std::size_t>(row[0]);
        AcceptPure(index);
        const double T = row[1];
        const double V = fluid::R * T / 1e-6;
        const double P = fluid::PressureVdW(fluid::a[0][0], fluid::b[0], T, V);
        const MixtureProperties all = PropertiesAt(T, P, V);
        const std::array<double, 3> values = {
            *all.Cp.total, (*all.H.total - fluid::IdealGas(index, zero).H) / 1000.0,
            *all.S.total + fluid::R * std::log(P / fluid::standardPressure)};
        for (std::size_t i = 0; i < values.size(); ++i) {
            const double tolerance = std::max(6e-4, row[5] * std::abs(row[2 + i]));
            EXPECT_NEAR(values[i], row[2 + i], tolerance) << index << ' ' << T << ' ' << i;
        }
    }
}

TEST(PropertiesTest, IdealGasIsSmoothWhereTwoRowsMeet) {
    for (std::size_t i = 0; i < fluid::componentCount; ++i) {
        for (const double T : {0.1, 10.0, 50.0, 200.0, 250.0, 1000.0, 6000.0, 1e5}) {
            const auto below = fluid::IdealGas(i, T * (1.0 - 1e-9));
            const auto above = fluid::IdealGas(i, T * (1.0 + 1e-9));
            EXPECT_NEAR(below.Cp, above.Cp, 2e-5 * below.Cp) << i << ' ' << T;
            EXPECT_NEAR(below.H, above.H, 0.06) << i << ' ' << T;
            EXPECT_NEAR(below.S, above.S, 1e-4) << i << ' ' << T;
        }
    }
    EXPECT_EQ(fluid::IdealGas(0, 0.0).Cp, 0.0);
}

TEST(PropertiesTest, PropertiesAreDerivativesOfTheHelmholtzEnergy) {
    double worst = 0.0;
    ForEachState([&worst](const GoldenState& state) {
        const auto& [row, T, P, V, RT, all, components] = state;
        const double growth = Growth(state);
        const auto compare = [&worst](const std::optional<double>& value, double golden,
                                      double scale, double grown = 1.0) {
            ASSERT_TRUE(value);
            const double most = grown * std::max(std::abs(golden), scale);
            worst = std::max(worst, Error(*value, golden, most));
        };
        compare(all.Z.total, P * V / RT, 0.0);
        compare(all.U.total, row[14], RT);
        compare(all.H.total, row[15], RT);
        compare(all.S.total, row[16], fluid::R);
        compare(all.A.total, row[17], RT);
        compare(all.G.total, row[18], RT);
        compare(all.Cv.total, row[19], fluid::R);
        compare(all.Cp.total, row[20], 0.0, growth);
        compare(all.heatRatio.total, row[20] / row[19], 0.0, growth);
        compare(all.compressibility.total, row[21], 0.0, growth);
        compare(all.expansion.total, row[22], 0.0, growth);
        compare(all.isentropicExpansion.total, -row[19] / (T * V) * row[21] / row[22], 0.0);
        EXPECT_EQ(all.soundSpeed.total.has_value(), row[23] > 0.0);
        if (row[23] > 0.0) compare(all.soundSpeed.total, std::sqrt(row[23]), 0.0);
        compare(all.jouleThomson.total, row[24], V / std::abs(row[20]));
        for (std::size_t k = 0; k < state.count(); ++k) {
            const std::size_t column = 25 + fluid::AcceptedMixture().index[k];
            compare(components[k].chemicalPotential, row[column], RT);
            compare(components[k].enthalpy, row[column + 11], RT, growth);
            compare(components[k].entropy, row[column + 22], fluid::R, growth);
            compare(components[k].volume, row[column + 33], V, growth);
        }
    });
    EXPECT_LT(worst, 1e-13);
}

TEST(PropertiesTest, PartsAddUpAndAreGivenOnlyWhereTheyExist) {
    ForEachState([](const GoldenState& state) {
        const MixtureProperties& all = state.all;
        const auto expectParts = [](const Property& property, bool exist) {
            ASSERT_EQ(property.idealGas && property.residual, exist);
            if (exist) {
                const double scale = std::abs(*property.idealGas) + std::abs(*property.residual);
                EXPECT_NEAR(*property.idealGas + *property.residual, *property.total,
                            1e-13 * scale);
            }
        };
        for (const Property* const property : {&all.Z, &all.U, &all.H, &all.Cv, &all.Cp}) {
            expectParts(*property, true);
        }
        for (const Property* const property : {&all.V, &all.density, &all.S, &all.A, &all.G}) {
            expectParts(*property, state.P > 0.0);
        }
        EXPECT_EQ(state.components[0].logPhi.has_value(), state.P > 0.0);
    });
    const double b = fluid::AcceptedMixture().covolume;
    EXPECT_FALSE(PropertiesAt(300.0, 1.0, b).U.total);
    EXPECT_FALSE(PropertiesAt(0.0, 1.0, 2.0 * b).U.total);
}

// Wild states: everything that is given is a number.
TEST(PropertiesTest, WildStatesGiveFiniteNumbersOrNone) {
    AcceptPure(1);
    const double b = fluid::b[0];
    for (const double T : {1e-308, 1e-9, 300.0, 1e150, 1e306}) {
        for (const double P : {-1e300, -1.0, 0.0, 1e-308, 1e-9, 1e300}) {
            for (const double V : {b * (1.0 + 1e-15), 2.0 * b, 1e20, 1e160, 1e308}) {
                const MixtureProperties all = PropertiesAt(T, P, V);
                for (const Property* const property :
                     {&all.V, &all.Z, &all.H, &all.A, &all.G, &all.Cp, &all.heatRatio,
                      &all.soundSpeed, &all.jouleThomson}) {
                    for (const auto& value :
                         {property->idealGas, property->residual, property->total}) {
                        EXPECT_TRUE(std::isfinite(value.value_or(0.0))) << T << ' ' << P;
                    }
                }
                const auto component =
                    fluid::ComponentPropertiesOf(fluid::AcceptedMixture(), T, P, V)[0];
                for (const auto& value : {component.chemicalPotential, component.logPhi,
                                          component.enthalpy, component.entropy}) {
                    EXPECT_TRUE(std::isfinite(value.value_or(0.0))) << T << ' ' << P;
                }
            }
        }
    }
}

TEST(PropertiesTest, DiluteGasTendsToTheIdealOneBySmallResiduals) {
    AcceptPure(1);
    const double T = 300.0;
    const double V = 1e9;
    const double a = fluid::AcceptedMixture().attraction;
    const double b = fluid::AcceptedMixture().covolume;
    const double P = fluid::PressureVdW(a, b, T, V);
    const MixtureProperties all = PropertiesAt(T, P, V);
    const double RT = fluid::R * T;
    // First terms of the series in 1/V; the next are 1e-8 of them.
    EXPECT_LT(RelativeError(*all.density.residual / *all.density.total, a / (RT * V) - b / V),
              1e-6);
    EXPECT_LT(RelativeError(*all.S.residual, -fluid::R * a / (RT * V)), 1e-6);
    EXPECT_LT(RelativeError(*all.Z.residual * V, *all.secondVirial.total), 1e-6);
    EXPECT_LT(RelativeError(*all.H.residual, (RT * b - 2.0 * a) / V), 1e-6);
    EXPECT_LT(RelativeError(*all.jouleThomson.total, (2.0 * a / RT - b) / *all.Cp.total), 1e-6);
    for (const Property& property :
         {all.V, all.density, all.Z, all.U, all.H, all.S, all.Cp, all.heatRatio,
          all.compressibility, all.expansion, all.isentropicExpansion, all.soundSpeed}) {
        EXPECT_LT(RelativeError(*property.idealGas, *property.total), 1e-6);
    }
}

// The Joule-Thomson coefficient changes its sign at the inversion points, which end at 9 times the
// critical pressure.
TEST(PropertiesTest, CoefficientChangesItsSignAtTheInversionPoints) {
    AcceptPure(2);
    const fluid::Mixture& mixture = fluid::AcceptedMixture();
    for (const double share : {1e-9, 0.5, 5.0, 8.99}) {
        const double P = share * fluid::Pc[0];
        const auto points = fluid::InversionPoints(mixture, P);
        ASSERT_EQ(points.size(), 2U) << share;
        for (const auto& point : points) {
            const double T = point.T;
            const double V = point.V;
            EXPECT_LT(Error(fluid::PressureVdW(mixture.attraction, mixture.covolume, T, V), P,
                            fluid::R * T / V),
                      1e-12);
            const auto sign = [&](double at) {
                return *PropertiesAt(at, P, V).jouleThomson.total > 0.0;
            };
            EXPECT_TRUE(sign(T * (1.0 - 1e-9)) && !sign(T * (1.0 + 1e-9))) << share;
        }
        EXPECT_LT(points[0].T, points[1].T);
    }
    EXPECT_TRUE(fluid::InversionPoints(mixture, 9.01 * fluid::Pc[0]).empty());
}

}  // namespace
