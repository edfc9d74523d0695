#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "player/clip_details.h"

namespace tunovka {

// One entry of a playlist that is played: where the file should be, and what the list tells of it.
struct PlaylistClip {
    std::wstring path;
    ClipDetails listed;

    bool operator==(const PlaylistClip&) const = default;
};

// The entries of a playlist's text by the explorer's line grammar, made absolute against the
// list's own folder (ending in "\"). Titles come from the "#EXTINF:…,…" line before an entry and
// from the "TitleN=…" line with the number of a "FileN=…" entry. Whether the files exist is not
// asked; a reference that the grammar refuses is left out.
std::vector<PlaylistClip> readPlaylistClips(std::wstring_view text, std::wstring_view folder);

}  // namespace tunovka
