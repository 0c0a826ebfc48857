#pragma once

#include <memory>
#include <string>

#include "toolkit/plot.h"
#include "toolkit/plot_controls.h"
#include "toolkit/screen.h"

namespace toolkit {

// A plot alone in a large window, which shows what the plot of another screen shows and closes
// with it, or by F11 or Escape.
class PlotWindow : public Screen {
  public:
    // Opens one, or brings that of the plot to the front.
    static void open(Screen& owner, const Plot& plot);

    PlotWindow(Screen& owner, const Plot& plot);

    bool closesWith(const Screen& other) const override { return &other == &owner_; }

  private:
    const Screen& owner_;
    Plot plot_;
    PlotReadOut ReadOut{"ReadOut"};
};

}  // namespace toolkit
