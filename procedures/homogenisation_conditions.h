#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "model/homogenisation.h"
#include "model/mixture.h"
#include "model/phase_equilibrium.h"
#include "procedures/phase_results.h"
#include "procedures/units.h"

// What the screen of homogenization conditions calculates and says.
namespace procedures {

// What is given of a homogenization.
struct HomogenisationInput {
    fluid::Given given = fluid::Given::Temperature;
    double value = 0.0;  // K or MPa, above 0
    fluid::Homogenisation kind = fluid::Homogenisation::IntoLiquid;
    TemperatureScale scale;  // in which a temperature that is sought is shown

    // The sought quantity in the unit in which it is shown, from K or MPa, and back.
    double shown(double unknown) const;
    double taken(double number) const;
};

// A first approach to one of the points there are, the first of them following the last.
struct HomogenisationStart {
    fluid::PhaseGuess guess;
    std::size_t point = 0;  // its number
    std::string warning;
};
HomogenisationStart HomogenisationStartOf(const fluid::Mixture& mixture,
                                          const HomogenisationInput& input, std::size_t point);

struct HomogenisationAnswer {
    PhaseResults results;
    std::optional<std::size_t> point;  // which of the points there are
};
HomogenisationAnswer HomogenisationFrom(const fluid::Mixture& mixture,
                                        const HomogenisationInput& input,
                                        const fluid::PhaseGuess& guess);

}  // namespace procedures
