#include "search/export.h"

namespace tunovka {
namespace {

bool isPlaylist(std::wstring_view path) {
    return path.ends_with(L".pls") || path.ends_with(L".m3u");
}

bool isMusic(std::wstring_view path) {
    return path.ends_with(L".wma") || path.ends_with(L".wav") || path.ends_with(L".mp3");
}

}  // namespace

ExportContents exportContents(const std::vector<std::wstring>& paths) {
    ExportContents contents;
    for (const std::wstring& path : paths) {
        contents.playlists = contents.playlists || isPlaylist(path);
        contents.music = contents.music || isMusic(path);
    }
    return contents;
}

std::optional<BoxRequest> exportQuestion(const ExportContents& contents) {
    if (!contents.playlists) return std::nullopt;
    return BoxRequest{
        L"Čo s playlistmi ?",
        contents.music
            ? L"Zoznam obsahuje aj playlisty, chceš ich pridať do novovytvoreného playlistu ?"
            : L"Zoznam obsahuje len playlisty, chceš i napriek tomu zostaviť z nich nový "
              L"playlist ?",
        L"ÁNO;NIE"};
}

std::optional<bool> includesPlaylists(const ExportContents& contents, int boxAnswer) {
    if (!contents.playlists) return false;
    if (boxAnswer == 1) return true;
    if (!contents.music) return std::nullopt;
    return false;
}

std::vector<std::wstring> exportLines(const std::vector<std::wstring>& paths,
                                      bool includePlaylists) {
    std::vector<std::wstring> lines;
    for (const std::wstring& path : paths)
        if (!path.empty() && (includePlaylists || !isPlaylist(path))) lines.push_back(path);
    return lines;
}

BoxRequest exportedNotice(std::wstring_view chosenPath) {
    return {L"Hotovo", std::wstring(L"Playlist '").append(chosenPath).append(L"' bol vytvorený."),
            L"Jasné..."};
}

}  // namespace tunovka
