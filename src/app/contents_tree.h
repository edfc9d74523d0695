#pragma once

#include <map>
#include <string>
#include <vector>

#include "core/loop.h"
#include "playlist/entry_key.h"
#include "ui/program_links.h"
#include "ui/tree_view.h"

namespace tunovka {

class Form;

struct FolderEntry;

// The explorer's right side: the contents tree `Tview` with the music files and the playlists of
// one folder, each playlist with its entries below it.
class ContentsTree {
  public:
    // `txtPath` holds the folder that is listed.
    ContentsTree(Form& form, TextBox& txtPath);

    // Lists a folder in place of the contents, letting events run. A call during a listing ends it
    // and lists its own folder instead. A failure is told and leaves what was listed so far.
    void ListFolderContents(const std::wstring& path);

    // Path of the existing file behind a node, as the disk spells its name; "" when there is none.
    std::wstring PathFromNodeKey(const std::wstring& key) const;
    // Why there is none: `missing`, or what stands against looking.
    std::wstring whyNoFile(const std::wstring& key, std::wstring_view missing) const;
    // The same for the selected node; "" without one.
    std::wstring selectedPath() const;
    // The selected node's path as playlists take it, which know the kinds in small letters alone:
    // "Song.MP3" gives "Song.mp3", which leads to the same file.
    std::wstring selectedPathForPlaylists() const;

    // Gives the node of a renamed file its new key and text; false when the tree is out of date.
    bool renameFile(const std::wstring& key, const std::wstring& name);

    TreeView Tview;  // a file's node has its name on the disk as its tag: its key is lower-cased

  private:
    struct ReadPlaylist;
    void listOrTell();
    void list(const std::wstring& path);
    static bool readPlaylists(const std::wstring& folder, const std::vector<FolderEntry>& files,
                              std::map<std::wstring, ReadPlaylist>& playlists,
                              const LoopHooks& hooks);
    std::wstring newKey(const std::wstring& name) const;
    bool addPlaylist(const FolderEntry& file, const ReadPlaylist& playlist,
                     const std::vector<bool>& isThere, const LoopHooks& hooks);
    std::wstring pathOf(const std::wstring& key) const;

    Form& form_;
    TextBox& txtPath_;
    unsigned wanted_ = 0;  // counts the folders that were asked for
    bool listing_ = false;
};

}  // namespace tunovka
