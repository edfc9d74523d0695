#pragma once

#include <string>
#include <string_view>

#include "playlist/resolve.h"
#include "ui/box_request.h"

namespace tunovka {

inline constexpr std::wstring_view kRenameTitle = L"Premenovať súbor";
inline constexpr std::wstring_view kRenamePrompt = L"Napíš nový názov súboru \r\n";

// Letters of a file name before its extension: what the input box selects.
std::size_t nameWithoutExtension(std::wstring_view fileName);

// The name as typed with each of * ? \ / : ; replaced by "_". Other letters that the file system
// refuses stay; it then says so itself.
std::wstring cleanedName(std::wstring_view typed);

// The cleaned name with the old file's extension, which is appended unless the name ends in a dot
// and exactly that extension (letter case counts). A file without an extension gains a dot.
std::wstring newFileName(std::wstring_view typed, std::wstring_view oldPath);

enum class RenameVerdict { Rename, SameName, NameInUse };

RenameVerdict judgeRename(const std::wstring& newPath, const std::wstring& oldPath,
                          const FileExistsTest& exists);

// The notice for a verdict that refuses.
BoxRequest renameRefusal(RenameVerdict verdict);

}  // namespace tunovka
