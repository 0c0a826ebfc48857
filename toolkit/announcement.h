#pragma once

#include <string>
#include <vector>

#include "toolkit/control.h"

namespace toolkit {

// While one of these lives, what appears in its window is collected; when it dies, a screen reader
// is told of it in one sentence. Button presses and choices make one. Whatever appears otherwise,
// as with every key that is typed, only those hear who go to it.
class Announcement {
  public:
    // `widget`: what the user has pressed or chosen.
    explicit Announcement(GtkWidget* widget);
    Announcement(const Announcement&) = delete;
    Announcement& operator=(const Announcement&) = delete;
    ~Announcement();

  private:
    friend void Announce(const Control& control);
    friend void Announce(const Control& control, const std::string& sentence);
    static Announcement* of(const Control& control);

    GtkWidget* window_;  // null within another announcement
    std::vector<const Control*> controls_;
    std::string sentences_;
};

// If an announcement is being made in the window of `control`, adds what the control shows in the
// end: what names it, its text and its unit.
void Announce(const Control& control);
// As above, but adds this sentence.
void Announce(const Control& control, const std::string& sentence);

}  // namespace toolkit
