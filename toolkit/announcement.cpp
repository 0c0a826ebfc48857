#include "toolkit/announcement.h"

#include <gtk/gtk.h>

#include <algorithm>

namespace toolkit {

namespace {

constexpr const char* announcementKey = "toolkit-announcement";
constexpr const char* speakerKey = "toolkit-speaker";

// Adds a part, without blanks before it, behind `separator` where it does not start the sentence.
void AppendTo(std::string& sentence, const char* separator, const std::string& part) {
    const std::size_t start = part.find_first_not_of(' ');
    if (start != std::string::npos) {
        sentence += (sentence.empty() ? "" : separator) + part.substr(start);
    }
}

// Adds the names of what is related to a control in this way to a sentence.
void AppendNames(std::string& sentence, const Control& control, AtkRelationType type) {
    AtkRelationSet* const relations =
        atk_object_ref_relation_set(gtk_widget_get_accessible(control.widget()));
    if (AtkRelation* const relation = atk_relation_set_get_relation_by_type(relations, type)) {
        const GPtrArray* const targets = atk_relation_get_target(relation);
        for (guint i = 0; i < targets->len; ++i) {
            const char* const name = atk_object_get_name(ATK_OBJECT(targets->pdata[i]));
            AppendTo(sentence, " ", name == nullptr ? "" : name);
        }
    }
    g_object_unref(relations);
}

// What names a control, its text and its unit; empty where the text is.
std::string SentenceOf(const Control& control) {
    const std::string text = control.text();
    std::string sentence;
    if (!text.empty()) {
        AppendNames(sentence, control, ATK_RELATION_LABELLED_BY);
        AppendTo(sentence, " ", text);
        AppendNames(sentence, control, ATK_RELATION_DESCRIBED_BY);
    }
    return sentence;
}

// Has a screen reader say the sentence: an invisible part of the window, whose name it is,
// appears. (It does not take notice of alerts within a window, nor of labels.)
void Speak(GtkWidget* window, const std::string& sentence) {
    void* const known = g_object_get_data(G_OBJECT(window), speakerKey);
    GtkWidget* const speaker = known == nullptr ? gtk_drawing_area_new() : GTK_WIDGET(known);
    AtkObject* const accessible = gtk_widget_get_accessible(speaker);
    if (known == nullptr) {
        g_object_set_data(G_OBJECT(window), speakerKey, speaker);
        gtk_widget_set_has_window(speaker, FALSE);
        atk_object_set_role(accessible, ATK_ROLE_NOTIFICATION);
        gtk_box_pack_end(GTK_BOX(gtk_bin_get_child(GTK_BIN(window))), speaker, FALSE, FALSE, 0);
    }
    gtk_widget_hide(speaker);
    atk_object_set_name(accessible, sentence.c_str());
    gtk_widget_show(speaker);
}

}  // namespace

Announcement::Announcement(GtkWidget* widget) : window_(gtk_widget_get_toplevel(widget)) {
    if (GTK_IS_WINDOW(window_) &&
        g_object_get_data(G_OBJECT(window_), announcementKey) == nullptr) {
        g_object_set_data(G_OBJECT(window_), announcementKey, this);
    } else {
        window_ = nullptr;
    }
}

Announcement::~Announcement() {
    if (window_ == nullptr) return;
    g_object_set_data(G_OBJECT(window_), announcementKey, nullptr);
    for (const Control* const control : controls_) {
        AppendTo(sentences_, "; ", SentenceOf(*control));
    }
    if (!sentences_.empty()) {
        Speak(window_, sentences_);
    }
}

Announcement* Announcement::of(const Control& control) {
    GtkWidget* const window = gtk_widget_get_toplevel(control.widget());
    return static_cast<Announcement*>(g_object_get_data(G_OBJECT(window), announcementKey));
}

void Announce(const Control& control) {
    if (Announcement* const announcement = Announcement::of(control)) {
        auto& controls = announcement->controls_;
        if (std::find(controls.begin(), controls.end(), &control) == controls.end()) {
            controls.push_back(&control);
        }
    }
}

void Announce(const Control& control, const std::string& sentence) {
    if (Announcement* const announcement = Announcement::of(control)) {
        AppendTo(announcement->sentences_, "; ", sentence);
    }
}

}  // namespace toolkit
