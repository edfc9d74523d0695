#include "playlist/resolve.h"

#include "playlist/entry_key.h"
#include "playlist/line_grammar.h"

namespace tunovka {
namespace {

std::wstring ifExists(std::wstring path, const FileExistsTest& exists) {
    return exists(path) ? std::move(path) : std::wstring();
}

}  // namespace

std::wstring entryPath(std::wstring_view key, std::wstring_view folder) {
    return absoluteEntryPath(withoutFilePrefix(entryTextOf(key)), folder);
}

std::wstring resolveEntryPath(std::wstring_view key, std::wstring_view folder,
                              const FileExistsTest& exists) {
    return ifExists(entryPath(key, folder), exists);
}

std::wstring resolveNodeKey(std::wstring_view key, std::wstring_view folder,
                            const FileExistsTest& exists) {
    if (folder.empty()) return {};
    if (!key.starts_with(L"pl=")) return ifExists(std::wstring(folder).append(key), exists);
    constexpr std::wstring_view kMark = L"id=";
    const std::size_t mark = key.find(kMark);
    if (mark == std::wstring_view::npos) return {};
    const std::wstring_view text = key.substr(mark + kMark.size());
    return ifExists(absoluteEntryPath(withoutFilePrefixAnyCase(text), folder), exists);
}

}  // namespace tunovka
