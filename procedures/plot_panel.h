#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/button.h"
#include "toolkit/label.h"
#include "toolkit/layout.h"
#include "toolkit/list.h"
#include "toolkit/plot.h"
#include "toolkit/screen.h"

namespace procedures {

/// Asks where to save and has `write` do so, which returns nothing or what went wrong; `message`
/// says what came of it. `fileName` is proposed, with the first of the `extensions`.
void saveToFile(toolkit::Screen& screen, toolkit::Message& message, const std::string& title,
                const std::string& fileName, const std::vector<std::string>& extensions,
                std::function<std::optional<std::string>(const std::string& path)> write);

/// A plot with what goes with it on every screen: the read-out of the point under the pointer,
/// "Save picture", and "Copy", which puts the screen's table on the clipboard.
class PlotPanel {
  public:
    /// `fileName`: proposed for the picture, without its extension; `description`: of the plot, for
    /// a screen reader.
    PlotPanel(toolkit::Screen& screen, toolkit::Message& message, const toolkit::List& table,
              std::string fileName, const std::string& description);

    toolkit::Block block();
    /// The quantities on the axes, and their units.
    void setAxes(const std::string& x, const std::string& xUnit, const std::string& y,
                 const std::string& yUnit);
    void show(std::vector<toolkit::PlotSeries> series, const toolkit::FirstView& first = {}) {
        plot.show(std::move(series), first);
    }
    void clear() { plot.clear(); }

    toolkit::Plot plot;

  private:
    void SavePicture_Action();
    void Copy_Action();

    toolkit::Screen& screen_;
    toolkit::Message& message_;
    const toolkit::List& table_;
    std::string fileName_;

  public:
    toolkit::ResultLabel ReadOut{"ReadOut"};
    toolkit::Button SavePicture{"SavePicture", "Save picture"};
    toolkit::Button Copy{"Copy", "Copy"};
};

}  // namespace procedures
