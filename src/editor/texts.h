#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "ui/box_request.h"

namespace tunovka {

inline constexpr std::wstring_view kInitialCountLabel = L"Počet  odkazov v playliste:";
inline constexpr std::wstring_view kMissingFileStatus = L"Odkaz na neexistujúci súbor";

std::wstring editorTitle(int windowNumber);
std::wstring countLabel(std::size_t rows);

// What a dropped file is to the editor, by its extension as written (lower case only).
enum class DroppedKind { Media, Playlist, Other };
DroppedKind droppedKind(std::wstring_view path);

// The questions and notices, in the order in which a person may meet them.
BoxRequest saveChangesQuestion();     // 1 closes, 2 closes, else stays
BoxRequest movedWhileSortedNotice();  // a move in a sorted list is refused
BoxRequest wrongTypeNotice();         // dropped something else than music
BoxRequest addDuplicateQuestion(std::wstring_view path);
BoxRequest addPlaylistQuestion(std::wstring_view path);
BoxRequest mergedNotice(int added, int invalid);     // lines are separated by a lone CR
BoxRequest duplicatesBox(std::size_t found);         // a notice for 0, else a question
BoxRequest invalidLinksNotice(std::size_t removed);  // also for 0
BoxRequest relativeLinksQuestion();
BoxRequest savedNotice();

// How the save dialog opens for an editor's playlist.
struct SaveSuggestion {
    std::wstring folder;    // initial folder
    std::wstring fileName;  // "" for a playlist that was never saved
    int filterIndex = 1;    // 1-based
};

inline constexpr std::wstring_view kSaveTitle = L"Uložiť playlist";
std::wstring saveFilter();  // one part for each kind that is written
// The dialog of the close prompt, whose answer is not used.
inline constexpr std::wstring_view kCloseSaveFilter =
    L"Playlist Winampu (*.m3u)|*.m3u|Textový súbor (*.txt)|*.txt";

// The suggestion for a playlist with a drive path is its own folder and name without the last four
// characters; any other opens in the explorer's current folder.
SaveSuggestion saveSuggestion(std::wstring_view playlistPath, std::wstring_view explorerFolder);

// True when the explorer shows the folder into which was saved (exact letter case).
bool savedIntoFolder(std::wstring_view chosenPath, std::wstring_view explorerFolder);

}  // namespace tunovka
