#include "core/multimedialny.h"

#include <algorithm>

#include "core/errors.h"

namespace tunovka::MultiMedialny {
namespace {

constexpr Kind kKinds[] = {
    {.ending = L"mp3", .iconKey = L"winamp1", .music = true},
    {.ending = L"wav", .iconKey = L"winamp5", .music = true},
    {.ending = L"m3u", .iconKey = L"winamp6", .format = L"Playlist Winampu"},
    {.ending = L"pls", .iconKey = L"winamp10", .format = L"Playlist PLS"},
    {.ending = L"wma", .iconKey = L"winamp4", .music = true},
    {.ending = L"asx", .iconKey = L"winamp12"},
    {.ending = L"txt", .format = L"textový súbor"},
};

SkinPalette sharedPalette;

// The kind of a name that ends in a dot and the kind's ending.
const Kind* kindOfName(std::wstring_view name) {
    const std::wstring_view ending = mediaKind(name);
    return name.substr(0, name.size() - ending.size()).ends_with(L'.') ? kindOf(ending) : nullptr;
}

}  // namespace

void InitSharedTables() {
    sharedPalette = {};
}

const SkinPalette& palette() {
    return sharedPalette;
}

std::span<const Kind> kinds() {
    return kKinds;
}

const Kind* kindOf(std::wstring_view ending) {
    const auto found = std::ranges::find(kKinds, ending, &Kind::ending);
    return found == std::end(kKinds) ? nullptr : found;
}

std::wstring IconKeyByExtension(std::wstring_view ending) {
    const Kind* const kind = kindOf(ending);
    if (!kind || kind->iconKey.empty()) throw RuntimeError(kInvalidCall, ending);
    return std::wstring(kind->iconKey);
}

std::wstring_view mediaKind(std::wstring_view text) {
    return text.substr(text.size() - std::min<std::size_t>(text.size(), 3));
}

bool IsPlayableMedia(std::wstring_view text) {
    const Kind* const kind = kindOf(mediaKind(text));
    return kind && kind->music;
}

bool isMusicName(std::wstring_view name) {
    const Kind* const kind = kindOfName(name);
    return kind && kind->music;
}

bool isPlaylistName(std::wstring_view name) {
    const Kind* const kind = kindOfName(name);
    return kind && kind->isPlaylist();
}

bool isWritablePlaylistName(std::wstring_view name) {
    const Kind* const kind = kindOfName(name);
    return kind && kind->isPlaylist() && kind->isWritten();
}

}  // namespace tunovka::MultiMedialny
