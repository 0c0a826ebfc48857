#pragma once

#include <gtk/gtk.h>

#include <memory>

namespace toolkit {

struct CairoDestroyer {
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
};
using CairoContext = std::unique_ptr<cairo_t, CairoDestroyer>;

// For the expose handlers of this folder: draws on the window of `widget`, within what `event`
// asks to be painted. Lengths are pixels from the upper left corner of that window.
CairoContext ExposedPart(GtkWidget* widget, const GdkEventExpose& event);

}  // namespace toolkit
