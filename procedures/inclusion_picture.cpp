#include "procedures/inclusion_picture.h"

namespace procedures {

namespace {

using toolkit::Colour;

constexpr Colour liquid = {0.45, 0.66, 0.86};
constexpr Colour vapour = {0.93, 0.95, 0.97};
constexpr Colour outline = {0.16, 0.27, 0.38};

constexpr double leftX = 0.62;
constexpr double rightX = inclusionPictureWidth - leftX;
constexpr double middleY = 0.5;
constexpr double radiusX = 0.56;
constexpr double radiusY = 0.42;
constexpr double lineWidth = 0.035;

void PaintInclusion(const toolkit::Painter& painter, double x, const Colour& filling) {
    painter.fillEllipse(x, middleY, radiusX, radiusY, filling);
    painter.strokeEllipse(x, middleY, radiusX, radiusY, lineWidth, outline);
}

void PaintBubble(const toolkit::Painter& painter, double share) {
    painter.fillEllipse(leftX, middleY, share * radiusX, share * radiusY, vapour);
    painter.strokeEllipse(leftX, middleY, share * radiusX, share * radiusY, 0.7 * lineWidth,
                          outline);
}

void PaintArrow(const toolkit::Painter& painter) {
    constexpr double gap = 0.12;
    painter.arrow(leftX + radiusX + gap, middleY, rightX - radiusX - gap, middleY, lineWidth,
                  painter.ink());
}

}  // namespace

void PaintHomogenisationIntoLiquid(const toolkit::Painter& painter) {
    PaintInclusion(painter, leftX, liquid);
    PaintBubble(painter, 0.35);
    PaintArrow(painter);
    PaintInclusion(painter, rightX, liquid);
}

void PaintHomogenisationIntoVapour(const toolkit::Painter& painter) {
    PaintInclusion(painter, leftX, liquid);
    PaintBubble(painter, 0.82);
    PaintArrow(painter);
    PaintInclusion(painter, rightX, vapour);
}

}  // namespace procedures
