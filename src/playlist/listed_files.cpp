#include "playlist/listed_files.h"

#include <optional>
#include <unordered_map>

#include "core/errors.h"
#include "core/text.h"
#include "playlist/line_grammar.h"

namespace tunovka {
namespace {

// A title as playlists write it: "Author - Title", or a title alone.
ClipDetails listedDetails(std::wstring_view text) {
    constexpr std::wstring_view separator = L" - ";
    const auto found = text.find(separator);
    if (found == std::wstring_view::npos) return {trimBlanks(text), L""};
    return {trimBlanks(text.substr(found + separator.size())), trimBlanks(text.substr(0, found))};
}

// The title of "#EXTINF:length,title".
std::optional<ClipDetails> extendedInfo(std::wstring_view line) {
    if (!line.starts_with(L"#EXTINF:")) return std::nullopt;
    const auto comma = line.find(L',');
    if (comma == line.npos) return ClipDetails{};
    return listedDetails(line.substr(comma + 1));
}

// The number of a "<word><number>=…" line ("file1=", "Title1="), letter case aside; "" without.
std::wstring_view numberBehind(std::wstring_view word, std::wstring_view line) {
    const auto equals = line.find(L'=');
    if (equals == line.npos || lowerCased(line.substr(0, word.size())) != word) return {};
    const auto number = line.substr(word.size(), equals - word.size());
    return number.find_first_not_of(L"0123456789") == number.npos ? number : std::wstring_view();
}

std::optional<std::wstring> entryText(std::wstring_view line) {
    try {
        return explorerEntryText(line);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

}  // namespace

std::vector<ListedFile> listedFiles(std::wstring_view text, std::wstring_view folder) {
    std::vector<ListedFile> files;
    std::vector<std::wstring> numbers;  // of the "FileN" lines, "" for other entries
    std::unordered_map<std::wstring, ClipDetails> titles;
    ClipDetails announced;

    WideLineReader lines(text);
    for (std::wstring_view line; lines.next(line);) {
        if (const auto info = extendedInfo(line)) {
            announced = *info;
        } else if (const auto number = numberBehind(L"title", line); !number.empty()) {
            titles[std::wstring(number)] = listedDetails(line.substr(line.find(L'=') + 1));
        } else if (const auto entry = entryText(line)) {
            numbers.emplace_back(numberBehind(L"file", *entry));
            files.push_back(
                {absoluteEntryPath(withoutFilePrefixAnyCase(*entry), folder), announced});
            announced = {};
        }
    }
    for (std::size_t at = 0; at < files.size(); ++at) {
        if (const auto title = titles.find(numbers[at]); title != titles.end())
            files[at].listed = title->second.orElse(files[at].listed);
    }
    return files;
}

}  // namespace tunovka
