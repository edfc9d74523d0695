#include "app/contents_tree.h"

#include "core/ansi.h"
#include "core/disk_questions.h"
#include "core/errors.h"
#include "core/existing_files.h"
#include "core/file_system.h"
#include "core/paths.h"
#include "core/text.h"
#include "playlist/line_grammar.h"
#include "ui/form.h"
#include "ui/frm_box.h"

namespace tunovka {

using namespace MultiMedialny;

// A playlist as a worker has read it.
struct ContentsTree::ReadPlaylist {
    std::wstring content;
    std::exception_ptr failure;
    std::size_t firstAnswer = 0;  // about its entries

    static ReadPlaylist of(const std::wstring& path) {
        try {
            return {.content = fromAnsi(FileSystemObject::readAll(path))};
        } catch (const RuntimeError&) {
            return {.failure = std::current_exception()};
        }
    }
};

namespace {

// A line that cannot be read is told when its turn has come.
void askForEntries(FileQuestions& files, const std::wstring& content, const std::wstring& folder) {
    try {
        WideLineReader lines(content);
        for (std::wstring_view line; lines.next(line);)
            if (const auto text = explorerEntryText(line))
                files.ask(absoluteEntryPath(withoutFilePrefixAnyCase(*text), folder));
    } catch (const RuntimeError&) {
    }
}

}  // namespace

ContentsTree::ContentsTree(Form& form, TextBox& txtPath)
    : Tview(L"Tview", L"Obsah priečinka", form), form_(form), txtPath_(txtPath) {}

void ContentsTree::ListFolderContents(const std::wstring& path) {
    txtPath_.setText(path);
    ++wanted_;
    if (std::exchange(listing_, true)) return;  // the listing under way ends and this one follows
    const Form::Depth alive(&form_);
    for (unsigned shown = 0; shown != wanted_ && !form_.isClosing();) {
        shown = wanted_;
        listOrTell();
    }
    listing_ = false;
}

void ContentsTree::listOrTell() {
    try {
        list(txtPath_.text());
    } catch (const RuntimeError& error) {
        const std::wstring text =
            error.number == kPermissionDenied
                ? L"Nie je možné zobraziť súbory, nie sú dostatočné práva k načítaniu súborov."
                : L"Došlo k neočakávanej chybe !!!\r\nČíslo chyby: " + decimal(error.number) +
                      L" , chybová správa: " + error.description + L" , zdroj chyby: " +
                      error.source;
        tellWhy(text);
    }
}

// All that has to be asked is asked before the first node comes, several questions at a time.
void ContentsTree::list(const std::wstring& path) {
    if (path.empty()) return;
    std::optional<Form::Busy> busy(form_);
    const LoopHooks hooks{
        yieldToEvents, [this, wanted = wanted_] { return wanted != wanted_ || form_.isGivenUp(); }};
    auto entries = askDisk(hooks, [path]() -> std::optional<std::vector<FolderEntry>> {
        if (!FileSystemObject::FolderExists(path)) return std::nullopt;
        return FileSystemObject::listFolder(path);
    });
    if (!entries || !*entries) return;
    std::vector<FolderEntry> files = std::move(**entries);
    std::erase_if(files, [](const FolderEntry& entry) { return entry.isFolder(); });
    std::map<std::wstring, ReadPlaylist> playlists;
    if (!readPlaylists(path, files, playlists, hooks)) return;
    ExistingFiles existing;
    for (auto& [name, playlist] : playlists) {
        playlist.firstAnswer = existing.count();
        askForEntries(existing, playlist.content, path);
    }
    const auto isThere = existing.answers(hooks);
    if (!isThere) return;
    busy.reset();

    const TreeView::RedrawOff off(Tview);
    Tview.clear(hooks);
    for (const FolderEntry& file : files) {
        const auto playlist = playlists.find(file.name);
        if (playlist != playlists.end() && !addPlaylist(file, playlist->second, *isThere, hooks))
            return;
        if (const std::wstring text = lowerCased(file.name); IsPlayableMedia(text))
            Tview.add({.key = newKey(file.name),
                       .text = text,
                       .imageKey = IconKeyByExtension(mediaKind(text)),
                       .tag = file.name});
        if (!hooks.next()) return;
    }
    const std::wstring first = Tview.firstRoot();
    if (!first.empty()) Tview.select(first);
}

// False when the listing was given up.
bool ContentsTree::readPlaylists(const std::wstring& folder, const std::vector<FolderEntry>& files,
                                 std::map<std::wstring, ReadPlaylist>& playlists,
                                 const LoopHooks& hooks) {
    std::vector<std::wstring> names;
    for (const FolderEntry& file : files)
        if (isPlaylistName(lowerCased(file.name))) names.push_back(file.name);
    const auto question = [&](std::size_t i) {
        return [path = folder + names[i]] { return ReadPlaylist::of(path); };
    };
    return askDiskMany(hooks, names.size(), question, [&](std::size_t i, ReadPlaylist playlist) {
        playlists[names[i]] = std::move(playlist);
    });
}

// The key of a file's node is its lower-cased name. Files that differ in letter case alone are a
// node each: the later ones get a "*" behind it, which no name holds.
std::wstring ContentsTree::newKey(const std::wstring& name) const {
    std::wstring key = lowerCased(name);
    while (Tview.contains(key)) key += L'*';
    return key;
}

// False when the listing was given up.
bool ContentsTree::addPlaylist(const FolderEntry& file, const ReadPlaylist& playlist,
                               const std::vector<bool>& isThere, const LoopHooks& hooks) {
    const std::wstring parent = newKey(file.name), name = lowerCased(file.name);
    Tview.add({.key = parent,
               .text = name,
               .imageKey = IconKeyByExtension(mediaKind(name)),
               .tag = file.name,
               .foreground = palette().PlaylistNodeColor,
               .bold = true});
    if (playlist.failure) std::rethrow_exception(playlist.failure);
    const std::wstring& shortName = file.shortName.empty() ? file.name : file.shortName;
    std::int16_t number = 0;
    WideLineReader lines(playlist.content);
    for (std::wstring_view line; lines.next(line);) {
        const std::optional<std::wstring> text = explorerEntryText(line);
        if (!text) continue;
        number = count16(number + 1);
        const std::wstring key = playlistNodeKey(shortName, number, *text);
        const bool missing = !isThere[playlist.firstAnswer + number - 1];
        Tview.add({.parentKey = parent,
                   .key = key,
                   .text = afterLastBackslash(*text),
                   .imageKey = IconKeyByExtension(mediaKind(*text)),
                   .foreground = missing ? palette().MissingEntryColor : palette().NodeForeColor});
        if (!hooks.next()) return false;
        if (!Tview.contains(parent)) break;  // renamed meanwhile
    }
    return true;
}

// Whether a file is there or not.
std::wstring ContentsTree::pathOf(const std::wstring& key) const {
    const bool isFile = Tview.contains(key) && !key.starts_with(L"pl=");
    return nodePath(isFile ? Tview.tag(key) : key, txtPath_.text());
}

std::wstring ContentsTree::PathFromNodeKey(const std::wstring& key) const {
    return fileOnDisk(pathOf(key));
}

std::wstring ContentsTree::whyNoFile(const std::wstring& key, std::wstring_view missing) const {
    return tunovka::whyNoFile(pathOf(key), missing);
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
    return true;
}

}  // namespace tunovka
