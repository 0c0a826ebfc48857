#include "procedures/plot_panel.h"

#include <filesystem>
#include <map>
#include <utility>

#include "model/composition.h"
#include "procedures/composition_text.h"
#include "toolkit/clipboard.h"
#include "toolkit/file_chooser.h"
#include "toolkit/file_writing.h"
#include "toolkit/plot_picture.h"
#include "toolkit/plot_reading.h"
#include "toolkit/plot_window.h"

namespace procedures {

namespace {

// What was written under the names of this session's files, without their extensions.
std::map<std::string, std::string>& WrittenNames() {
    static std::map<std::string, std::string> names;
    return names;
}

void Tell(toolkit::Message& message, const std::string& path,
          const std::optional<std::string>& failure) {
    failure ? message.setText(*failure) : message.inform(toolkit::ShownName(path) + " was written");
}

}  // namespace

void SaveToFile(toolkit::Screen& screen, toolkit::Message& message, const std::string& title,
                const std::string& fileName, const std::vector<std::string>& extensions,
                std::function<std::optional<std::string>(const std::string& path)> write) {
    toolkit::ChooseFileToSave(screen, title, fileName + extensions.front(), extensions,
                              [&message, write = std::move(write)](const std::string& path) {
                                  Tell(message, path, write(path));
                              });
}

PlotPanel::PlotPanel(toolkit::Screen& screen, toolkit::Message& message, const toolkit::List& table,
                     std::string fileName, const std::string& description)
    : plot("Plot", description),
      screen_(screen),
      message_(message),
      table_(table),
      fileName_(std::move(fileName)),
      limits_(plot, message) {
    plot.setEmptyText("The curves appear here when they are calculated.");
    SavePicture.onClick(this, &PlotPanel::SavePicture_Action);
    CopyPicture.onClick(this, &PlotPanel::CopyPicture_Action);
    ExportCurves.onClick(this, &PlotPanel::ExportCurves_Action);
    Enlarge.onClick(this, &PlotPanel::Enlarge_Action);
    Copy.onClick(this, &PlotPanel::Copy_Action);
    for (toolkit::Button* const button : {&CopyPicture, &ExportCurves, &Enlarge}) {
        button->dropMnemonic();
    }
    plot.onChange([this] {
        if (ReadOut.text() != plot.reading()) {
            ReadOut.setText(plot.reading());
        }
        limits_.update();
    });
    SavePicture.setTooltip("Saves the plot as an SVG, PDF or PNG file");
    CopyPicture.setTooltip("Puts the plot on the clipboard, as Ctrl+C in the plot does");
    ExportCurves.setTooltip("Writes the points of the curves to a text file");
    Enlarge.setTooltip("Shows the plot in a window of its own (F11)");
    Copy.setTooltip("Copies the table, to be pasted into a spreadsheet");
    screen.setKeys(Enlarge, "F11");
}

toolkit::Block PlotPanel::block() {
    constexpr double width = 23.0;  // lines of text
    constexpr double height = 18.0;
    return toolkit::Column({plot.sized(width, height), ReadOut, limits_.block(),
                            toolkit::Row({SavePicture, CopyPicture, ExportCurves, Enlarge, Copy},
                                         toolkit::Spacing::Related)});
}

void PlotPanel::setAxes(const std::string& x, const std::string& xUnit, const std::string& y,
                        const std::string& yUnit) {
    plot.setAxes({x, xUnit}, {y, yUnit});
}

void PlotPanel::show(std::vector<toolkit::PlotSeries> series, const toolkit::FirstView& first,
                     const std::string& given) {
    given_ = given;
    plot.setTitle(CompositionTitle(fluid::AcceptedMixture()));
    plot.show(std::move(series), first);
}

bool PlotPanel::hasPlot() {
    if (plot.isEmpty()) {
        message_.setText("warning: there is no plot to save yet");
    }
    return !plot.isEmpty();
}

std::string PlotPanel::proposedName() const {
    const std::string name = fileName_ + "-" + CompositionName(fluid::AcceptedMixture()) +
                             (given_.empty() ? "" : "-" + given_);
    const std::string curves = toolkit::CurvesText(plot.content());
    std::string proposed = name;
    const auto& written = WrittenNames();
    for (int i = 2;; ++i) {
        const auto found = written.find(proposed);
        if (found == written.end() || found->second == curves) return proposed;
        proposed = name + "-" + std::to_string(i);
    }
}

void PlotPanel::tellWritten(const std::string& path, const std::optional<std::string>& failure) {
    if (!failure) {
        WrittenNames()[std::filesystem::path(path).stem().string()] =
            toolkit::CurvesText(plot.content());
    }
    Tell(message_, path, failure);
}

void PlotPanel::SavePicture_Action() {
    if (!hasPlot()) return;
    std::vector<std::string> sizes;
    sizes.reserve(std::size(toolkit::pictureSizes));
    for (const toolkit::PictureSize& size : toolkit::pictureSizes) {
        sizes.emplace_back(size.name);
    }
    toolkit::ChooseFileToSave(
        screen_, "Save picture", proposedName() + ".svg", {".svg", ".pdf", ".png"}, sizes,
        toolkit::pageSize, [this](const std::string& path, std::size_t size) {
            tellWritten(path, toolkit::SavePlot(path, toolkit::pictureSizes[size], plot.content(),
                                                plot.view()));
        });
}

void PlotPanel::CopyPicture_Action() {
    if (!hasPlot()) return;
    const auto failure = plot.copyPicture();
    failure ? message_.setText(*failure) : message_.inform("the picture is on the clipboard");
}

void PlotPanel::ExportCurves_Action() {
    if (!hasPlot()) return;
    toolkit::ChooseFileToSave(
        screen_, "Export curves", proposedName() + ".txt", {".txt"},
        [this](const std::string& path) {
            tellWritten(path, toolkit::WriteFile(path, toolkit::CurvesText(plot.content())));
        });
}

void PlotPanel::Enlarge_Action() {
    toolkit::PlotWindow::open(screen_, plot);
}

void PlotPanel::Copy_Action() {
    if (table_.isEmpty()) {
        message_.setText("warning: there is no table to copy yet");
        return;
    }
    toolkit::SetClipboardText(table_.copiedText());
}

}  // namespace procedures
