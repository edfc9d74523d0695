#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tunovka {

// An editor keeps number and text of an entry in its key alone: "položka:12súbor=..\a.mp3".
std::wstring entryKey(std::int16_t number, std::wstring_view entryText);

// The text behind the first "súbor=". A key without it loses its first five characters instead.
std::wstring_view entryTextOf(std::wstring_view key);

// The number in the key. An item without a key, or whose key holds no "súbor=" far enough from its
// start, raises kInvalidCall; what stands there and is no number raises kTypeMismatch; a number
// past 32,767 raises kOverflow.
std::int16_t entryNumberOf(std::wstring_view key);

// The text shown for an entry: what follows the last "\" of its text. Takes a key or a plain text.
std::wstring entryDisplayName(std::wstring_view key);

// Key of a playlist entry in the explorer's contents tree: "pl=LIST~1.M3U001id=a.mp3". `shortName`
// is the playlist's 8.3 name, or its name where the volume keeps none.
std::wstring playlistNodeKey(std::wstring_view shortName, std::int16_t number,
                             std::wstring_view entryText);

// "Does this file exist", answered by the disk or by a set that was read beforehand.
using FileExistsTest = std::function<bool(const std::wstring& path)>;

// The path that an editor's entry names, whether a file is there or not. `folder` is the folder of
// the editor's playlist, ending in "\".
std::wstring entryPath(std::wstring_view key, std::wstring_view folder);

// The same when a file of that path exists, else "".
std::wstring resolveEntryPath(std::wstring_view key, std::wstring_view folder,
                              const FileExistsTest& exists);

// The path behind a node of the explorer's contents tree: a "pl=…" key is a playlist entry, every
// other key the name of a file in `folder` (which ends in "\"). "" when the folder is "".
std::wstring nodePath(std::wstring_view key, std::wstring_view folder);

}  // namespace tunovka
