#include "search/sorting_out.h"

#include <array>

#include "core/text.h"

namespace tunovka {

bool isKeptFile(std::wstring_view path) {
    constexpr std::array<std::wstring_view, 6> kEndings = {L".mp3", L".wav", L".wma",
                                                           L".m3u", L".pls", L".asx"};
    for (const std::wstring_view ending : kEndings)
        if (path.ends_with(ending)) return true;
    return false;
}

void keepMusicAndPlaylists(std::vector<std::wstring>& paths, const LoopHooks& hooks) {
    std::vector<std::wstring> all;
    all.swap(paths);
    for (std::wstring& each : all) {
        std::wstring path = std::move(each);  // freed here, not a hundred thousand at the end
        if (isKeptFile(path)) paths.push_back(std::move(path));
        if (!hooks.next()) return;
    }
}

std::wstring collectedText(std::uint64_t allFiles, bool stopped) {
    std::wstring text = formatGrouped(allFiles);
    if (stopped) text += L" - prerušené";
    return text;
}

std::wstring sortedOutText(std::wstring collected, std::uint64_t keptFiles) {
    return std::move(collected) + L", z toho hudobné: " + formatGrouped(keptFiles);
}

bool isWorthListing(std::uint64_t allFiles) {
    return allFiles > 1;
}

}  // namespace tunovka
