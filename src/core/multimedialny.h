#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tunovka::MultiMedialny {

// A colour as the system counts it: 0x00BBGGRR.
using Color = std::uint32_t;

constexpr Color rgb(unsigned red, unsigned green, unsigned blue) {
    return red | green << 8 | blue << 16;
}

// The colours that every window applies at its load.
struct SkinPalette {
    Color FormBackColor = rgb(87, 153, 222);
    Color LabelForeColor = 0x800000;
    Color TitleColor = rgb(0, 84, 186);
    Color TitleTextColor = rgb(117, 179, 255);
    Color InfoColor = 255;
    Color AuxColor1 = 0xF9CFCC;
    Color AuxColor2 = 0;
    Color PlayerBarColor = 255;
    Color NodeBackColor = 0xFFFFFF;
    Color NodeForeColor = 0;
    Color MissingEntryColor = 255;
    Color PlaylistNodeColor = 0x800000;
    Color AuxColor3 = rgb(116, 175, 237);
};

// Sets every colour of the palette, before any window uses one. Harmless when called again.
void InitSharedTables();

const SkinPalette& palette();

// A kind of file that the program knows.
struct Kind {
    std::wstring_view ending;     // three lower-case letters: "mp3"
    std::wstring_view iconKey{};  // "winamp1"; "" for a kind that is not listed
    bool music = false;           // can be played, and be an entry of a playlist
    std::wstring_view format{};   // what a save dialog calls it; "" for a kind that is not written

    bool isPlaylist() const { return !music && !iconKey.empty(); }
    bool isWritten() const { return !format.empty(); }
};

// All kinds, those with an icon in the order of their icons.
std::span<const Kind> kinds();

// The kind of that ending, in exactly this case; nullptr when it is none.
const Kind* kindOf(std::wstring_view ending);

// The icon key of a kind by its ending in lower case. Raises kInvalidCall for an unknown kind.
std::wstring IconKeyByExtension(std::wstring_view ending);

// The last three characters of the text, the whole text when it is shorter.
std::wstring_view mediaKind(std::wstring_view text);

// True when the last three characters are those of music: exact case, no dot required.
bool IsPlayableMedia(std::wstring_view text);

// True for "*.mp3", "*.wav" and "*.wma", exact case.
bool isMusicName(std::wstring_view name);
// True for "*.m3u", "*.pls" and "*.asx", exact case.
bool isPlaylistName(std::wstring_view name);
// The same without those that the program reads only, "*.asx".
bool isWritablePlaylistName(std::wstring_view name);

}  // namespace tunovka::MultiMedialny
