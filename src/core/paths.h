#pragma once

#include <string>
#include <string_view>

namespace tunovka {

// Text rules over Windows paths: nothing here asks the disk. They follow the scripting
// file-system object's functions of the same meaning.

// The text after the last "\" or "/", also after a drive's colon; separators at the path's end do
// not count ("C:\x\" gives "x"); "" for a root.
std::wstring fileName(std::wstring_view path);

// The text after the file name's last dot, "" when it has none.
std::wstring fileExtension(std::wstring_view path);

// Parent folder without a trailing "\" unless it is a drive root ("C:\"); "" when there is none
// (a root, a share, a name alone).
std::wstring parentFolder(std::wstring_view path);

// The drive ("C:") in the case as written, or the share ("\\server\share"); "" when there is none.
std::wstring driveName(std::wstring_view path);

// The path with one "\" at its end, appended when missing; "\" for an empty text.
std::wstring withBackslash(std::wstring_view path);

// The text after the last "\" (the whole text when it has none).
std::wstring afterLastBackslash(std::wstring_view text);

}  // namespace tunovka
