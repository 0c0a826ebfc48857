#include "toolkit/plot_controls.h"

#include <gtk/gtk.h>

#include <utility>

#include "toolkit/event.h"
#include "toolkit/number_text.h"
#include "toolkit/plot_reading.h"

namespace toolkit {

PlotReadOut::PlotReadOut(std::string name) : ResultLabel(std::move(name)) {
    setUnobtrusive();
    gtk_label_set_ellipsize(GTK_LABEL(widget()), PANGO_ELLIPSIZE_END);
}

LimitEntry::LimitEntry(std::string name) : Entry(std::move(name), 8) {
    gtk_entry_set_activates_default(GTK_ENTRY(widget()), FALSE);
    const auto onActivate = [](GtkEntry* /*entry*/, LimitEntry* self) { self->finish(); };
    const auto onLeave = [](GtkWidget* /*entry*/, GdkEvent* /*event*/,
                            LimitEntry* self) -> gboolean {
        self->finish();
        return FALSE;
    };
    Connect(widget(), "activate", onActivate, this);
    Connect(widget(), "focus-out-event", onLeave, this);
}

void LimitEntry::showLimit(const std::string& text) {
    shown_ = text;
    if (this->text() != text) {
        setText(text);
    }
}

void LimitEntry::finish() {
    if (text() != shown_) {
        RunHandler(typed_, name().c_str());
    }
}

PlotLimitsRow::Axis::Axis(const std::string& letter)
    : caption("Limits" + letter),
      from(letter + "From"),
      until("Until" + letter, "to"),
      to(letter + "To"),
      log(letter + "Log", "log") {}

PlotLimitsRow::PlotLimitsRow(Plot& plot, Message& message) : plot_(plot), message_(message) {
    connect(x_, true);
    connect(y_, false);
    grid_.onToggle([this] {
        if (!isUpdating_) {
            plot_.setGrid(grid_.isOn());
        }
    });
    update();
}

Block PlotLimitsRow::block() {
    const auto cells = [](Axis& axis) -> std::vector<Block> {
        return {axis.caption, Block(axis.from).expanding(), axis.until, Block(axis.to).expanding(),
                axis.log};
    };
    std::vector<Block> lower = cells(y_);
    lower.emplace_back(grid_);
    return Grid({cells(x_), lower}, Spacing::Touching, Spacing::Related);
}

void PlotLimitsRow::connect(Axis& axis, bool isX) {
    axis.from.onTyped([this, &axis, isX] { type(axis.from, isX, false); });
    axis.to.onTyped([this, &axis, isX] { type(axis.to, isX, true); });
    axis.log.onToggle([this, isX] {
        if (!isUpdating_) {
            toggleLog(isX);
        }
    });
}

void PlotLimitsRow::type(const LimitEntry& entry, bool isX, bool isHigh) {
    const auto number = ParseNumber(entry.text());
    PlotLimits limits = plot_.view().limits();
    AxisLimits& axis = of(limits, isX);
    (isHigh ? axis.high : axis.low) = number.value_or(0.0);
    message_.setText("");
    if (!number || !plot_.setLimits(limits)) {
        message_.setText(!number || !axis.isLogarithmic || *number > 0.0
                             ? "warning: put two numbers for the limits of an axis, the lower one "
                               "first"
                             : "warning: the limits of a logarithmic axis must be above 0");
    }
    update();
}

void PlotLimitsRow::toggleLog(bool isX) {
    PlotLimits limits = plot_.view().limits();
    AxisLimits& axis = of(limits, isX);
    axis.isLogarithmic = !axis.isLogarithmic;
    if (axis.isLogarithmic && !(axis.low > 0.0)) {
        const AxisLimits all = (isX ? plot_.view().extentX() : plot_.view().extentY()).limits(true);
        axis =
            all.isLogarithmic && axis.high > all.low ? AxisLimits{all.low, axis.high, true} : all;
    }
    const bool isRefused = axis.isLogarithmic == of(limits, isX).isLogarithmic &&
                           (isX ? x_ : y_).log.isOn() != axis.isLogarithmic;
    message_.setText(isRefused ? "warning: a logarithmic axis needs numbers above 0" : "");
    plot_.setLimits(limits);
    update();
}

void PlotLimitsRow::show(Axis& axis, const AxisLimits& limits, const PlotAxis& names) {
    const bool isEmpty = plot_.isEmpty();
    axis.from.showLimit(isEmpty ? "" : ShownNumber(limits.low, limits));
    axis.to.showLimit(isEmpty ? "" : ShownNumber(limits.high, limits));
    axis.caption.setText(names.quantity);
    axis.from.setAccessibleName("lowest " + names.quantity + " in view");
    axis.to.setAccessibleName("highest " + names.quantity + " in view");
    axis.log.turn(limits.isLogarithmic);
    for (Control* const control :
         {static_cast<Control*>(&axis.from), static_cast<Control*>(&axis.to),
          static_cast<Control*>(&axis.log)}) {
        control->setSensitive(!isEmpty);
    }
}

void PlotLimitsRow::update() {
    const bool wasUpdating = std::exchange(isUpdating_, true);
    show(x_, plot_.view().limits().x, plot_.content().x);
    show(y_, plot_.view().limits().y, plot_.content().y);
    grid_.turn(plot_.content().hasGrid);
    isUpdating_ = wasUpdating;
}

}  // namespace toolkit
