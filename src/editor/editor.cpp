#include "editor/editor.h"

#include <algorithm>

#include "core/ansi.h"
#include "core/disk_questions.h"
#include "core/file_system.h"
#include "core/multimedialny.h"
#include "core/paths.h"
#include "core/text.h"
#include "playlist/line_grammar.h"
#include "playlist/write.h"
#include "ui/frm_box.h"
#include "ui/system_dialogs.h"

namespace tunovka {
namespace {

// A count in the forms that the language has for one, two to four, and none or more; "#" is it.
std::wstring counted(std::size_t count, std::wstring one, std::wstring few, std::wstring many) {
    std::wstring text = std::move(count == 1 ? one : count >= 2 && count <= 4 ? few : many);
    if (const auto mark = text.find(L'#'); mark != text.npos) text.replace(mark, 1, decimal(count));
    return text;
}

}  // namespace

// For loops over the document: events run, closing the window or Escape ends the loop.
LoopHooks Editor::hooks() const {
    return {yieldToEvents, [this] { return form_.isGivenUp(); }};
}

std::optional<std::wstring> Editor::read(const std::wstring& path) const {
    return askDisk(hooks(), [path] { return fromAnsi(FileSystemObject::readAll(path)); });
}

std::optional<std::vector<bool>> Editor::filesOfRows() {
    files_.beginOperation();
    const std::wstring home = document.folder();
    for (const PlaylistEntry& entry : document.rows()) {
        files_.ask(entryPath(entry.key, home));
        if (!hooks().next()) return std::nullopt;
    }
    return files_.answers(hooks());
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

std::wstring Editor::whyNoFile(std::size_t row, std::wstring_view missing) const {
    const auto whatever = [](const std::wstring&) { return true; };
    return tunovka::whyNoFile(document.resolve(row, whatever), missing);
}

std::wstring Editor::status(std::size_t row) const {
    const std::wstring path = pathOf(row);
    return path.empty() ? whyNoFile(row, L"Odkaz na neexistujúci súbor") : path;
}

void Editor::loadPlaylistFile(const std::wstring& path) {
    const auto text = read(path);
    if (!text) return;
    files_.beginOperation();
    document.load(path, *text, files_, hooks());
    if (document.mayBeSaved() && !form_.isClosing()) onSelect(0);
}

// ---- What is dropped --------------------------------------------------------------------------

void Editor::drop(const std::wstring& text, std::optional<std::size_t> target,
                  const DragState& drag) {
    if (text.empty()) return;
    if (text == drag.path) return move(drag.key, target);
    if (!fileAnswers(text)) return;
    const MultiMedialny::Kind* const kind = MultiMedialny::kindOf(fileExtension(text));
    if (kind && kind->music) return addFile(text);
    if (kind && kind->isWritten()) return mergeDroppedPlaylist(text);
    notify({L"Neplatný typ",
            L"Toto je neplatný typ súboru pre zaradenie do playlistu. V playliste môžu byť len "
            L"súbory typu 'mp3','wav' a 'wma'.",
            L"O.K."});
}

void Editor::move(const std::wstring& key, std::optional<std::size_t> target) {
    if (document.sortOrder() != SortOrder::None)
        return notify(
            {L"Presunutie položky",
             L"Položky sú radené a z tohto dôvodu po presunutí položky dôjde k jej usporiadaniu "
             L"podľa typu radenia. Táto operácia nemá zmysel, kým nezrušíš radenie položiek.",
             L"Ahá .."});
    if (target && document.move(key, *target)) onSelect(*target);
}

void Editor::addFile(const std::wstring& path) {
    const auto isThere = document.holds(path, hooks());
    if (!isThere) return;
    if (*isThere && !agrees({L"Duplicitná položka",
                             L"V playliste sa už nachádza odkaz na tento súbor '" + path +
                                 L"', chceš ho i npariek tomu pridať do playlistu ?",
                             L"ÁNO;NIE"}))
        return;
    onSelect(document.add(path, fileAnswers));
}

void Editor::mergeDroppedPlaylist(const std::wstring& path) {
    if (!agrees({L"Pridanie súboru",
                 L"Chceš pridať všetky súbory, na ktoré odkazuje playlist '" + path + L"' ?",
                 L" ÁNO ;Zrušiť"}))
        return;
    const auto text = read(path);
    if (!text) return;
    files_.beginOperation();
    std::optional<MergeReport> report;
    try {
        report = document.merge(path, *text, files_, hooks());
    } catch (...) {
        selectLast();  // of what was read before the error
        throw;
    }
    if (!report) return;
    selectLast();
    std::wstring notice = L"Počet pridaných súborov: " + decimal(report->added);
    if (report->invalid > 0)
        notice += L"\rPočet pridaných neplatných odkazov: " + decimal(report->invalid);
    notify({L"Hotovo", notice, L"Oukej ..."});
}

// ---- Taking rows out, and their order ---------------------------------------------------------

void Editor::removeAt(std::size_t row) {
    document.removeAt(row);
    onSelect(document.count() == 0 ? 0 : std::min(row, document.count() - 1));
}

void Editor::removeDuplicates() {
    const auto isThere = filesOfRows();
    if (!isThere) return;
    const auto keys = document.duplicates(*isThere, hooks());
    if (!keys) return;
    if (keys->empty())
        return notify({L"O.K.", L"Neboli nájdené žiadne duplicitné v zozname.", L"Jasnačka ..."});
    const std::wstring found =
        counted(keys->size(), L"Bola nájdená jedna duplicitná položka",
                L"Boli nájdené # duplicitné položky", L"Bolo nájdených # duplicitných položiek");
    if (agrees({L"Odstrániť položky", found + L" Chceš odstrániť tieto položky zo zoznamu ?",
                L"ÁNO;NIE"}) &&
        document.remove(*keys) > 0)
        selectFirst();
}

void Editor::removeInvalidLinks() {
    const auto removed = dropInvalidLinks();
    if (!removed) return;
    if (*removed == 0) return notify({L"O.K.", L"Neboli zistené neplatné odkazy.", L"Super ..."});
    notify(
        {L"O.K.",
         counted(*removed, L"Bola odstránená jedna neplatná položka.",
                 L"Boli odstránené # neplatné položky", L"Bolo odstránených # neplatných položiek"),
         L"Jasné ..."});
}

std::optional<std::size_t> Editor::dropInvalidLinks() {
    const auto isThere = filesOfRows();
    if (!isThere) return std::nullopt;
    const std::size_t removed = document.remove(document.invalidLinks(*isThere));
    if (removed > 0) selectFirst();
    return removed;
}

void Editor::sort(SortOrder order) {
    if (document.sort(order, hooks())) selectFirst();
}

void Editor::restoreLoadOrder() {
    const auto isThere = filesOfRows();
    if (!isThere) return;
    document.restoreLoadOrder(*isThere);
    selectFirst();
}

// ---- Saving -----------------------------------------------------------------------------------

// A playlist that lies on a drive is offered its own folder, kind and name without the last four
// letters.
std::wstring Editor::askTarget() const {
    const std::wstring& path = document.playlistPath();
    const bool hasPlace = classify(path) == EntryKind::Absolute;
    std::wstring filter, name = hasPlace ? fileName(path) : std::wstring();
    name.resize(name.size() - std::min<std::size_t>(name.size(), 4));
    int filterIndex = 1, number = 0;
    for (const MultiMedialny::Kind& kind : MultiMedialny::kinds()) {
        if (!kind.isWritten()) continue;
        ++number;
        if (hasPlace && kind.ending == fileExtension(path)) filterIndex = number;
        const std::wstring pattern = L"*." + std::wstring(kind.ending);
        if (!filter.empty()) filter += L'|';
        filter.append(kind.format).append(L" (").append(pattern).append(L")|").append(pattern);
    }
    return Cdialog::ShowSave(form_, {.title = L"Uložiť playlist",
                                     .filter = filter,
                                     .filterIndex = filterIndex,
                                     .folder = hasPlace ? parentFolder(path) : links_.shownFolder(),
                                     .name = name});
}

void Editor::saveAs() {
    const std::wstring target = askTarget();
    if (target.empty() || form_.isClosing()) return;
    const bool relative = ask(L"Relatívne odkazy",
                              L"Chceš použiť v playliste relatívne odkazy na súbory vzhľadom k "
                              L"umiestneniu playlistu ?",
                              L"ÁNO;NIE") == 1;
    if (form_.isClosing() || !write(target, relative)) return;
    if (withBackslash(parentFolder(target)) == links_.shownFolder()) links_.refresh();
    notify({L"Nový playlist", L"Playlist bol úspešne vytvorený (aktualizovaný).", L"Fajn ..."});
}

bool Editor::write(const std::wstring& target, bool relative) {
    const auto isThere = filesOfRows();
    if (!isThere) return false;
    const auto paths = document.pathsToSave(*isThere);
    bool goesOn = true;
    const auto goOn = [&] { goesOn = hooks().next() && goesOn; };
    const auto lines = playlistLines(target, paths, relative, goOn);
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
