#pragma once

#include <functional>
#include <string>

#include "toolkit/control.h"

using cairo_t = struct _cairo;

namespace toolkit {

// Red, green and blue from 0 to 1.
struct Colour {
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
};

// Draws shapes in the coordinates of a drawing, whose shorter side is 1 long.
class Painter {
  public:
    // `ink`: the colour of the texts around the drawing.
    Painter(cairo_t* cairo, const Colour& ink) : cairo_(cairo), ink_(ink) {}

    const Colour& ink() const { return ink_; }

    void fillEllipse(double x, double y, double radiusX, double radiusY,
                     const Colour& colour) const;
    void strokeEllipse(double x, double y, double radiusX, double radiusY, double lineWidth,
                       const Colour& colour) const;
    // A straight arrow from the first to the second point, its head at the second.
    void arrow(double fromX, double fromY, double toX, double toY, double lineWidth,
               const Colour& colour) const;

  private:
    cairo_t* cairo_;
    Colour ink_;
};

// A picture that is drawn anew in whatever size it has.
class Drawing : public Control {
  public:
    using Paint = std::function<void(const Painter&)>;

    // `widthInLines` and `heightInLines`: the size that the picture asks for, in lines of text;
    // `description` tells a screen reader what it shows.
    Drawing(std::string name, double widthInLines, double heightInLines,
            const std::string& description, Paint paint);

  private:
    double widthInLines_;
    double heightInLines_;
    Paint paint_;
};

}  // namespace toolkit
