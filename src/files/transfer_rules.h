#pragma once

#include <string>
#include <string_view>

#include "playlist/entry_key.h"
#include "ui/box_request.h"

namespace tunovka {

// The file operations by their numbers; every other number does nothing.
enum FileOperation : int {
    kCopyToClipboard = 1,
    kCopyIntoFolder = 2,
    kMoveIntoFolder = 3,
    kTransfer = 4,
    kCutToClipboard = 5,
    kDelete = 8,
};

inline constexpr std::wstring_view kCopyFolderPrompt = L"Určite adresár, kam sa súbor prekopíruje.";
inline constexpr std::wstring_view kMoveFolderPrompt = L"Určite adresár, kam sa súbor presunie.";
inline constexpr std::wstring_view kPasteTitle = L"Uložiť súbor ako ...";

// The file clipboard's texts: "copy:" or "cut:" and a full path; "" holds nothing.
std::wstring copiedClipboard(std::wstring_view path);
std::wstring cutClipboard(std::wstring_view path);
bool isCopied(std::wstring_view clipboard);
std::wstring clipboardPath(std::wstring_view clipboard);  // "" for an empty clipboard

// "mp3 súbory|*.mp3", the save dialog's filter for a path.
std::wstring pasteFilter(std::wstring_view path);

// A chosen folder with exactly one "\" at its end, also for a drive root.
std::wstring normalizedFolder(std::wstring_view chosen);

BoxRequest copyToFolderQuestion(std::wstring_view path, std::wstring_view folder);
BoxRequest copyToContentsQuestion(std::wstring_view path, std::wstring_view folder);
BoxRequest overwriteQuestion();
BoxRequest deleteQuestion(std::wstring_view path);

// The notice for an operation that failed; its lines are separated by a lone CR.
BoxRequest transferFailure(int errorNumber, std::wstring_view description);

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
