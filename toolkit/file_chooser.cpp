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

/// A dialog while it is open; it owns this object.
struct Chooser {
    Screen& screen;
    GtkWidget* dialog;
    std::vector<std::string> extensions;
    std::function<void(const std::string&)> chosen;
    std::string path;

    void accept();
    void askToReplace();
    void finish();
};

/// The path in the file system's own encoding; empty where there is none.
std::string pathIn(GtkWidget* dialog) {
    const std::unique_ptr<char, decltype(&g_free)> name(
        gtk_file_chooser_get_filename(GTK_FILE_CHOOSER(dialog)), &g_free);
    return name != nullptr ? name.get() : "";
}

/// Where a file was saved last; at first the folder in which the program was started.
std::string& lastFolder() {
    std::error_code none;
    static std::string folder = std::filesystem::current_path(none).string();
    return folder;
}

std::string completed(const std::string& path, const std::vector<std::string>& extensions) {
    const bool isComplete = std::any_of(
        extensions.begin(), extensions.end(),
        [&path](const std::string& extension) { return hasExtension(path, extension); });
    return isComplete ? path : path + extensions.front();
}

/// While a folder is being read, what shows it is empty, and GTK+ does not bear that it is clicked:
/// in `widget` the heads of lists and the path bar are to be clicked only when they are filled.
void guardEmpty(GtkWidget* widget, gpointer /*data*/) {
    if (GTK_IS_TREE_VIEW(widget)) {
        const auto onModel = [](GtkTreeView* list, GParamSpec* /*model*/, gpointer /*data*/) {
            gtk_tree_view_set_headers_clickable(
                list, static_cast<gboolean>(gtk_tree_view_get_model(list) != nullptr));
        };
        onModel(GTK_TREE_VIEW(widget), nullptr, nullptr);
        connect(widget, "notify::model", onModel);
    } else if (std::string_view(G_OBJECT_TYPE_NAME(widget)) == "GtkPathBar") {
        gtk_widget_set_sensitive(widget, FALSE);
        connect(widget, "add", [](GtkWidget* bar, GtkWidget* /*child*/, gpointer /*data*/) {
            gtk_widget_set_sensitive(bar, TRUE);
        });
    } else if (GTK_IS_CONTAINER(widget)) {
        gtk_container_forall(GTK_CONTAINER(widget), &guardEmpty, nullptr);
    }
}

/// Without this, the list of files asks for what Ctrl+V would paste and takes no notice of its own
/// end until that comes.
void refusePasteIntoList() {
    GtkBindingSet* const keys = gtk_binding_set_find("GtkFileChooserDefault");
    if (keys != nullptr) {
        gtk_binding_entry_remove(keys, GDK_KEY_v, GDK_CONTROL_MASK);
    }
}

/// GTK+ would add what is saved to the recently used files of all programs, and complain where it
/// has no folder for their list: its list is never written.
void keepNoRecentFiles() {
    static auto* const manager =
        static_cast<GtkRecentManagerClass*>(g_type_class_ref(GTK_TYPE_RECENT_MANAGER));
    manager->changed = nullptr;
}

void Chooser::accept() {
    const std::string typed = pathIn(dialog);
    if (typed.empty()) {
        return;
    }
    path = completed(typed, extensions);
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

void Chooser::askToReplace() {
    GtkWidget* const question = gtk_message_dialog_new(
        GTK_WINDOW(dialog),
        static_cast<GtkDialogFlags>(GTK_DIALOG_MODAL | GTK_DIALOG_DESTROY_WITH_PARENT),
        GTK_MESSAGE_QUESTION, GTK_BUTTONS_NONE,
        "A file named \"%s\" exists already. Do you want to replace it?", shownName(path).c_str());
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
    connect(question, "response", onResponse, this);
    gtk_widget_show(question);
}

void Chooser::finish() {
    const auto function = std::move(chosen);
    const std::string file = path;
    lastFolder() = std::filesystem::path(file).parent_path().string();
    gtk_widget_destroy(dialog);  // and this object with it
    runHandler([&function, &file] { function(file); }, "chooseFileToSave");
}

}  // namespace

bool hasExtension(const std::string& path, const std::string& extension) {
    return path.size() >= extension.size() &&
           g_ascii_strcasecmp(path.c_str() + path.size() - extension.size(), extension.c_str()) ==
               0;
}

void chooseFileToSave(Screen& screen, const std::string& title, const std::string& proposedName,
                      std::vector<std::string> extensions,
                      std::function<void(const std::string& path)> chosen) {
    GtkWidget* const dialog = gtk_file_chooser_dialog_new(
        title.c_str(), GTK_WINDOW(screen.window()), GTK_FILE_CHOOSER_ACTION_SAVE, "_Cancel",
        GTK_RESPONSE_CANCEL, "_Save", GTK_RESPONSE_ACCEPT, nullptr);
    gtk_window_set_modal(GTK_WINDOW(dialog), TRUE);
    gtk_window_set_destroy_with_parent(GTK_WINDOW(dialog), TRUE);
    gtk_dialog_set_default_response(GTK_DIALOG(dialog), GTK_RESPONSE_ACCEPT);
    gtk_file_chooser_set_current_folder(GTK_FILE_CHOOSER(dialog), lastFolder().c_str());
    gtk_file_chooser_set_current_name(GTK_FILE_CHOOSER(dialog), proposedName.c_str());
    guardEmpty(dialog, nullptr);
    refusePasteIntoList();
    keepNoRecentFiles();
    screen.dialogOpens();
    auto chooser = std::make_unique<Chooser>(
        Chooser{screen, dialog, std::move(extensions), std::move(chosen), {}});
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
    connect(dialog, "response", onResponse, chooser.get());
    connect(dialog, "destroy", onDestroy, chooser.release());
    gtk_widget_show(dialog);
}

}  // namespace toolkit
