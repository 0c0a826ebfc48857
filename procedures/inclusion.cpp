#include "procedures/inclusion.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <utility>

#include "model/phase_boundary.h"
#include "model/van_der_waals.h"
#include "procedures/phase_sentences.h"
#include "procedures/series_table.h"
#include "toolkit/number_text.h"

namespace procedures {

namespace {

using fluid::Homogenisation;

constexpr std::string_view blanks = " \t\v\f\r";
const std::string noNumber = "no number in ";

// --- States

const char* IntoText(Homogenisation into) {
    return into == Homogenisation::IntoLiquid ? "into the liquid" : "into the vapour";
}

// All that homogenizes at a temperature, in this way.
void FindPoints(const fluid::Mixture& mixture, const Inclusion& inclusion, InclusionState& state) {
    const WrittenTemperature T = inclusion.temperature();
    const Homogenisation into = inclusion.by == GivenBy::IntoLiquid ? Homogenisation::IntoLiquid
                                                                    : Homogenisation::IntoVapour;
    if (!(T.kelvin > 0.0)) {
        state.remark = "temperatures must be above absolute zero";
        return;
    }
    const auto found =
        fluid::FindHomogenisationPoints(mixture, fluid::Given::Temperature, T.kelvin, into);
    for (const auto* const pairs : {&found.points, &found.liquids}) {
        for (const fluid::PhasePair& pair : *pairs) {
            const double V = into == Homogenisation::IntoLiquid ? pair.Vx : pair.Vy;
            state.points.push_back({T, pair.P, V, into, pair.Vx == pair.Vy});
        }
    }
    std::sort(state.points.begin(), state.points.end(),
              [](const auto& one, const auto& other) { return one.V < other.V; });
    if (state.points.empty()) {
        state.remark =
            !found.isExamined
                ? "not examined: so cold or at such pressures nothing is searched"
                : std::string("nothing homogenizes ") + IntoText(into) + " at this temperature";
    } else if (state.points.size() == 1) {
        state.point = state.points.front();
    } else if (inclusion.point && *inclusion.point < state.points.size()) {
        state.point = state.points[*inclusion.point];
        state.remark = "point " + std::to_string(*inclusion.point + 1) + " of " +
                       std::to_string(state.points.size());
    } else {
        state.remark = std::to_string(state.points.size()) + " points: choose one";
    }
}

void FindBoundary(const fluid::Mixture& mixture, InclusionState& state) {
    const double b = mixture.covolume;
    if (!(state.V > b) || !std::isfinite(state.V)) {
        state.V = 0.0;
        state.remark = "the molar volume must be larger than the co-volume of this fluid, " +
                       SentenceText(b) + " " + volumeUnit;
        return;
    }
    const auto boundary = fluid::FindBoundary(mixture, state.V);
    if (!boundary) {
        state.remark = "homogeneous above " + SentenceText(fluid::ColdestT(mixture)) +
                       " Kelvin; below it nothing is searched";
        return;
    }
    state.points.push_back({WrittenTemperature::calculated(boundary->T), boundary->P, state.V,
                            boundary->kind(), boundary->isCritical()});
    state.point = state.points.front();
}

// --- Pasted texts

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// The parts between separators, trimmed; those that are empty are left out.
std::vector<std::string_view> Split(std::string_view text, std::string_view separators) {
    std::vector<std::string_view> parts;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(separators), text.size());
        if (const auto part = Trimmed(text.substr(0, end)); !part.empty()) {
            parts.push_back(part);
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

bool IsOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

std::string LowerCase(std::string_view word) {
    std::string lower(word);
    for (char& letter : lower) {
        letter = letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    }
    return lower;
}

std::optional<GivenBy> HomogenizationOf(std::string_view word) {
    const std::string lower = LowerCase(word);
    if (IsOneOf(lower, {"l", "liquid", "into the liquid", "into liquid", "bubble point"})) {
        return GivenBy::IntoLiquid;
    }
    if (IsOneOf(lower, {"v", "g", "vapour", "vapor", "gas", "into the vapour", "into vapour",
                        "into the vapor", "into vapor", "dew point"})) {
        return GivenBy::IntoVapour;
    }
    return std::nullopt;
}

struct Unit {
    std::optional<GivenBy> by;  // none for a temperature
    TemperatureScale scale = kelvinScale;
};

std::optional<Unit> UnitOf(std::string_view word) {
    if (IsOneOf(word, {"K", "Kelvin", "kelvin"})) {
        return Unit{{}, kelvinScale};
    }
    if (IsOneOf(word, {"C", "°C", "˚C", "ºC", "℃", "°Celsius", "˚Celsius", "Celsius", "celsius",
                       "deg C"})) {
        return Unit{{}, celsiusScale};
    }
    if (IsOneOf(word, {"g/cm3", "g/cm³", "g/cc", "g/ml", "g/mL"})) {
        return Unit{GivenBy::Density, {}};
    }
    if (IsOneOf(word, {"cm3/mol", "cm³/mol", "cc/mol", "ml/mol", "mL/mol"})) {
        return Unit{GivenBy::MolarVolume, {}};
    }
    return std::nullopt;
}

struct Value {
    double number = 0.0;
    std::optional<Unit> unit;
};

// A number with a unit behind it or none.
std::optional<Value> ValueOf(std::string_view cell) {
    std::string text(cell);
    for (const std::string_view minus : {"\u2212", "\u2013"}) {  // those of word processors
        if (text.starts_with(minus)) {
            text.replace(0, minus.size(), "-");
        }
    }
    const std::string_view all = text;
    if (const auto number = toolkit::ParseNumber(all)) {
        return Value{*number, {}};
    }
    for (std::size_t at = 1; at < all.size(); ++at) {
        const auto unit = UnitOf(Trimmed(all.substr(at)));
        const auto number = unit ? toolkit::ParseNumber(all.substr(0, at)) : std::nullopt;
        if (number) {
            return Value{*number, unit};
        }
    }
    return std::nullopt;
}

bool HasDecimalComma(std::string_view cell) {
    std::string text(cell);
    std::replace(text.begin(), text.end(), ',', '.');
    return text != cell && ValueOf(text);
}

// A row of a pasted text, its parts still as texts.
struct PastedRow {
    std::string name;
    std::string_view value;
    std::optional<Unit> unit;  // that stands apart from the number
    std::optional<GivenBy> into;
    bool hasTooMany = false;
};

PastedRow PartsOf(std::string_view line) {
    const bool isTabbed = line.find('\t') != std::string_view::npos;
    const bool hasColumns = isTabbed || line.find(';') != std::string_view::npos;
    const std::string_view separators = isTabbed ? "\t" : hasColumns ? ";" : blanks;
    std::vector<std::string_view> cells = Split(line, separators);
    for (std::string_view& cell : cells) {
        if (cell.size() > 1 && cell.starts_with('"') && cell.ends_with('"')) {
            cell = Trimmed(cell.substr(1, cell.size() - 2));
        }
    }
    PastedRow row;
    if (cells.empty()) return row;
    if (cells.size() > 1 && (row.into = HomogenizationOf(cells.back()))) {
        cells.pop_back();
    }
    if (cells.size() > 1 && (row.unit = UnitOf(cells.back()))) {
        cells.pop_back();
    }
    row.value = cells.back();
    cells.pop_back();
    const bool areNumbers = std::all_of(cells.begin(), cells.end(), ValueOf);
    row.hasTooMany = cells.size() > 1 && (hasColumns || areNumbers);
    for (const std::string_view cell : cells) {
        row.name += (row.name.empty() ? "" : " ") + std::string(cell);
    }
    return row;
}

// Takes the number for what it is; returns a sentence where that cannot be told.
std::string Interpret(const PastedRow& row, const Value& value, const PastePattern& pattern,
                      Inclusion& inclusion) {
    const std::optional<Unit> unit = value.unit ? value.unit : row.unit;
    const bool byVolume = pattern.by == GivenBy::MolarVolume || pattern.by == GivenBy::Density;
    const bool isTemperature = unit ? !unit->by : row.into || !byVolume;
    inclusion.number = value.number;
    inclusion.scale = unit && isTemperature ? unit->scale : pattern.scale;
    if (!isTemperature) {
        inclusion.by = unit ? *unit->by : *pattern.by;
        return row.into ? "L and V belong to homogenization temperatures" : "";
    }
    if (!row.into && (byVolume || !pattern.by)) {
        return "into the liquid or into the vapour? put L or V behind the number";
    }
    inclusion.by = row.into ? *row.into : *pattern.by;
    return "";
}

// The unit that the heads of a table name, if they name one: "Th (°C)", "Th/K".
std::string_view UnitIn(std::string_view heads) {
    for (std::string_view word : Split(heads, "\t;,()[]\" ")) {
        if (!UnitOf(word)) {
            word.remove_prefix(std::min(word.find('/'), word.size() - 1) + 1);
        }
        if (UnitOf(word)) return word;
    }
    return {};
}

// Whether no word of a row starts as a number does, and none says what homogenizes into what.
bool LooksLikeHeads(std::string_view line) {
    if (PartsOf(line).into) return false;
    const std::vector<std::string_view> words = Split(line, "\t;,()[]\"<>~+- ");
    return std::none_of(words.begin(), words.end(),
                        [](std::string_view word) { return word[0] >= '0' && word[0] <= '9'; });
}

Inclusion InclusionOf(std::string_view line, const PastePattern& pattern,
                      std::string_view usualUnit) {
    PastedRow row = PartsOf(line);
    if (!row.unit) {
        row.unit = UnitOf(usualUnit);
    }
    Inclusion inclusion;
    const auto value = ValueOf(row.value);
    const std::string cell = "\u201C" + std::string(row.value) + "\u201D";
    if (!value) {
        inclusion.problem = HasDecimalComma(row.value)
                                ? "put a decimal point instead of the comma in " + cell
                                : noNumber + cell;
    } else if (row.hasTooMany) {
        inclusion.problem = "more columns than a name, a number and L or V";
    } else {
        inclusion.problem = Interpret(row, *value, pattern, inclusion);
    }
    inclusion.name = inclusion.problem.empty() ? row.name : std::string(line);
    std::replace(inclusion.name.begin(), inclusion.name.end(), '\t', ' ');
    return inclusion;
}

}  // namespace

InclusionState StateOf(const fluid::Mixture& mixture, const Inclusion& inclusion) {
    InclusionState state;
    if (!inclusion.problem.empty()) {
        state.remark = inclusion.problem;
        return state;
    }
    if (inclusion.isByTemperature()) {
        FindPoints(mixture, inclusion, state);
        state.V = state.point ? state.point->V : 0.0;
    } else {
        state.V = inclusion.by == GivenBy::Density
                      ? fluid::MolarVolumeFromDensity(mixture, inclusion.number)
                      : inclusion.number;
        FindBoundary(mixture, state);
    }
    if (state.V > 0.0) {
        state.density = inclusion.by == GivenBy::Density
                            ? inclusion.number
                            : fluid::MolarVolumeFromDensity(mixture, state.V);
        state.slope = fluid::R / (state.V - mixture.covolume);
    }
    return state;
}

Trapped TrappedAt(const fluid::Mixture& mixture, const InclusionState& state,
                  const Trapping& trapping) {
    if (!(state.V > 0.0) || !trapping.isKnown()) {
        return {};
    }
    const double a = mixture.attraction;
    const double b = mixture.covolume;
    TrappingPoint point;
    if (trapping.T) {
        point = {*trapping.T, fluid::PressureVdW(a, b, trapping.T->kelvin, state.V)};
    } else {
        const double T = fluid::TemperatureVdW(a, b, *trapping.P, state.V);
        point = {WrittenTemperature::calculated(T), *trapping.P};
    }
    if (!std::isfinite(point.P) || !std::isfinite(point.T.kelvin)) {
        return {{}, "with numbers of this size no trapping conditions can be calculated"};
    }
    if (state.point && point.T.kelvin < state.point->T.kelvin) {
        return {{},
                std::string("it homogenizes above this trapping ") +
                    (trapping.T ? "temperature" : "pressure")};
    }
    if (!state.point && point.T.kelvin < fluid::ColdestT(mixture)) {
        return {{}, "so cold that it is not known whether it is one phase there"};
    }
    return {point, ""};
}

PastedInclusions ReadPasted(std::string_view text, const PastePattern& pattern) {
    PastedInclusions pasted;
    bool isFirst = true;
    for (const std::string_view line : Split(text, "\n\r")) {
        Inclusion inclusion = InclusionOf(line, pattern, pasted.unit);
        const bool isHeads =
            isFirst && inclusion.problem.starts_with(noNumber) && LooksLikeHeads(line);
        isFirst = false;
        if (isHeads) {
            pasted.heads = line;
            pasted.unit = UnitIn(line);
            continue;
        }
        pasted.problems += inclusion.problem.empty() ? 0 : 1;
        pasted.inclusions.push_back(std::move(inclusion));
    }
    return pasted;
}

}  // namespace procedures
