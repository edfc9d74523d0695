#include "playlist/line_grammar.h"

#include <cwchar>

#include "core/errors.h"
#include "core/multimedialny.h"
#include "core/paths.h"
#include "core/text.h"

namespace tunovka {
namespace {

constexpr std::size_t kNone = std::wstring_view::npos;

// What follows the first "=" at or behind the word "file", which is four letters long.
std::wstring_view behindEqualsSign(std::wstring_view text) {
    const std::size_t equals = text.find(L'=', 4);
    return equals == kNone ? text : text.substr(equals + 1);
}

// "<…ref…href…=…>", letter case aside.
bool isReference(std::wstring_view line) {
    // The cheap look first: hardly any line of a playlist is a mark-up element.
    if (!line.starts_with(L'<') || !line.ends_with(L'>')) return false;
    const std::wstring element = lowerCased(line);
    std::size_t at = 0;
    for (const wchar_t* const part : {L"ref", L"href", L"="}) {
        at = element.find(part, at);
        if (at == kNone) return false;
        at += std::wcslen(part);
    }
    return true;
}

std::wstring_view betweenQuotes(std::wstring_view line) {
    const std::size_t first = line.find(L'"');
    const std::size_t second = first == kNone ? kNone : line.find(L'"', first + 1);
    if (second == kNone) throw RuntimeError(kInvalidCall);
    return line.substr(first + 1, second - first - 1);
}

}  // namespace

bool isPlaylistEntryLine(std::wstring_view line) {
    return MultiMedialny::isMusicName(line);
}

std::optional<std::wstring> explorerEntryText(std::wstring_view line) {
    if (isReference(line)) line = betweenQuotes(line);
    if (!MultiMedialny::IsPlayableMedia(line)) return std::nullopt;
    return std::wstring(line);
}

std::wstring_view withoutFilePrefix(std::wstring_view text) {
    return text.starts_with(L"File") ? behindEqualsSign(text) : text;
}

std::wstring_view withoutFilePrefixAnyCase(std::wstring_view text) {
    return lowerCased(text.substr(0, 4)) == L"file" ? behindEqualsSign(text) : text;
}

EntryKind classify(std::wstring_view text) {
    if (text.find(L":\\") != kNone) return EntryKind::Absolute;
    return text.starts_with(L'\\') ? EntryKind::DriveRooted : EntryKind::Relative;
}

std::wstring absoluteEntryPath(std::wstring_view text, std::wstring_view folder,
                               std::wstring path) {
    path.clear();
    path.reserve(folder.size() + text.size());
    switch (classify(text)) {
        case EntryKind::Absolute:
            break;
        case EntryKind::DriveRooted:
            path += driveName(folder);
            break;
        case EntryKind::Relative:
            path += folder;
            break;
    }
    path += text;
    return path;
}

std::wstring mergedEntryPath(std::wstring_view text, std::wstring_view folder) {
    if (!text.starts_with(L"..") || classify(text) != EntryKind::Relative)
        return absoluteEntryPath(text, folder);
    return driveName(folder).append(L"\\").append(text.substr(2));
}

std::wstring playlistFolder(std::wstring_view playlistPath) {
    return withBackslash(parentFolder(playlistPath));
}

}  // namespace tunovka
