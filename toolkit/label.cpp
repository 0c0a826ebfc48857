#include "toolkit/label.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <memory>
#include <utility>

#include "toolkit/announcement.h"
#include "toolkit/clipboard.h"
#include "toolkit/event.h"
#include "toolkit/text_size.h"

namespace toolkit {

namespace {

GtkLabel* LabelOf(const Control& control) {
    return GTK_LABEL(control.widget());
}

constexpr int numberWidth = 23;  // a result in full, which is bold, in plain digits

using AttributeList = std::unique_ptr<PangoAttrList, decltype(&pango_attr_list_unref)>;

AttributeList NewAttributes() {
    return {pango_attr_list_new(), &pango_attr_list_unref};
}

// Red that can be told from the background: dark on a light theme, light on a dark one.
void ColourMessage(GtkWidget* widget, bool isGoodNews) {
    if (isGoodNews) {
        gtk_label_set_attributes(GTK_LABEL(widget), nullptr);
        return;
    }
    const GdkColor& background = gtk_widget_get_style(widget)->bg[GTK_STATE_NORMAL];
    const int luminance =
        (299 * background.red + 587 * background.green + 114 * background.blue) / 1000;
    const bool isLight = luminance > 0x7fff;
    const AttributeList attributes = NewAttributes();
    pango_attr_list_insert(attributes.get(),
                           isLight ? pango_attr_foreground_new(0xa400, 0, 0)
                                   : pango_attr_foreground_new(0xff00, 0xa000, 0x9000));
    gtk_label_set_attributes(GTK_LABEL(widget), attributes.get());
}

}  // namespace

Label::Label(std::string name, const std::string& text)
    : Label(std::move(name), text, Style::Plain) {}

Label::Label(std::string name, const std::string& text, Style style)
    : Control(std::move(name), gtk_label_new(text.c_str())) {
    gtk_misc_set_alignment(GTK_MISC(widget()), 0.0F, 0.5F);
    setStyle(style);
}

void Label::setStyle(Style style) {
    const AttributeList attributes = NewAttributes();
    if (style != Style::Plain) {
        pango_attr_list_insert(attributes.get(), pango_attr_weight_new(PANGO_WEIGHT_BOLD));
    }
    if (style == Style::Title) {
        pango_attr_list_insert(attributes.get(), pango_attr_scale_new(PANGO_SCALE_XX_LARGE));
    }
    gtk_label_set_attributes(LabelOf(*this), attributes.get());
}

std::string Label::text() const {
    return gtk_label_get_text(LabelOf(*this));
}

void Label::setText(const std::string& text) {
    gtk_label_set_text(LabelOf(*this), text.c_str());
}

void Label::reserve(int characters, int lines) {
    gtk_label_set_width_chars(LabelOf(*this), std::max(characters, 1));
    gtk_label_set_line_wrap(LabelOf(*this), static_cast<gboolean>(lines > 1));
    gtk_label_set_ellipsize(LabelOf(*this), lines > 1 ? PANGO_ELLIPSIZE_NONE : PANGO_ELLIPSIZE_END);
    gtk_misc_set_alignment(GTK_MISC(widget()), 0.0F, lines > 1 ? 0.0F : 0.5F);
    const bool isKnown = std::exchange(lines_, lines) != 0;
    if (isKnown) return;
    const auto onStyleSet = [](GtkWidget* widget, GtkStyle* /*previous*/, const Label* self) {
        const int height = self->lines_ * LineHeight(widget);
        gtk_widget_set_size_request(widget, -1, height > 0 ? height : -1);
    };
    // Left to itself, GTK+ breaks lines without regard to the room that there is.
    const auto onAllocated = [](GtkWidget* widget, GtkAllocation* place, const Label* self) {
        PangoLayout* const layout = gtk_label_get_layout(GTK_LABEL(widget));
        if (self->lines_ > 1) {
            pango_layout_set_width(layout, place->width * PANGO_SCALE);
            pango_layout_set_height(layout, place->height * PANGO_SCALE);
            pango_layout_set_ellipsize(layout, PANGO_ELLIPSIZE_END);
        }
        const bool isWhole = pango_layout_is_ellipsized(layout) == FALSE;
        gtk_widget_set_tooltip_text(widget, isWhole ? nullptr : self->text().c_str());
    };
    Connect(widget(), "style-set", onStyleSet, this);
    Connect(widget(), "size-allocate", onAllocated, this);
}

void Label::wrapAt(int characters) {
    lines_ = 0;
    gtk_widget_set_size_request(widget(), -1, -1);
    gtk_label_set_ellipsize(LabelOf(*this), PANGO_ELLIPSIZE_NONE);
    gtk_label_set_line_wrap(LabelOf(*this), TRUE);
    gtk_label_set_width_chars(LabelOf(*this), characters);
}

void Label::lowerDigits() {
    std::string markup;
    for (const char c : text()) {
        const bool isDigit = g_ascii_isdigit(c) != FALSE;
        markup += isDigit ? "<sub>" + std::string(1, c) + "</sub>" : std::string(1, c);
    }
    gtk_label_set_markup(LabelOf(*this), markup.c_str());
}

void Label::alignRight() {
    gtk_misc_set_alignment(GTK_MISC(widget()), 1.0F, 0.5F);
}

Heading::Heading(std::string name, const std::string& text, Level level)
    : Label(std::move(name), text, level == Level::Window ? Style::Title : Style::Bold) {}

Caption::Caption(std::string name, const std::string& text)
    : Label(std::move(name), text), caption_(text) {}

void Caption::setText(const std::string& text) {
    if (text == caption_) return;
    caption_ = text;
    Label::setText(text);
    if (changed_) {
        changed_();
    }
}

void Caption::setTarget(Control& target) {
    const bool canFocus = gtk_widget_get_can_focus(target.widget()) != FALSE;
    if (canFocus) {
        gtk_label_set_mnemonic_widget(LabelOf(*this), target.widget());
        leadsSomewhere_ = true;
    }
    target.setLabelledBy(*this);
}

void Caption::setTarget(Control& target, const Label& unit) {
    setTarget(target);
    target.setDescribedBy(unit);
}

void Caption::underline(std::size_t position) {
    gtk_label_set_text_with_mnemonic(LabelOf(*this), MarkMnemonic(caption_, position).c_str());
}

ResultLabel::ResultLabel(std::string name, const std::string& text)
    : Label(std::move(name), text, Style::Bold) {
    reserve(numberWidth);
    gtk_label_set_selectable(LabelOf(*this), TRUE);
    gtk_widget_set_can_focus(widget(), static_cast<gboolean>(!text.empty()));
}

void ResultLabel::setUnobtrusive(bool isUnobtrusive) {
    setStyle(isUnobtrusive ? Style::Plain : Style::Bold);
}

void ResultLabel::setText(const std::string& text) {
    Label::setText(text);
    gtk_widget_set_can_focus(widget(), static_cast<gboolean>(!text.empty()));
    Announce(*this);
}

bool ResultLabel::canPerform(EditCommand command) const {
    return !text().empty() && (command == EditCommand::Copy || command == EditCommand::SelectAll);
}

void ResultLabel::perform(EditCommand command) {
    if (!canPerform(command)) return;
    if (command == EditCommand::SelectAll) {
        gtk_label_select_region(LabelOf(*this), 0, -1);
        return;
    }
    if (gtk_label_get_selection_bounds(LabelOf(*this), nullptr, nullptr) == FALSE) {
        SetClipboardText(text());
        return;
    }
    g_signal_emit_by_name(widget(), "copy-clipboard");
}

Message::Message(std::string name) : Label(std::move(name)) {
    const auto onStyleSet = [](GtkWidget* widget, GtkStyle* /*previous*/, const Message* self) {
        ColourMessage(widget, self->isGoodNews());
    };
    Connect(widget(), "style-set", onStyleSet, this);
    reserve(0, 2);
}

void Message::setText(const std::string& text) {
    show(text, false);
}

void Message::inform(const std::string& text) {
    show(text, true);
}

void Message::show(const std::string& text, bool isGoodNews) {
    if (isGoodNews != isGoodNews_) {
        isGoodNews_ = isGoodNews;
        ColourMessage(widget(), isGoodNews);
    }
    Label::setText(text);
    const Announcement ownOne(widget());  // where nothing has been pressed
    Announce(*this);
}

}  // namespace toolkit
