#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/control.h"
#include "toolkit/edit_commands.h"
#include "toolkit/layout.h"
#include "toolkit/plot_drawing.h"
#include "toolkit/plot_series.h"
#include "toolkit/plot_view.h"

namespace toolkit {

// Curves and marks over a pair of axes, drawn in whatever size the plot has.
//
// A drag shows what its rectangle holds, the wheel zooms, the middle button or Shift moves the
// view, a double click or Home shows everything, Backspace what was in view before. The curve near
// the pointer is read out; a click pins what is read, another removes it. With the focus, Left and
// Right walk along a curve, Up and Down go to another one, + and - zoom, Shift and an arrow move
// the view, Space pins, and the Edit menu copies the picture.
class Plot : public Control, public Editable {
  public:
    // `description` tells a screen reader what the plot shows.
    Plot(std::string name, const std::string& description);
    // Shows what `other` shows and goes along with it, as `other` does with this one.
    Plot(std::string name, const std::string& description, const Plot& other);
    ~Plot() override;

    // The plot, taking what is left over. It asks for a size in lines of text, and when its window
    // has opened for no more than it needs to be of use.
    Block sized(double widthInLines, double heightInLines);
    void setTitle(const std::string& title);
    void setAxes(const PlotAxis& x, const PlotAxis& y);
    // Stands in place of the axes while there are no points.
    void setEmptyText(const std::string& sentence);
    void setGrid(bool hasGrid);
    // Shows these series in place of what stood before.
    void show(std::vector<PlotSeries> series, const FirstView& first = {});
    void clear() { show({}); }
    bool isEmpty() const;
    const PlotContent& content() const;
    const std::vector<PlotSeries>& series() const { return content().series; }
    const PlotView& view() const;
    // Shows these limits; returns false where nothing can be drawn between them.
    bool setLimits(const PlotLimits& limits);
    // What is read at the pointer or where the keys have led; empty where that is nothing.
    std::string reading() const;
    // `changed` runs when what is in view or what is read has changed.
    void onChange(Handler changed) { changed_ = std::move(changed); }
    // Puts the picture on the clipboard; returns nothing, or the sentence that says what went
    // wrong.
    std::optional<std::string> copyPicture() const;
    bool canPerform(EditCommand command) const override;
    void perform(EditCommand command) override;
    // Another plot that shows the same; null where there is none.
    const Plot* twin() const;
    // Where a point is drawn, relative to the plot's upper left corner; nothing before it was.
    std::optional<Area> place(const PlotPosition& position) const;

  private:
    struct Canvas;
    struct Sheet;

    Plot(std::string name, const std::string& description, std::shared_ptr<Sheet> sheet);

    void connectDrawing();
    void connectPointer();
    void draw();
    // Has all plots of the sheet drawn again.
    void changed();
    void pointAt(std::optional<PlotPosition> position);
    std::optional<PlotPosition> nearestTo(double x, double y) const;
    void togglePin(const PlotPlace& place);
    bool press(double x, double y, unsigned button, bool isShifted);
    void dragTo(double x, double y);
    void release(double x, double y);
    void showAllInstead();
    bool turnWheel(double x, double y, bool isUp);
    bool pressKey(unsigned key, bool isShifted);
    void walk(double length);
    void changeCurve(bool isNext);
    void follow(const PlotPosition& position);
    void paintOver(cairo_t* cairo) const;

    std::shared_ptr<Sheet> sheet_;
    std::unique_ptr<Canvas> canvas_;
    Handler changed_;
};

}  // namespace toolkit
