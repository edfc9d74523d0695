// What is dropped onto an editor's list: a row of an editor, a media file, a playlist.

#include "core/ansi.h"
#include "core/file_system.h"
#include "editor/editor.h"
#include "editor/texts.h"
#include "ui/box.h"
#include "ui/drag_drop.h"

namespace tunovka {
namespace {

void showLastRow(EditorView& view) {
    if (view.Lview.count() > 0) view.select(view.Lview.count() - 1);
}

void moveRow(Editor& editor, const std::wstring& key, std::optional<std::size_t> target) {
    if (editor.document.sortOrder() != SortOrder::None) {
        ask(movedWhileSortedNotice());
        return;
    }
    if (target && editor.document.move(key, *target)) editor.view.select(*target);
}

void addFile(Editor& editor, const std::wstring& path) {
    const auto isThere = editor.document.holds(path, editor.hooks());
    if (!isThere) return;
    if (*isThere && ask(addDuplicateQuestion(path)) != 1) return;
    if (editor.form.isClosing()) return;
    if (const auto position = editor.document.add(path)) editor.view.select(*position);
}

void mergeDroppedPlaylist(Editor& editor, const std::wstring& path) {
    if (ask(addPlaylistQuestion(path)) != 1 || editor.form.isClosing()) return;
    const std::wstring text = fromAnsi(FileSystemObject::readAll(path));
    std::optional<MergeReport> report;
    try {
        report = editor.document.merge(path, text, editor.files.anew(), editor.hooks());
    } catch (...) {
        showLastRow(editor.view);  // of what was read before the error
        throw;
    }
    if (!report) return;
    showLastRow(editor.view);
    ask(mergedNotice(report->added, report->invalid));
}

}  // namespace

void dropText(Editor& editor, const std::wstring& text, std::optional<std::size_t> target,
              const DragState& drag) {
    if (text.empty()) return;
    if (text == drag.path) return moveRow(editor, drag.key, target);
    if (!FileSystemObject::FileExists(text)) return;
    switch (droppedKind(text)) {
        case DroppedKind::Media:
            return addFile(editor, text);
        case DroppedKind::Playlist:
            return mergeDroppedPlaylist(editor, text);
        case DroppedKind::Other:
            ask(wrongTypeNotice());
    }
}

}  // namespace tunovka
