#include "core/rozneapi.h"

#include "core/disk_windows.h"
#include "core/loop.h"
#include "core/paths.h"
#include "core/system_windows.h"
#include "core/text.h"

namespace tunovka::RozneApi {
namespace {

// The names of a folder's sub-folders, at most so many.
std::vector<std::wstring> subfolderNames(const std::wstring& folder, std::size_t most = SIZE_MAX) {
    std::vector<std::wstring> names;
    const std::wstring usable = systemPathOrNone(folder);
    if (usable.empty()) return names;
    Disk::list(usable, [&](const WIN32_FIND_DATAW& entry) {
        if (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) names.emplace_back(entry.cFileName);
        return names.size() < most;
    });
    return names;
}

}  // namespace

std::wstring TrimAtNul(const std::wstring& text) {
    return trimAtNul(text);
}

bool HasSubfolders(const std::wstring& folder) {
    // The shell knows no longer ones.
    if (folder.size() >= MAX_PATH) return !subfolderNames(folder, 1).empty();
    return Disk::hasSubfolders(folder);
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
    return Disk::associatedProgram(path);
}

}  // namespace tunovka::RozneApi
