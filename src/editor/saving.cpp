// Writing an editor's list into a file that the user chooses.

#include "core/ansi.h"
#include "core/file_system.h"
#include "editor/editor.h"
#include "editor/texts.h"
#include "playlist/write.h"
#include "ui/box.h"
#include "ui/save_dialog.h"

namespace tunovka {
namespace {

std::wstring chosenTarget(const Editor& editor) {
    const SaveSuggestion suggestion =
        saveSuggestion(editor.document.playlistPath(), editor.links.shownFolder());
    return askSavePath(editor.form, {.title = std::wstring(kSaveTitle),
                                     .filter = saveFilter(),
                                     .filterIndex = suggestion.filterIndex,
                                     .folder = suggestion.folder,
                                     .name = suggestion.fileName});
}

}  // namespace

bool writeList(Editor& editor, const std::wstring& target, bool relative) {
    const EditorDocument::Busy busy(editor.document);
    const auto paths = editor.document.pathsToSave(editor.files.anew(), editor.hooks());
    if (!paths) return false;
    if (!writePlaylistFile(target, *paths, relative, editor.hooks())) return false;
    editor.document.markSaved();
    return true;
}

bool writePlaylistFile(const std::wstring& target, const std::vector<std::wstring>& entryPaths,
                       bool relative, const LoopHooks& hooks) {
    bool goesOn = true;
    const auto look = [&] { goesOn = hooks.next() && goesOn; };
    const auto lines = playlistLines(target, entryPaths, relative, look);
    const std::string content = playlistBytes(lines, [&](std::wstring_view line) {
        look();
        return toAnsi(line);
    });
    if (!goesOn) return false;
    FileSystemObject::writeWhole(target, content);
    return true;
}

void saveAs(Editor& editor) {
    const std::wstring target = chosenTarget(editor);
    if (target.empty() || editor.form.isClosing()) return;
    const bool relative = ask(relativeLinksQuestion()) == 1;
    if (editor.form.isClosing() || !writeList(editor, target, relative)) return;
    if (savedIntoFolder(target, editor.links.shownFolder())) editor.links.tellExplorer(L"obnoviť");
    ask(savedNotice());
}

}  // namespace tunovka
