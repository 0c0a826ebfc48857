#include "app/guide_window.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

namespace app {

namespace {

constexpr const char* contentsPage = "guide/README.md";

// Where the documentation lies: beside the program in the folder in which it was built, in the
// data of the system once it is installed.
std::string Documentation() {
    std::error_code error;
    const std::filesystem::path program =
        std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    for (const char* const place : {"docs", "../share/drovan-w/docs"}) {
        if (std::filesystem::exists(program / place / contentsPage, error)) {
            return (program / place).string();
        }
    }
    return "";
}

// The page of the guide for a screen by its class.
std::string PageOf(const std::string& screen) {
    using Page = std::pair<const char*, const char*>;
    static constexpr std::array pages = {
        Page{"Start2Window", "composition"},
        Page{"VolumeWindow", "molar-volumes"},
        Page{"PressureWindow", "pressures"},
        Page{"TemperatureWindow", "temperatures"},
        Page{"FugacityWindow", "fugacities"},
        Page{"ActivityWindow", "activities"},
        Page{"BubbleDewPoint", "homogenization"},
        Page{"ExplainFirst", "homogenization"},
        Page{"LiquidVapourEq", "liquid-vapour"},
        Page{"ExplainSecond", "liquid-vapour"},
        Page{"ThermodynamicWindow", "thermodynamic-properties"},
        Page{"ChemPotWindow", "chemical-potentials"},
        Page{"CriticalPointWindow", "critical-point"},
        Page{"ExplainCritical", "critical-point"},
        Page{"IsochoreWindow", "isochores"},
        Page{"IsothermWindow", "isotherms"},
        Page{"SpinodalWindow", "spinodal"},
        Page{"ExplainSpinodal", "spinodal"},
        Page{"PlotWindow", "plots"},
    };
    for (const auto& [name, page] : pages) {
        if (screen == name) return std::string("guide/") + page + ".md";
    }
    return contentsPage;
}

}  // namespace

GuideWindow::GuideWindow(toolkit::ScreenHost& host)
    : Screen(host, "GuideWindow", "User guide - Drovan W"), folder_(Documentation()) {
    Contents.onClick(this, &GuideWindow::Contents_Action);
    Back.onClick(this, &GuideWindow::Back_Action);
    Page.onFollow([this](const std::string& target) { follow(target); });
    Page.setAccessibleName("page of the user guide");
    setContent(toolkit::Column({Page.scrolling(), toolkit::ButtonRow({Contents, Back})},
                               toolkit::Spacing::Group)
                   .expanding());
    setFocus(Page);
}

void GuideWindow::showPageOf(const toolkit::Screen& screen) {
    const std::string page = PageOf(screen.name());
    if (past_.empty() || past_.back() != page) {
        past_.push_back(page);
        open(page);
    }
}

void GuideWindow::follow(const std::string& target) {
    const std::size_t hash = target.find('#');
    const std::string file = target.substr(0, hash);
    if (file.find(':') != std::string::npos) {
        return;  // a place in the net: nothing here goes there
    }
    const std::filesystem::path here = past_.back().substr(0, past_.back().find('#'));
    const std::filesystem::path page =
        file.empty() ? here : (here.parent_path() / file).lexically_normal();
    past_.push_back(page.string() + (hash == std::string::npos ? "" : target.substr(hash)));
    open(past_.back());
}

void GuideWindow::open(const std::string& target) {
    const std::size_t hash = target.find('#');
    const std::filesystem::path file = std::filesystem::path(folder_) / target.substr(0, hash);
    std::ifstream source(file);
    std::string text{std::istreambuf_iterator<char>(source), {}};
    if (folder_.empty() || !source) {
        text = "# User guide\n\nThe guide is not installed with this program.\n";
    } else if (file.extension() != ".md") {
        text = "# " + file.filename().string() + "\n\n```\n" + text + "```\n";
    }
    Page.show(text, file.parent_path().string());
    setTitle((target.substr(0, hash) == contentsPage ? "" : Page.heading() + " - ") +
             "User guide - Drovan W");
    Back.setSensitive(past_.size() > 1);
    if (hash != std::string::npos) {
        Page.goTo(target.substr(hash + 1));
    }
}

void GuideWindow::Contents_Action() {
    past_.emplace_back(contentsPage);
    open(contentsPage);
}

void GuideWindow::Back_Action() {
    if (past_.size() > 1) {
        past_.pop_back();
        open(past_.back());
    }
}

}  // namespace app
