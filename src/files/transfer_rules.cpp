#include "files/transfer_rules.h"

#include <algorithm>

#include "core/paths.h"

namespace tunovka {
namespace {

constexpr std::wstring_view kCopy = L"copy:";
constexpr std::wstring_view kCut = L"cut:";

std::wstring joined(std::initializer_list<std::wstring_view> parts) {
    std::wstring text;
    for (const std::wstring_view part : parts) text += part;
    return text;
}

}  // namespace

std::wstring copiedClipboard(std::wstring_view path) {
    return joined({kCopy, path});
}

std::wstring cutClipboard(std::wstring_view path) {
    return joined({kCut, path});
}

bool isCopied(std::wstring_view clipboard) {
    return clipboard.starts_with(kCopy);
}

std::wstring clipboardPath(std::wstring_view clipboard) {
    const std::size_t mark = isCopied(clipboard) ? kCopy.size() : kCut.size();
    return std::wstring(clipboard.substr(std::min(mark, clipboard.size())));
}

std::wstring pasteFilter(std::wstring_view path) {
    const std::wstring extension = fileExtension(path);
    return joined({extension, L" súbory|*.", extension});
}

std::wstring normalizedFolder(std::wstring_view chosen) {
    std::wstring folder = withBackslash(chosen);
    if (folder.ends_with(L"\\\\")) folder.pop_back();
    return folder;
}

BoxRequest copyToFolderQuestion(std::wstring_view path, std::wstring_view folder) {
    return {L"Kopírovať súbor",
            joined({L"Chceš prekopírovať súbor '", path, L"' do adresára ", folder, L" ?"}),
            L"ÁNO;NIE"};
}

BoxRequest copyToContentsQuestion(std::wstring_view path, std::wstring_view folder) {
    return {
        L"Kopírovať súbor",
        joined({L"Naozaj chceš prekopírovať súbor '", path, L"' do adresára '", folder, L"' ?"}),
        L"ÁNO;NIE"};
}

BoxRequest overwriteQuestion() {
    return {L"Prepísať súbor",
            L"Súbor s takýmto názvom už v zadanom umiestnení existuje, chceš prepísať existujúci "
            L"súbor ?",
            L"ÁNO;NIE"};
}

BoxRequest deleteQuestion(std::wstring_view path) {
    return {L"Vymazať súbor", joined({L"Naozaj chceš nenávratne odstrániť súbor '", path, L"' ?"}),
            L"ÁNO;NIE"};
}

BoxRequest transferFailure(int errorNumber, std::wstring_view description) {
    return {L"CHYBA",
            joined({L"Došlo k neočakávanej chybe (č. ", std::to_wstring(errorNumber),
                    L")\rVýpis správy chyby:\r", description}),
            L"Rozumiem ..."};
}

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
