#pragma once

#include <string>

#include "playlist/resolve.h"
#include "ui/text_box.h"
#include "ui/tree_view.h"

namespace tunovka {

struct FolderEntry;

// The explorer's right side: the contents tree `Tview` with the music files and the playlists of
// one folder, each playlist with its entries below it.
class ContentsTree {
  public:
    // `txtPath` holds the folder that is listed. Put off: the tree is created by appear().
    ContentsTree(Form& form, TextBox& txtPath, bool putOff = false);

    // Replaces the contents by the listing of a folder. A failure is reported and ends the listing
    // where it stands.
    void ListFolderContents(const std::wstring& path);

    // Full path of the existing file behind a node, "" when there is none.
    std::wstring PathFromNodeKey(const std::wstring& key) const;
    // The same for the selected node; "" without one.
    std::wstring selectedPath() const;

    TreeView Tview;

  private:
    void list(const std::wstring& path);
    void addPlaylist(const std::wstring& folder, const FolderEntry& file,
                     const FileExistsTest& exists);
    void addMusic(const std::wstring& name);

    TextBox& txtPath_;
};

}  // namespace tunovka
