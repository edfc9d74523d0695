#include "core/multimedialny.h"

#include <algorithm>

#include "core/errors.h"
#include "core/text.h"

namespace tunovka::MultiMedialny {
namespace {

struct SharedTables {
    std::vector<std::pair<std::wstring, std::wstring>> iconKeys;
    SkinPalette palette{};
};

SharedTables& tables() {
    static SharedTables shared;
    return shared;
}

}  // namespace

void InitSharedTables() {
    if (tables().iconKeys.empty())
        tables().iconKeys = {{L"mp3", L"winamp1"},  {L"wav", L"winamp5"}, {L"m3u", L"winamp6"},
                             {L"pls", L"winamp10"}, {L"wma", L"winamp4"}, {L"asx", L"winamp12"}};
    tables().palette = {
        .FormBackColor = rgb(87, 153, 222),
        .LabelForeColor = 0x800000,
        .TitleColor = rgb(0, 84, 186),
        .TitleTextColor = rgb(117, 179, 255),
        .InfoColor = 255,
        .AuxColor1 = 0xF9CFCC,
        .AuxColor2 = 0,
        .PlayerBarColor = 255,
        .NodeBackColor = 0xFFFFFF,
        .NodeForeColor = 0,
        .MissingEntryColor = 255,
        .PlaylistNodeColor = 0x800000,
        .AuxColor3 = rgb(116, 175, 237),
    };
}

const SkinPalette& palette() {
    return tables().palette;
}

const std::vector<std::pair<std::wstring, std::wstring>>& iconKeyRows() {
    return tables().iconKeys;
}

std::wstring IconKeyByExtension(std::wstring_view kind) {
    for (const auto& [rowKind, iconKey] : tables().iconKeys)
        if (rowKind == kind) return iconKey;
    throw RuntimeError(kInvalidCall, kind);
}

std::wstring_view mediaKind(std::wstring_view text) {
    return text.substr(text.size() - std::min<std::size_t>(text.size(), 3));
}

bool IsPlayableMedia(std::wstring_view text) {
    const std::wstring_view kind = mediaKind(text);
    return kind == L"mp3" || kind == L"wav" || kind == L"wma";
}

bool isPlaylistName(std::wstring_view name) {
    return like(name, L"*.pls") || like(name, L"*.m3u") || like(name, L"*.asx");
}

}  // namespace tunovka::MultiMedialny
