#pragma once

#include <gtk/gtk.h>

#include <string>

namespace toolkit {

// Pixels.
struct TextExtents {
    int width = 0;
    int height = 0;
};

// What a text takes in the font of the widget; for this folder.
TextExtents SizeOfText(GtkWidget* widget, const std::string& text);
// The height of a line of text in the font of the widget, in pixels.
int LineHeight(GtkWidget* widget);

}  // namespace toolkit
