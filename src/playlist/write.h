#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tunovka {

// The text to write for a file when links are relative to the playlist's folder. `folder` is as
// parentFolder() gives it, `path` is absolute; "" stays "". A leading ".." in the result stands
// for the root of the playlist's drive; the merge reader takes it back. All comparisons are
// case-sensitive. A file on another drive keeps its absolute path.
std::wstring relativeEntryText(std::wstring_view folder, std::wstring_view path);

// The lines of a playlist file: the PLS layout when the chosen path matches "*.pls" (lower case
// only), otherwise the entries alone. `letEventsRun` (may be empty) is called per entry.
std::vector<std::wstring> playlistLines(std::wstring_view chosenPath,
                                        const std::vector<std::wstring>& entryPaths, bool relative,
                                        const std::function<void()>& letEventsRun = {});

// The file's bytes: each line through `toAnsi`, ended by CR LF. toAnsi sees one line at a time, so
// that its error can name the entry which the code page cannot hold.
std::string playlistBytes(const std::vector<std::wstring>& lines,
                          const std::function<std::string(std::wstring_view)>& toAnsi);

}  // namespace tunovka
