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
#include "toolkit/plot_controls.h"
#include "toolkit/screen.h"

namespace procedures {

// Asks where to save and has `write` do so, which returns nothing or what went wrong; `message`
// says what came of it. `fileName` is proposed, with the first of the `extensions`.
void SaveToFile(toolkit::Screen& screen, toolkit::Message& message, const std::string& title,
                const std::string& fileName, const std::vector<std::string>& extensions,
                std::function<std::optional<std::string>(const std::string& path)> write);

// A plot with what goes with it on every screen: the line that is read out, the row of the limits,
// the picture as a file and on the clipboard, the curves as a file, the plot in a window of its
// own, and "Copy", which puts the screen's table on the clipboard.
class PlotPanel {
  public:
    // `fileName`: what the names begin with that are proposed for files; `description`: of the
    // plot, for a screen reader.
    PlotPanel(toolkit::Screen& screen, toolkit::Message& message, const toolkit::List& table,
              std::string fileName, const std::string& description);

    toolkit::Block block();
    // The quantities on the axes, and their units.
    void setAxes(const std::string& x, const std::string& xUnit, const std::string& y,
                 const std::string& yUnit);
    // Shows these curves of the present composition. `given`: what they were calculated for, as it
    // stands in the names proposed for files: "80cm3mol".
    void show(std::vector<toolkit::PlotSeries> series, const toolkit::FirstView& first = {},
              const std::string& given = {});
    void clear() { plot.clear(); }

    toolkit::Plot plot;

  private:
    void SavePicture_Action();
    void CopyPicture_Action();
    void ExportCurves_Action();
    void Enlarge_Action();
    void Copy_Action();
    // Whether there is something to save or to copy; a sentence says so if not.
    bool hasPlot();
    // The name to propose for a file: never one that was used for other curves.
    std::string proposedName() const;
    // Keeps in mind which curves were written to this file, or what went wrong.
    void tellWritten(const std::string& path, const std::optional<std::string>& failure);

    toolkit::Screen& screen_;
    toolkit::Message& message_;
    const toolkit::List& table_;
    std::string fileName_;
    std::string given_;

  public:
    toolkit::PlotReadOut ReadOut{"ReadOut"};

  private:
    toolkit::PlotLimitsRow limits_;

  public:
    toolkit::Button SavePicture{"SavePicture", "Save picture"};
    toolkit::Button CopyPicture{"CopyPicture", "Copy picture"};
    toolkit::Button ExportCurves{"ExportCurves", "Export curves"};
    toolkit::Button Enlarge{"Enlarge", "Enlarge"};
    toolkit::Button Copy{"Copy", "Copy"};
};

}  // namespace procedures
