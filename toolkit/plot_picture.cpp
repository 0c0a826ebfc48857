#include "toolkit/plot_picture.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>
#include <gtk/gtk.h>

#include <cmath>
#include <cstdint>
#include <memory>

#include "toolkit/exposure.h"
#include "toolkit/file_chooser.h"
#include "toolkit/file_writing.h"

namespace toolkit {

namespace {

constexpr double millimetresPerInch = 25.4;
constexpr double pointsPerInch = 72.0;
constexpr auto notDrawn = "warning: the picture could not be drawn";

struct SurfaceDeleter {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;

struct PixelsDeleter {
    void operator()(GdkPixbuf* pixels) const { g_object_unref(pixels); }
};
using Pixels = std::unique_ptr<GdkPixbuf, PixelsDeleter>;

cairo_status_t Append(void* text, const unsigned char* data, unsigned length) {
    static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

double PixelsOf(double millimetres) {
    return std::round(millimetres / millimetresPerInch * picturePixelsPerInch);
}

// Draws in pixels, `scale` of the surface's units each; returns whether that went well.
bool DrawOn(cairo_surface_t* surface, double scale, const PictureSize& size,
            const PlotContent& content, const PlotView& view) {
    const CairoContext cairo(cairo_create(surface));
    cairo_scale(cairo.get(), scale, scale);
    PlotLook look;
    look.hasMore = false;
    look.textHeight = size.text / pointsPerInch * picturePixelsPerInch;
    const auto frame =
        DrawPlot(cairo.get(), PixelsOf(size.width), PixelsOf(size.height), look, content, view);
    return frame && cairo_status(cairo.get()) == CAIRO_STATUS_SUCCESS;
}

// The vector formats.
std::string DrawVectors(bool isPdf, const PictureSize& size, const PlotContent& content,
                        const PlotView& view) {
    constexpr double pointsPerPixel = pointsPerInch / picturePixelsPerInch;
    const double width = PixelsOf(size.width) * pointsPerPixel;
    const double height = PixelsOf(size.height) * pointsPerPixel;
    std::string picture;
    const Surface surface(
        isPdf ? cairo_pdf_surface_create_for_stream(&Append, &picture, width, height)
              : cairo_svg_surface_create_for_stream(&Append, &picture, width, height));
    if (!isPdf) {
        cairo_svg_surface_set_document_unit(surface.get(), CAIRO_SVG_UNIT_PT);
    }
    const bool isDrawn = DrawOn(surface.get(), pointsPerPixel, size, content, view);
    cairo_surface_finish(surface.get());
    return isDrawn && cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS ? picture : "";
}

Pixels DrawPixels(const PictureSize& size, const PlotContent& content, const PlotView& view) {
    const int width = static_cast<int>(std::lround(PixelsOf(size.width)));
    const int height = static_cast<int>(std::lround(PixelsOf(size.height)));
    const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
    Pixels picture(gdk_pixbuf_new(GDK_COLORSPACE_RGB, FALSE, 8, width, height));
    if (!DrawOn(surface.get(), 1.0, size, content, view) || picture == nullptr) return nullptr;
    cairo_surface_flush(surface.get());
    for (int y = 0; y < height; ++y) {
        const auto* const from = reinterpret_cast<const std::uint32_t*>(
            cairo_image_surface_get_data(surface.get()) +
            std::ptrdiff_t{y} * cairo_image_surface_get_stride(surface.get()));
        guchar* to = gdk_pixbuf_get_pixels(picture.get()) +
                     std::ptrdiff_t{y} * gdk_pixbuf_get_rowstride(picture.get());
        for (int x = 0; x < width; ++x) {
            for (const unsigned shift : {16U, 8U, 0U}) {
                *to++ = static_cast<guchar>(from[x] >> shift);
            }
        }
    }
    return picture;
}

std::string DrawPng(const PictureSize& size, const PlotContent& content, const PlotView& view) {
    const Pixels picture = DrawPixels(size, content, view);
    const std::string density = std::to_string(std::lround(picturePixelsPerInch));
    gchar* data = nullptr;
    gsize length = 0;
    if (picture == nullptr ||
        gdk_pixbuf_save_to_buffer(picture.get(), &data, &length, "png", nullptr, "x-dpi",
                                  density.c_str(), "y-dpi", density.c_str(), nullptr) == FALSE) {
        return {};
    }
    const std::unique_ptr<gchar, decltype(&g_free)> owned(data, &g_free);
    return {data, length};
}

}  // namespace

std::optional<std::string> SavePlot(const std::string& path, const PictureSize& size,
                                    const PlotContent& content, const PlotView& view) {
    const bool isPdf = HasExtension(path, ".pdf");
    const std::string picture = isPdf || HasExtension(path, ".svg")
                                    ? DrawVectors(isPdf, size, content, view)
                                    : DrawPng(size, content, view);
    return picture.empty() ? notDrawn : WriteFile(path, picture);
}

std::optional<std::string> CopyPlot(const PictureSize& size, const PlotContent& content,
                                    const PlotView& view) {
    const Pixels picture = DrawPixels(size, content, view);
    if (picture == nullptr) return notDrawn;
    gtk_clipboard_set_image(gtk_clipboard_get(GDK_SELECTION_CLIPBOARD), picture.get());
    return std::nullopt;
}

}  // namespace toolkit
