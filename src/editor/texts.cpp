#include "editor/texts.h"

#include <algorithm>

#include "core/multimedialny.h"
#include "core/paths.h"
#include "playlist/line_grammar.h"

namespace tunovka {
namespace {

std::wstring quoted(std::wstring_view before, std::wstring_view path, std::wstring_view after) {
    return std::wstring(before).append(L"'").append(path).append(L"'").append(after);
}

// A count with the three forms that the language has for it: one, two to four, five and more.
struct Forms {
    std::wstring_view one;
    std::wstring_view fewBefore, fewAfter;
    std::wstring_view manyBefore, manyAfter;
};

std::wstring counted(std::size_t count, const Forms& forms) {
    if (count == 1) return std::wstring(forms.one);
    const bool few = count >= 2 && count <= 4;
    return std::wstring(few ? forms.fewBefore : forms.manyBefore)
        .append(std::to_wstring(count))
        .append(few ? forms.fewAfter : forms.manyAfter);
}

}  // namespace

std::wstring editorTitle(int windowNumber) {
    return L" Editor playlistov " + std::to_wstring(windowNumber);
}

std::wstring countLabel(std::size_t rows) {
    return L"Počet odkazov v playliste: " + std::to_wstring(rows);
}

DroppedKind droppedKind(std::wstring_view path) {
    const MultiMedialny::Kind* const kind = MultiMedialny::kindOf(fileExtension(path));
    if (!kind) return DroppedKind::Other;
    if (kind->music) return DroppedKind::Media;
    return kind->isWritten() ? DroppedKind::Playlist : DroppedKind::Other;
}

BoxRequest saveChangesQuestion() {
    return {L"Uložiť zmeny ?",
            L"Pri úpravách playlistu došlo k zmenám, chceš playlist uložiť teraz ?",
            L"ÁNO;NIE;STORNO"};
}

BoxRequest movedWhileSortedNotice() {
    return {L"Presunutie položky",
            L"Položky sú radené a z tohto dôvodu po presunutí položky dôjde k jej usporiadaniu "
            L"podľa typu radenia. Táto operácia nemá zmysel, kým nezrušíš radenie položiek.",
            L"Ahá .."};
}

BoxRequest wrongTypeNotice() {
    return {L"Neplatný typ",
            L"Toto je neplatný typ súboru pre zaradenie do playlistu. V playliste môžu byť len "
            L"súbory typu 'mp3','wav' a 'wma'.",
            L"O.K."};
}

BoxRequest addDuplicateQuestion(std::wstring_view path) {
    return {L"Duplicitná položka",
            quoted(L"V playliste sa už nachádza odkaz na tento súbor ", path,
                   L", chceš ho i npariek tomu pridať do playlistu ?"),
            L"ÁNO;NIE"};
}

BoxRequest addPlaylistQuestion(std::wstring_view path) {
    return {L"Pridanie súboru",
            quoted(L"Chceš pridať všetky súbory, na ktoré odkazuje playlist ", path, L" ?"),
            L" ÁNO ;Zrušiť"};
}

BoxRequest mergedNotice(int added, int invalid) {
    std::wstring text = L"Počet pridaných súborov: " + std::to_wstring(added);
    if (invalid > 0) text += L"\rPočet pridaných neplatných odkazov: " + std::to_wstring(invalid);
    return {L"Hotovo", text, L"Oukej ..."};
}

BoxRequest duplicatesBox(std::size_t found) {
    if (found == 0)
        return {L"O.K.", L"Neboli nájdené žiadne duplicitné v zozname.", L"Jasnačka ..."};
    const std::wstring what =
        counted(found, {L"Bola nájdená jedna duplicitná položka", L"Boli nájdené ",
                        L" duplicitné položky", L"Bolo nájdených ", L" duplicitných položiek"});
    return {L"Odstrániť položky", what + L" Chceš odstrániť tieto položky zo zoznamu ?",
            L"ÁNO;NIE"};
}

BoxRequest invalidLinksNotice(std::size_t removed) {
    if (removed == 0) return {L"O.K.", L"Neboli zistené neplatné odkazy.", L"Super ..."};
    return {
        L"O.K.",
        counted(removed, {L"Bola odstránená jedna neplatná položka.", L"Boli odstránené ",
                          L" neplatné položky", L"Bolo odstránených ", L" neplatných položiek"}),
        L"Jasné ..."};
}

BoxRequest relativeLinksQuestion() {
    return {L"Relatívne odkazy",
            L"Chceš použiť v playliste relatívne odkazy na súbory vzhľadom k umiestneniu "
            L"playlistu ?",
            L"ÁNO;NIE"};
}

BoxRequest savedNotice() {
    return {L"Nový playlist", L"Playlist bol úspešne vytvorený (aktualizovaný).", L"Fajn ..."};
}

SaveSuggestion saveSuggestion(std::wstring_view playlistPath, std::wstring_view explorerFolder) {
    if (classify(playlistPath) != EntryKind::Absolute) return {std::wstring(explorerFolder), {}, 1};
    std::wstring name = fileName(playlistPath);
    name.resize(name.size() - std::min<std::size_t>(name.size(), 4));
    int filter = 1, number = 0;
    for (const MultiMedialny::Kind& kind : MultiMedialny::kinds()) {
        number += kind.isWritten();
        if (kind.isWritten() && kind.ending == fileExtension(playlistPath)) filter = number;
    }
    return {parentFolder(playlistPath), name, filter};
}

std::wstring saveFilter() {
    std::wstring filter;
    for (const MultiMedialny::Kind& kind : MultiMedialny::kinds()) {
        if (!kind.isWritten()) continue;
        const std::wstring pattern = L"*." + std::wstring(kind.ending);
        if (!filter.empty()) filter += L'|';
        filter.append(kind.format).append(L" (").append(pattern).append(L")|").append(pattern);
    }
    return filter;
}

bool savedIntoFolder(std::wstring_view chosenPath, std::wstring_view explorerFolder) {
    return withBackslash(parentFolder(chosenPath)) == explorerFolder;
}

}  // namespace tunovka
