#include "toolkit/file_chooser.h"

#include <gdk/gdkkeysyms.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

#include "toolkit/event.h"
#include "toolkit/file_writing.h"
#include "toolkit/screen.h"

namespace toolkit {

namespace {

// A dialog while it is open; it owns this object.
struct Chooser {
    Screen& screen;
    GtkWidget* dialog;
    std::vector<std::string> extensions;
    std::function<void(const std::string&, std::size_t)> chosen;
    std::string path;
    GtkWidget* kinds = nullptr;  // where they can be chosen
    GtkWidget* sizes = nullptr;

    void accept();
    void offer(const std::vector<std::string>& sizeNames, std::size_t proposedSize);
    void changeKind();
    void askToReplace();
    void finish();
};

// Puts the entry of the name into `found`, if it is in `widget`.
void FindNameEntry(GtkWidget* widget, gpointer found) {
    if (std::string_view(G_OBJECT_TYPE_NAME(widget)) == "GtkFileChooserEntry") {
        *static_cast<GtkWidget**>(found) = widget;
    } else if (GTK_IS_CONTAINER(widget)) {
        gtk_container_forall(GTK_CONTAINER(widget), &FindNameEntry, found);
    }
}

// The path in the file system's own encoding; empty where there is none.
std::string PathIn(GtkWidget* dialog) {
    // The dialog takes what is typed only while the focus is there, or was there last.
    GtkWidget* entry = nullptr;
    FindNameEntry(dialog, &entry);
    GtkWidget* const focus = gtk_window_get_focus(GTK_WINDOW(dialog));
    if (entry != nullptr) {
        gtk_widget_grab_focus(entry);
    }
    const std::unique_ptr<char, decltype(&g_free)> name(
        gtk_file_chooser_get_filename(GTK_FILE_CHOOSER(dialog)), &g_free);
    if (focus != nullptr) {
        gtk_widget_grab_focus(focus);
    }
    return name != nullptr ? name.get() : "";
}

// Where a file was saved last; at first the folder in which the program was started.
std::string& LastFolder() {
    std::error_code none;
    static std::string folder = std::filesystem::current_path(none).string();
    return folder;
}

// The number chosen in a box; 0 where there is no box.
std::size_t ChosenIn(GtkWidget* box) {
    return box == nullptr ? 0
                          : static_cast<std::size_t>(
                                std::max(gtk_combo_box_get_active(GTK_COMBO_BOX(box)), 0));
}

// The extension that the path ends with; beyond the last one where it has none of them.
std::size_t KindOf(const std::string& path, const std::vector<std::string>& extensions) {
    const auto found = std::find_if(
        extensions.begin(), extensions.end(),
        [&path](const std::string& extension) { return HasExtension(path, extension); });
    return static_cast<std::size_t>(found - extensions.begin());
}

// A box to choose one of these texts in, behind a caption in a row.
GtkWidget* AddChoice(GtkWidget* row, const char* caption, const std::vector<std::string>& texts,
                     std::size_t chosen) {
    GtkWidget* const label = gtk_label_new_with_mnemonic(caption);
    GtkWidget* const box = gtk_combo_box_text_new();
    for (const std::string& text : texts) {
        gtk_combo_box_text_append_text(GTK_COMBO_BOX_TEXT(box), text.c_str());
    }
    gtk_combo_box_set_active(GTK_COMBO_BOX(box), static_cast<gint>(chosen));
    gtk_label_set_mnemonic_widget(GTK_LABEL(label), box);
    // With the focus here, too, "Save" is what the dialog presses when it has looked at the name.
    const auto passOn = +[](GtkWidget* part, gpointer /*data*/) {
        g_object_set(part, "receives-default", FALSE, nullptr);
    };
    gtk_container_forall(GTK_CONTAINER(box), passOn, nullptr);
    gtk_box_pack_start(GTK_BOX(row), label, FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(row), box, FALSE, FALSE, 0);
    return box;
}

// While a folder is being read, what shows it is empty, and GTK+ does not bear that it is clicked:
// in `widget` the heads of lists and the path bar are to be clicked only when they are filled.
void GuardEmpty(GtkWidget* widget, gpointer /*data*/) {
    if (GTK_IS_TREE_VIEW(widget)) {
        const auto onModel = [](GtkTreeView* list, GParamSpec* /*model*/, gpointer /*data*/) {
            gtk_tree_view_set_headers_clickable(
                list, static_cast<gboolean>(gtk_tree_view_get_model(list) != nullptr));
        };
        onModel(GTK_TREE_VIEW(widget), nullptr, nullptr);
        Connect(widget, "notify::model", onModel);
    } else if (std::string_view(G_OBJECT_TYPE_NAME(widget)) == "GtkPathBar") {
        gtk_widget_set_sensitive(widget, FALSE);
        Connect(widget, "add", [](GtkWidget* bar, GtkWidget* /*child*/, gpointer /*data*/) {
            gtk_widget_set_sensitive(bar, TRUE);
        });
    } else if (GTK_IS_CONTAINER(widget)) {
        gtk_container_forall(GTK_CONTAINER(widget), &GuardEmpty, nullptr);
    }
}

// Without this, the list of files asks for what Ctrl+V would paste and takes no notice of its own
// end until that comes.
void RefusePasteIntoList() {
    GtkBindingSet* const keys = gtk_binding_set_find("GtkFileChooserDefault");
    if (keys != nullptr) {
        gtk_binding_entry_remove(keys, GDK_KEY_v, GDK_CONTROL_MASK);
    }
}

// GTK+ would add what is saved to the recently used files of all programs, and complain where it
// has no folder for their list: its list is never written.
void KeepNoRecentFiles() {
    static auto* const manager =
        static_cast<GtkRecentManagerClass*>(g_type_class_ref(GTK_TYPE_RECENT_MANAGER));
    manager->changed = nullptr;
}

void Chooser::accept() {
    const std::string typed = PathIn(dialog);
    if (typed.empty()) return;
    const bool isComplete = KindOf(typed, extensions) < extensions.size();
    path = isComplete ? typed : typed + extensions[ChosenIn(kinds)];
    // Where the dialog finds a name now, it adds the file to the recently used ones of all
    // programs.
    gtk_file_chooser_set_current_name(GTK_FILE_CHOOSER(dialog), "");
    std::error_code none;
    if (std::filesystem::exists(path, none)) {
        askToReplace();
    } else {
        finish();
    }
}

void Chooser::offer(const std::vector<std::string>& sizeNames, std::size_t proposedSize) {
    constexpr int spacing = 12;
    GtkWidget* const row = gtk_hbox_new(FALSE, spacing);
    std::vector<std::string> names;
    for (const std::string& extension : extensions) {
        names.push_back(extension.substr(1));
        std::transform(names.back().begin(), names.back().end(), names.back().begin(),
                       [](char letter) { return g_ascii_toupper(letter); });
    }
    kinds = AddChoice(row, "_Kind", names, 0);
    sizes = AddChoice(row, "Si_ze", sizeNames, proposedSize);
    Connect(
        kinds, "changed", [](GtkComboBox* /*box*/, Chooser* self) { self->changeKind(); }, this);
    gtk_widget_show_all(row);
    gtk_file_chooser_set_extra_widget(GTK_FILE_CHOOSER(dialog), row);
}

// Gives the name that stands in the dialog the extension of the kind.
void Chooser::changeKind() {
    std::filesystem::path name = std::filesystem::path(PathIn(dialog)).filename();
    if (name.empty()) return;
    const std::size_t before = KindOf(name.string(), extensions);
    std::string stem = name.string();
    if (before < extensions.size()) {
        stem.resize(stem.size() - extensions[before].size());
    }
    const std::unique_ptr<char, decltype(&g_free)> shown(
        g_filename_to_utf8((stem + extensions[ChosenIn(kinds)]).c_str(), -1, nullptr, nullptr,
                           nullptr),
        &g_free);
    if (shown != nullptr) {
        gtk_file_chooser_set_current_name(GTK_FILE_CHOOSER(dialog), shown.get());
    }
}

void Chooser::askToReplace() {
    GtkWidget* const question = gtk_message_dialog_new(
        GTK_WINDOW(dialog),
        static_cast<GtkDialogFlags>(GTK_DIALOG_MODAL | GTK_DIALOG_DESTROY_WITH_PARENT),
        GTK_MESSAGE_QUESTION, GTK_BUTTONS_NONE,
        "A file named \"%s\" exists already. Do you want to replace it?", ShownName(path).c_str());
    gtk_window_set_title(GTK_WINDOW(question), "Replace file");
    gtk_dialog_add_buttons(GTK_DIALOG(question), "_Cancel", GTK_RESPONSE_CANCEL, "_Replace",
                           GTK_RESPONSE_ACCEPT, nullptr);
    gtk_dialog_set_default_response(GTK_DIALOG(question), GTK_RESPONSE_CANCEL);
    const auto onResponse = [](GtkWidget* asked, gint response, Chooser* self) {
        gtk_widget_destroy(asked);
        if (response == GTK_RESPONSE_ACCEPT) {
            self->finish();
        }
    };
    Connect(question, "response", onResponse, this);
    gtk_widget_show(question);
}

void Chooser::finish() {
    const auto function = std::move(chosen);
    const std::string file = path;
    const std::size_t size = ChosenIn(sizes);
    LastFolder() = std::filesystem::path(file).parent_path().string();
    gtk_widget_destroy(dialog);  // and this object with it
    RunHandler([&] { function(file, size); }, "chooseFileToSave");
}

}  // namespace

bool HasExtension(const std::string& path, const std::string& extension) {
    return path.size() >= extension.size() &&
           g_ascii_strcasecmp(path.c_str() + path.size() - extension.size(), extension.c_str()) ==
               0;
}

void ChooseFileToSave(Screen& screen, const std::string& title, const std::string& proposedName,
                      std::vector<std::string> extensions,
                      std::function<void(const std::string& path)> chosen) {
    ChooseFileToSave(screen, title, proposedName, std::move(extensions), {}, 0,
                     [chosen = std::move(chosen)](const std::string& path, std::size_t /*size*/) {
                         chosen(path);
                     });
}

void ChooseFileToSave(Screen& screen, const std::string& title, const std::string& proposedName,
                      std::vector<std::string> extensions, const std::vector<std::string>& sizes,
                      std::size_t proposedSize,
                      std::function<void(const std::string& path, std::size_t size)> chosen) {
    GtkWidget* const dialog = gtk_file_chooser_dialog_new(
        title.c_str(), GTK_WINDOW(screen.window()), GTK_FILE_CHOOSER_ACTION_SAVE, "_Cancel",
        GTK_RESPONSE_CANCEL, "_Save", GTK_RESPONSE_ACCEPT, nullptr);
    gtk_window_set_modal(GTK_WINDOW(dialog), TRUE);
    gtk_window_set_destroy_with_parent(GTK_WINDOW(dialog), TRUE);
    gtk_dialog_set_default_response(GTK_DIALOG(dialog), GTK_RESPONSE_ACCEPT);
    gtk_file_chooser_set_current_folder(GTK_FILE_CHOOSER(dialog), LastFolder().c_str());
    gtk_file_chooser_set_current_name(GTK_FILE_CHOOSER(dialog), proposedName.c_str());
    GuardEmpty(dialog, nullptr);
    RefusePasteIntoList();
    KeepNoRecentFiles();
    screen.dialogOpens();
    auto chooser = std::make_unique<Chooser>(
        Chooser{screen, dialog, std::move(extensions), std::move(chosen), {}});
    if (!sizes.empty()) {
        chooser->offer(sizes, proposedSize);
    }
    const auto onResponse = [](GtkWidget* shown, gint response, Chooser* self) {
        if (response == GTK_RESPONSE_ACCEPT) {
            self->accept();
        } else {
            gtk_widget_destroy(shown);
        }
    };
    const auto onDestroy = [](GtkWidget* /*dialog*/, Chooser* self) {
        const std::unique_ptr<Chooser> owned(self);
        self->screen.dialogCloses();
    };
    Connect(dialog, "response", onResponse, chooser.get());
    Connect(dialog, "destroy", onDestroy, chooser.release());
    gtk_widget_show(dialog);
}

}  // namespace toolkit
