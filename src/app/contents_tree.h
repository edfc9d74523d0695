#pragma once

#include <string>
#include <unordered_map>

#include "playlist/resolve.h"
#include "ui/text_box.h"
#include "ui/tree_view.h"

namespace tunovka {

class Form;

struct FolderEntry;

// The explorer's right side: the contents tree `Tview` with the music files and the playlists of
// one folder, each playlist with its entries below it.
class ContentsTree {
  public:
    // `txtPath` holds the folder that is listed. Put off: the tree is created by createNow().
    ContentsTree(Form& form, TextBox& txtPath, bool putOff = false);

    // Replaces the contents by the listing of a folder. A failure is reported and ends the listing
    // where it stands.
    void ListFolderContents(const std::wstring& path);

    // Full path of the existing file behind a node, its name as the disk spells it; "" when there
    // is none.
    std::wstring PathFromNodeKey(const std::wstring& key) const;
    // The same for the selected node; "" without one.
    std::wstring selectedPath() const;
    // The selected node's path as playlists take it, which know the kinds in small letters alone:
    // "Song.MP3" gives "Song.mp3", which leads to the same file.
    std::wstring selectedPathForPlaylists() const;

    // The file of a node has got another name: the node gets its key and text. False when that
    // cannot be, because the tree shows what is no longer so.
    bool renameFile(const std::wstring& key, const std::wstring& name);

    TreeView Tview;

  private:
    void list(const std::wstring& path);
    std::wstring newKey(const std::wstring& name);
    void addPlaylist(const std::wstring& folder, const FolderEntry& file,
                     const FileExistsTest& exists);
    void addMusic(const std::wstring& name);

    TextBox& txtPath_;
    // The name on the disk of each file node: the lower-cased one of its key does not lead back to
    // it for every letter.
    std::unordered_map<std::wstring, std::wstring> names_;
};

}  // namespace tunovka
