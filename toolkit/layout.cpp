#include "toolkit/layout.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "toolkit/event.h"
#include "toolkit/text_size.h"

namespace toolkit {

namespace {

void Append(std::vector<Control*>& controls, const Block& block) {
    controls.insert(controls.end(), block.controls().begin(), block.controls().end());
}

constexpr const char* askedKey = "toolkit-asked";
constexpr const char* titlesKey = "toolkit-titles";

// What a block asks for.
struct Asked {
    Lines size;
    Lines least;
};

void Request(GtkWidget* widget, const Asked& asked) {
    const int line = LineHeight(widget);
    const auto pixels = [line](double lines) {
        return lines > 0.0 ? static_cast<gint>(std::lround(lines * line)) : -1;
    };
    gtk_widget_set_size_request(widget, pixels(asked.size.width), pixels(asked.size.height));
}

using Titles = std::vector<std::string>;

std::vector<GtkWidget*> ChildrenOf(GtkWidget* box) {
    GList* const list = gtk_container_get_children(GTK_CONTAINER(box));
    std::vector<GtkWidget*> children;
    for (const GList* each = list; each != nullptr; each = each->next) {
        children.push_back(GTK_WIDGET(each->data));
    }
    g_list_free(list);
    return children;
}

// Makes pages of the parts of `Columns`.
void Paginate(GtkWidget* box, const Titles& titles) {
    const std::vector<GtkWidget*> rows = ChildrenOf(box);
    const std::vector<GtkWidget*> both = ChildrenOf(rows[0]);
    std::vector<GtkWidget*> parts = ChildrenOf(both[1]);
    parts.insert(parts.begin(), both[0]);
    parts.insert(parts.end(), rows.begin() + 1, rows.end());
    GtkWidget* const pages = gtk_notebook_new();
    for (std::size_t i = 0; i < titles.size(); ++i) {
        g_object_ref(parts[i]);
        gtk_container_remove(GTK_CONTAINER(gtk_widget_get_parent(parts[i])), parts[i]);
        gtk_container_set_border_width(GTK_CONTAINER(parts[i]),
                                       static_cast<guint>(Spacing::Related));
        gtk_notebook_append_page(GTK_NOTEBOOK(pages), parts[i], gtk_label_new(titles[i].c_str()));
        g_object_unref(parts[i]);
    }
    gtk_container_remove(GTK_CONTAINER(box), rows[0]);
    gtk_widget_show(pages);
    gtk_box_pack_start(GTK_BOX(box), pages, TRUE, TRUE, 0);
}

bool ScrollsSideways(GtkWidget* widget) {
    GtkWidget* const scroller = gtk_widget_get_parent(widget);
    GtkPolicyType sideways = GTK_POLICY_NEVER;
    if (GTK_IS_SCROLLED_WINDOW(scroller)) {
        gtk_scrolled_window_get_policy(GTK_SCROLLED_WINDOW(scroller), &sideways, nullptr);
    }
    return sideways != GTK_POLICY_NEVER;
}

void ScaleFont(GtkWidget* widget, double scale) {
    const std::unique_ptr<PangoFontDescription, decltype(&pango_font_description_free)> font(
        pango_font_description_copy(gtk_widget_get_style(widget)->font_desc),
        &pango_font_description_free);
    const double size = scale * pango_font_description_get_size(font.get());
    pango_font_description_set_size(font.get(), static_cast<gint>(size));
    if (GTK_IS_CONTAINER(widget)) {
        const auto visit = [](GtkWidget* child, gpointer data) {
            ScaleFont(child, *static_cast<const double*>(data));
        };
        gtk_container_forall(GTK_CONTAINER(widget), Guarded(visit), &scale);
    }
    gtk_widget_modify_font(widget, font.get());
}

Block Pack(GtkWidget* box, const std::vector<Block>& blocks) {
    std::vector<Control*> controls;
    for (const Block& block : blocks) {
        if (block.widget() != nullptr) {
            const auto expand = static_cast<gboolean>(block.expands());
            gtk_box_pack_start(GTK_BOX(box), block.widget(), expand, expand, 0);
            Append(controls, block);
        }
    }
    gtk_widget_show(box);
    return {box, std::move(controls)};
}

Block PackButtons(GtkWidget* box, GtkButtonBoxStyle style, const std::vector<Block>& buttons) {
    gtk_button_box_set_layout(GTK_BUTTON_BOX(box), style);
    gtk_box_set_spacing(GTK_BOX(box), static_cast<gint>(Spacing::Related));
    return Pack(box, buttons);
}

Block Aligned(const Block& block, int leftPadding, float xScale) {
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
    return Aligned(*this, 0, 0.0F);
}

Block Block::indented(Spacing spacing) const {
    return Aligned(*this, static_cast<int>(spacing), 1.0F);
}

Block Block::asking(const Lines& size, const Lines& least) const {
    auto* const asked = new Asked{size, least};
    const auto forget = [](gpointer data) { delete static_cast<Asked*>(data); };
    g_object_set_data_full(G_OBJECT(widget_), askedKey, asked, Guarded(forget));
    Connect(
        widget_, "style-set",
        [](GtkWidget* widget, GtkStyle* /*previous*/, const Asked* self) {
            Request(widget, *self);
        },
        asked);
    return *this;
}

Block Row(const std::vector<Block>& blocks, Spacing spacing) {
    return Pack(gtk_hbox_new(FALSE, static_cast<gint>(spacing)), blocks);
}

Block Column(const std::vector<Block>& blocks, Spacing spacing) {
    return Pack(gtk_vbox_new(FALSE, static_cast<gint>(spacing)), blocks);
}

Block Grid(const std::vector<std::vector<Block>>& rows, Spacing rowSpacing, Spacing columnSpacing) {
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
            if (cell.widget() == nullptr) continue;
            const GtkAttachOptions horizontal =
                cell.expands() ? static_cast<GtkAttachOptions>(GTK_EXPAND | GTK_FILL) : GTK_FILL;
            gtk_table_attach(GTK_TABLE(table), cell.widget(), x, x + 1, y, y + 1, horizontal,
                             GTK_FILL, 0, 0);
        }
    }
    std::vector<Control*> controls;
    for (const auto& cells : rows) {
        for (const Block& cell : cells) {
            Append(controls, cell);
        }
    }
    gtk_widget_show(table);
    return {table, std::move(controls)};
}

Block Columns(const Part& first, const std::vector<Part>& others, const Part& wide) {
    std::vector<Block> blocks;
    auto* const titles = new Titles{first.title};
    for (const Part& other : others) {
        blocks.push_back(other.block.expanding());
        titles->push_back(other.title);
    }
    const Block beside =
        Row({first.block, Column(blocks, Spacing::Group).expanding()}, Spacing::Section);
    std::vector<Block> rows = {beside.expanding()};
    if (wide.block.widget() != nullptr) {
        rows.push_back(wide.block.expanding());
        titles->push_back(wide.title);
    }
    const Block block = Column(rows, Spacing::Group);
    const auto forget = [](gpointer data) { delete static_cast<Titles*>(data); };
    g_object_set_data_full(G_OBJECT(block.widget()), titlesKey, titles, Guarded(forget));
    return block.expanding();
}

void Economize(GtkWidget* widget, Economy economy, int width) {
    constexpr int gapDivisor = 3;
    constexpr int margins = 100;
    auto* const asked = static_cast<Asked*>(g_object_get_data(G_OBJECT(widget), askedKey));
    if (asked != nullptr && economy == Economy::FewerLines) {
        asked->size = asked->least;
        Request(widget, *asked);
    }
    if (GTK_IS_CONTAINER(widget) && economy == Economy::SmallerGaps) {
        const guint border = gtk_container_get_border_width(GTK_CONTAINER(widget));
        gtk_container_set_border_width(GTK_CONTAINER(widget), border / 2);
    }
    if (GTK_IS_ALIGNMENT(widget) && economy == Economy::SmallerGaps) {
        guint left = 0;
        gtk_alignment_get_padding(GTK_ALIGNMENT(widget), nullptr, nullptr, &left, nullptr);
        gtk_alignment_set_padding(GTK_ALIGNMENT(widget), 0, 0, left / 2, 0);
    } else if (GTK_IS_BOX(widget) && !GTK_IS_BUTTON_BOX(widget) &&
               economy == Economy::SmallerGaps) {
        gtk_box_set_spacing(GTK_BOX(widget), gtk_box_get_spacing(GTK_BOX(widget)) / gapDivisor);
    } else if (GTK_IS_TABLE(widget) && economy == Economy::SmallerGaps) {
        gtk_table_set_row_spacings(
            GTK_TABLE(widget), gtk_table_get_default_row_spacing(GTK_TABLE(widget)) / gapDivisor);
        gtk_table_set_col_spacings(
            GTK_TABLE(widget), gtk_table_get_default_col_spacing(GTK_TABLE(widget)) / gapDivisor);
    }
    if (GTK_IS_LABEL(widget) && economy == Economy::ShorterLines &&
        widget->requisition.width > width - margins) {
        gtk_label_set_line_wrap(GTK_LABEL(widget), TRUE);
        gtk_widget_set_size_request(widget, width - margins, -1);
    }
    if (GTK_IS_TREE_VIEW(widget) && economy == Economy::ShorterLines &&
        widget->requisition.width > width - margins && !ScrollsSideways(widget)) {
        constexpr int attempts = 3;  // the gaps between the columns do not shrink with the font
        for (int i = 0; i < attempts && widget->requisition.width > width - margins; ++i) {
            ScaleFont(widget, static_cast<double>(width - margins) / widget->requisition.width);
            GtkRequisition size;
            gtk_widget_size_request(widget, &size);
        }
        return;
    }
    const auto* const titles =
        static_cast<const Titles*>(g_object_get_data(G_OBJECT(widget), titlesKey));
    if (titles != nullptr && economy == Economy::OthersBelow) {
        gtk_orientable_set_orientation(GTK_ORIENTABLE(ChildrenOf(widget)[0]),
                                       GTK_ORIENTATION_VERTICAL);
    } else if (titles != nullptr && economy == Economy::Pages) {
        Paginate(widget, *titles);
    }
    if (GTK_IS_CONTAINER(widget)) {
        using How = std::pair<Economy, int>;
        const auto visit = [](GtkWidget* child, gpointer data) {
            const auto* const how = static_cast<const How*>(data);
            Economize(child, how->first, how->second);
        };
        How how{economy, width};
        gtk_container_foreach(GTK_CONTAINER(widget), Guarded(visit), &how);
    }
}

Block ButtonRow(const std::vector<Block>& buttons) {
    return PackButtons(gtk_hbutton_box_new(), GTK_BUTTONBOX_END, buttons);
}

Block ButtonColumn(const std::vector<Block>& buttons) {
    return PackButtons(gtk_vbutton_box_new(), GTK_BUTTONBOX_START, buttons);
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
    constexpr auto padding = static_cast<guint>(Spacing::Related);
    gtk_alignment_set_padding(GTK_ALIGNMENT(alignment), padding, padding, padding, padding);
    gtk_container_add(GTK_CONTAINER(alignment), content.widget());
    gtk_widget_show(alignment);
    gtk_container_add(GTK_CONTAINER(widget()), alignment);
    std::vector<Control*> controls{this};
    Append(controls, content);
    return {widget(), std::move(controls)};
}

}  // namespace toolkit
