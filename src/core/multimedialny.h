#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tunovka::MultiMedialny {

// A colour as the system counts it: 0x00BBGGRR.
using Color = std::uint32_t;

constexpr Color rgb(unsigned red, unsigned green, unsigned blue) {
    return red | green << 8 | blue << 16;
}

// The colours that every window applies at its load.
struct SkinPalette {
    Color FormBackColor;
    Color LabelForeColor;
    Color TitleColor;
    Color TitleTextColor;
    Color InfoColor;
    Color AuxColor1;
    Color AuxColor2;
    Color PlayerBarColor;
    Color NodeBackColor;
    Color NodeForeColor;
    Color MissingEntryColor;
    Color PlaylistNodeColor;
    Color AuxColor3;
};

// Fills the icon-key table if it is empty and sets every colour of the palette. Harmless when
// called again. The explorer's load calls it before any window uses a colour or an icon key.
void InitSharedTables();

const SkinPalette& palette();

// The rows of the icon-key table in their order: kind ("mp3"), icon key ("winamp1").
const std::vector<std::pair<std::wstring, std::wstring>>& iconKeyRows();

// The icon key of a kind, given as the last three characters of a lower-cased name. Raises
// kInvalidCall for an unknown kind.
std::wstring IconKeyByExtension(std::wstring_view kind);

// The last three characters of the text, the whole text when it is shorter.
std::wstring_view mediaKind(std::wstring_view text);

// True when the last three characters are "mp3", "wav" or "wma": exact case, no dot required.
bool IsPlayableMedia(std::wstring_view text);

// True when a lower-cased name matches "*.pls", "*.m3u" or "*.asx".
bool isPlaylistName(std::wstring_view name);

// The fixed 128-byte record at the end of an MP3 file. Fields keep their padding.
struct Id3v1Tag {
    std::wstring Title = std::wstring(30, L'\0');
    std::wstring Artist = std::wstring(30, L'\0');
    std::wstring Album = std::wstring(30, L'\0');
    std::wstring Year = std::wstring(4, L'\0');
    std::wstring Comment = std::wstring(30, L'\0');
};

}  // namespace tunovka::MultiMedialny
