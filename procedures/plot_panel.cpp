#include "procedures/plot_panel.h"

#include <optional>
#include <utility>

#include "toolkit/clipboard.h"
#include "toolkit/file_chooser.h"
#include "toolkit/file_writing.h"
#include "toolkit/plot_picture.h"

namespace procedures {

void saveToFile(toolkit::Screen& screen, toolkit::Message& message, const std::string& title,
                const std::string& fileName, const std::vector<std::string>& extensions,
                std::function<std::optional<std::string>(const std::string& path)> write) {
    toolkit::chooseFileToSave(screen, title, fileName + extensions.front(), extensions,
                              [&message, write = std::move(write)](const std::string& path) {
                                  const std::optional<std::string> failure = write(path);
                                  failure
                                      ? message.setText(*failure)
                                      : message.inform(toolkit::shownName(path) + " was written");
                              });
}

PlotPanel::PlotPanel(toolkit::Screen& screen, toolkit::Message& message, const toolkit::List& table,
                     std::string fileName, const std::string& description)
    : plot("Plot", description),
      screen_(screen),
      message_(message),
      table_(table),
      fileName_(std::move(fileName)) {
    ReadOut.setUnobtrusive();
    SavePicture.onClick(this, &PlotPanel::SavePicture_Action);
    Copy.onClick(this, &PlotPanel::Copy_Action);
    plot.onChange([this] { ReadOut.setText(plot.reading()); });
    SavePicture.setTooltip("Saves the plot as an SVG, PDF or PNG file");
    Copy.setTooltip("Copies the table, to be pasted into a spreadsheet");
}

toolkit::Block PlotPanel::block() {
    constexpr double width = 24.0;  // lines of text
    constexpr double height = 22.0;
    return toolkit::column(
        {plot.sized(width, height), ReadOut, toolkit::buttonRow({SavePicture, Copy})});
}

void PlotPanel::setAxes(const std::string& x, const std::string& xUnit, const std::string& y,
                        const std::string& yUnit) {
    plot.setAxes({x, xUnit}, {y, yUnit});
}

void PlotPanel::SavePicture_Action() {
    if (plot.isEmpty()) {
        message_.setText("warning: there is no picture to save yet");
        return;
    }
    saveToFile(screen_, message_, "Save picture", fileName_, {".svg", ".pdf", ".png"},
               [this](const std::string& path) {
                   return toolkit::savePlot(path, toolkit::pictureSizes[1], plot.content(),
                                            plot.view());
               });
}

void PlotPanel::Copy_Action() {
    if (table_.isEmpty()) {
        message_.setText("warning: there is no table to copy yet");
        return;
    }
    toolkit::setClipboardText(table_.copiedText());
}

}  // namespace procedures
