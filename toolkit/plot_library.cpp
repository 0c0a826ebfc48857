#include "toolkit/plot_library.h"

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstdlib>
#include <optional>
#include <string_view>

namespace toolkit {

namespace {

bool isBroken = false;
bool isGuarded = false;
std::jmp_buf beforeFailure;

/// After what the library cannot go on from it ends the process, unless this does not return.
int onExit(const char* /*message*/) {
    if (isGuarded) {
        std::longjmp(beforeFailure, 1);
    }
    return EXIT_FAILURE;
}

/// Calls a function that may fail so badly. Only the library's own frames, which are C, are left
/// by the jump.
template <class... Arguments>
void callGuarded(void (*function)(Arguments...), Arguments... arguments) {
    isGuarded = true;
    if (setjmp(beforeFailure) == 0) {
        function(arguments...);
    } else {
        isBroken = true;
    }
    isGuarded = false;
}

/// Whether the device is there: asked for one that is not, the library asks the user at the
/// terminal for another.
bool hasDevice(const PlotLibrary& library) {
    std::array<const char*, 256> texts{};
    std::array<const char*, 256> names{};
    const char** textList = texts.data();
    const char** nameList = names.data();
    int count = static_cast<int>(names.size());
    callGuarded(library.listDevices, &textList, &nameList, &count);
    return !isBroken && std::any_of(names.begin(), names.begin() + count, [](const char* name) {
        return name == std::string_view(PlotLibrary::device);
    });
}

/// A function of the library; null, and `isComplete` false, where it has none of that name.
template <class Function>
void find(void* library, const char* name, Function& function, bool& isComplete) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    isComplete = isComplete && function != nullptr;
}

std::optional<PlotLibrary> load() {
    void* const library = dlopen(DROVAN_PLPLOT_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        return std::nullopt;
    }
    PlotLibrary functions{};
    bool isComplete = true;
    find(library, "c_plmkstrm", functions.makeStream, isComplete);
    find(library, "c_plsdev", functions.setDevice, isComplete);
    find(library, "c_plspage", functions.setPage, isComplete);
    find(library, "c_plscmap0", functions.setColours, isComplete);
    find(library, "c_plinit", functions.initialise, isComplete);
    find(library, "pl_cmd", functions.command, isComplete);
    find(library, "c_pladv", functions.advance, isComplete);
    find(library, "c_plend1", functions.endStream, isComplete);
    find(library, "c_plvpor", functions.setViewport, isComplete);
    find(library, "c_plwind", functions.setWindow, isComplete);
    find(library, "c_plgvpd", functions.viewport, isComplete);
    find(library, "c_plgvpw", functions.window, isComplete);
    find(library, "c_plschr", functions.setTextHeight, isComplete);
    find(library, "c_plsmaj", functions.setMajorTicks, isComplete);
    find(library, "c_plsmin", functions.setMinorTicks, isComplete);
    find(library, "c_plsxax", functions.setXDigits, isComplete);
    find(library, "c_plsyax", functions.setYDigits, isComplete);
    find(library, "c_plcol0", functions.setColour, isComplete);
    find(library, "c_plwidth", functions.setLineWidth, isComplete);
    find(library, "c_pllsty", functions.setLineStyle, isComplete);
    find(library, "c_plbox", functions.drawBox, isComplete);
    find(library, "c_plmtex", functions.drawTitle, isComplete);
    find(library, "c_plline", functions.drawLine, isComplete);
    find(library, "c_plstring", functions.drawMarkers, isComplete);
    find(library, "c_pllegend", functions.drawLegend, isComplete);
    find(library, "plsexit", functions.setExitHandler, isComplete);
    find(library, "plsabort", functions.setAbortHandler, isComplete);
    find(library, "plgDevs", functions.listDevices, isComplete);
    if (!isComplete) {
        return std::nullopt;
    }
    functions.setExitHandler(&onExit);
    functions.setAbortHandler([](const char* /*message*/) {});
    if (!hasDevice(functions)) {
        return std::nullopt;
    }
    return functions;
}

}  // namespace

const PlotLibrary* plotLibrary() {
    static const std::optional<PlotLibrary> library = load();
    return library && !isBroken ? &*library : nullptr;
}

bool startPlot(const PlotLibrary& library) {
    callGuarded(library.initialise);
    return !isBroken;
}

}  // namespace toolkit
