#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tunovka {

// Walks the lines of a text without copying it: a line ends at LF, a CR right before it is dropped,
// a lone CR and a NUL are data, and a last LF gives no extra empty line. The views point into the
// text, which must outlive them.
class WideLineReader {
  public:
    explicit WideLineReader(std::wstring_view text) : rest_(text) {}

    // Gives the next line; false at the end, with `line` untouched.
    bool next(std::wstring_view& line) {
        if (rest_.empty()) return false;
        const std::size_t end = rest_.find(L'\n');
        line = rest_.substr(0, end);
        if (end == rest_.npos) {
            rest_ = {};
            return true;
        }
        rest_.remove_prefix(end + 1);
        if (line.ends_with(L'\r')) line.remove_suffix(1);
        return true;
    }

  private:
    std::wstring_view rest_;
};

// No playlist is parsed by its format: three readers (editor, merge, explorer) apply the same small
// grammar. The differences below are meant.

// Editor and merge readers: the raw line ends in ".wav", ".mp3" or ".wma", lower case only.
bool isPlaylistEntryLine(std::wstring_view line);

// Explorer reader: the entry text of a line, or nullopt for a line without one. An ASX reference
// ("<…ref…href…=…>", letter case aside) is replaced by what stands between its first two quotation
// marks; then the last three characters must name playable media, without a dot, lower case only.
// A reference with fewer than two quotation marks raises kInvalidCall.
std::optional<std::wstring> explorerEntryText(std::wstring_view line);

// The text behind the first "=" of a "File…=…" line, any other text as it is. The editor knows the
// capital F alone, the other readers ignore the case.
std::wstring_view withoutFilePrefix(std::wstring_view text);
std::wstring_view withoutFilePrefixAnyCase(std::wstring_view text);

enum class EntryKind {
    Absolute,     // holds ":\" anywhere
    DriveRooted,  // begins with "\", network paths included
    Relative,     // everything else
};

EntryKind classify(std::wstring_view text);

// The entry text (without its "File…=" prefix) as a path. `folder` ends in "\". ".." is left for
// the file system to follow. `path` lends its memory: a loop over thousands hands the last one in.
std::wstring absoluteEntryPath(std::wstring_view text, std::wstring_view folder,
                               std::wstring path = {});

// The same for the merge reader, where a relative text that begins with ".." starts at the root of
// the folder's drive: "..\a.mp3" in "D:\x\" gives "D:\\a.mp3". This is how links are written.
std::wstring mergedEntryPath(std::wstring_view text, std::wstring_view folder);

// Parent folder of a playlist's path, ending in "\" ("\" for a text without a folder).
std::wstring playlistFolder(std::wstring_view playlistPath);

}  // namespace tunovka
