#include "core/rozneapi.h"

#include <windows.h>

#include <shellapi.h>
#include <shlobj.h>

#include "core/handle.h"
#include "core/late_function.h"
#include "core/loop.h"
#include "core/paths.h"
#include "core/system_windows.h"
#include "core/text.h"

namespace tunovka::RozneApi {
namespace {

std::function<bool(const std::wstring&)>& question() {
    static std::function<bool(const std::wstring&)> installed;
    return installed;
}

std::vector<std::wstring> subfolderNames(const std::wstring& folder) {
    std::vector<std::wstring> names;
    const std::wstring usable = systemPathOrNone(folder);
    if (usable.empty()) return names;
    WIN32_FIND_DATAW entry;
    const FindHandle search(FindFirstFileW((withBackslash(usable) + L"*").c_str(), &entry));
    if (!search) return names;
    do {
        const std::wstring name = TrimAtNul(entry.cFileName);
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) && name != L"." && name != L"..")
            names.push_back(name);
    } while (FindNextFileW(search.get(), &entry));
    return names;
}

}  // namespace

std::wstring TrimAtNul(const std::wstring& text) {
    return trimAtNul(text);
}

bool HasSubfolders(const std::wstring& folder) {
    if (question()) return question()(folder);
    static const LateFunction<decltype(SHGetFileInfoW)> fileInfo(L"shell32.dll", "SHGetFileInfoW");
    SHFILEINFOW information{};
    // A path that the shell does not know gives 0 and leaves attributes that mean nothing.
    return fileInfo &&
           fileInfo(folder.c_str(), 0, &information, sizeof information, SHGFI_ATTRIBUTES) &&
           (information.dwAttributes & SFGAO_HASSUBFOLDER);
}

void setHasSubfolders(std::function<bool(const std::wstring&)> replacement) {
    question() = std::move(replacement);
}

void AddSubfolderNodes(FolderNodes& tree, const std::wstring& parentKey) {
    const std::wstring folder = withBackslash(parentKey);
    if (!HasSubfolders(folder)) return;
    for (const std::wstring& name : subfolderNames(folder)) {
        const std::wstring key = parentKey + name + L"\\";
        // While events ran the tree may have been filled anew.
        if (!tree.hasNode(parentKey)) return;
        if (tree.hasNode(key)) continue;
        tree.add(parentKey, key, name);
        if (HasSubfolders(key)) tree.add(key, key + kPlaceholderSuffix, kPlaceholderText);
        yieldToEvents();  // the shell's answers take milliseconds each
    }
    yieldNow();
}

std::wstring FindAssociatedProgram(const std::wstring& path) {
    static const LateFunction<decltype(FindExecutableW)> find(L"shell32.dll", "FindExecutableW");
    if (!find) return {};
    std::wstring program(MAX_PATH + 1, L'\0');
    const auto result = reinterpret_cast<INT_PTR>(find(path.c_str(), nullptr, program.data()));
    return result > 32 ? TrimAtNul(program) : std::wstring();
}

}  // namespace tunovka::RozneApi
