#include "toolkit/layout.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <utility>

#include "toolkit/text_size.h"

namespace toolkit {

namespace {

void append(std::vector<Control*>& controls, const Block& block) {
    controls.insert(controls.end(), block.controls().begin(), block.controls().end());
}

Block pack(GtkWidget* box, const std::vector<Block>& blocks) {
    std::vector<Control*> controls;
    for (const Block& block : blocks) {
        if (block.widget() != nullptr) {
            const auto expand = static_cast<gboolean>(block.expands());
            gtk_box_pack_start(GTK_BOX(box), block.widget(), expand, expand, 0);
            append(controls, block);
        }
    }
    gtk_widget_show(box);
    return {box, std::move(controls)};
}

Block aligned(const Block& block, int leftPadding, float xScale) {
    GtkWidget* const alignment = gtk_alignment_new(0.0F, 0.0F, xScale, xScale);
    gtk_alignment_set_padding(GTK_ALIGNMENT(alignment), 0, 0, static_cast<guint>(leftPadding), 0);
    gtk_container_add(GTK_CONTAINER(alignment), block.widget());
    gtk_widget_show(alignment);
    return {alignment, block.controls()};
}

}  // namespace

Block::Block(Control& control) : widget_(control.widget()), controls_{&control} {}

Block::Block(GtkWidget* widget, std::vector<Control*> controls)
    : widget_(widget), controls_(std::move(controls)) {}

Block Block::expanding() const {
    Block block = *this;
    block.expands_ = true;
    return block;
}

Block Block::atStart() const {
    return aligned(*this, 0, 0.0F);
}

Block Block::indented(Spacing spacing) const {
    return aligned(*this, static_cast<int>(spacing), 1.0F);
}

Block Block::atLeast(int widthInLines, int heightInLines) const {
    const auto setWidth = +[](GtkWidget* box, GtkStyle* /*previous*/, gpointer lines) {
        g_object_set(box, "width-request", lineHeight(box) * GPOINTER_TO_INT(lines), nullptr);
    };
    const auto setHeight = +[](GtkWidget* box, GtkStyle* /*previous*/, gpointer lines) {
        g_object_set(box, "height-request", lineHeight(box) * GPOINTER_TO_INT(lines), nullptr);
    };
    if (widthInLines > 0) {
        g_signal_connect(widget_, "style-set", G_CALLBACK(setWidth), GINT_TO_POINTER(widthInLines));
    }
    if (heightInLines > 0) {
        g_signal_connect(widget_, "style-set", G_CALLBACK(setHeight),
                         GINT_TO_POINTER(heightInLines));
    }
    return *this;
}

Block row(const std::vector<Block>& blocks, Spacing spacing) {
    return pack(gtk_hbox_new(FALSE, static_cast<gint>(spacing)), blocks);
}

Block column(const std::vector<Block>& blocks, Spacing spacing) {
    return pack(gtk_vbox_new(FALSE, static_cast<gint>(spacing)), blocks);
}

Block grid(const std::vector<std::vector<Block>>& rows, Spacing rowSpacing, Spacing columnSpacing) {
    std::size_t columns = 1;
    for (const auto& cells : rows) {
        columns = std::max(columns, cells.size());
    }
    GtkWidget* const table =
        gtk_table_new(static_cast<guint>(rows.size()), static_cast<guint>(columns), FALSE);
    gtk_table_set_row_spacings(GTK_TABLE(table), static_cast<guint>(rowSpacing));
    gtk_table_set_col_spacings(GTK_TABLE(table), static_cast<guint>(columnSpacing));
    // A screen reader finds the last cell that was attached first.
    for (auto y = static_cast<guint>(rows.size()); y-- > 0;) {
        for (auto x = static_cast<guint>(rows[y].size()); x-- > 0;) {
            const Block& cell = rows[y][x];
            if (cell.widget() == nullptr) {
                continue;
            }
            const GtkAttachOptions horizontal =
                cell.expands() ? static_cast<GtkAttachOptions>(GTK_EXPAND | GTK_FILL) : GTK_FILL;
            gtk_table_attach(GTK_TABLE(table), cell.widget(), x, x + 1, y, y + 1, horizontal,
                             GTK_FILL, 0, 0);
        }
    }
    std::vector<Control*> controls;
    for (const auto& cells : rows) {
        for (const Block& cell : cells) {
            append(controls, cell);
        }
    }
    gtk_widget_show(table);
    return {table, std::move(controls)};
}

Block buttonRow(const std::vector<Block>& buttons) {
    GtkWidget* const box = gtk_hbutton_box_new();
    gtk_button_box_set_layout(GTK_BUTTON_BOX(box), GTK_BUTTONBOX_END);
    gtk_box_set_spacing(GTK_BOX(box), static_cast<gint>(Spacing::related));
    return pack(box, buttons);
}

GroupBox::GroupBox(std::string name, const std::string& caption)
    : Control(std::move(name), gtk_frame_new(caption.c_str())) {
    gtk_frame_set_shadow_type(GTK_FRAME(widget()), GTK_SHADOW_NONE);
    GtkWidget* const label = gtk_frame_get_label_widget(GTK_FRAME(widget()));
    PangoAttrList* const attributes = pango_attr_list_new();
    pango_attr_list_insert(attributes, pango_attr_weight_new(PANGO_WEIGHT_BOLD));
    gtk_label_set_attributes(GTK_LABEL(label), attributes);
    pango_attr_list_unref(attributes);
}

std::string GroupBox::text() const {
    return gtk_frame_get_label(GTK_FRAME(widget()));
}

void GroupBox::setText(const std::string& caption) {
    gtk_label_set_text(GTK_LABEL(gtk_frame_get_label_widget(GTK_FRAME(widget()))), caption.c_str());
}

Block GroupBox::around(const Block& content) {
    GtkWidget* const alignment = gtk_alignment_new(0.0F, 0.0F, 1.0F, 1.0F);
    constexpr auto padding = static_cast<guint>(Spacing::related);
    gtk_alignment_set_padding(GTK_ALIGNMENT(alignment), padding, padding, padding, padding);
    gtk_container_add(GTK_CONTAINER(alignment), content.widget());
    gtk_widget_show(alignment);
    gtk_container_add(GTK_CONTAINER(widget()), alignment);
    std::vector<Control*> controls{this};
    append(controls, content);
    return {widget(), std::move(controls)};
}

}  // namespace toolkit
