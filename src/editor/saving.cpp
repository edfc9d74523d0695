// Writing an editor's list into a file that the user chooses.

#include "core/ansi.h"
#include "core/existing_files.h"
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
                                     .filter = std::wstring(kSaveFilter),
                                     .filterIndex = suggestion.filterIndex,
                                     .folder = suggestion.folder,
                                     .name = suggestion.fileName});
}

// The whole content of the file to write; nullopt when the window was closed meanwhile.
std::optional<std::string> content(Editor& editor, const std::wstring& target, bool relative) {
    ExistingFiles existing;
    const auto paths = editor.document.pathsToSave(
        [&](const std::wstring& file) { return existing.contains(file); }, editor.hooks());
    if (!paths) return std::nullopt;
    const auto letEventsRun = [] { yieldToEvents(); };
    const auto lines = playlistLines(target, *paths, relative, letEventsRun);
    std::string bytes = playlistBytes(lines, [&](std::wstring_view line) {
        yieldToEvents();
        return toAnsi(line);
    });
    if (editor.form.isClosing()) return std::nullopt;
    return bytes;
}

}  // namespace

void saveAs(Editor& editor) {
    const std::wstring target = chosenTarget(editor);
    if (target.empty() || editor.form.isClosing()) return;
    const bool relative = ask(relativeLinksQuestion()) == 1;
    if (editor.form.isClosing()) return;
    const EditorDocument::Busy busy(editor.document);
    const auto bytes = content(editor, target, relative);
    if (!bytes) return;
    FileSystemObject::writeWhole(target, *bytes);
    editor.document.markSaved();
    if (savedIntoFolder(target, editor.links.shownFolder())) editor.links.tellExplorer(L"obnoviť");
    ask(savedNotice());
}

}  // namespace tunovka
