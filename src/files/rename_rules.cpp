#include "files/rename_rules.h"

#include <algorithm>

#include "core/paths.h"

namespace tunovka {

std::size_t nameWithoutExtension(std::wstring_view fileName) {
    return std::min(fileName.rfind(L'.'), fileName.size());
}

std::wstring cleanedName(std::wstring_view typed) {
    constexpr std::wstring_view kRefused = L"*?\\/:;";
    std::wstring name(typed);
    std::ranges::replace_if(
        name, [&](wchar_t letter) { return kRefused.find(letter) != kRefused.npos; }, L'_');
    return name;
}

std::wstring newFileName(std::wstring_view typed, std::wstring_view oldPath) {
    const std::wstring ending = L"." + fileExtension(oldPath);
    std::wstring name = cleanedName(typed);
    if (!name.ends_with(ending)) name += ending;
    return name;
}

RenameVerdict judgeRename(const std::wstring& newPath, const std::wstring& oldPath,
                          const FileExistsTest& exists) {
    if (newPath == oldPath) return RenameVerdict::SameName;
    return exists(newPath) ? RenameVerdict::NameInUse : RenameVerdict::Rename;
}

BoxRequest renameRefusal(RenameVerdict verdict) {
    return {L"CHYBA",
            verdict == RenameVerdict::SameName
                ? L"Názov súbor sa zhoduje s pôvodným názvom !"
                : L"Tento názov súboru sa už používa ! Zmeň ho, alebo odstráň súbor s týmto "
                  L"názvom.",
            L"Ou kej ..."};
}

}  // namespace tunovka
