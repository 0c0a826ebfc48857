#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/mixture.h"
#include "model/phase_diagram.h"
#include "procedures/series_table.h"
#include "procedures/value_range.h"

namespace procedures {

// What limits of stability are calculated from.
struct SpinodalInput {
    enum class Given { Temperature, Volume, Range };

    Given given = Given::Temperature;
    double V = 0.0;                                // cm3/mol, not above 0 where none is given
    std::optional<TemperatureRange> temperatures;  // of one for a temperature

    // Why nothing can be calculated, as a sentence; empty where it can.
    std::string refusal(const fluid::Mixture& mixture) const;
};

// Limits of stability of a mixture, and the curves on which they lie.
class SpinodalTable : public SeriesTable {
  public:
    using Curves = std::vector<std::vector<fluid::StatePoint>>;

    // A point of a spinodal and what it limits, or a temperature that has none.
    struct Limit {
        bool isThere() const { return state.V > 0.0; }

        fluid::StatePoint state;
        WrittenTemperature T;
        const char* name = "";
    };

    // `input` must not be refused.
    SpinodalTable(const fluid::Mixture& mixture, const SpinodalInput& input);

    static Row heads(const TemperatureScale& scale);

    std::size_t count() const override { return limits_.size(); }
    Row row(std::size_t number, const TemperatureScale& scale, Digits digits) const override;
    std::string fileHeading() const override;
    std::size_t fileColumns() const override { return 5; }

    bool isPure() const { return mixture_.count == 1; }
    const std::vector<Limit>& limits() const { return limits_; }
    const Curves& diffusional() const { return diffusional_; }
    const Curves& mechanical() const { return mechanical_; }  // none of a pure gas
    // Which of the temperatures have no limit, as a sentence; empty where all have some.
    std::string missingSentence(const TemperatureScale& scale) const;

  private:
    void addAt(const WrittenTemperature& T);
    void addAtVolume(double V);
    void trace(double lowestT, double highestT);
    void traceAround(double T);
    Limit limitAt(const WrittenTemperature& T, double V, const char* name) const;

    fluid::Mixture mixture_;
    std::vector<Limit> limits_;
    std::vector<WrittenTemperature> missing_;  // temperatures without a limit
    std::size_t asked_ = 0;                    // how many temperatures there are
    Curves diffusional_;
    Curves mechanical_;
};

}  // namespace procedures
