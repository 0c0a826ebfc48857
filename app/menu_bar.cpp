#include "app/menu_bar.h"

#include "app/window_owner.h"

namespace app {

using toolkit::EditCommand;

MenuBar1::MenuBar1(WindowOwner& owner, toolkit::Screen& screen)
    : MenuBar("MenuBar1"), owner_(owner), screen_(screen) {
    FileQuit.onChoose(this, &MenuBar1::FileQuit_Action);
    FileQuit.setAccelerator(accelerators(), "<Control>q");
    FileMenu.append(FileQuit);
    append(FileMenu);

    EditMenu.onOpen(this, &MenuBar1::EditMenu_Open);
    EditMenu.onClose(this, &MenuBar1::EditMenu_Close);
    bind(EditUndo, "<Control>z", EditCommand::Undo);
    EditMenu.append(EditSeparator);
    bind(EditCut, "<Control>x", EditCommand::Cut);
    bind(EditCopy, "<Control>c", EditCommand::Copy);
    bind(EditPaste, "<Control>v", EditCommand::Paste);
    bind(EditClear, "", EditCommand::Erase);
    bind(EditSelectAll, "<Control>a", EditCommand::SelectAll);
    append(EditMenu);
}

void MenuBar1::bind(toolkit::MenuItem& item, const std::string& keys, EditCommand command) {
    item.onChoose([this, command] { screen_.perform(command); });
    if (!keys.empty()) {
        item.setAccelerator(accelerators(), keys);
    }
    EditMenu.append(item);
    editItems_.push_back({item, command});
}

void MenuBar1::FileQuit_Action() {
    owner_.quit();
}

void MenuBar1::EditMenu_Open() {
    for (const EditItem& entry : editItems_) {
        entry.item.setSensitive(screen_.canPerform(entry.command));
    }
}

void MenuBar1::EditMenu_Close() {
    // An insensitive item would swallow its accelerator while the menu is closed.
    for (const EditItem& entry : editItems_) {
        entry.item.setSensitive(true);
    }
}

}  // namespace app
