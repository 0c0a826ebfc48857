#pragma once

#include <plplot.h>

namespace toolkit {

/// The functions of PLplot, whose library is loaded with the first plot: it would cost each start
/// of the program a tenth of its time.
struct PlotLibrary {
    static constexpr const char* device = "extcairo";

    decltype(&::c_plmkstrm) makeStream;
    decltype(&::c_plsdev) setDevice;
    decltype(&::c_plspage) setPage;
    decltype(&::c_plscmap0) setColours;
    decltype(&::c_plinit) initialise;  // through startPlot
    decltype(&::pl_cmd) command;
    decltype(&::c_pladv) advance;
    decltype(&::c_plend1) endStream;
    decltype(&::c_plvpor) setViewport;
    decltype(&::c_plwind) setWindow;
    decltype(&::c_plgvpd) viewport;
    decltype(&::c_plgvpw) window;
    decltype(&::c_plschr) setTextHeight;
    decltype(&::c_plsmaj) setMajorTicks;
    decltype(&::c_plsmin) setMinorTicks;
    decltype(&::c_plsxax) setXDigits;
    decltype(&::c_plsyax) setYDigits;
    decltype(&::c_plcol0) setColour;
    decltype(&::c_plwidth) setLineWidth;
    decltype(&::c_pllsty) setLineStyle;
    decltype(&::c_plbox) drawBox;
    decltype(&::c_plmtex) drawTitle;
    decltype(&::c_plline) drawLine;
    decltype(&::c_plstring) drawMarkers;
    decltype(&::c_pllegend) drawLegend;
    decltype(&::plsexit) setExitHandler;
    decltype(&::plsabort) setAbortHandler;
    decltype(&::plgDevs) listDevices;
};

/// The library, loaded at the first call; null where it or the device that draws with cairo is not
/// installed, or cannot be used.
const PlotLibrary* plotLibrary();

/// Starts the device of the library's current stream. Returns false where that failed; there is no
/// library then any more.
bool startPlot(const PlotLibrary& library);

}  // namespace toolkit
