#pragma once

#include <array>
#include <string>

#include "toolkit/check_button.h"
#include "toolkit/entry.h"
#include "toolkit/label.h"
#include "toolkit/layout.h"
#include "toolkit/plot.h"

namespace toolkit {

// The line under a plot that says what is read; as wide as there is room, whatever it says.
class PlotReadOut : public ResultLabel {
  public:
    explicit PlotReadOut(std::string name);
};

// The entry of one end of an axis, which counts when Enter is pressed or the entry is left.
class LimitEntry : public Entry {
  public:
    explicit LimitEntry(std::string name);
    // `typed` runs when the text is another than was shown.
    void onTyped(Handler typed) { typed_ = std::move(typed); }
    void showLimit(const std::string& text);

  private:
    void finish();

    std::string shown_;
    Handler typed_;
};

// The row under a plot in which its limits can be read and typed.
class PlotLimitsRow {
  public:
    // `message`: says why what was typed does not hold.
    PlotLimitsRow(Plot& plot, Message& message);

    Block block();
    // Shows what is in view.
    void update();

  private:
    struct Axis {
        explicit Axis(const std::string& letter);

        Label caption;
        LimitEntry from;
        Label until;
        LimitEntry to;
        CheckButton log;
    };

    static AxisLimits& of(PlotLimits& limits, bool isX) { return isX ? limits.x : limits.y; }
    void connect(Axis& axis, bool isX);
    void type(const LimitEntry& entry, bool isX, bool isHigh);
    void toggleLog(bool isX);
    void show(Axis& axis, const AxisLimits& limits, const PlotAxis& names);

    Plot& plot_;
    Message& message_;
    Axis x_{"X"};
    Axis y_{"Y"};
    CheckButton grid_{"Grid", "grid"};
    bool isUpdating_ = false;
};

}  // namespace toolkit
