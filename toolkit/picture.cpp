#include "toolkit/picture.h"

#include <gtk/gtk.h>

#include <memory>

#include "toolkit/screen.h"

namespace toolkit {

Area FrameArea(const Screen& screen) {
    GdkRectangle frame;
    gdk_window_get_frame_extents(gtk_widget_get_window(screen.window()), &frame);
    return {frame.x, frame.y, frame.width, frame.height};
}

bool SavePicture(const Area& area, const std::string& path) {
    const std::unique_ptr<GdkPixbuf, decltype(&g_object_unref)> pixels(
        gdk_pixbuf_get_from_drawable(nullptr, gdk_get_default_root_window(), nullptr, area.x,
                                     area.y, 0, 0, area.width, area.height),
        &g_object_unref);
    return pixels != nullptr &&
           gdk_pixbuf_save(pixels.get(), path.c_str(), "png", nullptr, nullptr) != FALSE;
}

}  // namespace toolkit
