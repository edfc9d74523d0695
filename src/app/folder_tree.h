#pragma once

#include <functional>
#include <string>

#include "ui/drive_list.h"
#include "ui/label.h"
#include "ui/program_links.h"
#include "ui/tree_view.h"

namespace tunovka {

class Form;

inline constexpr wchar_t kFolderPicture[] = L"adresar1";

// The explorer's left side: the drive list `Drive1` and the folder tree `strom`, one drive at a
// time, filled folder by folder as a person opens them. Keys are folder paths ending in "\".
class FolderTree {
  public:
    // `listFolder` lists a folder into the contents tree; `txtPath` is the folder listed there.
    FolderTree(Form& form, Label& LblBar, const TextBox& txtPath,
               std::function<void(const std::wstring& folder)> listFolder);

    // Fills the tree for the drive that is chosen in `Drive1`, unless it is shown already. One that
    // is not ready is told, and the list goes back to the drive that is shown.
    void FillTreeForDrive();

    // Lists the sub-folders of a folder under its node. Lets events run.
    void ExpandFolder(const std::wstring& key);

    // Chooses the first drive at start: "e:" where there is one.
    void chooseStartDrive();

    // Shows the hourglass and returns true while the tree is filled and the pointer is over it.
    bool showHourglass() const;

    std::wstring selectedFolder() const { return strom.selectedKey(); }

    DriveList Drive1;
    TreeView strom;

  private:
    void strom_Expand(const std::wstring& key);
    void strom_NodeClick(const std::wstring& key);

    void AddSubfolderNodes(const std::wstring& parentKey);
    void fill();
    void report(const struct RuntimeError& error);
    void returnToShownDrive();
    void listUnlessShown(const std::wstring& key);

    Form& form_;
    Label& LblBar_;
    const TextBox& txtPath_;
    std::function<void(const std::wstring&)> listFolder_;
    bool driveChanged_ = false;  // since chooseStartDrive()
    bool filling_ = false;       // the tree is being filled for another drive
    int expanding_ = 0;          // folders that are listed right now
};

}  // namespace tunovka
