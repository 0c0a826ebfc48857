#pragma once

using GtkAdjustment = struct _GtkAdjustment;
using GtkScrolledWindow = struct _GtkScrolledWindow;

namespace toolkit {

// How the content of a window scrolls up and down: the scroll bar `ScrollBar1` beside it moves it
// in its place, `Rectangle1`. To outlive the widgets.
class ScrolledPage {
  public:
    // `scroller`: with a viewport in it.
    explicit ScrolledPage(GtkScrolledWindow* scroller);
    ScrolledPage(const ScrolledPage&) = delete;
    ScrolledPage& operator=(const ScrolledPage&) = delete;

  private:
    void ScrollBar1_ValueChanged();
    // Fits the range of the scroll bar to the content and to the place that the window leaves it.
    void Event_Resizing();

    GtkAdjustment* ScrollBar1;
    GtkAdjustment* Rectangle1;
};

}  // namespace toolkit
