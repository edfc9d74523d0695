// Path rules and entry keys on any text. The first line is a folder, the second a name, the rest a
// path.
#include "core/paths.h"
#include "fuzz/fuzz.h"
#include "playlist/entry_key.h"
#include "playlist/line_grammar.h"
#include "playlist/resolve.h"
#include "playlist/write.h"
#include "support/error_of.h"

namespace tunovka::fuzz {
namespace {

void partsBelongToThePath(const std::wstring& path) {
    const std::wstring name = fileName(path), folder = parentFolder(path), drive = driveName(path);
    require(path.starts_with(drive), "a path begins with its drive");
    require(path.starts_with(folder), "a path begins with its folder");
    require(path.find(name) != path.npos, "a path holds its name");
    require(name.find_first_of(L"\\/") == name.npos, "a name holds no separator");
    require(name.ends_with(fileExtension(path)), "a name ends with its extension");
    require(folder.size() + name.size() <= path.size(), "folder and name do not overlap");
    require(folder.empty() || driveName(folder) == drive, "a folder is on the path's drive");
    require(parentFolder(folder).empty() || folder.find_last_of(L"\\/") + 1 != folder.size(),
            "only a root ends with a separator");
    // What stands between folder and name, and behind the name, are separators alone.
    std::wstring rest = path.substr(folder.size());
    rest.erase(rest.rfind(name), name.size());
    require(folder.empty() || rest.find_first_not_of(L"\\/") == rest.npos,
            "folder and name are the whole path");

    std::wstring upper = folder;
    for (std::size_t steps = 0; !upper.empty(); upper = parentFolder(upper))
        require(++steps <= path.size(), "every folder's folder is shorter");

    const std::wstring ended = withBackslash(path);
    require(ended.ends_with(L'\\') && ended.starts_with(path), "a backslash ends the path");
    require(withBackslash(ended) == ended, "one backslash is enough");
    require(path.ends_with(afterLastBackslash(path)), "the last part ends the path");
}

void keysHoldWhatTheyAreMadeOf(const std::wstring& shortName, const std::wstring& text,
                               const std::wstring& folder, std::int16_t number) {
    const auto always = [](const std::wstring&) { return true; };
    const auto never = [](const std::wstring&) { return false; };
    const std::wstring key = entryKey(number, text);
    require(entryTextOf(key) == text, "a key gives its text back");
    require(entryNumberOf(key) == number, "a key gives its number back");
    require(text.ends_with(entryDisplayName(key)), "a key shows the end of its text");
    require(
        resolveEntryPath(key, folder, always) == absoluteEntryPath(withoutFilePrefix(text), folder),
        "a key leads to its file");
    require(resolveEntryPath(key, folder, never).empty(), "a missing file is no path");

    const std::wstring node = playlistNodeKey(shortName, number, text);
    const std::wstring path = resolveNodeKey(node, folder, always);
    require(
        path == (folder.empty() ? L"" : absoluteEntryPath(withoutFilePrefixAnyCase(text), folder)),
        "a node leads to its entry's file");
    require(resolveNodeKey(text, folder, never).empty(), "a missing file is no path");
}

void anyKeyIsReadOrRefused(const std::wstring& key) {
    const int error = errorOf([&] { entryNumberOf(key); });
    require(error == 0 || error == kInvalidCall || error == kTypeMismatch || error == kOverflow,
            "a key without a number is refused");
    require(key.ends_with(entryTextOf(key)), "a key ends with its text");
}

void absolutePathsAreAbsolute(const std::wstring& text, const std::wstring& folder) {
    const std::wstring home = L"C:\\" + folder + L"\\";
    for (const auto& path : {absoluteEntryPath(text, home), mergedEntryPath(text, home)})
        require(classify(path) == EntryKind::Absolute || path.starts_with(L"C:"),
                "a path made absolute says where it starts");
}

void relativeTextsName(const std::wstring& path, const std::wstring& folder) {
    const std::wstring text = relativeEntryText(folder, path);
    require(text.ends_with(fileName(path)), "a link ends with the file's name");
}

void run(std::string_view input) {
    const std::wstring folder = wide(takeLine(input)), name = wide(takeLine(input));
    const auto number = static_cast<std::int16_t>(input.size() * 77 % 32768);
    const std::wstring path = wide(input);
    partsBelongToThePath(path);
    partsBelongToThePath(folder);
    keysHoldWhatTheyAreMadeOf(name, path, folder, number);
    anyKeyIsReadOrRefused(path);
    absolutePathsAreAbsolute(path, folder);
    relativeTextsName(path, folder);
}

const Named kNamed("paths", run);

}  // namespace
}  // namespace tunovka::fuzz
