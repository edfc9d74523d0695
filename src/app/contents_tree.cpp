#include "app/contents_tree.h"

#include "core/ansi.h"
#include "core/counter16.h"
#include "core/errors.h"
#include "core/existing_files.h"
#include "core/file_system.h"
#include "core/paths.h"
#include "core/text.h"
#include "playlist/entry_key.h"
#include "playlist/line_grammar.h"
#include "playlist/line_reader.h"
#include "ui/form.h"
#include "ui/frm_box.h"

namespace tunovka {

using namespace MultiMedialny;

ContentsTree::ContentsTree(Form& form, TextBox& txtPath, bool putOff)
    : Tview({.name = L"Tview", .text = L"Obsah priečinka", .parent = &form, .putOff = putOff}),
      txtPath_(txtPath) {}

void ContentsTree::ListFolderContents(const std::wstring& path) {
    try {
        list(path);
    } catch (const RuntimeError& error) {
        const std::wstring text =
            error.number == kPermissionDenied
                ? L"Nie je možné zobraziť súbory, nie sú dostatočné práva k načítaniu súborov."
                : L"Došlo k neočakávanej chybe !!!\r\nČíslo chyby: " +
                      std::to_wstring(error.number) + L" , chybová správa: " + error.description +
                      L" , zdroj chyby: " + error.source;
        ask(L"CHYBA", text, L"No čo už ...");
    }
}

void ContentsTree::list(const std::wstring& path) {
    txtPath_.setText(path);
    if (path.empty() || !FileSystemObject::FolderExists(path)) return;
    const TreeView::RedrawOff off(Tview);
    Tview.clear();
    names_.clear();
    ExistingFiles existing;
    const FileExistsTest exists = [&](const std::wstring& file) { return existing.contains(file); };
    for (const FolderEntry& file : FileSystemObject::listFolder(path)) {
        if (file.isFolder()) continue;
        const std::wstring name = lowerCased(file.name);
        if (isPlaylistName(name)) addPlaylist(path, file, exists);
        if (IsPlayableMedia(name)) addMusic(file.name);
    }
    const std::wstring first = Tview.firstRoot();
    if (!first.empty()) Tview.select(first);
}

// The key of a file's node is its lower-cased name. Files that differ in letter case alone are a
// node each: the later ones get a "*" behind it, which no name holds.
std::wstring ContentsTree::newKey(const std::wstring& name) {
    std::wstring key = lowerCased(name);
    while (Tview.contains(key)) key += L'*';
    names_[key] = name;
    return key;
}

void ContentsTree::addMusic(const std::wstring& name) {
    const std::wstring text = lowerCased(name);
    Tview.add({.key = newKey(name), .text = text, .imageKey = IconKeyByExtension(mediaKind(text))});
}

void ContentsTree::addPlaylist(const std::wstring& folder, const FolderEntry& file,
                               const FileExistsTest& exists) {
    const std::wstring parent = newKey(file.name), name = lowerCased(file.name);
    Tview.add({.key = parent,
               .text = name,
               .imageKey = IconKeyByExtension(mediaKind(name)),
               .foreground = palette().PlaylistNodeColor,
               .bold = true});
    const std::wstring content = fromAnsi(FileSystemObject::readAll(folder + file.name));
    const std::wstring& shortName = file.shortName.empty() ? file.name : file.shortName;
    Counter16 number;
    WideLineReader lines(content);
    for (std::wstring_view line; lines.next(line);) {
        const std::optional<std::wstring> text = explorerEntryText(line);
        if (!text) continue;
        ++number;
        const std::wstring key = playlistNodeKey(shortName, number, *text);
        const bool missing = resolveNodeKey(key, folder, exists).empty();
        Tview.add({.parentKey = parent,
                   .key = key,
                   .text = afterLastBackslash(*text),
                   .imageKey = IconKeyByExtension(mediaKind(*text)),
                   .foreground = missing ? palette().MissingEntryColor : palette().NodeForeColor});
    }
}

std::wstring ContentsTree::PathFromNodeKey(const std::wstring& key) const {
    const auto file = names_.find(key);
    const bool isFile = file != names_.end() && !key.starts_with(L"pl=");
    return FileSystemObject::asOnDisk(
        resolveNodeKey(isFile ? file->second : key, txtPath_.text(), FileSystemObject::FileExists));
}

std::wstring ContentsTree::selectedPath() const {
    const std::wstring key = Tview.selectedKey();
    return key.empty() ? std::wstring() : PathFromNodeKey(key);
}

std::wstring ContentsTree::selectedPathForPlaylists() const {
    std::wstring path = selectedPath();
    const std::wstring kind = lowerCased(mediaKind(path));
    return path.replace(path.size() - kind.size(), kind.size(), kind);
}

bool ContentsTree::renameFile(const std::wstring& key, const std::wstring& name) {
    const std::wstring newKey = lowerCased(name);
    if (!Tview.contains(key) || (newKey != key && Tview.contains(newKey))) return false;
    Tview.rename(key, newKey, name);
    names_.erase(key);
    names_[newKey] = name;
    return true;
}

}  // namespace tunovka
