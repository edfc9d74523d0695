#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tunovka {

// "Does this file exist", answered by the disk or by a set that was read beforehand.
using FileExistsTest = std::function<bool(const std::wstring& path)>;

// The path that an editor's entry names, whether a file is there or not. `folder` is the folder of
// the editor's playlist, ending in "\".
std::wstring entryPath(std::wstring_view key, std::wstring_view folder);

// The same when a file of that path exists, else "".
std::wstring resolveEntryPath(std::wstring_view key, std::wstring_view folder,
                              const FileExistsTest& exists);

// The path behind a node of the explorer's contents tree: a "pl=…" key is a playlist entry, every
// other key the name of a file in `folder` (which ends in "\"). "" when no file of that path
// exists or the folder is "".
std::wstring resolveNodeKey(std::wstring_view key, std::wstring_view folder,
                            const FileExistsTest& exists);

}  // namespace tunovka
