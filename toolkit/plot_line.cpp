#include "toolkit/plot_line.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace toolkit {

namespace {

// Takes in the places of a line and gives out what is in the frame.
class Clipper {
  public:
    Clipper(const PlotFrame& frame, const std::function<void(const Polyline&)>& visit)
        : frame_(frame), visit_(visit) {}

    void add(const PlotPlace& place) {
        lowest_ = {std::min(lowest_.x, place.x), std::min(lowest_.y, place.y)};
        highest_ = {std::max(highest_.x, place.x), std::max(highest_.y, place.y)};
        if (before_) {
            if (const auto seen = clipped(*before_, place)) {
                if (line_.empty()) {
                    line_.push_back(seen->first);
                }
                line_.push_back(seen->second);
                if (seen->second.x != place.x || seen->second.y != place.y) {
                    flush();
                }
            }
        }
        before_ = place;
    }

    void finish() {
        // A line within a pixel would hardly be seen.
        const bool isDot = highest_.x - lowest_.x <= 1.0 && highest_.y - lowest_.y <= 1.0;
        if (before_ && isDot) {
            line_.clear();
            if (frame_.contains(*before_)) {
                visit_({*before_});
            }
        }
        flush();
        before_.reset();
        lowest_ = {infinity, infinity};
        highest_ = {-infinity, -infinity};
    }

  private:
    static constexpr double infinity = std::numeric_limits<double>::infinity();

    // The part of a straight way that lies in the frame or just beside it (Y.-D. Liang, B. A.
    // Barsky, ACM Trans. Graphics 3 (1984) 1).
    std::optional<std::pair<PlotPlace, PlotPlace>> clipped(const PlotPlace& from,
                                                           const PlotPlace& to) const {
        constexpr double margin = 10.0;  // for the width of the line
        const double dx = to.x - from.x;
        const double dy = to.y - from.y;
        double start = 0.0;
        double end = 1.0;
        const std::array<std::pair<double, double>, 4> edges = {
            {{-dx, from.x - frame_.left + margin},
             {dx, frame_.right + margin - from.x},
             {-dy, from.y - frame_.top + margin},
             {dy, frame_.bottom + margin - from.y}}};
        for (const auto& [outwards, room] : edges) {
            if (outwards == 0.0 && room < 0.0) return std::nullopt;
            if (outwards < 0.0) {
                start = std::max(start, room / outwards);
            } else if (outwards > 0.0) {
                end = std::min(end, room / outwards);
            }
        }
        if (start > end) return std::nullopt;
        const auto at = [&](double share) -> PlotPlace {
            return {from.x + share * dx, from.y + share * dy};
        };
        return std::pair(start > 0.0 ? at(start) : from, end < 1.0 ? at(end) : to);
    }

    void flush() {
        if (!line_.empty()) {
            visit_(line_);
            line_.clear();
        }
    }

    const PlotFrame& frame_;
    const std::function<void(const Polyline&)>& visit_;
    std::optional<PlotPlace> before_;
    PlotPlace lowest_{infinity, infinity};
    PlotPlace highest_{-infinity, -infinity};
    Polyline line_;
};

// Passes on the places that make a difference on the display: of those in one column of pixels
// the first, the lowest, the highest and the last.
class Thinner {
  public:
    explicit Thinner(Clipper& next) : next_(next) {}

    void add(const PlotPlace& place) {
        const double column = std::floor(place.x);
        if (column != column_) {
            flush();
            column_ = column;
            next_.add(place);
            lowest_ = highest_ = last_ = {place, 0};
            count_ = 0;
            return;
        }
        last_ = {place, ++count_};
        if (place.y < lowest_.place.y) {
            lowest_ = last_;
        }
        if (place.y > highest_.place.y) {
            highest_ = last_;
        }
    }

    void finish() {
        flush();
        column_ = std::numeric_limits<double>::quiet_NaN();
        next_.finish();
    }

  private:
    struct Taken {
        PlotPlace place;
        std::size_t position = 0;  // in the column
    };

    void flush() {
        std::array<Taken, 3> places = {lowest_, highest_, last_};
        std::sort(places.begin(), places.end(),
                  [](const Taken& a, const Taken& b) { return a.position < b.position; });
        std::size_t passed = 0;  // the first one was
        for (const Taken& each : places) {
            if (each.position > passed) {
                next_.add(each.place);
                passed = each.position;
            }
        }
        lowest_ = highest_ = last_ = {};
    }

    Clipper& next_;
    double column_ = std::numeric_limits<double>::quiet_NaN();
    Taken lowest_;
    Taken highest_;
    Taken last_;
    std::size_t count_ = 0;
};

}  // namespace

void TracePolylines(const PlotSeries& series, std::size_t part, const PlotFrame& frame,
                    const std::function<void(const Polyline&)>& visit) {
    Clipper clipper(frame, visit);
    Thinner thinner(clipper);
    Trace(
        series, part, frame, [&thinner](const PlotSpot& spot) { thinner.add(spot.place); },
        [&thinner] { thinner.finish(); });
}

std::vector<ColumnSpan> DenseColumns(const std::vector<Polyline>& lines, const PlotFrame& frame) {
    constexpr double steep = 10.0;  // times as long as wide
    double length = 0.0;
    std::size_t points = 0;
    double left = frame.right;
    double right = frame.left;
    for (const Polyline& line : lines) {
        points += line.size();
        for (std::size_t i = 0; i < line.size(); ++i) {
            const PlotPlace& before = line[i > 0 ? i - 1 : 0];
            length += std::hypot(line[i].x - before.x, line[i].y - before.y);
            left = std::min(left, std::floor(line[i].x));
            right = std::max(right, line[i].x);
        }
    }
    if (static_cast<double>(points) < frame.width() || length < steep * frame.width()) {
        return {};
    }
    const auto columnOf = [left](double x) { return static_cast<std::size_t>(x - left); };
    constexpr double infinity = std::numeric_limits<double>::infinity();
    std::vector<ColumnSpan> columns(columnOf(right) + 1, {0.0, infinity, -infinity});
    const auto isLeft = [](const PlotPlace& a, const PlotPlace& b) { return a.x < b.x; };
    for (const Polyline& line : lines) {
        for (std::size_t i = 1; i < line.size(); ++i) {
            const auto [from, to] = std::minmax(line[i - 1], line[i], isLeft);
            const double slope = to.x > from.x ? (to.y - from.y) / (to.x - from.x) : 0.0;
            for (std::size_t k = columnOf(from.x); k <= columnOf(to.x); ++k) {
                const double x = left + static_cast<double>(k);
                const double start = x <= from.x ? from.y : from.y + slope * (x - from.x);
                const double end = x + 1.0 > to.x ? to.y : from.y + slope * (x + 1.0 - from.x);
                columns[k] = {x, std::min({columns[k].top, start, end}),
                              std::max({columns[k].bottom, start, end})};
            }
        }
    }
    std::erase_if(columns, [](const ColumnSpan& each) { return each.top > each.bottom; });
    return columns;
}

}  // namespace toolkit
