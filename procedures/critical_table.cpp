#include "procedures/critical_table.h"

#include "procedures/stability_text.h"
#include "procedures/value_range.h"

namespace procedures {

CriticalTable::CriticalTable(const fluid::Mixture& mixture)
    : mixture_(mixture), places_(fluid::FindCriticalPoints(mixture)) {
    for (const fluid::CriticalPoint& place : places_) {
        points_.push_back({place, fluid::CriticalStability(mixture, place)});
    }
}

SeriesTable::Row CriticalTable::heads(const TemperatureScale& scale) {
    return {std::string("Temperature\n(") + scale.name + ")",
            "Pressure\n(MPa)",
            std::string("Molar Volume\n(") + volumeUnit + ")",
            std::string("Density\n(") + densityUnit + ")",
            "Z",
            "State"};
}

SeriesTable::Row CriticalTable::row(std::size_t number, const TemperatureScale& scale,
                                    Digits digits) const {
    const auto& [place, stability] = points_[number];
    constexpr int decimals = 6;
    const double density = fluid::MolarVolumeFromDensity(mixture_, place.V);
    const double Z = place.P * place.V / (fluid::R * place.T);
    const double T = WrittenTemperature::calculated(place.T).in(scale);
    std::string state = StabilityName(stability);
    if (place.P < 0.0) {
        state += ", at negative pressure";
    }
    return {CellText(T, temperatureDecimals, digits),
            CellText(place.P, pressureDecimals, digits),
            CellText(place.V, volumeDecimals, digits),
            CellText(density, densityDecimals, digits),
            CellText(Z, decimals, digits),
            state};
}

std::string CriticalTable::fileHeading() const {
    return "Critical points\nTemperature, Pressure, Molar Volume, Density, Z, State\n"
           "(Celsius), (MPa), (cm3/mol), (g/cm3), , \n";
}

CurveTable::CurveTable(const fluid::Mixture& mixture,
                       const std::vector<fluid::BoundaryPiece>& boundary,
                       const std::vector<std::vector<fluid::StatePoint>>& spinodal)
    : mixture_(mixture) {
    for (const fluid::BoundaryPiece& piece : boundary) {
        const bool isBubble = piece.kind == fluid::Homogenisation::IntoLiquid;
        for (const fluid::StatePoint& point : piece.points) {
            points_.push_back({isBubble ? "bubble point" : "dew point", point});
        }
    }
    for (const auto& piece : spinodal) {
        for (const fluid::StatePoint& point : piece) {
            points_.push_back({"spinodal", point});
        }
    }
}

SeriesTable::Row CurveTable::row(std::size_t number, const TemperatureScale& scale,
                                 Digits digits) const {
    const auto& [kind, state] = points_[number];
    const double T = WrittenTemperature::calculated(state.T).in(scale);
    const double density = fluid::MolarVolumeFromDensity(mixture_, state.V);
    return {kind, CellText(T, temperatureDecimals, digits),
            CellText(state.P, pressureDecimals, digits), CellText(state.V, volumeDecimals, digits),
            CellText(density, densityDecimals, digits)};
}

std::string CurveTable::fileHeading() const {
    return "Curves\nKind, Temperature, Pressure, Molar Volume, Density\n"
           ", (Celsius), (MPa), (cm3/mol), (g/cm3)\n";
}

std::string CurveTable::copiedText(const TemperatureScale& scale) const {
    std::string text = std::string("Kind\tTemperature (") + scale.name +
                       ")\tPressure (MPa)\tMolar Volume (" + volumeUnit + ")\tDensity (" +
                       densityUnit + ")\n";
    for (std::size_t i = 0; i < count(); ++i) {
        std::string cells;
        for (const std::string& cell : row(i, scale, Digits::Full)) {
            cells += (cells.empty() ? "" : "\t") + cell;
        }
        text += cells + '\n';
    }
    return text;
}

}  // namespace procedures
