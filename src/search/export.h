#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ui/box_request.h"

namespace tunovka {

inline constexpr std::wstring_view kExportTitle = L"Uložiť ako playlist...";
inline constexpr std::wstring_view kExportFilter =
    L"playlist Winampu (*.m3u)|*.m3u|Textový súbor (*.txt)|*.txt";

// What a result list holds. ASX files count as neither: they are always written.
struct ExportContents {
    bool playlists = false;
    bool music = false;
};

// `paths` are the keys of the rows in display order; rows without a file have "".
ExportContents exportContents(const std::vector<std::wstring>& paths);

// The question whether playlists go into the new playlist; nullopt when there is none to ask.
std::optional<BoxRequest> exportQuestion(const ExportContents& contents);

// Whether playlists are written, after the question's answer (1 is yes; not looked at when there
// was no question). nullopt when nothing is to be written at all.
std::optional<bool> includesPlaylists(const ExportContents& contents, int boxAnswer);

// The lines of the new playlist: the paths themselves.
std::vector<std::wstring> exportLines(const std::vector<std::wstring>& paths,
                                      bool includePlaylists);

BoxRequest exportedNotice(std::wstring_view chosenPath);

}  // namespace tunovka
