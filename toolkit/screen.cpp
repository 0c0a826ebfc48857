#include "toolkit/screen.h"

#include <X11/Xlib.h>
#include <gdk/gdkkeysyms.h>
#include <gdk/gdkx.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "toolkit/editable_text.h"
#include "toolkit/event.h"
#include "toolkit/menu.h"
#include "toolkit/mnemonics.h"

namespace toolkit {

namespace {

constexpr int windowBorder = 12;

unsigned lastNumber = 0;  // that a screen was given
unsigned lastOpener = 0;  // of the screen that became active last

Control* ControlOf(GtkWidget* widget) {
    return static_cast<Control*>(g_object_get_data(G_OBJECT(widget), "toolkit-control"));
}

// Whether the event moves the focus to or from the window as a whole. While a menu, a tooltip or
// a drag holds the keyboard the focus stays where it is.
bool MovesFocus(const XFocusChangeEvent& event) {
    const bool isGrab = event.mode == NotifyGrab || event.mode == NotifyUngrab;
    const bool isOfWindow = event.detail == NotifyAncestor || event.detail == NotifyVirtual ||
                            event.detail == NotifyNonlinear ||
                            event.detail == NotifyNonlinearVirtual;
    return !isGrab && isOfWindow;
}

// What a scroll bar takes from the room of the content.
int ScrollBarBreadth(GtkWidget* scroller) {
    GtkRequisition bar;
    gtk_widget_size_request(gtk_scrolled_window_get_vscrollbar(GTK_SCROLLED_WINDOW(scroller)),
                            &bar);
    int spacing = 0;
    gtk_widget_style_get(scroller, "scrollbar-spacing", &spacing, nullptr);
    return bar.width + spacing;
}

// The numbers that the window manager keeps under this name on the root window.
std::vector<long> RootNumbers(GdkScreen* display, const char* name) {
    constexpr gulong most = 4096;  // bytes
    guchar* data = nullptr;
    gint bytes = 0;
    const gboolean isThere =
        gdk_property_get(gdk_screen_get_root_window(display), gdk_atom_intern(name, FALSE),
                         GDK_NONE, 0, most, FALSE, nullptr, nullptr, &bytes, &data);
    std::vector<long> numbers;
    if (isThere != FALSE) {
        numbers.resize(static_cast<std::size_t>(bytes) / sizeof(long));
        std::memcpy(numbers.data(), data, numbers.size() * sizeof(long));
        g_free(data);
    }
    return numbers;
}

// The part of the monitor under the pointer, where windows open, that no panel takes.
GdkRectangle WorkArea(GdkScreen* display) {
    gint x = 0;
    gint y = 0;
    gdk_display_get_pointer(gdk_screen_get_display(display), nullptr, &x, &y, nullptr);
    GdkRectangle monitor;
    gdk_screen_get_monitor_geometry(display, gdk_screen_get_monitor_at_point(display, x, y),
                                    &monitor);
    const std::vector<long> desktops = RootNumbers(display, "_NET_CURRENT_DESKTOP");
    const std::size_t desktop = desktops.empty() ? 0 : 4 * static_cast<std::size_t>(desktops[0]);
    const std::vector<long> areas = RootNumbers(display, "_NET_WORKAREA");
    if (areas.size() < desktop + 4) return monitor;
    const GdkRectangle area = {
        static_cast<gint>(areas[desktop]), static_cast<gint>(areas[desktop + 1]),
        static_cast<gint>(areas[desktop + 2]), static_cast<gint>(areas[desktop + 3])};
    GdkRectangle both;
    return gdk_rectangle_intersect(&monitor, &area, &both) != FALSE ? both : monitor;
}

// What the frame of a window takes: that of one that is open already, or what it may be at most.
GtkRequisition FrameSize() {
    GtkRequisition frame = {8, 40};
    GList* const windows = gtk_window_list_toplevels();
    for (const GList* each = windows; each != nullptr; each = each->next) {
        auto* const window = GTK_WIDGET(each->data);
        if (gtk_widget_get_mapped(window) != FALSE &&
            gtk_window_get_decorated(GTK_WINDOW(window)) != FALSE) {
            GdkRectangle whole;
            gint width = 0;
            gint height = 0;
            gdk_window_get_frame_extents(gtk_widget_get_window(window), &whole);
            gdk_drawable_get_size(gtk_widget_get_window(window), &width, &height);
            frame = {whole.width - width, whole.height - height};
        }
    }
    g_list_free(windows);
    return frame;
}

}  // namespace

// What GTK+ calls.
struct Screen::Callbacks {
    static GdkFilterFunc xFilter();

    static void onXEvent(const XEvent& event, Screen& self) {
        if ((event.type != FocusIn && event.type != FocusOut) || !MovesFocus(event.xfocus)) return;
        const bool wasActive = std::exchange(self.isActive_, event.type == FocusIn);
        if (self.isActive_ && !wasActive) {
            const bool isBack = std::exchange(lastOpener, self.opener_) == self.number_;
            const bool isReturn = std::exchange(self.awaitsReturn_, false) || isBack;
            if (!isReturn && !self.hasDialog_) {
                RunHandler([&self] { self.Event_Activate(); }, self.name_.c_str());
            }
        }
    }

    // Two scroll bars that are there only for the room that each takes from the other stay, once
    // they have come, also when the window has grown enough for the content: they are sent away.
    static void onScrollerAllocated(GtkWidget* scroller, const GtkAllocation* room,
                                    const Screen* self) {
        GtkRequisition content;
        gtk_widget_get_child_requisition(self->content_, &content);
        auto* const bars = GTK_SCROLLED_WINDOW(scroller);
        const bool areShown = bars->hscrollbar_visible != 0 || bars->vscrollbar_visible != 0;
        // What does not scroll is no stop of the Tab key.
        gtk_widget_set_can_focus(scroller, static_cast<gboolean>(areShown));
        if (areShown && content.width <= room->width && content.height <= room->height) {
            bars->hscrollbar_visible = FALSE;
            bars->vscrollbar_visible = FALSE;
            gtk_widget_queue_resize(scroller);
        }
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
    Connect(
        window_, "delete-event",
        [](GtkWidget* /*window*/, GdkEvent* /*event*/, Screen* self) -> gboolean {
            RunHandler([self] { self->host_.close(*self); }, self->name_.c_str());
            return TRUE;
        },
        this);
    gtk_widget_realize(window_);
    gdk_window_add_filter(gtk_widget_get_window(window_), Callbacks::xFilter(), this);
}

// What the X server sends to the window of a screen.
GdkFilterFunc Screen::Callbacks::xFilter() {
    return Guarded([](GdkXEvent* event, GdkEvent* /*event*/, gpointer self) -> GdkFilterReturn {
        Callbacks::onXEvent(*static_cast<const XEvent*>(event), *static_cast<Screen*>(self));
        return GDK_FILTER_CONTINUE;
    });
}

Screen::~Screen() {
    gdk_window_remove_filter(gtk_widget_get_window(window_), Callbacks::xFilter(), this);
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

void Screen::presentBeside(Screen& screen) {
    screen.opener_ = number_;
    screen.present();
}

std::string Screen::title() const {
    return gtk_window_get_title(GTK_WINDOW(window_));
}

void Screen::setTitle(const std::string& title) {
    gtk_window_set_title(GTK_WINDOW(window_), title.c_str());
}

void Screen::setMenuBar(MenuBar& menuBar) {
    menuBar_ = &menuBar;
    gtk_box_pack_start(GTK_BOX(box_), menuBar.widget(), FALSE, FALSE, 0);
    gtk_box_reorder_child(GTK_BOX(box_), menuBar.widget(), 0);
    gtk_window_add_accel_group(GTK_WINDOW(window_), menuBar.accelerators());
    controls_.insert(controls_.end(), menuBar.controls().begin(), menuBar.controls().end());
}

void Screen::setContent(const Block& content, const Block& footer) {
    content_ = content.widget();
    footer_ = footer.widget();
    controls_ = content.controls();
    controls_.insert(controls_.end(), footer.controls().begin(), footer.controls().end());
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
    if (footer_ != nullptr) {
        gtk_container_set_border_width(GTK_CONTAINER(footer_), windowBorder);
        gtk_box_pack_start(GTK_BOX(box_), footer_, FALSE, FALSE, 0);
    }
    // A control that Tab reaches outside the visible part is scrolled into it.
    gtk_container_set_focus_vadjustment(
        GTK_CONTAINER(content_),
        gtk_scrolled_window_get_vadjustment(GTK_SCROLLED_WINDOW(scroller)));
    gtk_container_set_focus_hadjustment(
        GTK_CONTAINER(content_),
        gtk_scrolled_window_get_hadjustment(GTK_SCROLLED_WINDOW(scroller)));
    gtk_widget_show(viewport_);
    gtk_widget_show(scroller);
    Connect(
        viewport_, "expose-event",
        [](GtkWidget* /*viewport*/, GdkEvent* /*event*/, Screen* self) -> gboolean {
            self->isPainted_ = true;
            return FALSE;
        },
        this);
    Connect(
        scroller, "size-allocate",
        [](GtkWidget* bars, const GtkAllocation* room, const Screen* self) {
            Callbacks::onScrollerAllocated(bars, room, self);
        },
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
        if (control->widget() == defaultButton) return 0;
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
    GiveOutMnemonics(captions);
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

void Screen::onKeys(const std::string& keys, Handler handler) {
    guint key = 0;
    GdkModifierType modifiers{};
    gtk_accelerator_parse(keys.c_str(), &key, &modifiers);
    const auto onPressed = Guarded([](GtkAccelGroup* /*group*/, GObject* /*window*/, guint /*key*/,
                                      GdkModifierType /*modifiers*/, gpointer task) -> gboolean {
        (*static_cast<const Handler*>(task))();
        return TRUE;
    });
    keyHandlers_.push_back(std::move(handler));
    GtkAccelGroup* const group = gtk_accel_group_new();
    gtk_window_add_accel_group(GTK_WINDOW(window_), group);
    gtk_accel_group_connect(
        group, key, modifiers, static_cast<GtkAccelFlags>(0),
        g_cclosure_new(reinterpret_cast<GCallback>(onPressed), &keyHandlers_.back(), nullptr));
    g_object_unref(group);
}

void Screen::setFocus(Control& control) {
    gtk_window_set_focus(GTK_WINDOW(window_), control.widget());
}

void Screen::show() {
    if (gtk_window_get_default_widget(GTK_WINDOW(window_)) == nullptr) {
        // A window that is only read is closed by Escape.
        const auto onKey = [](GtkWidget* /*window*/, const GdkEventKey* event,
                              Screen* self) -> gboolean {
            const bool isEscape = event->keyval == GDK_KEY_Escape;
            if (isEscape) {
                self->host_.close(*self);
            }
            return static_cast<gboolean>(isEscape);
        };
        Connect(window_, "key-press-event", onKey, this);
    }
    const GdkRectangle area = WorkArea(gtk_widget_get_screen(window_));
    const GtkRequisition frame = FrameSize();
    // What stands above and below the content.
    const auto bars = [this] {
        GtkRequisition both = {0, 0};
        for (GtkWidget* const bar : {menuBar_ == nullptr ? nullptr : menuBar_->widget(), footer_}) {
            GtkRequisition size = {0, 0};
            if (bar != nullptr) {
                gtk_widget_size_request(bar, &size);
            }
            both = {std::max(both.width, size.width), both.height + size.height};
        }
        return both;
    };
    const int mostWidth = std::max(area.width - frame.width, 1);
    const auto mostHeight = [&] { return std::max(area.height - frame.height - bars().height, 1); };
    GtkRequisition wanted;
    gtk_widget_size_request(content_, &wanted);
    GtkRequisition content = wanted;
    GtkWidget* const defaultButton = gtk_window_get_default_widget(GTK_WINDOW(window_));
    GtkWidget* const focus = gtk_window_get_focus(GTK_WINDOW(window_));
    bool isStacked = false;
    for (const Economy economy : {Economy::FewerLines, Economy::SmallerGaps, Economy::ShorterLines,
                                  Economy::OthersBelow, Economy::Pages}) {
        if (content.width > mostWidth || content.height > mostHeight()) {
            isStacked = isStacked || economy == Economy::OthersBelow;
            for (GtkWidget* const part : {content_, footer_}) {
                if (part != nullptr) {
                    Economize(part, economy, mostWidth);
                }
            }
            gtk_widget_size_request(content_, &content);
        }
    }
    // Parts that have moved to a page have lost these.
    gtk_window_set_default(GTK_WINDOW(window_), defaultButton);
    gtk_window_set_focus(GTK_WINDOW(window_), focus);
    assignMnemonics();
    // The scroll bar of one direction must not make one of the other necessary.
    const int breadth = ScrollBarBreadth(gtk_widget_get_parent(viewport_));
    const int width = std::max({wanted.width, content.width, bars().width}) +
                      (content.height > mostHeight() ? breadth : 0);
    // Where one part stands below the other, lists and plots take all the height that there is.
    const int height = isStacked ? mostHeight()
                                 : std::max(wanted.height, content.height) +
                                       (content.width > mostWidth ? breadth : 0);
    gtk_window_set_default_size(GTK_WINDOW(window_), std::min(width, mostWidth),
                                std::min(height, mostHeight()) + bars().height);
    gtk_widget_show(window_);
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
    if (focus == nullptr) return false;
    const auto* const editable = dynamic_cast<const Editable*>(ControlOf(focus));
    return editable != nullptr ? editable->canPerform(command) : CanEdit(focus, command);
}

void Screen::perform(EditCommand command) {
    GtkWidget* const focus = gtk_window_get_focus(GTK_WINDOW(window_));
    if (focus == nullptr) return;
    auto* const editable = dynamic_cast<Editable*>(ControlOf(focus));
    if (editable != nullptr) {
        editable->perform(command);
    } else if (CanEdit(focus, command)) {
        Edit(focus, command);
    }
}

}  // namespace toolkit
