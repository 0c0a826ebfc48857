#include "toolkit/screen.h"

#include <X11/Xlib.h>
#include <gdk/gdkx.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <utility>

#include "toolkit/editable_text.h"
#include "toolkit/menu.h"
#include "toolkit/mnemonics.h"

namespace toolkit {

namespace {

constexpr int windowBorder = 12;
constexpr int displayMargin = 64;  // for the panels of a desktop and the window's own frame

unsigned lastNumber = 0;  // that a screen was given
unsigned lastOpener = 0;  // of the screen that became active last

Control* controlOf(GtkWidget* widget) {
    return static_cast<Control*>(g_object_get_data(G_OBJECT(widget), "toolkit-control"));
}

/// Whether the event moves the focus to or from the window as a whole. While a menu, a tooltip or
/// a drag holds the keyboard the focus stays where it is.
bool movesFocus(const XFocusChangeEvent& event) {
    const bool isGrab = event.mode == NotifyGrab || event.mode == NotifyUngrab;
    const bool isOfWindow = event.detail == NotifyAncestor || event.detail == NotifyVirtual ||
                            event.detail == NotifyNonlinear ||
                            event.detail == NotifyNonlinearVirtual;
    return !isGrab && isOfWindow;
}

/// What a scroll bar takes from the room of the content.
int scrollBarBreadth(GtkWidget* scroller) {
    GtkRequisition bar;
    gtk_widget_size_request(gtk_scrolled_window_get_vscrollbar(GTK_SCROLLED_WINDOW(scroller)),
                            &bar);
    int spacing = 0;
    gtk_widget_style_get(scroller, "scrollbar-spacing", &spacing, nullptr);
    return bar.width + spacing;
}

}  // namespace

/// What GTK+ calls.
struct Screen::Callbacks {
    static GdkFilterReturn onXEvent(GdkXEvent* xEvent, GdkEvent* /*event*/, gpointer data) {
        auto* const self = static_cast<Screen*>(data);
        const auto* const event = static_cast<const XEvent*>(xEvent);
        if ((event->type == FocusIn || event->type == FocusOut) && movesFocus(event->xfocus)) {
            const bool wasActive = std::exchange(self->isActive_, event->type == FocusIn);
            if (self->isActive_ && !wasActive) {
                const bool isBack = std::exchange(lastOpener, self->opener_) == self->number_;
                const bool isReturn = std::exchange(self->awaitsReturn_, false) || isBack;
                if (!isReturn && !self->hasDialog_) {
                    self->Event_Activate();
                }
            }
        }
        return GDK_FILTER_CONTINUE;
    }

    static gboolean onDelete(GtkWidget* /*window*/, GdkEvent* /*event*/, gpointer data) {
        auto* const self = static_cast<Screen*>(data);
        self->host_.close(*self);
        return TRUE;
    }

    static gboolean onExposed(GtkWidget* /*viewport*/, GdkEvent* /*event*/, gpointer data) {
        static_cast<Screen*>(data)->isPainted_ = true;
        return FALSE;
    }

    /// Two scroll bars that are there only for the room that each takes from the other stay, once
    /// they have come, also when the window has grown enough for the content: they are sent away.
    static void onScrollerAllocated(GtkWidget* scroller, GtkAllocation* room, gpointer data) {
        const auto* const self = static_cast<Screen*>(data);
        GtkRequisition content;
        gtk_widget_get_child_requisition(self->content_, &content);
        auto* const bars = GTK_SCROLLED_WINDOW(scroller);
        const bool areShown = bars->hscrollbar_visible != 0 || bars->vscrollbar_visible != 0;
        if (areShown && content.width <= room->width && content.height <= room->height) {
            bars->hscrollbar_visible = FALSE;
            bars->vscrollbar_visible = FALSE;
            gtk_widget_queue_resize(scroller);
        }
    }

    static void onContentRequest(GtkWidget* /*content*/, GtkRequisition* /*size*/, gpointer data) {
        static_cast<Screen*>(data)->growToFit();
    }
};

Screen::Screen(ScreenHost& host, std::string name, const std::string& title)
    : host_(host),
      name_(std::move(name)),
      number_(++lastNumber),
      window_(gtk_window_new(GTK_WINDOW_TOPLEVEL)),
      box_(gtk_vbox_new(FALSE, 0)) {
    gtk_window_set_title(GTK_WINDOW(window_), title.c_str());
    gtk_widget_set_name(window_, name_.c_str());
    atk_object_set_accessible_id(gtk_widget_get_accessible(window_), name_.c_str());
    gtk_container_add(GTK_CONTAINER(window_), box_);
    gtk_widget_show(box_);
    g_signal_connect(window_, "delete-event", G_CALLBACK(&Callbacks::onDelete), this);
    gtk_widget_realize(window_);
    gdk_window_add_filter(gtk_widget_get_window(window_), &Callbacks::onXEvent, this);
}

Screen::~Screen() {
    gdk_window_remove_filter(gtk_widget_get_window(window_), &Callbacks::onXEvent, this);
    if (content_ != nullptr) {
        g_signal_handlers_disconnect_by_data(content_, this);
        g_signal_handlers_disconnect_by_data(gtk_widget_get_parent(viewport_), this);
        g_signal_handlers_disconnect_by_data(viewport_, this);
    }
    g_signal_handlers_disconnect_by_data(window_, this);
    gtk_widget_hide(window_);  // a dialog that goes with it must not bring it back
    gtk_widget_destroy(window_);
}

void Screen::openBeside(std::unique_ptr<Screen> screen) {
    screen->opener_ = number_;
    host_.open(std::move(screen));
}

std::string Screen::title() const {
    return gtk_window_get_title(GTK_WINDOW(window_));
}

void Screen::setMenuBar(MenuBar& menuBar) {
    menuBar_ = &menuBar;
    gtk_box_pack_start(GTK_BOX(box_), menuBar.widget(), FALSE, FALSE, 0);
    gtk_box_reorder_child(GTK_BOX(box_), menuBar.widget(), 0);
    gtk_window_add_accel_group(GTK_WINDOW(window_), menuBar.accelerators());
    controls_.insert(controls_.end(), menuBar.controls().begin(), menuBar.controls().end());
}

void Screen::setContent(const Block& content) {
    content_ = content.widget();
    controls_ = content.controls();
    gtk_container_set_border_width(GTK_CONTAINER(content_), windowBorder);

    GtkWidget* const scroller = gtk_scrolled_window_new(nullptr, nullptr);
    gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(scroller), GTK_POLICY_AUTOMATIC,
                                   GTK_POLICY_AUTOMATIC);
    viewport_ =
        gtk_viewport_new(gtk_scrolled_window_get_hadjustment(GTK_SCROLLED_WINDOW(scroller)),
                         gtk_scrolled_window_get_vadjustment(GTK_SCROLLED_WINDOW(scroller)));
    gtk_viewport_set_shadow_type(GTK_VIEWPORT(viewport_), GTK_SHADOW_NONE);
    gtk_container_add(GTK_CONTAINER(viewport_), content_);
    gtk_container_add(GTK_CONTAINER(scroller), viewport_);
    page_ = std::make_unique<ScrolledPage>(GTK_SCROLLED_WINDOW(scroller));
    gtk_box_pack_start(GTK_BOX(box_), scroller, TRUE, TRUE, 0);
    // A control that Tab reaches outside the visible part is scrolled into it.
    gtk_container_set_focus_vadjustment(
        GTK_CONTAINER(content_),
        gtk_scrolled_window_get_vadjustment(GTK_SCROLLED_WINDOW(scroller)));
    gtk_container_set_focus_hadjustment(
        GTK_CONTAINER(content_),
        gtk_scrolled_window_get_hadjustment(GTK_SCROLLED_WINDOW(scroller)));
    gtk_widget_show(viewport_);
    gtk_widget_show(scroller);
    g_signal_connect(viewport_, "expose-event", G_CALLBACK(&Callbacks::onExposed), this);
    g_signal_connect(scroller, "size-allocate", G_CALLBACK(&Callbacks::onScrollerAllocated), this);
    g_signal_connect_after(content_, "size-request", G_CALLBACK(&Callbacks::onContentRequest),
                           this);

    for (Control* const control : controls_) {
        if (auto* const captioned = dynamic_cast<Captioned*>(control)) {
            captioned->setMnemonicsChanged([this] { assignMnemonics(); });
        }
    }
}

void Screen::assignMnemonics() {
    // The buttons come first: "calculate" has the same letter in every window, whatever else is in
    // it.
    const GtkWidget* const defaultButton = gtk_window_get_default_widget(GTK_WINDOW(window_));
    const auto rank = [defaultButton](const Control* control) {
        if (control->widget() == defaultButton) {
            return 0;
        }
        return dynamic_cast<const Button*>(control) != nullptr ? 1 : 2;
    };
    std::vector<Control*> ordered = controls_;
    std::stable_sort(ordered.begin(), ordered.end(),
                     [&rank](const Control* a, const Control* b) { return rank(a) < rank(b); });
    std::vector<Captioned*> captions;
    for (Control* const control : ordered) {
        auto* const captioned = dynamic_cast<Captioned*>(control);
        if (captioned != nullptr && captioned->canCarryMnemonic()) {
            captions.push_back(captioned);
        }
    }
    giveOutMnemonics(captions);
}

void Screen::setDefault(Button& button) {
    gtk_window_set_default(GTK_WINDOW(window_), button.widget());
}

void Screen::setKeys(const Button& button, const std::string& keys) {
    guint key = 0;
    GdkModifierType modifiers{};
    gtk_accelerator_parse(keys.c_str(), &key, &modifiers);
    GtkAccelGroup* const group = gtk_accel_group_new();
    gtk_window_add_accel_group(GTK_WINDOW(window_), group);
    gtk_widget_add_accelerator(button.widget(), "clicked", group, key, modifiers,
                               static_cast<GtkAccelFlags>(0));
    g_object_unref(group);
}

void Screen::setFocus(Control& control) {
    gtk_window_set_focus(GTK_WINDOW(window_), control.widget());
}

void Screen::show() {
    assignMnemonics();
    GtkRequisition content;
    gtk_widget_size_request(content_, &content);
    int width = content.width;
    int height = content.height;
    if (menuBar_ != nullptr) {
        GtkRequisition bar;
        gtk_widget_size_request(menuBar_->widget(), &bar);
        height += bar.height;
    }
    GdkScreen* const display = gtk_widget_get_screen(window_);
    const int mostWidth = gdk_screen_get_width(display) - displayMargin;
    const int mostHeight = gdk_screen_get_height(display) - displayMargin;
    // The scroll bar of one direction must not make one of the other necessary.
    const int breadth = scrollBarBreadth(gtk_widget_get_parent(viewport_));
    const bool scrollsSideways = width > mostWidth;
    width += height > mostHeight ? breadth : 0;
    height += scrollsSideways ? breadth : 0;
    gtk_window_set_default_size(GTK_WINDOW(window_), std::min(width, mostWidth),
                                std::min(height, mostHeight));
    requested_ = {0, 0, content.width, content.height};
    gtk_widget_show(window_);
}

/// When a longer text asks for more room than before, and what stood before had fitted, the
/// window grows; otherwise the content scrolls, in the size that the user gave the window.
void Screen::growToFit() {
    GtkRequisition content;
    gtk_widget_get_child_requisition(content_, &content);
    const Area before = std::exchange(requested_, Area{0, 0, content.width, content.height});
    GtkAllocation room;
    gtk_widget_get_allocation(viewport_, &room);
    if (gtk_widget_get_mapped(window_) == FALSE || before.width == 0) {
        return;
    }
    const bool isWider = content.width > room.width && before.width <= room.width;
    const bool isHigher = content.height > room.height && before.height <= room.height;
    if (!isWider && !isHigher) {
        return;
    }
    GdkScreen* const display = gtk_widget_get_screen(window_);
    int width = 0;
    int height = 0;
    gtk_window_get_size(GTK_WINDOW(window_), &width, &height);
    if (isWider) {
        width += content.width - room.width;
    }
    if (isHigher) {
        height += content.height - room.height;
    }
    gtk_window_resize(GTK_WINDOW(window_),
                      std::min(width, gdk_screen_get_width(display) - displayMargin),
                      std::min(height, gdk_screen_get_height(display) - displayMargin));
}

void Screen::hide() {
    gtk_widget_hide(window_);
    isActive_ = false;
    isPainted_ = false;
}

void Screen::present() {
    gtk_window_present(GTK_WINDOW(window_));
}

void Screen::resize(int width, int height) {
    gtk_window_resize(GTK_WINDOW(window_), width, height);
}

void Screen::dialogOpens() {
    hasDialog_ = true;
}

void Screen::dialogCloses() {
    hasDialog_ = false;
    if (!isActive_ && gtk_widget_get_visible(window_) != FALSE) {
        awaitsReturn_ = true;
        present();  // the window manager may have another one in mind
    }
}

unsigned long Screen::xWindow() const {
    return GDK_WINDOW_XID(gtk_widget_get_window(window_));
}

Area Screen::area() const {
    Area area;
    GdkWindow* const window = gtk_widget_get_window(window_);
    gdk_window_get_origin(window, &area.x, &area.y);
    gdk_drawable_get_size(window, &area.width, &area.height);
    return area;
}

Control* Screen::control(std::string_view name) const {
    const auto found = std::find_if(controls_.begin(), controls_.end(),
                                    [name](const Control* c) { return c->name() == name; });
    return found == controls_.end() ? nullptr : *found;
}

bool Screen::canPerform(EditCommand command) const {
    GtkWidget* const focus = gtk_window_get_focus(GTK_WINDOW(window_));
    if (focus == nullptr) {
        return false;
    }
    const auto* const editable = dynamic_cast<const Editable*>(controlOf(focus));
    return editable != nullptr ? editable->canPerform(command) : canEdit(focus, command);
}

void Screen::perform(EditCommand command) {
    GtkWidget* const focus = gtk_window_get_focus(GTK_WINDOW(window_));
    if (focus == nullptr) {
        return;
    }
    auto* const editable = dynamic_cast<Editable*>(controlOf(focus));
    if (editable != nullptr) {
        editable->perform(command);
    } else if (canEdit(focus, command)) {
        edit(focus, command);
    }
}

}  // namespace toolkit
