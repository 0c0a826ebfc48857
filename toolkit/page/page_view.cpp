#include "toolkit/page/page_view.h"

#include <gdk/gdkkeysyms.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <numeric>
#include <utility>

#include "toolkit/event.h"
#include "toolkit/formula/typesetter.h"
#include "toolkit/text_size.h"

namespace toolkit {

namespace {

constexpr double pageWidth = 42.0;  // in lines of text
constexpr double pageHeight = 34.0;
constexpr int margin = 12;
constexpr const char* wideSpace = "~~";  // between two formulas

GtkTextView* ViewOf(const Control& control) {
    return GTK_TEXT_VIEW(control.widget());
}

GtkTextBuffer* BufferOf(const Control& control) {
    return gtk_text_view_get_buffer(ViewOf(control));
}

using Pixbuf = std::unique_ptr<GdkPixbuf, decltype(&g_object_unref)>;

// A formula in the colour of the texts of the widget.
Pixbuf PictureOf(const std::string& formula, GtkWidget* widget) {
    const GtkStyle* const style = gtk_widget_get_style(widget);
    const double points =
        pango_font_description_get_size(style->font_desc) / static_cast<double>(PANGO_SCALE);
    const FormulaBox box = Typeset(formula, gtk_widget_get_pango_context(widget), 1.15 * points);
    const int width = static_cast<int>(std::ceil(box.width)) + 2;
    const int height = static_cast<int>(std::ceil(box.ascent + box.descent)) + 2;
    const std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface(
        cairo_image_surface_create(CAIRO_FORMAT_A8, width, height), &cairo_surface_destroy);
    const std::unique_ptr<cairo_t, decltype(&cairo_destroy)> cairo(cairo_create(surface.get()),
                                                                   &cairo_destroy);
    box.draw(cairo.get(), 1.0, 1.0 + std::round(box.ascent));
    cairo_surface_flush(surface.get());
    Pixbuf picture(gdk_pixbuf_new(GDK_COLORSPACE_RGB, TRUE, 8, width, height), &g_object_unref);
    const GdkColor& colour = style->text[GTK_STATE_NORMAL];
    gdk_pixbuf_fill(picture.get(),
                    static_cast<guint32>((colour.red >> 8) << 24 | (colour.green >> 8) << 16 |
                                         (colour.blue >> 8) << 8));
    const unsigned char* const ink = cairo_image_surface_get_data(surface.get());
    const int stride = cairo_image_surface_get_stride(surface.get());
    guchar* const pixels = gdk_pixbuf_get_pixels(picture.get());
    const int rowstride = gdk_pixbuf_get_rowstride(picture.get());
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            pixels[y * rowstride + 4 * x + 3] = ink[y * stride + x];
        }
    }
    return picture;
}

// A picture from a file, made smaller where it is wider than the page; null where there is none.
Pixbuf PictureFrom(const std::string& name, const std::string& folder, int width) {
    const std::string file = folder + "/" + name;
    int own = 0;
    GdkPixbuf* const picture =
        name.empty() || gdk_pixbuf_get_file_info(file.c_str(), &own, nullptr) == nullptr
            ? nullptr
            : gdk_pixbuf_new_from_file_at_scale(file.c_str(), std::min(own, width), -1, TRUE,
                                                nullptr);
    return {picture, &g_object_unref};
}

void AddTags(GtkTextBuffer* buffer, GtkWidget* widget) {
    const GtkStyle* const style = gtk_widget_get_style(widget);
    const int line = LineHeight(widget);
    const auto rise = [line](double share) { return static_cast<int>(share * line * PANGO_SCALE); };
    GdkColor link = style->text[GTK_STATE_NORMAL];
    GdkColor* own = nullptr;
    gtk_widget_style_get(widget, "link-color", &own, nullptr);
    // A dark theme without a colour of its own for links keeps that of the text.
    const bool isDark = link.red + link.green + link.blue > 3 * 0x8000;
    if (own != nullptr) {
        link = *own;
        gdk_color_free(own);
    } else if (!isDark) {
        link = {0, 0, 0, 0xcccc};
    }
    const auto make = [buffer](const char* name, const char* property, auto value,
                               const char* second = nullptr, int secondValue = 0) {
        gtk_text_buffer_create_tag(buffer, name, property, value, second, secondValue, nullptr);
    };
    make("heading1", "scale", 1.5, "weight", PANGO_WEIGHT_BOLD);
    make("heading2", "scale", 1.25, "weight", PANGO_WEIGHT_BOLD);
    make("heading3", "scale", 1.1, "weight", PANGO_WEIGHT_BOLD);
    make("below", "pixels-below-lines", line / 2);
    make("above", "pixels-above-lines", line / 2);
    // What a picture shows, for screen readers and for Copy: too small to be seen.
    make("spoken", "size", 1);
    make("bold", "weight", PANGO_WEIGHT_BOLD);
    make("italic", "style", PANGO_STYLE_ITALIC);
    make("code", "family", "monospace");
    make("verbatim", "family", "monospace", "wrap-mode", GTK_WRAP_NONE);
    make("exponent", "scale", 0.75, "rise", rise(0.3));
    make("index", "scale", 0.75, "rise", rise(-0.12));
    make("link", "foreground-gdk", &link, "underline", PANGO_UNDERLINE_SINGLE);
    make("item1", "left-margin", margin + 2 * line, "indent", -line);
    make("item2", "left-margin", margin + 4 * line, "indent", -line);
    make("inItem", "left-margin", margin + 2 * line);
    make("rest", "left-margin", margin + 2 * line);
}

std::string TextOf(const TextRuns& runs) {
    std::string text;
    for (const TextRun& run : runs) {
        text += run.text;
    }
    return text;
}

// How wide the longest cell of a column is, in pixels.
int WidthOfColumn(const PageBlock& table, std::size_t column, GtkWidget* widget) {
    int width = 0;
    for (const std::vector<TextRuns>& row : table.rows) {
        width = std::max(width, SizeOfText(widget, TextOf(row[column])).width);
    }
    return width * 11 / 10;  // some of it may be bold, or in another font
}

}  // namespace

struct PageView::Callbacks {
    static int positionAt(GtkTextView* view, double x, double y) {
        gint bufferX = 0;
        gint bufferY = 0;
        gtk_text_view_window_to_buffer_coords(view, GTK_TEXT_WINDOW_TEXT, static_cast<gint>(x),
                                              static_cast<gint>(y), &bufferX, &bufferY);
        GtkTextIter place;
        gtk_text_view_get_iter_at_location(view, &place, bufferX, bufferY);
        return gtk_text_iter_get_offset(&place);
    }

    static void onEvent(GtkWidget* widget, const GdkEvent* event, PageView* self) {
        if (event->type != GDK_BUTTON_RELEASE || event->button.button != 1 ||
            gtk_text_buffer_get_has_selection(BufferOf(*self)) != FALSE) {
            return;
        }
        const Link* const link =
            self->linkAt(positionAt(GTK_TEXT_VIEW(widget), event->button.x, event->button.y));
        if (link != nullptr) {
            self->follow(*link);
        }
    }

    static gboolean onMoved(GtkWidget* widget, const GdkEventMotion* event, const PageView* self) {
        const bool isLink =
            self->linkAt(positionAt(GTK_TEXT_VIEW(widget), event->x, event->y)) != nullptr;
        GdkCursor* const cursor = gdk_cursor_new_for_display(gtk_widget_get_display(widget),
                                                             isLink ? GDK_HAND2 : GDK_XTERM);
        gdk_window_set_cursor(gtk_text_view_get_window(GTK_TEXT_VIEW(widget), GTK_TEXT_WINDOW_TEXT),
                              cursor);
        gdk_cursor_unref(cursor);
        return FALSE;
    }

    static gboolean onKey(GtkWidget* /*widget*/, const GdkEventKey* event, PageView* self) {
        const bool isBack = event->keyval == GDK_KEY_ISO_Left_Tab;
        if (isBack || event->keyval == GDK_KEY_Tab) {
            return static_cast<gboolean>(self->selectLink(!isBack));
        }
        if (event->keyval != GDK_KEY_Return && event->keyval != GDK_KEY_KP_Enter) return FALSE;
        GtkTextIter start;
        gtk_text_buffer_get_selection_bounds(BufferOf(*self), &start, nullptr);
        const Link* const link = self->linkAt(gtk_text_iter_get_offset(&start));
        if (link != nullptr) {
            self->follow(*link);
        }
        return static_cast<gboolean>(link != nullptr);
    }
};

PageView::PageView(std::string name) : Control(std::move(name), gtk_text_view_new()) {
    GtkTextView* const view = ViewOf(*this);
    gtk_text_view_set_editable(view, FALSE);
    gtk_text_view_set_accepts_tab(view, FALSE);
    gtk_text_view_set_wrap_mode(view, GTK_WRAP_WORD);
    gtk_text_view_set_left_margin(view, margin);
    gtk_text_view_set_right_margin(view, margin);
    // Once the view has done what it does with a press: a link may put another text into it.
    Connect(
        widget(), "event-after",
        [](GtkWidget* widget, GdkEvent* event, PageView* self) {
            Callbacks::onEvent(widget, event, self);
        },
        this);
    Connect(
        widget(), "motion-notify-event",
        [](GtkWidget* widget, GdkEventMotion* event, const PageView* self) -> gboolean {
            return Callbacks::onMoved(widget, event, self);
        },
        this);
    Connect(
        widget(), "key-press-event",
        [](GtkWidget* widget, GdkEventKey* event, PageView* self) -> gboolean {
            return Callbacks::onKey(widget, event, self);
        },
        this);
    // Formulas, pictures and columns follow the font and the colours.
    Connect(
        widget(), "realize", [](GtkWidget* /*widget*/, PageView* self) { self->write(); }, this,
        Order::Last);
    Connect(
        widget(), "style-set",
        [](GtkWidget* /*widget*/, GtkStyle* /*previous*/, PageView* self) { self->write(); }, this,
        Order::Last);
}

Block PageView::scrolling() {
    GtkWidget* const scroller = gtk_scrolled_window_new(nullptr, nullptr);
    gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(scroller), GTK_POLICY_NEVER,
                                   GTK_POLICY_AUTOMATIC);
    gtk_scrolled_window_set_shadow_type(GTK_SCROLLED_WINDOW(scroller), GTK_SHADOW_IN);
    gtk_container_add(GTK_CONTAINER(scroller), widget());
    gtk_widget_show(scroller);
    constexpr double least = 8.0;
    return Block(scroller, {this})
        .asking({pageWidth + 2.0, pageHeight}, {least, least})
        .expanding();
}

void PageView::show(std::string_view markdown, const std::string& folder) {
    blocks_ = ReadMarkdown(markdown);
    folder_ = folder;
    anchor_.clear();
    heading_.clear();
    for (const PageBlock& block : blocks_) {
        if (block.kind == PageBlock::Kind::Heading && heading_.empty()) {
            heading_ = TextOf(block.runs);
        }
    }
    write();
}

void PageView::write() {
    if (gtk_widget_get_realized(widget()) == FALSE) {
        return;  // it is written as soon as it has its font
    }

    pageWidth_ = static_cast<int>(pageWidth * LineHeight(widget())) - 2 * margin;
    GtkTextBuffer* const buffer = gtk_text_buffer_new(nullptr);
    AddTags(buffer, widget());
    gtk_text_view_set_buffer(ViewOf(*this), buffer);
    g_object_unref(buffer);
    links_.clear();
    anchors_.clear();

    for (const PageBlock& block : blocks_) {
        write(block);
    }
    GtkTextIter start;
    gtk_text_buffer_get_start_iter(buffer, &start);
    gtk_text_buffer_place_cursor(buffer, &start);
    goTo(std::string(anchor_));
}

void PageView::write(const PageBlock& block) {
    using Kind = PageBlock::Kind;
    GtkTextBuffer* const buffer = BufferOf(*this);
    const int first = gtk_text_buffer_get_char_count(buffer);
    if (block.kind == Kind::Table) {
        writeTable(block);
        return;
    }
    std::vector<const char*> tags = {"below"};
    if (block.kind == Kind::Heading) {
        constexpr std::array headings = {"heading1", "heading2", "heading3"};
        tags.push_back(headings[std::min<std::size_t>(block.level, headings.size()) - 1]);
        if (first > 0) {
            tags.push_back("above");
        }
        anchors_.push_back({first, first, AnchorOf(block.runs)});
    } else if (block.kind == Kind::Item) {
        tags.push_back(block.level > 1 ? "item2" : "item1");
        insert(block.mark + "\u2002", {});
    } else if (block.kind == Kind::Verbatim) {
        tags.push_back("verbatim");
    } else if (block.level > 0) {
        tags.push_back("inItem");
    }
    write(block.runs);
    insert("\n", {});
    GtkTextIter start;
    GtkTextIter end;

    gtk_text_buffer_get_iter_at_offset(buffer, &start, first);
    gtk_text_buffer_get_end_iter(buffer, &end);
    for (const char* const tag : tags) {
        gtk_text_buffer_apply_tag_by_name(buffer, tag, &start, &end);
    }
}

void PageView::writeTable(const PageBlock& table) {
    GtkTextBuffer* const buffer = BufferOf(*this);
    const int gap = LineHeight(widget());
    std::size_t columns = 0;
    for (const std::vector<TextRuns>& row : table.rows) {
        columns = std::max(columns, row.size());
    }
    // Columns stand beside each other where all but the last are narrow. Where they are not, the
    // first cell of a row is a line of its own and the others follow below it.
    std::vector<int> stops;
    int width = margin;
    for (std::size_t i = 0; i + 1 < columns; ++i) {
        width += WidthOfColumn(table, i, widget()) + gap;
        stops.push_back(width);
    }
    const int last = columns == 0 ? 0 : WidthOfColumn(table, columns - 1, widget());
    const bool areBeside = width + std::min(last, pageWidth_ * 2 / 5) < pageWidth_;
    GtkTextTag* const rowTag = gtk_text_buffer_create_tag(buffer, nullptr, nullptr);
    if (areBeside) {
        PangoTabArray* const tabs = pango_tab_array_new(static_cast<gint>(stops.size()), TRUE);
        for (std::size_t i = 0; i < stops.size(); ++i) {
            pango_tab_array_set_tab(tabs, static_cast<gint>(i), PANGO_TAB_LEFT, stops[i] - margin);
        }
        g_object_set(rowTag, "tabs", tabs, "left-margin", margin, "indent", margin - width,
                     "pixels-below-lines", gap / 4, nullptr);
        pango_tab_array_free(tabs);
    } else {
        g_object_set(rowTag, "left-margin", margin, "indent", -gap, "pixels-below-lines", gap / 4,
                     nullptr);
    }
    for (const std::vector<TextRuns>& row : table.rows) {
        const bool isHead = &row == &table.rows.front();
        const bool isEmpty =
            std::all_of(row.begin(), row.end(), [](const TextRuns& cell) { return cell.empty(); });
        if (isEmpty) continue;
        const int first = gtk_text_buffer_get_char_count(buffer);
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (i > 0 && (areBeside || !row[i].empty())) {
                insert(areBeside ? "\t" : isHead ? " | " : "\u2028", {});
            }
            write(row[i]);
        }
        insert("\n", {});
        GtkTextIter start;
        GtkTextIter end;
        gtk_text_buffer_get_iter_at_offset(buffer, &start, first);
        gtk_text_buffer_get_end_iter(buffer, &end);
        gtk_text_buffer_apply_tag(buffer, rowTag, &start, &end);
    }
    insert("\n", {});
}

void PageView::write(const TextRuns& runs) {
    for (const TextRun& run : runs) {
        write(run);
    }
}

void PageView::write(const TextRun& run) {
    if (!run.formula.empty()) {
        insert(run.text, {"spoken"});
        writeFormula(run.formula);
        return;
    }

    const Pixbuf picture = PictureFrom(run.picture, folder_, pageWidth_);
    if (picture != nullptr) {
        insert(run.text, {"spoken"});
        insert(picture.get());

        return;
    }
    std::vector<const char*> tags;
    const TextStyle& style = run.style;
    for (const auto& [isOn, tag] :
         {std::pair(style.isBold, "bold"), std::pair(style.isItalic, "italic"),
          std::pair(style.isCode, "code"), std::pair(style.script > 0, "exponent"),
          std::pair(style.script < 0, "index"), std::pair(!style.link.empty(), "link")}) {
        if (isOn) {
            tags.push_back(tag);
        }
    }
    const int start = gtk_text_buffer_get_char_count(BufferOf(*this));
    insert(run.text, tags);
    const int end = gtk_text_buffer_get_char_count(BufferOf(*this));
    if (style.link.empty()) return;
    if (!links_.empty() && links_.back().end == start && links_.back().target == style.link) {
        links_.back().end = end;
    } else {
        links_.push_back({start, end, style.link});
    }
}

void PageView::writeFormula(const std::string& formula) {
    const Pixbuf picture = PictureOf(formula, widget());
    const std::size_t gap = formula.find(wideSpace);
    // Several formulas that are too wide for one line are written below each other.
    if (gap == std::string::npos || gdk_pixbuf_get_width(picture.get()) <= pageWidth_) {
        insert(picture.get());
        return;
    }
    writeFormula(formula.substr(0, gap));
    insert("\n", {"below"});
    writeFormula(formula.substr(gap + std::string_view(wideSpace).size()));
}

void PageView::insert(GdkPixbuf* picture) {
    GtkTextIter end;
    gtk_text_buffer_get_end_iter(BufferOf(*this), &end);
    gtk_text_buffer_insert_pixbuf(BufferOf(*this), &end, picture);
}

void PageView::insert(const std::string& text, const std::vector<const char*>& tags) {
    GtkTextBuffer* const buffer = BufferOf(*this);
    const int first = gtk_text_buffer_get_char_count(buffer);
    GtkTextIter end;
    gtk_text_buffer_get_end_iter(buffer, &end);
    gtk_text_buffer_insert(buffer, &end, text.c_str(), static_cast<gint>(text.size()));
    GtkTextIter start;
    gtk_text_buffer_get_iter_at_offset(buffer, &start, first);
    for (const char* const tag : tags) {
        gtk_text_buffer_apply_tag_by_name(buffer, tag, &start, &end);
    }
}

void PageView::goTo(const std::string& anchor) {
    anchor_ = anchor;
    const auto found =
        std::find_if(anchors_.begin(), anchors_.end(),
                     [&anchor](const Link& heading) { return heading.target == anchor; });
    if (found == anchors_.end()) return;
    GtkTextBuffer* const buffer = BufferOf(*this);
    GtkTextIter place;
    gtk_text_buffer_get_iter_at_offset(buffer, &place, found->start);
    gtk_text_buffer_place_cursor(buffer, &place);
    // The heights of the lines are not all known yet: the view scrolls once they are.
    gtk_text_view_scroll_to_mark(ViewOf(*this), gtk_text_buffer_get_insert(buffer), 0.0, TRUE, 1.0,
                                 0.0);
}

const PageView::Link* PageView::linkAt(int position) const {
    const auto found = std::find_if(links_.begin(), links_.end(), [position](const Link& link) {
        return link.start <= position && position < link.end;
    });
    return found == links_.end() ? nullptr : &*found;
}

bool PageView::selectLink(bool isForward) {
    GtkTextBuffer* const buffer = BufferOf(*this);
    GtkTextIter start;
    GtkTextIter end;
    gtk_text_buffer_get_selection_bounds(buffer, &start, &end);
    const int from = gtk_text_iter_get_offset(&start);
    const int to = gtk_text_iter_get_offset(&end);
    const Link* next = nullptr;
    for (const Link& link : links_) {
        if (isForward ? next == nullptr && link.start >= to : link.end <= from) {
            next = &link;
        }
    }
    if (next == nullptr) return false;
    gtk_text_buffer_get_iter_at_offset(buffer, &start, next->start);
    gtk_text_buffer_get_iter_at_offset(buffer, &end, next->end);
    gtk_text_buffer_select_range(buffer, &start, &end);
    gtk_text_view_scroll_mark_onscreen(ViewOf(*this), gtk_text_buffer_get_insert(buffer));
    return true;
}

void PageView::follow(const Link& link) {
    // What follows may show another page: the target is needed no longer than the link.
    RunHandler([this, target = link.target] { follow_ ? follow_(target) : void(); },
               name().c_str());
}

std::string PageView::text() const {
    GtkTextIter start;
    GtkTextIter end;
    gtk_text_buffer_get_bounds(BufferOf(*this), &start, &end);
    gchar* const text = gtk_text_buffer_get_text(BufferOf(*this), &start, &end, FALSE);
    std::string result = text;
    g_free(text);
    return result;
}

bool PageView::canPerform(EditCommand command) const {
    return command == EditCommand::SelectAll ||
           (command == EditCommand::Copy &&
            gtk_text_buffer_get_has_selection(BufferOf(*this)) != FALSE);
}

void PageView::perform(EditCommand command) {
    if (command == EditCommand::Copy) {
        gtk_text_buffer_copy_clipboard(BufferOf(*this),
                                       gtk_widget_get_clipboard(widget(), GDK_SELECTION_CLIPBOARD));
    } else if (command == EditCommand::SelectAll) {
        g_signal_emit_by_name(widget(), "select-all", TRUE);
    }
}

}  // namespace toolkit
