#pragma once

#include <functional>
#include <string>

#include "files/fsoakcie.h"
#include "ui/drag_drop.h"
#include "ui/form.h"
#include "ui/popup_menu.h"
#include "ui/program_links.h"
#include "ui/tree_view.h"

namespace tunovka {

// The explorer's file commands: what its menus, keys and drops do with the file of the selected
// node. While one of them runs the others are refused.
class FileCommands {
  public:
    struct Parts {
        Form& form;
        TreeView& strom;
        TreeView& Tview;
        const TextBox& txtPath;  // the folder that Tview lists
        TextBox& txtsubor;
        TextBox& txtodkaz;
        PopupMenu& prehrat;       // menu of Tview
        PopupMenu& menuprestrom;  // menu of strom

        // Path of the file behind the selected node of Tview, "" when there is none.
        std::function<std::wstring()> selectedPath;
        // A file is being replaced, renamed, moved or deleted: the player lets go of it.
        std::function<void(const std::wstring& path)> closeFile;
        // The file of a node of Tview has got another name.
        std::function<void(const std::wstring& key, const std::wstring& name)> renamed;
    };

    explicit FileCommands(Parts parts);

    // Deletes the file behind the selected node, also that of a playlist's entry.
    void removeSelected();

  private:
    void premenovat_subor_Click();
    void vlozit_subor_Click();
    bool strom_OLEDragOver(Point at);
    void strom_OLEDragDrop(const std::wstring& path);
    void Tview_OLEDragDrop(const std::wstring& path);

    // Runs a command unless another one of the explorer is under way.
    void alone(const std::function<void()>& command);
    void runOnSelected(int operation);
    void copyDropped(const std::wstring& path, const std::wstring& folder,
                     const std::wstring& question);

    Parts parts_;
    FSOakcie::Explorer explorer_;
    std::wstring dropFolder_;  // key of the folder that a drag was over last
    TextDropTarget stromDrops_, TviewDrops_;
};

}  // namespace tunovka
