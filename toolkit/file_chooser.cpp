#include "toolkit/file_chooser.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <filesystem>
#include <memory>

#include "toolkit/screen.h"

namespace toolkit {

namespace {

struct DialogDeleter {
    void operator()(GtkWidget* dialog) const { gtk_widget_destroy(dialog); }
};
using Dialog = std::unique_ptr<GtkWidget, DialogDeleter>;

/// Keeps the screen from taking the end of its dialog for an activation.
class DialogTime {
  public:
    explicit DialogTime(Screen& screen) : screen_(screen) { screen_.dialogOpens(); }
    DialogTime(const DialogTime&) = delete;
    DialogTime& operator=(const DialogTime&) = delete;
    ~DialogTime() { screen_.dialogCloses(); }

  private:
    Screen& screen_;
};

/// The path in the file system's own encoding; empty where there is none.
std::string pathIn(GtkWidget* chooser) {
    const std::unique_ptr<char, decltype(&g_free)> name(
        gtk_file_chooser_get_filename(GTK_FILE_CHOOSER(chooser)), &g_free);
    return name != nullptr ? name.get() : "";
}

std::string completed(const std::string& path, const std::vector<std::string>& extensions) {
    const bool isComplete =
        std::any_of(extensions.begin(), extensions.end(),
                    [&path](const std::string& extension) { return path.ends_with(extension); });
    return isComplete ? path : path + extensions.front();
}

bool mayReplace(GtkWidget* chooser, const std::string& path) {
    const std::unique_ptr<char, decltype(&g_free)> name(g_filename_display_basename(path.c_str()),
                                                        &g_free);
    const Dialog question(gtk_message_dialog_new(
        GTK_WINDOW(chooser), GTK_DIALOG_MODAL, GTK_MESSAGE_QUESTION, GTK_BUTTONS_NONE,
        "A file named \"%s\" exists already. Do you want to replace it?", name.get()));
    gtk_widget_set_name(question.get(), "ReplaceFile");
    gtk_window_set_title(GTK_WINDOW(question.get()), "Replace file");
    gtk_dialog_add_buttons(GTK_DIALOG(question.get()), GTK_STOCK_CANCEL, GTK_RESPONSE_CANCEL,
                           "_Replace", GTK_RESPONSE_ACCEPT, nullptr);
    gtk_dialog_set_default_response(GTK_DIALOG(question.get()), GTK_RESPONSE_CANCEL);
    return gtk_dialog_run(GTK_DIALOG(question.get())) == GTK_RESPONSE_ACCEPT;
}

}  // namespace

std::optional<std::string> chooseFileToSave(Screen& screen, const std::string& title,
                                            const std::string& proposedName,
                                            const std::vector<std::string>& extensions) {
    const DialogTime time(screen);
    const Dialog chooser(gtk_file_chooser_dialog_new(
        title.c_str(), GTK_WINDOW(screen.window()), GTK_FILE_CHOOSER_ACTION_SAVE, GTK_STOCK_CANCEL,
        GTK_RESPONSE_CANCEL, GTK_STOCK_SAVE, GTK_RESPONSE_ACCEPT, nullptr));
    gtk_widget_set_name(chooser.get(), "FileChooser");
    gtk_dialog_set_default_response(GTK_DIALOG(chooser.get()), GTK_RESPONSE_ACCEPT);
    gtk_file_chooser_set_current_name(GTK_FILE_CHOOSER(chooser.get()), proposedName.c_str());
    while (gtk_dialog_run(GTK_DIALOG(chooser.get())) == GTK_RESPONSE_ACCEPT) {
        const std::string typed = pathIn(chooser.get());
        if (typed.empty()) {
            continue;
        }
        const std::string path = completed(typed, extensions);
        std::error_code none;
        if (!std::filesystem::exists(path, none) || mayReplace(chooser.get(), path)) {
            return path;
        }
    }
    return std::nullopt;
}

}  // namespace toolkit
