#pragma once

#include <string>
#include <vector>

#include "player/clip_details.h"
#include "player/playlist_clips.h"

namespace tunovka {

// Title and author out of a sound file's own tags: the header of a WMA, the ID3v1 tag of an MP3.
// Nothing when there are none or the file cannot be read.
ClipDetails tagDetails(const std::wstring& file);

// What a file to be played consists of: the entries of a playlist, or the file alone. Raises a
// RuntimeError when a playlist cannot be read.
std::vector<PlaylistClip> clipsOf(const std::wstring& file);

}  // namespace tunovka
