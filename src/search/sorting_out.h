#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/loop.h"

namespace tunovka {

// The phases of a search as its panel names them.
inline constexpr std::wstring_view kCollectingPhase = L"Prebieha prehľadávanie adresára";
inline constexpr std::wstring_view kSortingOutPhase = L"Prebieha spracovanie súborov";
inline constexpr std::wstring_view kListingPhase = L"Prebieha výpis súborov";

// True for music and playlists ("*.mp3", "*.asx" …); an extension in capitals does not count.
bool isKeptFile(std::wstring_view path);

// Leaves only the kept files, in their order, and lets events run per path. When cancelled, only
// what was looked at so far can remain.
void keepMusicAndPlaylists(std::vector<std::wstring>& paths, const LoopHooks& hooks = {});

// The counts label after collecting: "  5", or "  5 - prerušené" when the collecting was stopped.
std::wstring collectedText(std::uint64_t allFiles, bool stopped);

// The label once the files are sorted out: ", z toho hudobné: " and the count are appended.
std::wstring sortedOutText(std::wstring collected, std::uint64_t keptFiles);

// A tree that holds a single file is treated like an empty one: it is not sorted out, and the list
// stays hidden.
bool isWorthListing(std::uint64_t allFiles);

}  // namespace tunovka
