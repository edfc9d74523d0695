#include "editor/editor.h"

#include <algorithm>

#include "core/ansi.h"
#include "core/disk_questions.h"
#include "core/file_system.h"
#include "editor/texts.h"
#include "playlist/line_grammar.h"
#include "playlist/write.h"
#include "ui/frm_box.h"
#include "ui/system_dialogs.h"

namespace tunovka {

// For loops over the document: events run, closing the window or Escape ends the loop.
LoopHooks Editor::hooks() const {
    return {yieldToEvents, [this] { return form_.isGivenUp(); }};
}

std::optional<std::wstring> Editor::read(const std::wstring& path) const {
    return askDisk(hooks(), [path] { return fromAnsi(FileSystemObject::readAll(path)); });
}

std::optional<FileExistsTest> Editor::filesOfRows() {
    files_.anew();
    const auto expect = [this](const std::wstring& path) {
        files_.expect(path);
        return true;
    };
    if (!document.invalidLinks(expect, hooks()) || !files_.prepare(hooks())) return std::nullopt;
    return std::ref(files_);
}

std::optional<FileExistsTest> Editor::filesOfText(std::wstring_view text,
                                                  const std::wstring& folder) {
    files_.anew();
    WideLineReader lines(text);
    for (std::wstring_view line; lines.next(line);)
        if (isPlaylistEntryLine(line))
            files_.expect(absoluteEntryPath(withoutFilePrefix(line), folder));
    if (!files_.prepare(hooks())) return std::nullopt;
    return std::ref(files_);
}

// False as well when the window has been closed meanwhile.
bool Editor::agrees(const BoxRequest& question) const {
    return !form_.isClosing() && ask(question) == 1 && !form_.isClosing();
}

void Editor::notify(const BoxRequest& notice) const {
    if (!form_.isClosing()) ask(notice);
}

void Editor::selectFirst() const {
    yieldToEvents();  // none have run while the document was changed
    if (!form_.isClosing()) onSelect(0);
}

void Editor::selectLast() const {
    if (document.count() > 0 && !form_.isClosing()) onSelect(document.count() - 1);
}

std::wstring Editor::pathOf(std::size_t row) const {
    return document.resolve(row, fileAnswers);
}

std::wstring Editor::status(std::size_t row) const {
    std::wstring path = pathOf(row);
    if (!path.empty()) return path;
    const auto whatever = [](const std::wstring&) { return true; };
    return whyNoFile(document.resolve(row, whatever), kMissingFileStatus);
}

void Editor::loadPlaylistFile(const std::wstring& path) {
    const auto text = read(path);
    if (!text) return;
    const auto exists = filesOfText(*text, playlistFolder(path));
    if (!exists) return;
    document.load(path, *text, *exists, hooks());
    if (document.mayBeSaved() && !form_.isClosing()) onSelect(0);
}

// ---- What is dropped --------------------------------------------------------------------------

void Editor::drop(const std::wstring& text, std::optional<std::size_t> target,
                  const DragState& drag) {
    if (text.empty()) return;
    if (text == drag.path) return move(drag.key, target);
    if (!fileAnswers(text)) return;
    switch (droppedKind(text)) {
        case DroppedKind::Media:
            return addFile(text);
        case DroppedKind::Playlist:
            return mergeDroppedPlaylist(text);
        case DroppedKind::Other:
            return notify(wrongTypeNotice());
    }
}

void Editor::move(const std::wstring& key, std::optional<std::size_t> target) {
    if (document.sortOrder() != SortOrder::None) return notify(movedWhileSortedNotice());
    if (target && document.move(key, *target)) onSelect(*target);
}

void Editor::addFile(const std::wstring& path) {
    const auto isThere = document.holds(path, hooks());
    if (!isThere || (*isThere && !agrees(addDuplicateQuestion(path)))) return;
    onSelect(document.add(path, fileAnswers));
}

void Editor::mergeDroppedPlaylist(const std::wstring& path) {
    if (!agrees(addPlaylistQuestion(path))) return;
    const auto text = read(path);
    if (!text) return;
    const auto exists = filesOfText(*text, playlistFolder(path));
    if (!exists) return;
    std::optional<MergeReport> report;
    try {
        report = document.merge(path, *text, *exists, hooks());
    } catch (...) {
        selectLast();  // of what was read before the error
        throw;
    }
    selectLast();
    if (report) notify(mergedNotice(report->added, report->invalid));
}

// ---- Taking rows out, and their order ---------------------------------------------------------

void Editor::removeAt(std::size_t row) {
    document.removeAt(row);
    onSelect(document.count() == 0 ? 0 : std::min(row, document.count() - 1));
}

void Editor::removeDuplicates() {
    const auto exists = filesOfRows();
    if (!exists) return;
    const auto keys = document.duplicates(*exists, hooks());
    if (keys && agrees(duplicatesBox(keys->size())) && document.remove(*keys) > 0) selectFirst();
}

void Editor::removeInvalidLinks() {
    if (const auto removed = dropInvalidLinks()) notify(invalidLinksNotice(*removed));
}

std::optional<std::size_t> Editor::dropInvalidLinks() {
    const auto exists = filesOfRows();
    if (!exists) return std::nullopt;
    const auto keys = document.invalidLinks(*exists, hooks());
    if (!keys) return std::nullopt;
    if (document.remove(*keys) > 0) selectFirst();
    return keys->size();
}

void Editor::sort(SortOrder order) {
    if (document.sort(order, hooks())) selectFirst();
}

void Editor::restoreLoadOrder() {
    const auto exists = filesOfRows();
    if (!exists) return;
    document.restoreLoadOrder(*exists, hooks());
    selectFirst();
}

// ---- Saving -----------------------------------------------------------------------------------

std::wstring Editor::askTarget() const {
    const SaveSuggestion suggestion = saveSuggestion(document.playlistPath(), links_.shownFolder());
    return Cdialog::ShowSave(form_, {.title = std::wstring(kSaveTitle),
                                     .filter = saveFilter(),
                                     .filterIndex = suggestion.filterIndex,
                                     .folder = suggestion.folder,
                                     .name = suggestion.fileName});
}

void Editor::saveAs() {
    const std::wstring target = askTarget();
    if (target.empty() || form_.isClosing()) return;
    const bool relative = ask(relativeLinksQuestion()) == 1;
    if (form_.isClosing() || !write(target, relative)) return;
    if (savedIntoFolder(target, links_.shownFolder())) links_.refresh();
    notify(savedNotice());
}

bool Editor::write(const std::wstring& target, bool relative) {
    const auto exists = filesOfRows();
    if (!exists) return false;
    const auto paths = document.pathsToSave(*exists, hooks());
    if (!paths) return false;
    bool goesOn = true;
    const auto goOn = [&] { goesOn = hooks().next() && goesOn; };
    const auto lines = playlistLines(target, *paths, relative, goOn);
    const std::string content = playlistBytes(lines, [&](std::wstring_view line) {
        goOn();
        return toAnsi(line);
    });
    if (!goesOn) return false;
    const auto written = askDisk(hooks(), [target, content] {
        FileSystemObject::writeWhole(target, content);
        return true;
    });
    if (!written) return false;
    document.markSaved();
    return true;
}

}  // namespace tunovka
