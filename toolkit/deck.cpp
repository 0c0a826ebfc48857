#include "toolkit/deck.h"

#include <gtk/gtk.h>

#include <utility>

namespace toolkit {

Deck::Deck(std::string name) : Control(std::move(name), gtk_notebook_new()) {
    gtk_notebook_set_show_tabs(GTK_NOTEBOOK(widget()), FALSE);
    gtk_notebook_set_show_border(GTK_NOTEBOOK(widget()), FALSE);
}

Block Deck::of(const std::vector<Block>& pages) {
    std::vector<Control*> controls;
    for (const Block& page : pages) {
        gtk_widget_show(page.widget());  // a hidden one cannot be brought into sight
        gtk_notebook_append_page(GTK_NOTEBOOK(widget()), page.widget(), nullptr);
        controls.insert(controls.end(), page.controls().begin(), page.controls().end());
    }
    return {widget(), controls};
}

void Deck::show(std::size_t page) {
    gtk_notebook_set_current_page(GTK_NOTEBOOK(widget()), static_cast<gint>(page));
}

}  // namespace toolkit
