#pragma once

#include <string>
#include <vector>

#include "model/critical_point.h"
#include "model/mixture.h"
#include "model/phase_diagram.h"
#include "procedures/series_table.h"

namespace procedures {

// All critical points of a mixture.
class CriticalTable : public SeriesTable {
  public:
    struct Point {
        fluid::CriticalPoint place;
        fluid::Stability stability = fluid::Stability::Unknown;
    };

    CriticalTable() = default;
    explicit CriticalTable(const fluid::Mixture& mixture);

    static Row heads(const TemperatureScale& scale);

    std::size_t count() const override { return points_.size(); }
    Row row(std::size_t number, const TemperatureScale& scale, Digits digits) const override;
    std::string fileHeading() const override;
    std::size_t fileColumns() const override { return 6; }

    const std::vector<Point>& points() const { return points_; }
    const fluid::CriticalPoints& places() const { return places_; }

  private:
    fluid::Mixture mixture_;
    fluid::CriticalPoints places_;
    std::vector<Point> points_;
};

// The points of the curves of a phase diagram, each with what it is.
class CurveTable : public SeriesTable {
  public:
    CurveTable(const fluid::Mixture& mixture, const std::vector<fluid::BoundaryPiece>& boundary,
               const std::vector<std::vector<fluid::StatePoint>>& spinodal);

    std::size_t count() const override { return points_.size(); }
    Row row(std::size_t number, const TemperatureScale& scale, Digits digits) const override;
    std::string fileHeading() const override;
    std::size_t fileColumns() const override { return 5; }
    // As it is put on the clipboard: heads and rows, their cells parted by tabs.
    std::string copiedText(const TemperatureScale& scale) const;

  private:
    struct Point {
        const char* kind = "";
        fluid::StatePoint state;
    };

    fluid::Mixture mixture_;
    std::vector<Point> points_;
};

}  // namespace procedures
