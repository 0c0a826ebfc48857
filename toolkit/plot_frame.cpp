#include "toolkit/plot_frame.h"

#include <algorithm>
#include <cmath>

namespace toolkit {

namespace {

double Distance(const PlotPlace& one, const PlotPlace& other) {
    return std::hypot(one.x - other.x, one.y - other.y);
}

// Whether a curve from one place to the other is likely to pass the frame.
bool MayPass(const PlotFrame& frame, const PlotPlace& one, const PlotPlace& other) {
    const double bulge = 0.5 * Distance(one, other);
    return std::max(one.x, other.x) + bulge >= frame.left &&
           std::min(one.x, other.x) - bulge <= frame.right &&
           std::max(one.y, other.y) + bulge >= frame.top &&
           std::min(one.y, other.y) - bulge <= frame.bottom;
}

// Draws a piece of a curve through points of the true one.
class Refinement {
  public:
    Refinement(const PlotSeries& series, const PlotFrame& frame,
               const std::function<void(const PlotSpot&)>& visit)
        : series_(series), frame_(frame), visit_(visit) {}

    // Visits what is needed between two spots of the same piece.
    void between(const PlotSpot& one, const PlotSpot& other, int depth = 0) const {
        constexpr double coarse = 6.0;  // pixels
        constexpr int deepest = 40;
        if (depth == deepest || Distance(one.place, other.place) < coarse ||
            !MayPass(frame_, one.place, other.place)) {
            return;
        }
        const double share = 0.5 * (one.share + other.share);
        const auto place = frame_.placeOf(series_.between(one.point, share));
        if (!place) return;
        const PlotSpot middle{*place, one.point, share};
        between(one, middle, depth + 1);
        visit_(middle);
        between(middle, other, depth + 1);
    }

  private:
    const PlotSeries& series_;
    const PlotFrame& frame_;
    const std::function<void(const PlotSpot&)>& visit_;
};

// Where on the way from one spot to the other the place is passed most closely.
double ClosestShare(const PlotPlace& one, const PlotPlace& other, const PlotPlace& place) {
    const double dx = other.x - one.x;
    const double dy = other.y - one.y;
    const double square = dx * dx + dy * dy;
    const double along = (place.x - one.x) * dx + (place.y - one.y) * dy;
    return square > 0.0 ? std::clamp(along / square, 0.0, 1.0) : 0.0;
}

// The position at a share of the way from one spot to the next of the same curve.
PlotPosition PositionBetween(std::size_t series, const PlotSpot& one, const PlotSpot& other,
                             double share) {
    const double end = other.point == one.point ? other.share : 1.0;
    const double total = one.share + share * (end - one.share);
    return total < 1.0 ? PlotPosition{series, one.point, total}
                       : PlotPosition{series, one.point + 1, 0.0};
}

}  // namespace

PlotFrame::PlotFrame(const PlotLimits& shown, double leftEdge, double topEdge, double rightEdge,
                     double bottomEdge)
    : limits(shown),
      left(leftEdge),
      top(topEdge),
      right(rightEdge),
      bottom(bottomEdge),
      xLow_(shown.x.scaled(shown.x.low)),
      xScale_((right - left) / (shown.x.scaled(shown.x.high) - xLow_)),
      yLow_(shown.y.scaled(shown.y.low)),
      yScale_((bottom - top) / (shown.y.scaled(shown.y.high) - yLow_)) {}

std::optional<PlotPlace> PlotFrame::placeOf(const PlotPoint& point) const {
    const bool isThere = std::abs(point.x) < largestPlotted && std::abs(point.y) < largestPlotted &&
                         (!limits.x.isLogarithmic || point.x > 0.0) &&
                         (!limits.y.isLogarithmic || point.y > 0.0);
    if (!isThere) return std::nullopt;
    constexpr double farthest = 1e15;
    const auto within = [=](double place) { return std::clamp(place, -farthest, farthest); };
    return PlotPlace{within(left + (limits.x.scaled(point.x) - xLow_) * xScale_),
                     within(bottom - (limits.y.scaled(point.y) - yLow_) * yScale_)};
}

PlotPoint PlotFrame::pointAt(const PlotPlace& place) const {
    return {limits.x.unscaled(xLow_ + (place.x - left) / xScale_),
            limits.y.unscaled(yLow_ + (bottom - place.y) / yScale_)};
}

bool PlotFrame::contains(const PlotPlace& place) const {
    return place.x >= left && place.x <= right && place.y >= top && place.y <= bottom;
}

void Trace(const PlotSeries& series, std::size_t part, const PlotFrame& frame,
           const std::function<void(const PlotSpot&)>& visit, const std::function<void()>& gap) {
    const Refinement refinement(series, frame, visit);
    std::optional<PlotSpot> before;
    for (std::size_t i = series.parts[part].first; i < series.endOf(part); ++i) {
        const auto place = frame.placeOf({series.x[i], series.y[i]});
        if (!place) {
            before.reset();
            gap();
            continue;
        }
        const PlotSpot spot{*place, i, 0.0};
        if (before && series.between) {
            refinement.between(*before, {*place, before->point, 1.0});
        }
        visit(spot);
        before = spot;
    }
    gap();
}

PlotPoint PointOf(const PlotSeries& series, const PlotPosition& position, const PlotFrame& frame) {
    const std::size_t i = position.point;
    const PlotPoint one{series.x[i], series.y[i]};
    if (position.share == 0.0 || i + 1 >= series.size()) return one;
    if (series.between) return series.between(i, position.share);
    const PlotLimits& axes = frame.limits;
    const auto mixed = [&position](const AxisLimits& axis, double from, double to) {
        const double start = axis.scaled(from);
        return axis.unscaled(start + position.share * (axis.scaled(to) - start));
    };
    return {mixed(axes.x, one.x, series.x[i + 1]), mixed(axes.y, one.y, series.y[i + 1])};
}

std::optional<PlotPosition> Nearest(std::span<const PlotSeries> series, const PlotFrame& frame,
                                    const PlotPlace& place, double reach) {
    constexpr double advantage = 4.0;  // pixels: marks lie on curves, and are meant where they do
    std::optional<PlotPosition> found;
    double shortest = reach;
    const auto offer = [&](const PlotPosition& position, const PlotPlace& there, double bonus) {
        const double length = Distance(there, place) - bonus;
        if (length < shortest && frame.contains(there)) {
            shortest = length;
            found = position;
        }
    };
    for (std::size_t i = 0; i < series.size(); ++i) {
        for (std::size_t part = 0; part < series[i].parts.size(); ++part) {
            std::optional<PlotSpot> before;
            const auto visit = [&](const PlotSpot& spot) {
                offer({i, spot.point, spot.share}, spot.place,
                      series[i].isMarks() ? advantage : 0.0);
                if (before && !series[i].isMarks()) {
                    const double share = ClosestShare(before->place, spot.place, place);
                    offer(PositionBetween(i, *before, spot, share),
                          {before->place.x + share * (spot.place.x - before->place.x),
                           before->place.y + share * (spot.place.y - before->place.y)},
                          0.0);
                }
                before = spot;
            };
            Trace(series[i], part, frame, visit, [&before] { before.reset(); });
        }
    }
    return found;
}

PlotPosition Walked(std::span<const PlotSeries> series, const PlotFrame& frame,
                    const PlotPosition& from, double length) {
    const PlotSeries& curve = series[from.series];
    std::vector<PlotSpot> spots;
    for (std::size_t part = 0; part < curve.parts.size(); ++part) {
        Trace(
            curve, part, frame, [&spots](const PlotSpot& spot) { spots.push_back(spot); }, [] {});
    }
    if (length < 0.0) {
        std::reverse(spots.begin(), spots.end());
    }
    const auto isPassed = [&](const PlotSpot& spot) {
        const bool isAhead =
            spot.point != from.point ? spot.point > from.point : spot.share > from.share;
        const bool isHere = spot.point == from.point && spot.share == from.share;
        return isHere || isAhead == (length < 0.0);
    };
    const auto start = frame.placeOf(PointOf(curve, from, frame));
    auto next = std::find_if_not(spots.begin(), spots.end(), isPassed);
    if (next == spots.end() || !start) return from;
    if (curve.isMarks()) {
        return {from.series, next->point, next->share};
    }
    PlotSpot before{*start, from.point, from.share};
    double rest = std::abs(length);
    for (; next != spots.end(); ++next) {
        const double way = Distance(before.place, next->place);
        const bool isJoined = next->point == before.point || next->point == before.point + 1 ||
                              before.point == next->point + 1;
        if (isJoined && way > rest) {
            const double share = rest / way;
            return length > 0.0 ? PositionBetween(from.series, before, *next, share)
                                : PositionBetween(from.series, *next, before, 1.0 - share);
        }
        rest -= isJoined ? way : 0.0;
        before = *next;
        if (!isJoined) {
            break;  // the start of what lies beyond a gap
        }
    }
    return {from.series, before.point, before.share};
}

}  // namespace toolkit
