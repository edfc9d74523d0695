// A playlist that is written and read again. The first line is the playlist's path, each further
// line a file's.
#include <algorithm>
#include <vector>

#include "core/paths.h"
#include "core/text.h"
#include "editor/document.h"
#include "fuzz/fuzz.h"
#include "playlist/write.h"

namespace tunovka::fuzz {
namespace {

using Paths = std::vector<std::wstring>;

// An absolute path on one of three drives as the system could name it, made of any letters: parts
// that are nothing, "." or ".." fall out, letters that no name can hold become "_".
std::wstring pathFrom(std::wstring_view letters, std::wstring_view ending) {
    static constexpr std::wstring_view kDrives[] = {L"C:", L"D:", L"c:"};
    std::wstring path(kDrives[letters.empty() ? 0 : letters[0] % 3]);
    for (std::wstring part :
         split(letters.substr(std::min<std::size_t>(1, letters.size())), L'\\')) {
        for (wchar_t& letter : part)
            if (letter < L' ' ||
                std::wstring_view(L"/:*?\"<>|").find(letter) != std::wstring_view::npos)
                letter = L'_';
        if (!part.empty() && part != L"." && part != L"..") path += L'\\' + part;
    }
    if (path.size() == 2) path += L"\\a";
    if (!path.ends_with(ending)) path += ending;
    return path;
}

// What relative links cannot say: a name below the playlist's folder that begins with "..", which
// stands for the root, or in a list without "File…=" one that looks as if it had that.
bool canBeRelative(const std::wstring& path, const std::wstring& list) {
    const std::wstring folder = withBackslash(parentFolder(list));
    if (!path.starts_with(folder)) return true;
    const std::wstring below = path.substr(folder.size());
    return !below.starts_with(L"..") &&
           (list.ends_with(L".pls") || !lowerCased(below).starts_with(L"file") ||
            below.find(L'=') == below.npos);
}

// Text as the merge reader and the editor get it back: a byte a letter is enough here.
std::wstring written(const std::wstring& list, const Paths& files, bool relative) {
    std::wstring read;
    for (const std::wstring& line : playlistLines(list, files, relative)) {
        const auto same = [](std::wstring_view text) { return std::string(text.size(), 'x'); };
        require(playlistBytes({line}, same).ends_with("x\r\n"), "every line is ended");
        read += line + L"\r\n";
    }
    return read;
}

// The ".." form doubles the separator behind the drive; the file system does not mind.
std::wstring singleSeparator(std::wstring path) {
    if (path.substr(1, 3) == L":\\\\") path.erase(2, 1);
    return path;
}

void requireSameFiles(const EditorDocument& document, const Paths& files) {
    const auto always = [](const std::wstring&) { return true; };
    require(document.rows().size() == files.size(), "every file comes back");
    for (std::size_t at = 0; at < files.size(); ++at)
        require(singleSeparator(document.resolve(at, always)) == files[at],
                "the same files come back in their order");
}

EditorDocument mergedFrom(const std::wstring& list, const std::wstring& text) {
    EditorDocument document;
    document.openNew(L"nový playlist");
    FilesAsked all(true);
    document.merge(list, text, all);
    return document;
}

}  // namespace

void run(std::string_view input) {
    const std::vector<std::wstring> lines = split(wide(input), L'\n');
    const std::wstring list = pathFrom(lines[0], lines[0].size() % 2 ? L".m3u" : L".pls");
    Paths files, relativeFiles;
    for (std::size_t at = 1; at < lines.size(); ++at) {
        files.push_back(pathFrom(lines[at], L".mp3"));
        if (canBeRelative(files.back(), list)) relativeFiles.push_back(files.back());
    }

    const std::wstring text = written(list, files, false);
    requireSameFiles(mergedFrom(list, text), files);
    // Absolute links are found from anywhere, by the editor as well.
    requireSameFiles(mergedFrom(L"Z:\\x\\y.m3u", text), files);
    if (!files.empty()) {
        EditorDocument document;
        FilesAsked all(true);
        document.load(L"Z:\\x\\y.m3u", text, all);
        requireSameFiles(document, files);
    }
    requireSameFiles(mergedFrom(list, written(list, relativeFiles, true)), relativeFiles);
}

}  // namespace tunovka::fuzz
