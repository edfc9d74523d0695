#include "search/search_result.h"

#include <algorithm>
#include <unordered_set>

#include "core/paths.h"

namespace tunovka {

using namespace MultiMedialny;

void keepMusicAndPlaylists(std::vector<std::wstring>& paths, const LoopHooks& hooks) {
    std::vector<std::wstring> all;
    all.swap(paths);
    for (std::wstring& each : all) {
        std::wstring path = std::move(each);  // freed here, not a hundred thousand at the end
        if (isMusicName(path) || isPlaylistName(path)) paths.push_back(std::move(path));
        if (!hooks.next()) return;
    }
}

std::wstring FoundFile::name() const {
    return key.empty() ? std::wstring(kNothingFound) : afterLastBackslash(key);
}

ListRow SearchResult::row(std::size_t position) const {
    const FoundFile& file = at(position);
    return {.key = file.key,
            .name = file.name(),
            .picture = file.key.empty() ? L"" : IconKeyByExtension(mediaKind(file.key)),
            .color = palette().NodeForeColor};
}

void SearchResult::list(std::vector<std::wstring> paths, const LoopHooks& hooks) {
    std::vector<FoundFile> files;
    files.reserve(paths.size());
    std::unordered_set<std::wstring_view> listed;  // parts of `files`, which does not grow further
    for (std::wstring& path : paths) {
        files.push_back({std::move(path)});
        if (!listed.insert(files.back().key).second) files.pop_back();
        if (!hooks.next()) break;
    }
    if (files.empty()) files.push_back({});
    setRows(std::move(files));
}

std::optional<BoxRequest> SearchResult::exportQuestion() const {
    const auto holds = [this](bool (*isOne)(std::wstring_view)) {
        return std::ranges::any_of(rows(), isOne, &FoundFile::key);
    };
    if (!holds(isWritablePlaylistName)) return std::nullopt;
    return BoxRequest{
        L"Čo s playlistmi ?",
        holds(isMusicName)
            ? L"Zoznam obsahuje aj playlisty, chceš ich pridať do novovytvoreného playlistu ?"
            : L"Zoznam obsahuje len playlisty, chceš i napriek tomu zostaviť z nich nový "
              L"playlist ?",
        L"ÁNO;NIE"};
}

std::optional<std::vector<std::wstring>> SearchResult::exportLines(int boxAnswer) const {
    std::vector<std::wstring> lines;
    bool music = false, playlistsLeftOut = false;
    for (const FoundFile& file : rows()) {
        const bool leftOut = boxAnswer != 1 && isWritablePlaylistName(file.key);
        music = music || isMusicName(file.key);
        playlistsLeftOut = playlistsLeftOut || leftOut;
        if (!file.key.empty() && !leftOut) lines.push_back(file.key);
    }
    if (playlistsLeftOut && !music) return std::nullopt;
    return lines;
}

}  // namespace tunovka
