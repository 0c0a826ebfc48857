#pragma once

#include <string>
#include <vector>

#include "toolkit/menu.h"
#include "toolkit/screen.h"

namespace app {

class WindowOwner;

// The menu bar of a window; its Edit menu acts on the control that has the focus there.
class MenuBar1 : public toolkit::MenuBar {
  public:
    MenuBar1(WindowOwner& owner, toolkit::Screen& screen);

  private:
    struct EditItem {
        toolkit::MenuItem& item;
        toolkit::EditCommand command;
    };

    void FileQuit_Action();
    void EditMenu_Open();
    void EditMenu_Close();
    void bind(toolkit::MenuItem& item, const std::string& keys, toolkit::EditCommand command);

    WindowOwner& owner_;
    toolkit::Screen& screen_;
    toolkit::Menu FileMenu{"FileMenu", "&File"};
    toolkit::MenuItem FileQuit{"FileQuit", "&Quit"};
    toolkit::Menu EditMenu{"EditMenu", "&Edit"};
    toolkit::MenuItem EditUndo{"EditUndo", "&Undo"};
    toolkit::MenuItem EditSeparator{"EditSeparator", "-"};
    toolkit::MenuItem EditCut{"EditCut", "Cu&t"};
    toolkit::MenuItem EditCopy{"EditCopy", "&Copy"};
    toolkit::MenuItem EditPaste{"EditPaste", "&Paste"};
    toolkit::MenuItem EditClear{"EditClear", "&Delete"};
    toolkit::MenuItem EditSelectAll{"EditSelectAll", "Select &All"};
    std::vector<EditItem> editItems_;
};

}  // namespace app
