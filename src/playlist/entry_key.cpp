#include "playlist/entry_key.h"

#include <algorithm>

#include "core/errors.h"
#include "core/paths.h"
#include "core/text.h"
#include "playlist/line_grammar.h"

namespace tunovka {
namespace {

constexpr std::wstring_view kNumberMark = L"položka:";
constexpr std::wstring_view kTextMark = L"súbor=";
constexpr std::size_t kNone = std::wstring_view::npos;

}  // namespace

std::wstring entryKey(std::int16_t number, std::wstring_view entryText) {
    const std::wstring digits = decimal(number);
    std::wstring key;
    key.reserve(kNumberMark.size() + digits.size() + kTextMark.size() + entryText.size());
    return key.append(kNumberMark).append(digits).append(kTextMark).append(entryText);
}

std::wstring_view entryTextOf(std::wstring_view key) {
    const std::size_t mark = key.find(kTextMark);
    if (mark == kNone) return key.substr(std::min<std::size_t>(key.size(), 5));
    return key.substr(mark + kTextMark.size());
}

std::int16_t entryNumberOf(std::wstring_view key) {
    const std::size_t mark = key.find(kTextMark);
    if (mark == kNone || mark < kNumberMark.size()) throw RuntimeError(kInvalidCall);
    const std::wstring_view digits = key.substr(kNumberMark.size(), mark - kNumberMark.size());
    if (digits.empty() || digits.find_first_not_of(L"0123456789") != kNone)
        throw RuntimeError(kTypeMismatch);
    std::int16_t number = 0;
    for (const wchar_t digit : digits) number = count16(number * 10 + (digit - L'0'));
    return number;
}

std::wstring entryDisplayName(std::wstring_view key) {
    const std::size_t mark = key.find(kTextMark);
    if (mark != kNone) key.remove_prefix(mark + kTextMark.size());
    return afterLastBackslash(key);
}

std::wstring playlistNodeKey(std::wstring_view shortName, std::int16_t number,
                             std::wstring_view entryText) {
    std::wstring key = L"pl=";
    key += shortName;
    // An 8.3 name holds no "=", a long name standing in for it may: the first "id=" must remain
    // the one before the entry text.
    for (std::size_t at = 3; (at = key.find(L"id=", at)) != std::wstring::npos;) key[at + 2] = L'_';
    const std::wstring digits = decimal(number);
    key.append(digits.size() < 3 ? 3 - digits.size() : 0, L'0').append(digits);
    return key.append(L"id=").append(entryText);
}

std::wstring entryPath(std::wstring_view key, std::wstring_view folder) {
    return absoluteEntryPath(withoutFilePrefix(entryTextOf(key)), folder);
}

std::wstring resolveEntryPath(std::wstring_view key, std::wstring_view folder,
                              const FileExistsTest& exists) {
    std::wstring path = entryPath(key, folder);
    return exists(path) ? path : std::wstring();
}

std::wstring nodePath(std::wstring_view key, std::wstring_view folder) {
    if (folder.empty()) return {};
    if (!key.starts_with(L"pl=")) return std::wstring(folder).append(key);
    constexpr std::wstring_view kMark = L"id=";
    const std::size_t mark = key.find(kMark);
    if (mark == std::wstring_view::npos) return {};
    const std::wstring_view text = key.substr(mark + kMark.size());
    return absoluteEntryPath(withoutFilePrefixAnyCase(text), folder);
}

}  // namespace tunovka
